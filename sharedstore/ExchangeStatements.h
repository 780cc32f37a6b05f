// The statements that put records' texts in the place of others, with the index entries.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "multivalue/Engine.h"
#include "sharedstore/Odbc.h"

namespace sharedstore {

// Throws StoreError (kBadValue) for a key that no index of the server's takes.
void requireKey(std::string_view id);

// Of one record, with its index entries.
struct Exchange {
  // Ends with "done", a row where the record was as it had to be; with the entries that go, and
  // those that come where none goes: engines that spread a table over machines change it once in a
  // statement.
  Sql record;
  // What comes where others go; each a statement of its own, once the first has been done.
  std::vector<Sql> additions;
};

// Throws what requireKey throws.
Exchange exchangeStatements(const multivalue::FileDescription& file, std::string_view id,
                            std::optional<std::string_view> before,
                            std::optional<std::string_view> after);

// Of many records: texts in the place of others, and texts where there are none. Both end with
// "done", a row for each that was as it had to be.
Sql updated(const multivalue::FileDescription& file,
            const std::vector<const multivalue::Replacement*>& some);
Sql inserted(const multivalue::FileDescription& file,
             const std::vector<const multivalue::Replacement*>& some);
// What becomes of their index entries, a statement each.
std::vector<Sql> entryStatements(const multivalue::FileDescription& file,
                                 const std::vector<const multivalue::Replacement*>& some);

}  // namespace sharedstore
