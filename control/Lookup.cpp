#include "control/Lookup.h"

#include <functional>
#include <string_view>

#include "screen/Messages.h"
#include "screen/StoreTrap.h"
#include "text/Utf8.h"

namespace control {
namespace {

constexpr std::size_t kLongueurCode = 3;

void selectionner(toolkit::TextBox& box) {
  box.select(0, static_cast<int>(text::length(box.text())));
}

}  // namespace

void Lookup::Txt_CodOrgChg_Change() {
  const std::string code = context_.screen.bar.Txt_CodOrgChg.text();
  if (text::length(code) != kLongueurCode) return;
  const auto succeeds = [this](std::string_view procedure, const std::function<void()>& deed) {
    return screen::quietly(context_.session, procedure,
                           [&] { screen::signalerEchec(context_.desktop, deed); });
  };
  if (!succeeds("Txt_CodOrgChg_Change", [&] { lire(code); })) {
    garderSaisie(code);
    return;
  }
  if (!context_.session.RecOrgChg) {
    screen::informer(context_.desktop, "Cet organisme de prise en charge n'existe pas.");
    view_.Vider_Donnees();
    return;
  }
  // A record shown in part must not be saved.
  if (!succeeds("Afficher_Donnees", [&] { montrer(); })) {
    abandonner();
    return;
  }
  // The next code is typed over this one.
  selectionner(context_.screen.bar.Txt_CodOrgChg);
}

void Lookup::abandonner() {
  const std::string code = context_.screen.bar.Txt_CodOrgChg.text();
  view_.Vider_Donnees();
  garderSaisie(code);
}

void Lookup::lire(const std::string& code) {
  screen::EditSession& session = context_.session;
  session.prendre(code, session.files.orgPriseCharge->ReadRecord(code));
}

void Lookup::montrer() {
  view_.Afficher_Donnees();
  context_.session.imageNormalisee = view_.texteEcrit();
}

void Lookup::garderSaisie(const std::string& code) {
  const screen::Quiet quiet(context_.session);
  context_.screen.bar.Txt_CodOrgChg.setText(code);
  selectionner(context_.screen.bar.Txt_CodOrgChg);
}

void Lookup::Txt_CodOrgChg_KeyPress(char32_t& key) {
  screen::filtrerRecherche(context_.desktop, key);
}

void Lookup::Txt_CodOrgChg_GotFocus() { selectionner(context_.screen.bar.Txt_CodOrgChg); }

void Lookup::Txt_CodOrgChg_LostFocus() { view_.montrerCode(); }

}  // namespace control
