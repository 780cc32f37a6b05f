#include "sharedstore/SharedDatabase.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "multivalue/Catalogue.h"
#include "sharedstore/SharedEngine.h"

namespace sharedstore {

namespace {

std::unique_ptr<SharedEngine> connected(const std::string& connection, const Options& options) {
  // 0 would be to wait for ever.
  std::vector<std::string> settings{"SET lock_timeout = " +
                                    std::to_string(std::max(options.busyTimeout, 1))};
  if (options.readOnly) settings.emplace_back("SET default_transaction_read_only = on");
  return std::make_unique<SharedEngine>(connection, std::move(settings));
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
