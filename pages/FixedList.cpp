#include "pages/FixedList.h"

#include "screen/Messages.h"

namespace pages {

bool ExisteDansListe(const toolkit::ComboBox& combo) {
  return combo.items().find(combo.text()) >= 0;
}

void quitterListeFixe(toolkit::Desktop& desktop, toolkit::ComboBox& combo,
                      std::optional<std::string_view> message) {
  if (combo.text().empty() || ExisteDansListe(combo)) return;
  if (message) screen::avertir(desktop, *message);
  combo.setListIndex(-1);
  combo.setText("");
  combo.setFocus();
}

}  // namespace pages
