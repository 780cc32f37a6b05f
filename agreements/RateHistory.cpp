#include "agreements/RateHistory.h"

#include "store/Conversions.h"
#include "store/Layouts.h"

namespace agreements {

int positionAuJour(const store::DynamicArray& accord, long jour) {
  const int positions = accord.DCount(store::accord::DatePartAcc);
  for (int position = 1; position <= positions; ++position) {
    if (store::wholeNumber(accord.get(store::accord::DatePartAcc, position)) <= jour) {
      return position;
    }
  }
  return positions;
}

}  // namespace agreements
