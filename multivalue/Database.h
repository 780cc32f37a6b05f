// The store that the system works with, over any engine.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "multivalue/Engine.h"
#include "store/Database.h"

namespace multivalue {

// Every call throws StoreError when the store refuses it: kUnknownFile, kBadSentence, kBadValue
// (an empty identifier, or one with a mark), kBusy, kIoFailure (disk full, no store, damaged,
// read-only, server lost); kOutcomeUnknown when a server was lost while it was to confirm. DBWrite
// of a record that somebody else has changed, created or deleted since it was read is kChanged.
// Somebody else is every other database object, and a command of this one's. What DBWrite,
// DeleteRecord and Transaction::commit have done when they return survives a killed process and a
// cut of power. Files and records may outlive the database object. Not to be used after a fork by
// the child.
class Database : public store::Database {
 public:
  using Visitor = std::function<void(std::string_view id, std::string_view record)>;

  // Sorted by name.
  virtual std::vector<std::string> fileNames() = 0;
  // Nothing happens when it exists. A name that the system knows brings its dictionary and indexes.
  virtual void createFile(std::string_view name) = 0;
  // The dictionary's name of an attribute, "" when it has none.
  virtual std::string fieldName(std::string_view file, int attribute) = 0;

  // Writes between its making and commit() are kept together or not at all. One at a time; the
  // database must outlive it.
  virtual std::unique_ptr<Transaction> begin() = 0;
  // Creates or replaces a record from its full text, whatever is stored.
  virtual void write(std::string_view file, std::string_view id, std::string_view record) = 0;
  struct Written {
    std::string id;
    std::string record;
  };
  // The same of each, one after the other, kept together or not at all.
  virtual void writeAll(std::string_view file, const std::vector<Written>& records) = 0;
  virtual long long recordCount(std::string_view file) = 0;
  // In the order of the keys. The views live until the visitor returns.
  virtual void forEachRecord(std::string_view file, const Visitor& visitor) = 0;
};

std::shared_ptr<Database> databaseOver(std::unique_ptr<Engine> engine);

}  // namespace multivalue
