// A store in one file, for machines without a store server.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "store/Database.h"

namespace localstore {

struct Options {
  // How long a write waits for another process's before it fails with kBusy; milliseconds.
  int busyTimeout = 5000;
  // How much of the file is held in memory at most; KiB.
  int cacheSize = 64 * 1024;
  // Most pages (of 4096 bytes) the file may take, 0 for as many as the disk holds. A write past it
  // fails like one on a full disk.
  long maxPages = 0;
};

// Writes between its making and commit() are kept together or not at all; without commit() they are
// undone when it goes. One at a time; the database must outlive it.
class Transaction {
 public:
  Transaction() = default;
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  virtual ~Transaction() = default;

  virtual void commit() = 0;
};

// Every call throws StoreError when the store refuses it: kUnknownFile, kBadSentence, kBadValue
// (an empty identifier, or one with a mark), kBusy, kIoFailure (disk full, no store, damaged,
// read-only). What DBWrite, DeleteRecord and Transaction::commit have done when they return
// survives a killed process and a cut of power. Files and records may outlive the database object.
// Not to be used after a fork by the child.
class LocalDatabase : public store::Database {
 public:
  using Visitor = std::function<void(std::string_view id, std::string_view record)>;

  // Sorted by name.
  virtual std::vector<std::string> fileNames() = 0;
  // Nothing happens when it exists. A name that the system knows brings its dictionary and indexes.
  virtual void createFile(std::string_view name) = 0;
  // The dictionary's name of an attribute, "" when it has none.
  virtual std::string fieldName(std::string_view file, int attribute) = 0;

  virtual std::unique_ptr<Transaction> begin() = 0;
  // Creates or replaces a record from its full text.
  virtual void write(std::string_view file, std::string_view id, std::string_view record) = 0;
  virtual long long recordCount(std::string_view file) = 0;
  // In the order of the keys. The views live until the visitor returns.
  virtual void forEachRecord(std::string_view file, const Visitor& visitor) = 0;
};

// Paths are UTF-8. Both throw StoreError (kIoFailure): for a path that holds no store, and for one
// that is taken already.
std::shared_ptr<LocalDatabase> openLocalDatabase(const std::string& path,
                                                 const Options& options = {});
// A new store with the files that the system opens, all empty.
std::shared_ptr<LocalDatabase> createLocalDatabase(const std::string& path,
                                                   const Options& options = {});

}  // namespace localstore
