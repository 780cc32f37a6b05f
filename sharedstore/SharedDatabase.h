// A store on a database server, for several machines.
#pragma once

#include <memory>
#include <string>

#include "multivalue/Database.h"
#include "multivalue/Faults.h"

namespace sharedstore {

struct Options {
  // How long a write waits for another client's before it fails with kBusy; milliseconds.
  int busyTimeout = 5000;
  // For what is only read: a write then is kIoFailure.
  bool readOnly = false;
};

// A connection string of ODBC, as connectionOf (Address.h) gives it. Both throw StoreError
// (kIoFailure) when the server cannot be reached, or has no store there; or has one already.
std::shared_ptr<multivalue::Database> openSharedDatabase(const std::string& connection,
                                                         const Options& options = {});
// A new store with the files that the system opens, all empty: all of it or nothing.
std::shared_ptr<multivalue::Database> createSharedDatabase(const std::string& connection,
                                                           const Options& options = {});

// Looks at every record, and at every index beside the records, all in one state of the store;
// others may use it meanwhile.
multivalue::Checked checkSharedDatabase(const std::string& connection);

}  // namespace sharedstore
