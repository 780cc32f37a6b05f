#pragma once

#include "control/Context.h"

namespace control {

// The record in hand on all pages, which are run in tab order from here alone.
class RecordView {
 public:
  explicit RecordView(Context& context) : context_(context) {}

  // Shows the record in hand, or clears the pages when there is none, and the state that goes with
  // it. To who could only read before, as the rights allow now.
  void Afficher_Donnees();

  // Clears the screen, code and acronym included, and lets go of the record in hand: the Empty
  // state.
  void Vider_Donnees();

  // Ecrire_Ong1 to Ecrire_Ong6 into the record in hand; stops at the first page that sets its
  // error flag. True when all pages have been written; the record is then no longer than it was
  // read but for what has been filled.
  bool ecrirePages();

  bool pageRefusee() const;  // is one of the six flags set
  void effacerErreurs();

  // The record's full text as the write procedures would leave it now; the record stays as it is.
  std::string texteEcrit();

  // The scale flags and the caption of the new-scale button.
  void effacerBareme();

  // Cbo_SigleOrgChg shows the acronym of the record in hand; without one it is left as it is.
  void montrerSigle();
  // The same of Txt_CodOrgChg and its code.
  void montrerCode();

 private:
  void oublierAccords();

  Context& context_;
};

}  // namespace control
