// A store in one file, for machines without a store server.
#pragma once

#include <memory>
#include <string>

#include "multivalue/Database.h"

namespace localstore {

using LocalDatabase = multivalue::Database;
using Transaction = multivalue::Transaction;

struct Options {
  // How long a write waits for another process's before it fails with kBusy; milliseconds.
  int busyTimeout = 5000;
  // How much of the file is held in memory at most; KiB.
  int cacheSize = 64 * 1024;
  // Most pages (of 4096 bytes) the file may take, 0 for as many as the disk holds. A write past it
  // fails like one on a full disk.
  long maxPages = 0;
  // For what is only read: a store on a medium or in a folder that cannot be written, or on a full
  // disk. A write then is kIoFailure.
  bool readOnly = false;
};

// Paths are UTF-8. Both throw StoreError (kIoFailure): for a path that holds no store, for one that
// is taken already, and for one on another machine's disk, unless it is only to be read.
std::shared_ptr<LocalDatabase> openLocalDatabase(const std::string& path,
                                                 const Options& options = {});
// A new store with the files that the system opens, all empty. One that cannot be made whole leaves
// nothing.
std::shared_ptr<LocalDatabase> createLocalDatabase(const std::string& path,
                                                   const Options& options = {});

}  // namespace localstore
