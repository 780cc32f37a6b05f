#include "localstore/LocalDatabase.h"

#include <system_error>
#include <utility>

#include "localstore/Paths.h"
#include "localstore/Place.h"
#include "localstore/SqliteEngine.h"
#include "multivalue/Catalogue.h"
#include "store/StoreError.h"

namespace localstore {

namespace {

void configure(Connection& connection, const Options& options) {
  connection.setBusyTimeout(options.busyTimeout);
  connection.execute("PRAGMA cache_size = -" + std::to_string(options.cacheSize));
  connection.execute("PRAGMA temp_store = MEMORY");
  // Each commit is on the disk before it is confirmed, not only the ends of the log.
  connection.execute("PRAGMA synchronous = FULL");
  // What a large transaction has made of the log is cut off when the log begins anew.
  constexpr int kLogSize = 16 << 20;
  connection.execute("PRAGMA journal_size_limit = " + std::to_string(kLogSize));
}

void limitPages(Connection& connection, const Options& options) {
  if (options.maxPages > 0) {
    connection.execute("PRAGMA max_page_count = " + std::to_string(options.maxPages));
  }
}

}  // namespace

namespace {

std::unique_ptr<SqliteEngine> openForReading(const std::string& path, const Options& options,
                                             Connection::Mode mode) {
  auto engine = std::make_unique<SqliteEngine>(path, mode);
  configure(engine->connection(), options);
  engine->checkFormat();
  return engine;
}

bool hasLog(const std::string& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(pathOf(path + "-wal"), error);
  return !error && size > 0;
}

}  // namespace

std::unique_ptr<SqliteEngine> openEngine(const std::string& path, const Options& options,
                                         Connection::Mode mode) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(pathOf(path), ignored)) {
    throw store::StoreError(store::kIoFailure, path + ": there is no such store");
  }
  if (mode == Connection::Mode::Whole && !hasLog(path)) return openForReading(path, options, mode);
  if (mode != Connection::Mode::Open) {
    try {
      return openForReading(path, options, Connection::Mode::Read);
    } catch (const store::StoreError& error) {
      // Nothing can be written beside it; then nobody else writes it either.
      if (error.code() != store::kIoFailure || hasLog(path)) throw;
    }
    return openForReading(path, options, Connection::Mode::Whole);
  }
  requireOwnDisk(path);
  auto engine = std::make_unique<SqliteEngine>(path, mode);
  configure(engine->connection(), options);
  engine->checkFormat();
  if (engine->connection().readOnly()) engine->connection().refuse("the store is read-only");
  limitPages(engine->connection(), options);
  // Readers and writers need not wait for each other; a copy that was put in place may be without.
  engine->connection().execute("PRAGMA journal_mode = WAL");
  return engine;
}

std::shared_ptr<LocalDatabase> openLocalDatabase(const std::string& path, const Options& options) {
  const Connection::Mode mode = options.readOnly ? Connection::Mode::Read : Connection::Mode::Open;
  return multivalue::databaseOver(openEngine(path, options, mode));
}

namespace {

// What has been made of a new store, gone unless it is kept.
class NewFile {
 public:
  explicit NewFile(const std::string& path) : path_(path) {}
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    if (!kept_) removeStore(path_);
  }
  void keep() { kept_ = true; }

 private:
  const std::string path_;
  bool kept_ = false;
};

}  // namespace

std::shared_ptr<LocalDatabase> createLocalDatabase(const std::string& path,
                                                   const Options& options) {
  std::error_code ignored;
  if (std::filesystem::exists(pathOf(path), ignored)) {
    throw store::StoreError(store::kIoFailure, path + ": there is such a file already");
  }
  // SQLite would take these for a store in memory, gone with the process.
  if (path.empty() || path == ":memory:") {
    throw store::StoreError(store::kIoFailure, "\"" + path + "\" is no name for a store");
  }
  requireOwnDisk(path);
  NewFile file(path);
  auto engine = std::make_unique<SqliteEngine>(path, Connection::Mode::Create);
  configure(engine->connection(), options);
  limitPages(engine->connection(), options);
  engine->connection().execute("PRAGMA journal_mode = WAL");
  {
    const auto whole = engine->begin();
    engine->create();
    multivalue::createStandardFiles(*engine);
    whole->commit();
  }
  file.keep();
  return multivalue::databaseOver(std::move(engine));
}

}  // namespace localstore
