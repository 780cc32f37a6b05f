// The sample that the demo's store is made from, in a store in memory.
#pragma once

#include "tests/support/MemoryStore.h"

namespace behaviour {

// Puts the bodies of the sample into the store, with all that showing and saving them reads. Left
// out are the agreements: there are many, and no body is kept from any change.
void fillFromSample(testing_support::MemoryStore& store);

}  // namespace behaviour
