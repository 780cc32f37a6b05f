#include "pages/MovedLines.h"

namespace pages {

bool Est_DansListe(std::string_view text, const toolkit::ListBox& list) {
  return list.items().find(text) >= 0;
}

void ajouterSelection(toolkit::ListBox& possible, toolkit::ListBox& chosen) {
  if (!possible.enabled()) return;
  for (int line = 0; line < possible.listCount(); ++line) {
    if (!possible.selected(line)) continue;
    if (!Est_DansListe(possible.list(line), chosen)) {
      chosen.addItem(possible.list(line), possible.itemData(line));
    }
    possible.setSelected(line, false);
  }
}

void deselectionner(toolkit::ListBox& list) {
  for (int line = 0; line < list.listCount(); ++line) list.setSelected(line, false);
}

void retirerSelection(toolkit::ListBox& list) {
  if (!list.enabled()) return;
  int line = 0;
  while (line < list.listCount()) {
    if (list.selected(line)) {
      list.removeItem(line);
    } else {
      ++line;
    }
  }
}

}  // namespace pages
