// What the store file says of itself: its files, their dictionary, their indexes.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "localstore/Sqlite.h"

namespace localstore {

// One file of the store. Its records stand in a table record_NAME(id, record), each index in a
// table index_NAME_ATTRIBUTE(value, id, first): a row for every distinct non-empty value, first = 1
// for the attribute's first value.
struct FileDescription {
  std::string name;
  std::map<std::string, int, std::less<>> fields;
  std::vector<int> indexed;

  std::string recordTable() const;
  std::string indexTable(int attribute) const;
  bool hasIndex(int attribute) const;
};

class Catalogue {
 public:
  explicit Catalogue(Connection& connection) : connection_(connection) {}

  // Makes the tables of an empty database, with the standard files.
  void create();
  // Throws StoreError (kIoFailure) when the database is no store, or one of a later format.
  void checkFormat();

  std::vector<std::string> names();
  // Throws StoreError (kUnknownFile). What is given for reading may lack an index that another
  // process has just made; a writer, inside its transaction, must know them all.
  std::shared_ptr<const FileDescription> forReading(std::string_view name);
  std::shared_ptr<const FileDescription> forWriting(std::string_view name);
  // Nothing happens when the file exists. Names are letters, digits, "_", "-" and ".", and may not
  // differ by case alone: else StoreError (kBadValue).
  void createFile(std::string_view name);
  // After a transaction was undone: what was seen in it may never have been.
  void forget();

 private:
  std::shared_ptr<const FileDescription> load(const std::string& name);

  Connection& connection_;
  std::int64_t schemaVersion_ = -1;
  std::map<std::string, std::shared_ptr<const FileDescription>, std::less<>> files_;
};

}  // namespace localstore
