#include "agreements/History.h"

#include "store/Amounts.h"
#include "store/Layouts.h"

namespace agreements {

int positionEnVigueur(const store::DynamicArray& accord, long jour) {
  const int count = accord.DCount(store::accord::DatePartAcc);
  for (int j = 1; j <= count; ++j) {
    if (store::wholeNumber(accord.get(store::accord::DatePartAcc, j)) <= jour) return j;
  }
  return count;
}

}  // namespace agreements
