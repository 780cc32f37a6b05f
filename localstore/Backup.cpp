#include "localstore/Backup.h"

#include <system_error>

#include "localstore/Check.h"
#include "localstore/LocalDatabase.h"
#include "localstore/Paths.h"
#include "localstore/Place.h"
#include "localstore/SqliteEngine.h"
#include "store/StoreError.h"

namespace localstore {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void failOn(const std::string& path, const std::string& reason) {
  throw store::StoreError(store::kIoFailure, path + ": " + reason);
}

// A copy on its way, gone unless it takes its name.
class Copy {
 public:
  explicit Copy(const std::string& target) : target_(target), path_(target + ".part") {
    removeStore(path_);
  }
  Copy(const Copy&) = delete;
  Copy& operator=(const Copy&) = delete;
  ~Copy() { removeStore(path_); }

  void make(const std::string& source, Connection::Mode mode) const {
    const auto store = openEngine(source, {}, mode);
    Connection(path_, Connection::Mode::Create).copyFrom(store->connection());
    const Checked checked = checkEngine(*openEngine(path_, {}, Connection::Mode::Whole));
    if (!checked.faults.empty()) {
      failOn(source, "the store is not whole: " + checked.faults.front());
    }
  }

  void takeName() const {
    std::error_code error;
    fs::rename(pathOf(path_), pathOf(target_), error);
    if (error) failOn(target_, "the file cannot be written");
  }

 private:
  const std::string target_;
  const std::string path_;
};

// Whoever has a store open holds a lock on its file. A log that was left behind goes into the file.
void requireUnused(const std::string& path) {
  constexpr const char* kInUse = "the store is open elsewhere";
  Connection store(path, Connection::Mode::Open);
  try {
    store.execute("PRAGMA locking_mode = EXCLUSIVE");
    Query query(store, "PRAGMA journal_mode = DELETE");
    if (query.step() && query.text(0) == "delete") return;
  } catch (const store::StoreError& error) {
    // It may be so damaged that it cannot be opened: that is what a copy is for.
    if (error.code() == store::kIoFailure && store.lockFile()) return;
  }
  throw store::StoreError(store::kBusy, path + ": " + kInUse);
}

}  // namespace

void backUp(const std::string& path, const std::string& target, bool readOnly) {
  std::error_code ignored;
  if (fs::exists(pathOf(target), ignored)) failOn(target, "there is such a file already");
  const Copy copy(target);
  copy.make(path, readOnly ? Connection::Mode::Read : Connection::Mode::Open);
  copy.takeName();
}

void restore(const std::string& backup, const std::string& path) {
  std::error_code ignored;
  if (fs::equivalent(pathOf(backup), pathOf(path), ignored)) {
    failOn(path, "the copy is the store itself");
  }
  requireOwnDisk(path);
  const bool present = fs::exists(pathOf(path), ignored);
  if (present && !fs::is_regular_file(pathOf(path), ignored)) failOn(path, "this is no file");
  if (present) requireUnused(path);
  const Copy copy(path);
  copy.make(backup, Connection::Mode::Whole);
  if (present) requireUnused(path);
  for (const char* const tail : {"-wal", "-shm", "-journal"}) {
    fs::remove(pathOf(path + tail), ignored);
  }
  copy.takeName();
}

}  // namespace localstore
