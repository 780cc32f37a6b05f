// The port to what keeps records and their indexes: the sentences, the dictionary and the commands
// stand above it and know no engine. Every call throws StoreError; what the codes mean:
// Database.h. An engine either lets one client write at a time, or locks what a transaction has
// written until it ends; who waits longer than the engine's bound has kBusy.
//
// An index of an attribute has an entry for every distinct non-empty value of a record. Engines
// keep the entries (RecordText.h tells them) in the order of the values, and of one value in that
// of the keys; both byte by byte.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "multivalue/AccessPath.h"
#include "multivalue/FileDescription.h"
#include "store/StoreError.h"

namespace multivalue {

// The engine could not carry a transaction through, beside another one or since it has lost its
// server. Nothing of it is kept, and it may be run again from its beginning.
class Conflict : public store::StoreError {
 public:
  explicit Conflict(const std::string& message, unsigned code = store::kBusy)
      : StoreError(code, message) {}
};

// All that is written between its making and commit() is kept together or not at all. One that is
// begun inside another is a part of it: undone alone, kept with the whole.
class Transaction {
 public:
  Transaction() = default;
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  virtual ~Transaction() = default;

  virtual void commit() = 0;
};

// What is wanted of a file's records.
struct Scan {
  enum class Gives { Keys, IndexEntries, Records };

  const FileDescription& file;
  // None: all records. What it gives comes in the order of the keys when the path is of keys, is
  // exact, or is none; index entries of a range come in the order in which they are kept. It must
  // outlive the cursor.
  const AccessPath* path = nullptr;
  // The entries of the path's index, or the keys alone, spare reading the records.
  Gives gives = Gives::Records;
  // What the caller looks for. An engine may pass over what does not satisfy one of them, and may
  // leave them all alone: the caller looks at every entry again. Null: each entry counts.
  const std::vector<Test>* tests = nullptr;
  // The scan may be given up when it has looked at about so many entries of the path, whether they
  // satisfied the tests or not; 0: never.
  std::int64_t patience = 0;
  // Who else would change one of the records that it gives waits until the transaction ends.
  bool locked = false;
  // The last attribute that the caller looks at, 0: all of them. An engine may leave out of a
  // record what comes after it.
  int lastAttribute = 0;
};

struct Entry {
  std::string_view id;
  // The record's text; empty where keys alone are wanted. Of an index entry that is the attribute's
  // first value, empty too.
  std::string_view record;
  std::string_view value;  // of an index entry
  bool first = false;      // is it the attribute's first?
};

// Goes once through what a scan gives, all of it in one state of the store. Writes of the same
// engine meanwhile do it no harm; whether it still meets what they change is left open.
class Cursor {
 public:
  Cursor() = default;
  Cursor(const Cursor&) = delete;
  Cursor& operator=(const Cursor&) = delete;
  virtual ~Cursor() = default;

  // False at the end. The views live until the next call.
  virtual bool next(Entry& entry) = 0;
  // Was it given up, so that it has not given all there is?
  virtual bool givenUp() const { return false; }
};

// A text to be put in the place of another; nothing stands for no record.
struct Replacement {
  std::string id;
  std::optional<std::string> before;
  std::string after;

  // What it takes the place of, empty where that is no record.
  std::string_view textBefore() const { return before ? std::string_view(*before) : ""; }
};

class Engine {
 public:
  Engine() = default;
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;
  virtual ~Engine() = default;

  // --- Its files.
  // Sorted by name.
  virtual std::vector<std::string> fileNames() = 0;
  // Null for a name that it has not, in these very letters.
  virtual std::shared_ptr<const FileDescription> describe(std::string_view name) = 0;
  // All of its files, from an engine that describes them as quickly as one; else none.
  virtual std::vector<std::shared_ptr<const FileDescription>> describeAll() { return {}; }
  // The name of the file that differs from this one by case alone, or not at all; "" without one.
  virtual std::string sameName(std::string_view name) = 0;
  // Needs a transaction.
  virtual void addFile(const FileDescription& file) = 0;
  // Another number whenever anybody has added a file.
  virtual std::int64_t filesVersion() = 0;

  virtual std::unique_ptr<Transaction> begin() = 0;

  // --- Records.
  // Nothing when no record has the identifier.
  virtual std::optional<std::string> read(const FileDescription& file, std::string_view id) = 0;
  // The same of a record that has to stay as it is until the transaction ends: who else would
  // change it waits. Needs a transaction.
  virtual std::optional<std::string> readLocked(const FileDescription& file,
                                                std::string_view id) = 0;
  // Puts a text in the place of another, and its index entries with it; nothing stands for no
  // record. False when what is stored is not `before`: then nothing is done. Needs a transaction.
  virtual bool exchange(const FileDescription& file, std::string_view id,
                        std::optional<std::string_view> before,
                        std::optional<std::string_view> after) = 0;
  // The same two of many at once, each identifier once. What readAllLocked gives is aligned with
  // the identifiers. False when one of them was not as it had to be: the transaction cannot be kept
  // then.
  virtual std::vector<std::optional<std::string>> readAllLocked(
      const FileDescription& file, const std::vector<std::string>& ids) {
    std::vector<std::optional<std::string>> records;
    records.reserve(ids.size());
    for (const std::string& id : ids) records.push_back(readLocked(file, id));
    return records;
  }
  virtual bool exchangeAll(const FileDescription& file, const std::vector<Replacement>& all) {
    for (const Replacement& each : all) {
      if (!exchange(file, each.id, each.before, each.after)) return false;
    }
    return true;
  }
  // The same as exchange, as a transaction of its own, where an engine can do that at once and the
  // file is still as it was described. False when nothing was done, for whatever reason. Throws
  // StoreError, with kOutcomeUnknown when a server was lost before it had answered.
  virtual bool exchangeAtOnce(const FileDescription&, std::string_view,
                              std::optional<std::string_view>, std::optional<std::string_view>) {
    return false;
  }
  // These records will be read next, each as often as it stands here. An engine may read them
  // ahead together, outside a transaction, and give what it has found then, for a short while and
  // until it has written them itself.
  virtual void announce(const FileDescription&, const std::vector<std::string>&) {}
  // The same of a small file: its records will be read time and again.
  virtual void announceAll(const FileDescription&) {}
  virtual std::unique_ptr<Cursor> scan(const Scan& scan) = 0;
  // How many entries a path has, all records without one; counts no further than the limit. An
  // engine that finds the best of several ways by itself may answer 0 for any path: its scans are
  // told all tests.
  virtual std::int64_t count(const FileDescription& file, const AccessPath* path,
                             std::int64_t limit) = 0;
};

}  // namespace multivalue
