// The hour-range deductions of the coverage page, by start hour (attributes 29 to 31).
#pragma once

#include "pages/Columns.h"
#include "pages/ListEditor.h"
#include "screen/Handlers.h"

namespace pages {

// What is confirmed is applied to the record in hand at once, and the lists show it.
class DeductionEditor {
 public:
  explicit DeductionEditor(PageContext context);

  void lier(const screen::Handlers& handlers);

  void afficher(const store::DynamicArray& record);
  // The lists are the source: up to the first row without a start.
  void ecrire(store::DynamicArray& record) const;
  // Takes the deductions out of the record; the lists stay.
  static void effacer(store::DynamicArray& record);
  // List mode.
  void fermer();
  // The same, and no row.
  void vider();

  void MasquerZonesAbat();   // enters edit mode
  void AfficherZonesAbat();  // leaves it, and empties the zones
  void TriAbat();            // orders record and lists; rows of one start keep their order
  void DoubleClickAbat();    // the selected row

 private:
  void Cmd_AjoutAbat_Click();
  void Cmd_OKAbat_Click();
  void Cmd_AnnulerAbat_Click();
  void Cmd_SuppAbat_Click();

  bool saisieAcceptee();
  bool sansChevauchement();
  void reprendre();
  void poser(int row);
  store::DynamicArray& record();

  PageContext context_;
  screen::PriseEnCharge& prise_;
  ListEditor editor_;
  ColonnesMontrees colonnes_;
};

}  // namespace pages
