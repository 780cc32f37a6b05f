#pragma once

#include <string>

#include "control/Context.h"
#include "control/RecordView.h"

namespace control {

// The list of Cbo_SigleOrgChg: list entry n stands for attribute n + 1 of the acronym search's
// answer when there is one, otherwise of the answer kept here.
class AcronymList {
 public:
  AcronymList(Context& context, RecordView& view) : context_(context), view_(view) {}

  // Selects all bodies and lists their acronyms. An only body is loaded, unless a record is in
  // hand. When the store fails, list and answers are left empty.
  void Remplir_OrgPriseChg();
  // The same without loading an only body.
  void lister();

  // Brings the full list back from the kept answer; the text in the combo stays.
  void montrerListeComplete();
  // Lists an answer; the text is cleared.
  void montrer(const store::DynamicArray& answer);
  // Looks that code up, unless its body is in hand.
  void charger(const std::string& code);

 private:
  Context& context_;
  RecordView& view_;
};

}  // namespace control
