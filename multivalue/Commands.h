// The store commands, one an attribute of a request.
#pragma once

#include <string_view>

#include "multivalue/Catalogue.h"

namespace multivalue {

// Runs one command. Throws StoreError (kBadSentence) for one that this store does not know or whose
// arguments it refuses, and whatever the command itself throws.
void runCommand(Engine& engine, Catalogue& catalogue, std::string_view command);

}  // namespace multivalue
