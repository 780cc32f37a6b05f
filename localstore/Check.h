// Is a store whole?
#pragma once

#include <string>

#include "multivalue/Faults.h"

namespace localstore {

class SqliteEngine;

using multivalue::Checked;
using multivalue::kMostFaults;

// Looks at the file itself, at every record, and at every index beside the records, all in one
// state of the store; others may use it meanwhile. A path is UTF-8; readOnly: as Options::readOnly.
// Throws StoreError for what cannot be opened as a store at all.
Checked checkLocalDatabase(const std::string& path, bool readOnly = false);
Checked checkEngine(SqliteEngine& engine);

}  // namespace localstore
