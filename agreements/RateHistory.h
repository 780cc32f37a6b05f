#pragma once

#include "store/DynamicArray.h"

namespace agreements {

// The position, from 1, of the row of an agreement's history that applies on a day: the first whose
// date is not later; the last when all are later. 0 without any history.
int positionAuJour(const store::DynamicArray& accord, long jour);

}  // namespace agreements
