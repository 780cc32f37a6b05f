// The dated reimbursement rates of the coverage page, most recent first (attributes 25 to 28).
#pragma once

#include <cstdint>

#include "pages/Columns.h"
#include "pages/ListEditor.h"
#include "screen/Handlers.h"

namespace pages {

// What is confirmed is applied to the record in hand at once, and the lists show it.
class RateEditor {
 public:
  explicit RateEditor(PageContext context);

  void lier(const screen::Handlers& handlers);

  void afficher(const store::DynamicArray& record);
  // The lists are the source: up to the first row without a date.
  void ecrire(store::DynamicArray& record) const;
  // List mode.
  void fermer();
  // The same, and no row.
  void vider();

  void MasquerZonesTaux();     // enters edit mode
  void AfficherZonesTaux();    // leaves it, and empties the zones
  void Tri2();                 // orders record and lists; rows of one day keep their order
  void DoubleClickTauxRemb();  // the selected row, when it may be changed
  // The row in the zones enters the lists before the row at `indice` (0-based; the count of rows
  // appends it). std::invalid_argument past the end, and without a date in its zone: lists end at
  // the first row without one.
  void AjoutLists(std::int16_t& indice);
  void EffaceEltLists();  // the selected row leaves the lists

 private:
  void Cmd_AjoutTaux_Click();
  void Cmd_OKTaux_Click();
  void Cmd_AnnulerTaux_Click();
  void Cmd_SuppTaux_Click();
  void Txt_DateRembOrgChg_KeyPress(char32_t& key);
  void Txt_DateRembOrgChg_LostFocus();

  bool saisieAcceptee();
  bool datesAcceptees(long day);
  void poser(int row);
  store::DynamicArray& record();

  PageContext context_;
  screen::PriseEnCharge& prise_;
  ListEditor editor_;
  ColonnesMontrees colonnes_;
};

}  // namespace pages
