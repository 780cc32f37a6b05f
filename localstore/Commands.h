// The store commands, one an attribute of a request.
#pragma once

#include <string_view>

namespace localstore {

// Runs one command. Throws StoreError (kBadSentence) for one that this store does not know.
void runCommand(std::string_view command);

}  // namespace localstore
