#pragma once

#include <string>

#include "control/Context.h"
#include "control/RecordView.h"

namespace control {

// Look-up by code.
class Lookup {
 public:
  Lookup(Context& context, RecordView& view) : context_(context), view_(view) {}

  // The third character reads and shows the record; the code is selected then. Errors are trapped,
  // and the code stays as typed: a failing read leaves the record in hand with all that is on
  // screen; one that cannot be shown leaves nothing in hand.
  void Txt_CodOrgChg_Change();
  void Txt_CodOrgChg_KeyPress(char32_t& key);
  void Txt_CodOrgChg_GotFocus();
  // While a record is in hand, its code comes back.
  void Txt_CodOrgChg_LostFocus();

  // Clears the screen and lets go of the record, which could be shown in part only. The code stays
  // as it stands there.
  void abandonner();

 private:
  // Takes the record in hand instead of the one before; of an empty one, nothing.
  void lire(const std::string& code);
  void montrer();
  void garderSaisie(const std::string& code);

  Context& context_;
  RecordView& view_;
};

}  // namespace control
