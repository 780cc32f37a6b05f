// Is a store whole?
#pragma once

#include <string>
#include <vector>

namespace localstore {

class SqliteEngine;

struct Checked {
  long long records = 0;
  // A line each, at most kMostFaults.
  std::vector<std::string> faults;
};

inline constexpr std::size_t kMostFaults = 100;

// Looks at the file itself, at every record, and at every index beside the records, all in one
// state of the store; others may use it meanwhile. A path is UTF-8; readOnly: as Options::readOnly.
// Throws StoreError for what cannot be opened as a store at all.
Checked checkLocalDatabase(const std::string& path, bool readOnly = false);
Checked checkEngine(SqliteEngine& engine);

}  // namespace localstore
