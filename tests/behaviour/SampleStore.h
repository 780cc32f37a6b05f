// The sample that the demo's store is made from, in a store in memory.
#pragma once

#include "tests/support/MemoryStore.h"

namespace behaviour {

// Puts the sample's records of all files that the control reads into the store.
void fillFromSample(testing_support::MemoryStore& store);

}  // namespace behaviour
