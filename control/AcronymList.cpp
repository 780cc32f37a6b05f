#include "control/AcronymList.h"

#include <utility>
#include <vector>

#include "store/Layouts.h"
#include "store/Request.h"

namespace control {

void AcronymList::Remplir_OrgPriseChg() {
  lister();
  const store::DynamicArray& all = context_.session.organismes;
  const bool only = all.DCount() == 1 && !all.get(1, 2).empty();
  if (!only || context_.session.RecOrgChg || context_.session.EnCreation) return;
  charger(std::string(all.get(1, 1)));
}

void AcronymList::charger(const std::string& code) {
  toolkit::TextBox& field = context_.screen.bar.Txt_CodOrgChg;
  // The code may stand there without its record: typed, but not read.
  if (field.text() == code && context_.session.codeEnMain != code) field.setText("");
  field.setText(code);
}

void AcronymList::lister() {
  screen::EditSession& session = context_.session;
  session.organismes = store::NewDynamicArray();
  session.rechercheSigle = store::NewDynamicArray();
  montrer(session.organismes);
  session.organismes = store::select(*session.TheDatabase, "SSELECT ORGPRISECHARGE PAR 1",
                                     store::orgprisecharge::kFile, "0 1");
  montrer(session.organismes);
  view_.montrerSigle();
}

void AcronymList::montrerListeComplete() {
  screen::EditSession& session = context_.session;
  if (session.rechercheSigle.empty()) return;
  session.rechercheSigle = store::NewDynamicArray();
  const std::string typed = context_.screen.bar.Cbo_SigleOrgChg.text();
  montrer(session.organismes);
  const screen::Quiet quiet(session);
  context_.screen.bar.Cbo_SigleOrgChg.setText(typed);
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
