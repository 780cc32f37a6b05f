#include "pages/MovedLines.h"

namespace pages {

bool Est_DansListe(std::string_view text, const toolkit::ListBox& list) {
  return list.items().find(text) >= 0;
}

void ajouterSelection(toolkit::ListBox& possible, toolkit::ListBox& chosen) {
  if (!possible.enabled()) return;
  for (const int line : possible.selectedLines()) {
    if (!Est_DansListe(possible.list(line), chosen)) {
      chosen.addItem(possible.list(line), possible.itemData(line));
    }
  }
  possible.selectNone();
}

void retirerSelection(toolkit::ListBox& list) {
  if (list.enabled()) list.removeSelected();
}

}  // namespace pages
