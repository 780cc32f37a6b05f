#include "control/AcronymList.h"

#include <utility>
#include <vector>

#include "store/Layouts.h"
#include "store/Request.h"

namespace control {

void AcronymList::Remplir_OrgPriseChg() {
  lister();
  const store::DynamicArray& all = organismes_;
  const bool only = all.DCount() == 1 && !all.get(1, 2).empty();
  if (!only || context_.session.RecOrgChg || context_.session.EnCreation) return;
  charger(std::string(all.get(1, 1)));
}

void AcronymList::charger(const std::string& code) {
  // What the user has changed in the body in hand stays.
  if (code == context_.session.codeEnMain) {
    view_.montrerCode();
    view_.montrerSigle();
    return;
  }
  toolkit::TextBox& field = context_.screen.bar.Txt_CodOrgChg;
  // The code may stand there without its record: typed, but not read.
  if (field.text() == code) field.setText("");
  field.setText(code);
}

void AcronymList::lister() {
  oublier();
  organismes_ = store::select(*context_.session.TheDatabase, "SSELECT ORGPRISECHARGE PAR 1",
                              store::orgprisecharge::kFile, "0 1");
  montrer(organismes_);
  view_.montrerSigle();
}

void AcronymList::montrerListeComplete() {
  if (rechercheSigle_.empty()) return;
  rechercheSigle_ = store::NewDynamicArray();
  const std::string typed = context_.screen.bar.Cbo_SigleOrgChg.text();
  montrer(organismes_);
  const screen::Quiet quiet(context_.session);
  context_.screen.bar.Cbo_SigleOrgChg.setText(typed);
}

void AcronymList::montrerTrouves(store::DynamicArray answer) {
  rechercheSigle_ = std::move(answer);
  montrer(rechercheSigle_);
}

std::string AcronymList::codeDeLigne(int line) const {
  const store::DynamicArray& answer = rechercheSigle_.empty() ? organismes_ : rechercheSigle_;
  return std::string(answer.get(line + 1, 1));
}

void AcronymList::oublier() {
  organismes_ = store::NewDynamicArray();
  rechercheSigle_ = store::NewDynamicArray();
  montrer(organismes_);
}

void AcronymList::montrer(const store::DynamicArray& answer) {
  std::vector<toolkit::ListItem> lines;
  if (store::anySelected(answer)) {
    const int count = answer.DCount();
    lines.reserve(static_cast<std::size_t>(count));
    for (int i = 1; i <= count; ++i) lines.push_back({std::string(answer.get(i, 2)), 0});
  }
  const screen::Quiet quiet(context_.session);
  context_.screen.bar.Cbo_SigleOrgChg.setItems(std::move(lines));
}

}  // namespace control
