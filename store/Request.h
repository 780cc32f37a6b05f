// Selections: sentences are built by concatenation, every literal value between double quotes.
#pragma once

#include <string>
#include <string_view>

#include "store/Database.h"

namespace store {

// Between double quote characters, as it stands: a double quote inside is not escaped.
std::string quoted(std::string_view value);
// The same with the begins-with mark: "text]".
std::string quotedPrefix(std::string_view value);

// The request's full text: attribute 1 the sentence, 2 the file, 3 the columns ("0 1").
std::string request(std::string_view sentence, std::string_view file, std::string_view columns);

// Runs a selection.
DynamicArray select(Database& database, std::string_view sentence, std::string_view file,
                    std::string_view columns);

// Has a selection found anything?
bool anySelected(const DynamicArray& answer);

// An answer turned over: attribute c holds column c of all records, value by value.
DynamicArray turnedOver(const DynamicArray& answer);

}  // namespace store
