#pragma once

#include <memory>
#include <string>

#include "control/AcronymList.h"
#include "control/Context.h"
#include "control/RecordView.h"

namespace control {

// The save of a new and of an existing body.
class Save {
 public:
  Save(Context& context, RecordView& view, AcronymList& list)
      : context_(context), view_(view), list_(list) {}

  // Saves with all checks. An error counts as a refusal: screen and record in hand stay.
  void Cmd_OK_Click();

  // Saves the record being created under the next code, unless a page refuses; then clears the
  // screen and refills the acronym list. When no code can be given out a box tells it, and nothing
  // is written. Store errors before the write leave everything in hand.
  // Both this and Ecrire_Donnees ask after the write whether a new scale is to be carried into the
  // agreements; what fails there is trapped. Both read the rights again right before the write:
  // AccessDenied.
  void Creer_Donnees();
  // Saves the record in hand, unless a page refuses; then clears the screen. When it fails, the
  // record in hand is as before.
  void Ecrire_Donnees();

 private:
  // Each is false when nothing has been written and the user has been told why.
  bool enregistrer();
  bool creer();
  // DBWrite; where the store does not know whether it has written, what it holds tells, at once or
  // when the save is tried again.
  void ecrireFiche();
  void ecrireCreation(const std::string& code);
  void proposerPropagation();
  std::unique_ptr<store::Record> ficheDuNouveauCode(std::string& code);
  std::unique_ptr<store::Record> prochaineFicheLibre(std::string& code);
  std::unique_ptr<store::Record> fichePerdue(std::string& code);

  Context& context_;
  RecordView& view_;
  AcronymList& list_;
};

}  // namespace control
