// A record written to the end, over a connection too that may be lost.
#pragma once

#include <string_view>

#include "store/Database.h"

namespace store {

// Is that what the file holds? False as well where it cannot be read.
bool isStored(File& file, std::string_view id, const DynamicArray& fields);

// DBWrite; where the store does not know whether it has written (kOutcomeUnknown), what it holds
// tells: throws the failure when that is something else.
void write(File& file, std::string_view id, Record& record);

}  // namespace store
