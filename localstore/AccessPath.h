// The ways into a file's records that spare reading them all: a key, a range of keys, an index
// entry, a range of an index.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "localstore/Catalogue.h"
#include "localstore/Comparison.h"

namespace localstore {

// A field of a sentence, looked up: an attribute number, 0 for the key.
struct Test {
  int attribute = 0;
  Criterion criterion;
};

struct AccessPath {
  int attribute = 0;  // 0: the key
  std::string low;
  // The first text past the range; none when nothing is past it. Not used when exact.
  std::optional<std::string> high;
  bool exact = false;

  // The condition on a column, with parameters ?1 (low) and ?2 (high).
  std::string condition(std::string_view column) const;
  void bind(Query& query) const;
};

// The first text, byte by byte, that does not begin with the prefix and comes after those that do.
std::optional<std::string> endOfPrefix(std::string prefix);

// The path into the fewest entries among those that the tests offer; none when they offer none.
// Found by counting a bounded number of entries in each, so that asking costs no more than a
// fraction of going through the narrowest.
std::optional<AccessPath> narrowestPath(Connection& connection, const FileDescription& file,
                                        const std::vector<Test>& tests);

}  // namespace localstore
