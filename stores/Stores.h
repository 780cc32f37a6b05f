// Any store by its address: the path of a file (UTF-8), or "odbc:" and a connection string of ODBC
// for one on a server.
#pragma once

#include <memory>
#include <string>

#include "multivalue/Database.h"
#include "multivalue/Faults.h"

namespace stores {

// Is it on a server?
bool isShared(const std::string& address);

// All throw StoreError (kIoFailure) for an address without a store, and for one that cannot be
// reached. readOnly: writes are kIoFailure; for media that cannot be written.
std::shared_ptr<multivalue::Database> open(const std::string& address, bool readOnly = false);
// A new store with the files that the system opens. Throws StoreError (kIoFailure) where there is
// one already.
std::shared_ptr<multivalue::Database> create(const std::string& address);
multivalue::Checked check(const std::string& address, bool readOnly = false);

}  // namespace stores
