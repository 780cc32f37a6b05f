// The tables of a store, and the statements that select from them.
#pragma once

#include <string>
#include <string_view>

#include "multivalue/Engine.h"
#include "sharedstore/Odbc.h"

namespace sharedstore {

// As statements name them.
std::string recordTable(std::string_view file);
std::string indexTable(std::string_view file, int attribute);

// Columns: the key and the record (empty where keys alone are wanted, cut where its beginning is);
// of an index the key, the entry, 1 when it is the first value's, and the record where the entry is
// not, or is a beginning that may go on. What cannot be said in the statement is left to the
// caller: a test may let more through than it should, never less.
Sql scanStatement(const multivalue::Scan& scan);

}  // namespace sharedstore
