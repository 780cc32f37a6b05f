#include "localstore/LocalDatabase.h"

#include <system_error>
#include <utility>

#include "localstore/Paths.h"
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
}

void limitPages(Connection& connection, const Options& options) {
  if (options.maxPages > 0) {
    connection.execute("PRAGMA max_page_count = " + std::to_string(options.maxPages));
  }
}

}  // namespace

std::unique_ptr<SqliteEngine> openEngine(const std::string& path, const Options& options) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(pathOf(path), ignored)) {
    throw store::StoreError(store::kIoFailure, path + ": there is no such store");
  }
  auto engine = std::make_unique<SqliteEngine>(path, Connection::Mode::Open);
  configure(engine->connection(), options);
  engine->checkFormat();
  if (engine->connection().readOnly()) engine->connection().refuse("the store is read-only");
  limitPages(engine->connection(), options);
  // Readers and writers need not wait for each other; a copy that was put in place may be without.
  engine->connection().execute("PRAGMA journal_mode = WAL");
  return engine;
}

std::shared_ptr<LocalDatabase> openLocalDatabase(const std::string& path, const Options& options) {
  return multivalue::databaseOver(openEngine(path, options));
}

std::shared_ptr<LocalDatabase> createLocalDatabase(const std::string& path,
                                                   const Options& options) {
  std::error_code ignored;
  if (std::filesystem::exists(pathOf(path), ignored)) {
    throw store::StoreError(store::kIoFailure, path + ": there is such a file already");
  }
  auto engine = std::make_unique<SqliteEngine>(path, Connection::Mode::Create);
  configure(engine->connection(), options);
  limitPages(engine->connection(), options);
  engine->connection().execute("PRAGMA journal_mode = WAL");
  const auto whole = engine->begin();
  engine->create();
  multivalue::createStandardFiles(*engine);
  whole->commit();
  return multivalue::databaseOver(std::move(engine));
}

}  // namespace localstore
