#include "sharedstore/SharedDatabase.h"

#include <algorithm>
#include <utility>

#include "multivalue/Catalogue.h"
#include "sharedstore/SharedEngine.h"

namespace sharedstore {

namespace {

std::unique_ptr<SharedEngine> connected(const std::string& connection, const Options& options) {
  auto engine = std::make_unique<SharedEngine>(connection);
  // 0 would be to wait for ever.
  const int wait = std::max(options.busyTimeout, 1);
  engine->connection().later("SET lock_timeout = " + std::to_string(wait), false);
  if (options.readOnly) {
    engine->connection().later("SET default_transaction_read_only = on", false);
  }
  return engine;
}

}  // namespace

std::shared_ptr<multivalue::Database> openSharedDatabase(const std::string& connection,
                                                         const Options& options) {
  auto engine = connected(connection, options);
  engine->checkFormat();
  return multivalue::databaseOver(std::move(engine));
}

std::shared_ptr<multivalue::Database> createSharedDatabase(const std::string& connection,
                                                           const Options& options) {
  auto engine = connected(connection, options);
  {
    const auto whole = engine->begin();
    engine->create();
    multivalue::createStandardFiles(*engine);
    whole->commit();
  }
  return multivalue::databaseOver(std::move(engine));
}

}  // namespace sharedstore
