#pragma once

#include <string>

#include "control/Context.h"
#include "control/RecordView.h"

namespace control {

// Look-up by code.
class Lookup {
 public:
  Lookup(Context& context, RecordView& view) : context_(context), view_(view) {}

  // The third character reads and shows the record. Store errors are trapped: nothing is then in
  // hand, and the code stays as typed.
  void Txt_CodOrgChg_Change();
  void Txt_CodOrgChg_KeyPress(char32_t& key);
  void Txt_CodOrgChg_GotFocus();
  // While a record is in hand, its code comes back.
  void Txt_CodOrgChg_LostFocus();

 private:
  // Takes the record in hand, unless it is empty.
  void lire(const std::string& code);
  void montrer();
  void abandonner(const std::string& code);

  Context& context_;
  RecordView& view_;
};

}  // namespace control
