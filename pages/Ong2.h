// The management rules page: what start-up fills.
#pragma once

#include "pages/Page.h"

namespace pages {

class Ong2 {
 public:
  explicit Ong2(PageContext context);

  // The labels of the code tables, in table order.
  void Remplir_PiecesPoss();
  void Remplir_StatOrgChg();

 private:
  PageContext context_;
};

}  // namespace pages
