#pragma once

#include "control/AcronymList.h"
#include "control/Context.h"

namespace control {

// Look-up by acronym, and the acronym's entry field.
class AcronymSearch {
 public:
  AcronymSearch(Context& context, AcronymList& list, RecordView& view)
      : context_(context), list_(list), view_(view) {}

  // Enter searches the bodies whose acronym begins with the text.
  void Cbo_SigleOrgChg_KeyPress(char32_t& key);
  // Loads the body that the chosen line stands for.
  void Cbo_SigleOrgChg_Click();
  // While a record is in hand, its acronym and its code come back.
  void Cbo_SigleOrgChg_LostFocus();

  // The search looks for capitals and takes no accents: letters typed or pasted become capitals,
  // and the keys that it refuses are refused here too.
  void Txt_SigleOrgChg_KeyPress(char32_t& key);
  void Txt_SigleOrgChg_Change();

 private:
  void chercher();

  Context& context_;
  AcronymList& list_;
  RecordView& view_;
};

}  // namespace control
