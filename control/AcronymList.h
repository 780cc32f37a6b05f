#pragma once

#include <string>

#include "control/Context.h"
#include "control/RecordView.h"
#include "store/DynamicArray.h"

namespace control {

// The list of Cbo_SigleOrgChg, and the answers behind its lines: that of all bodies, and that of
// the last search while it is listed.
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
  // Lists what a search has found, columns "0 1"; the text is cleared.
  void montrerTrouves(store::DynamicArray answer);
  // The code of the body that a line of the list stands for.
  std::string codeDeLigne(int line) const;
  // Looks that code up, unless its body is in hand.
  void charger(const std::string& code);
  // Forgets lines and answers.
  void oublier();

 private:
  void montrer(const store::DynamicArray& answer);

  Context& context_;
  RecordView& view_;
  // Columns "0 1": attribute n + 1 belongs to line n. Of the search, empty while all are listed.
  store::DynamicArray organismes_;
  store::DynamicArray rechercheSigle_;
};

}  // namespace control
