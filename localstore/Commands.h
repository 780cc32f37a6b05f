// The store commands, one an attribute of a request.
#pragma once

#include <string_view>

#include "localstore/Catalogue.h"

namespace localstore {

// Runs one command. Throws StoreError (kBadSentence) for one that this store does not know or whose
// arguments it refuses, and whatever the command itself throws.
void runCommand(Connection& connection, Catalogue& catalogue, std::string_view command);

}  // namespace localstore
