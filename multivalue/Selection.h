// A selection: the sentence with its names looked up, and its execution.
#pragma once

#include <memory>
#include <string_view>

#include "multivalue/Catalogue.h"
#include "store/DynamicArray.h"

namespace multivalue {

// Runs a sentence on a file for the columns asked ("0 1"; numbers, dictionary names or @ID; none:
// the key). `file` is the request's own, empty when it names none. Reads only, in one state of the
// store. Throws StoreError (kBadSentence, kUnknownFile).
store::DynamicArray runSelection(Engine& engine, Catalogue& catalogue, std::string_view sentence,
                                 std::string_view file, std::string_view columns);

}  // namespace multivalue
