// The slip parameters page: what start-up fills.
#pragma once

#include "pages/Page.h"

namespace pages {

class Ong5 {
 public:
  explicit Ong5(PageContext context);

  // The possible parameters by label, each with its identifier as item data, and their printed
  // widths in the hidden list. Throws what the store throws; the lists are then empty.
  void Remplir_ParamsPoss();

 private:
  PageContext context_;
};

}  // namespace pages
