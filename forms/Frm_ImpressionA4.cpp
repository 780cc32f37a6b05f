#include "forms/Frm_ImpressionA4.h"

#include <string_view>

#include "text/Utf8.h"

namespace forms {

namespace {

using toolkit::ComboBox;
using toolkit::PrinterInfo;

// Twips.
constexpr int kMargin = 120;
constexpr int kWidth = 5700;
constexpr int kFrameWidth = kWidth - 2 * kMargin;
constexpr int kLabels = 180;  // within the frame
constexpr int kLabelWidth = 750;
constexpr int kFields = 990;
constexpr int kFieldWidth = kFrameWidth - kFields - kLabels;
constexpr int kFieldHeight = 315;
constexpr int kLineHeight = 225;
constexpr int kLabelDrop = 60;  // brings a label to the line of the text in its field
constexpr int kNameTop = 330;
constexpr int kStateTop = 810;
constexpr int kPortTop = 1140;
constexpr int kFrameHeight = kPortTop + kLineHeight + 180;
constexpr int kButtonTop = kMargin + kFrameHeight + kMargin;
constexpr int kButtonWidth = 1275;
constexpr int kButtonHeight = 375;
constexpr int kHeight = kButtonTop + kButtonHeight + kMargin;

bool isPagePrinter(const PrinterInfo& printer) {
  return text::upper(printer.deviceName).find("MATRIC") == std::string::npos;
}

// A caption that shows the text as it is.
std::string captionOf(std::string_view text) {
  std::string caption;
  for (const char c : text) caption.append(c == '&' ? 2 : 1, c);
  return caption;
}

}  // namespace

ImprimanteParDefaut& imprimanteParDefaut() {
  static ImprimanteParDefaut remembered;
  return remembered;
}

Frm_ImpressionA4::Frm_ImpressionA4(toolkit::Desktop& desktop)
    : desktop_(desktop),
      window_("Frm_ImpressionA4", "Imprimer", kWidth, kHeight),
      Fra_Imprimante_(&window_.surface(), "Fra_Imprimante", "Imprimante"),
      Etq_Nom_(&Fra_Imprimante_, "Etq_Nom", "&Nom :"),
      Cbo_Imprimante_(&Fra_Imprimante_, "Cbo_Imprimante", ComboBox::Style::ListOnly),
      Cbo_ImpSelect_(&Fra_Imprimante_, "Cbo_ImpSelect", ComboBox::Style::ListOnly),
      Etq_LibEtat_(&Fra_Imprimante_, "Etq_LibEtat", "Etat  :"),
      Etq_Etat_(&Fra_Imprimante_, "Etq_Etat"),
      Etq_LibOu_(&Fra_Imprimante_, "Etq_LibOu", "Où    :"),
      Etq_Ou_(&Fra_Imprimante_, "Etq_Ou"),
      Cmd_Ok_(&window_.surface(), "Cmd_Ok", "&OK"),
      Cmd_Annuler_(&window_.surface(), "Cmd_Annuler", "&Annuler") {
  placer();
  lier();
  charger();
}

void Frm_ImpressionA4::placer() {
  Fra_Imprimante_.setPlace({kMargin, kMargin, kFrameWidth, kFrameHeight});
  Etq_Nom_.setPlace({kLabels, kNameTop + kLabelDrop, kLabelWidth, kLineHeight});
  Cbo_Imprimante_.setPlace({kFields, kNameTop, kFieldWidth, kFieldHeight});
  Cbo_ImpSelect_.setPlace(Cbo_Imprimante_.place());
  Etq_LibEtat_.setPlace({kLabels, kStateTop, kLabelWidth, kLineHeight});
  Etq_Etat_.setPlace({kFields, kStateTop, kFieldWidth, kLineHeight});
  Etq_LibOu_.setPlace({kLabels, kPortTop, kLabelWidth, kLineHeight});
  Etq_Ou_.setPlace({kFields, kPortTop, kFieldWidth, kLineHeight});
  const int cancelLeft = kWidth - kMargin - kButtonWidth;
  Cmd_Ok_.setPlace({cancelLeft - kMargin - kButtonWidth, kButtonTop, kButtonWidth, kButtonHeight});
  Cmd_Annuler_.setPlace({cancelLeft, kButtonTop, kButtonWidth, kButtonHeight});
}

void Frm_ImpressionA4::lier() {
  Cbo_ImpSelect_.setVisible(false);
  window_.surface().setDefaultButton(&Cmd_Ok_);
  window_.surface().setCancelButton(&Cmd_Annuler_);
  Cbo_Imprimante_.onClick = [this] { afficherChoix(); };
  Cmd_Ok_.onClick = [this] { confirmer(); };
  Cmd_Annuler_.onClick = [this] { desktop_.close(window_); };
}

void Frm_ImpressionA4::charger() {
  imprimantes_ = desktop_.printers();
  ImprimanteParDefaut& parDefaut = imprimanteParDefaut();
  if (!parDefaut.premierChargementFait) retenirImprimanteCourante();
  for (std::size_t i = 0; i < imprimantes_.size(); ++i) {
    if (!isPagePrinter(imprimantes_[i])) continue;
    const std::string& name = imprimantes_[i].deviceName;
    if (!parDefaut.nom) parDefaut.nom = name;
    if (name == *parDefaut.nom) positionParDefaut_ = Cbo_Imprimante_.listCount();
    Cbo_Imprimante_.addItem(name);
    Cbo_ImpSelect_.addItem(std::to_string(i), static_cast<long>(i));
  }
  const bool someOffered = Cbo_Imprimante_.listCount() > 0;
  if (someOffered) Cbo_Imprimante_.setListIndex(positionParDefaut_);
  Cmd_Ok_.setEnabled(someOffered);
  Cbo_Imprimante_.setFocus();
}

void Frm_ImpressionA4::retenirImprimanteCourante() {
  ImprimanteParDefaut& parDefaut = imprimanteParDefaut();
  const int current = desktop_.currentPrinter();
  if (current >= 0 && current < static_cast<int>(imprimantes_.size())) {
    const PrinterInfo& printer = imprimantes_[static_cast<std::size_t>(current)];
    if (isPagePrinter(printer)) parDefaut.nom = printer.deviceName;
  }
  parDefaut.premierChargementFait = true;
}

void Frm_ImpressionA4::afficherChoix() {
  const int line = Cbo_Imprimante_.listIndex();
  const auto position = static_cast<std::size_t>(Cbo_ImpSelect_.itemData(line));
  Etq_Ou_.setCaption(captionOf(imprimantes_[position].port));
  Etq_Etat_.setCaption(line == positionParDefaut_ ? "Imprimante par défaut" : "");
}

void Frm_ImpressionA4::confirmer() {
  choisie_ = static_cast<int>(Cbo_ImpSelect_.itemData(Cbo_Imprimante_.listIndex()));
  desktop_.close(window_);
}

std::optional<int> Frm_ImpressionA4::choisir() {
  desktop_.showModal(window_);
  return choisie_;
}

}  // namespace forms
