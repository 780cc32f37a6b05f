#pragma once

#include <string>

#include "store/Database.h"

namespace store {

inline constexpr const char* kCounterRecord = "999";

// The next funding-body code: reads the counter record again, adds one to attribute 10, value 1
// (empty counts as "000"), pads it to three characters, writes the record and gives the code back.
// Throws StoreError (kBadValue) when the counter holds no number, or past "999": a code of four
// characters could never be looked up.
std::string nextCode(File& counters);

}  // namespace store
