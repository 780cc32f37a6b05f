// The port to the multivalue store. Every call throws StoreError when the store refuses it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "store/DynamicArray.h"
#include "store/StoreError.h"

namespace store {

// A record bound to its file and identifier. The file must outlive it.
class Record {
 public:
  Record(DynamicArray fields, bool found) : fields_(std::move(fields)), found_(found) {}
  Record(const Record&) = delete;
  Record& operator=(const Record&) = delete;
  virtual ~Record() = default;

  DynamicArray& fields() { return fields_; }
  const DynamicArray& fields() const { return fields_; }
  // False when no record had the identifier: it then reads as an empty array.
  bool found() const { return found_; }
  // Writes the fields under the identifier, creating the record when it did not exist. A store that
  // watches over it refuses with kChanged, and writes nothing, when somebody else has changed,
  // created or deleted the record since it was read: it has to be read again.
  virtual void DBWrite() = 0;

 private:
  DynamicArray fields_;
  bool found_;
};

class File {
 public:
  File() = default;
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  virtual ~File() = default;

  // Never null; an identifier without a record gives an empty one.
  virtual std::unique_ptr<Record> ReadRecord(std::string_view id) = 0;
  // These records will be read next, each as often as it stands here: a store may read them ahead
  // together, and give what it has found then for a short while. Nothing is changed by it, and it
  // never fails.
  virtual void announce(const std::vector<std::string>& ids) { static_cast<void>(ids); }
  // The same of a small file: its records will be read time and again.
  virtual void announceAll() {}
  // The store's status; removing a record that is not there is no error.
  virtual int DeleteRecord(std::string_view id) = 0;
};

class Database {
 public:
  Database() = default;
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  virtual ~Database() = default;

  virtual std::unique_ptr<File> OpenFile(std::string_view name) = 0;
  // Runs one request: a selection (attribute 1 the sentence, 2 the file, 3 the columns separated by
  // blanks, 0 the identifier) or commands, one an attribute. A selection answers with one attribute
  // a record, its values the columns in the order asked; nothing selected is an empty array.
  virtual DynamicArray ExecuteSentence(std::string_view request) = 0;
};

}  // namespace store
