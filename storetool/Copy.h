// A store's records carried into another store, whatever keeps either.
#pragma once

#include <string>
#include <vector>

#include "multivalue/Database.h"
#include "storetool/Transfer.h"

namespace storetool {

struct Copied {
  long long records = 0;
  // Files that both hold differently once all was copied: somebody has written meanwhile, or what
  // was written does not come back.
  std::vector<std::string> unlike;
};

// Copies all files, each as it is at one moment, in one transaction, and then reads both stores to
// their end. Throws StoreError: kBadValue when the target holds a record already, and whatever a
// read or write throws; then nothing has been copied.
Copied copyStore(multivalue::Database& from, multivalue::Database& to,
                 const ProgressListener& listener);

}  // namespace storetool
