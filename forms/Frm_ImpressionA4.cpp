#include "forms/Frm_ImpressionA4.h"

#include <algorithm>
#include <mutex>
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

// Controls of several threads share what is remembered.
std::mutex& remembering() {
  static std::mutex mutex;
  return mutex;
}

}  // namespace

ImprimanteParDefaut& imprimanteParDefaut() {
  static ImprimanteParDefaut remembered;
  return remembered;
}

Controles::Controles(toolkit::Surface& surface)
    : Fra_Imprimante(&surface, "Fra_Imprimante", "Imprimante"),
      Etq_Nom(&Fra_Imprimante, "Etq_Nom", "&Nom :"),
      Cbo_Imprimante(&Fra_Imprimante, "Cbo_Imprimante", ComboBox::Style::ListOnly),
      Cbo_ImpSelect(&Fra_Imprimante, "Cbo_ImpSelect", ComboBox::Style::ListOnly),
      Etq_LibEtat(&Fra_Imprimante, "Etq_LibEtat", "Etat  :"),
      Etq_Etat(&Fra_Imprimante, "Etq_Etat"),
      Etq_LibOu(&Fra_Imprimante, "Etq_LibOu", "Où    :"),
      Etq_Ou(&Fra_Imprimante, "Etq_Ou"),
      Cmd_Ok(&surface, "Cmd_Ok", "&OK"),
      Cmd_Annuler(&surface, "Cmd_Annuler", "&Annuler") {}

Frm_ImpressionA4::Frm_ImpressionA4(toolkit::Desktop& desktop)
    : desktop_(desktop),
      window_("Frm_ImpressionA4", "Imprimer", kWidth, kHeight),
      controles_(window_.surface()) {
  placer();
  lier();
  charger();
}

void Frm_ImpressionA4::placer() {
  controles_.Fra_Imprimante.setPlace({kMargin, kMargin, kFrameWidth, kFrameHeight});
  controles_.Etq_Nom.setPlace({kLabels, kNameTop + kLabelDrop, kLabelWidth, kLineHeight});
  controles_.Cbo_Imprimante.setPlace({kFields, kNameTop, kFieldWidth, kFieldHeight});
  controles_.Cbo_ImpSelect.setPlace(controles_.Cbo_Imprimante.place());
  controles_.Etq_LibEtat.setPlace({kLabels, kStateTop, kLabelWidth, kLineHeight});
  controles_.Etq_Etat.setPlace({kFields, kStateTop, kFieldWidth, kLineHeight});
  controles_.Etq_LibOu.setPlace({kLabels, kPortTop, kLabelWidth, kLineHeight});
  controles_.Etq_Ou.setPlace({kFields, kPortTop, kFieldWidth, kLineHeight});
  const int cancelLeft = kWidth - kMargin - kButtonWidth;
  controles_.Cmd_Ok.setPlace(
      {cancelLeft - kMargin - kButtonWidth, kButtonTop, kButtonWidth, kButtonHeight});
  controles_.Cmd_Annuler.setPlace({cancelLeft, kButtonTop, kButtonWidth, kButtonHeight});
}

void Frm_ImpressionA4::lier() {
  controles_.Cbo_ImpSelect.setVisible(false);
  window_.surface().setDefaultButton(&controles_.Cmd_Ok);
  window_.surface().setCancelButton(&controles_.Cmd_Annuler);
  controles_.Cbo_Imprimante.onClick = [this] { afficherChoix(); };
  controles_.Cmd_Ok.onClick = [this] { confirmer(); };
  controles_.Cmd_Annuler.onClick = [this] { desktop_.close(window_); };
}

void Frm_ImpressionA4::charger() {
  imprimantes_ = desktop_.printers();
  const std::optional<std::string> parDefaut = nomParDefaut();
  for (std::size_t i = 0; i < imprimantes_.size(); ++i) {
    if (!isPagePrinter(imprimantes_[i])) continue;
    const std::string& name = imprimantes_[i].deviceName;
    if (name == parDefaut) positionParDefaut_ = controles_.Cbo_Imprimante.listCount();
    controles_.Cbo_Imprimante.addItem(name);
    controles_.Cbo_ImpSelect.addItem(std::to_string(i), static_cast<long>(i));
  }
  const bool someOffered = controles_.Cbo_Imprimante.listCount() > 0;
  if (someOffered) controles_.Cbo_Imprimante.setListIndex(positionParDefaut_);
  controles_.Cmd_Ok.setEnabled(someOffered);
  controles_.Cbo_Imprimante.setFocus();
}

std::optional<std::string> Frm_ImpressionA4::nomParDefaut() {
  const std::lock_guard lock(remembering());
  ImprimanteParDefaut& parDefaut = imprimanteParDefaut();
  if (!parDefaut.premierChargementFait) retenirImprimanteCourante(parDefaut);
  if (!parDefaut.nom) {
    const auto first = std::ranges::find_if(imprimantes_, isPagePrinter);
    if (first != imprimantes_.end()) parDefaut.nom = first->deviceName;
  }
  return parDefaut.nom;
}

void Frm_ImpressionA4::retenirImprimanteCourante(ImprimanteParDefaut& parDefaut) {
  const int current = desktop_.currentPrinter();
  if (current >= 0 && current < static_cast<int>(imprimantes_.size())) {
    const PrinterInfo& printer = imprimantes_[static_cast<std::size_t>(current)];
    if (isPagePrinter(printer)) parDefaut.nom = printer.deviceName;
  }
  parDefaut.premierChargementFait = true;
}

void Frm_ImpressionA4::afficherChoix() {
  const int line = controles_.Cbo_Imprimante.listIndex();
  const auto position = static_cast<std::size_t>(controles_.Cbo_ImpSelect.itemData(line));
  controles_.Etq_Ou.setCaption(captionOf(imprimantes_[position].port));
  controles_.Etq_Etat.setCaption(line == positionParDefaut_ ? "Imprimante par défaut" : "");
}

void Frm_ImpressionA4::confirmer() {
  choisie_ =
      static_cast<int>(controles_.Cbo_ImpSelect.itemData(controles_.Cbo_Imprimante.listIndex()));
  desktop_.close(window_);
}

std::optional<int> Frm_ImpressionA4::choisir() {
  desktop_.showModal(window_);
  return choisie_;
}

}  // namespace forms
