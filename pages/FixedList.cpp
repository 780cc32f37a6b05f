#include "pages/FixedList.h"

#include "screen/Messages.h"

namespace pages {

bool ExisteDansListe(const toolkit::ComboBox& combo) {
  return combo.items().find(combo.text()) >= 0;
}

void quitterListeFixe(toolkit::Desktop& desktop, toolkit::ComboBox& combo,
                      std::string_view message) {
  if (combo.text().empty() || ExisteDansListe(combo)) return;
  screen::avertir(desktop, message);
  combo.setListIndex(-1);
  combo.setText("");
  combo.setFocus();
}

void quitterListeFixe(toolkit::ComboBox& combo) {
  if (ExisteDansListe(combo)) return;
  combo.setListIndex(-1);
  combo.setText("");
}

}  // namespace pages
