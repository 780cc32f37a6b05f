#include "control/AcronymSearch.h"

#include <string>
#include <utility>

#include "screen/Messages.h"
#include "screen/StoreTrap.h"
#include "store/Layouts.h"
#include "store/Request.h"
#include "text/Utf8.h"
#include "toolkit/Keys.h"

namespace control {

void AcronymSearch::Cbo_SigleOrgChg_KeyPress(char32_t& key) {
  if (key != toolkit::kEnter) {
    screen::filtrerRecherche(context_.desktop, key);
    return;
  }
  // A search that fails leaves no earlier answer behind, and the text as typed.
  const bool found = screen::quietly(context_.session, "Cbo_SigleOrgChg_KeyPress", [this] {
    screen::signalerEchec(context_.desktop, [this] { chercher(); });
  });
  if (!found) list_.montrerListeComplete();
}

void AcronymSearch::chercher() {
  toolkit::ComboBox& combo = context_.screen.bar.Cbo_SigleOrgChg;
  const std::string typed = combo.text();
  const std::string sigle = text::upper(typed);
  store::DynamicArray found =
      store::select(*context_.session.TheDatabase,
                    "SSELECT ORGPRISECHARGE AVEC SigleOrgChg = " + store::quotedPrefix(sigle) +
                        " PAR SigleOrgChg",
                    store::orgprisecharge::kFile, "0 1");
  if (!store::anySelected(found)) {
    list_.montrerListeComplete();
    screen::avertir(context_.desktop, "Aucun organisme de prise en charge commençant par " + sigle);
    return;
  }
  list_.montrerTrouves(std::move(found));
  context_.screen.bar.Txt_CodOrgChg.setText("");
  if (combo.listCount() == 1) return;
  {
    const screen::Quiet quiet(context_.session);
    combo.setText(typed);
  }
  combo.openList();
}

void AcronymSearch::Cbo_SigleOrgChg_Click() {
  const int line = context_.screen.bar.Cbo_SigleOrgChg.listIndex();
  if (line >= 0) list_.charger(list_.codeDeLigne(line));
}

void AcronymSearch::Cbo_SigleOrgChg_LostFocus() {
  view_.montrerSigle();
  view_.montrerCode();
}

void AcronymSearch::Txt_SigleOrgChg_KeyPress(char32_t& key) {
  screen::filtrerRecherche(context_.desktop, key);
  key = text::upper(key);
}

void AcronymSearch::Txt_SigleOrgChg_Change() {
  toolkit::TextBox& field = context_.screen.bar.Txt_SigleOrgChg;
  const std::string capitals = text::upper(field.text());
  if (capitals == field.text()) return;
  const int caret = field.selectionStart();
  field.setText(capitals);
  field.select(caret, 0);
}

}  // namespace control
