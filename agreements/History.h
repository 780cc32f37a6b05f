#pragma once

#include "store/DynamicArray.h"

namespace agreements {

// The position in the history of an ACCORD record (attributes 10 to 13, most recent first) that is
// in force on that day: the first whose date is not later; the last one when all dates are later.
// 0 of an empty history.
int positionEnVigueur(const store::DynamicArray& accord, long jour);

}  // namespace agreements
