#include "stores/Stores.h"

#include "localstore/Check.h"
#include "localstore/LocalDatabase.h"
#include "sharedstore/Address.h"
#include "sharedstore/SharedDatabase.h"

namespace stores {

bool isShared(const std::string& address) { return sharedstore::connectionOf(address).has_value(); }

std::shared_ptr<multivalue::Database> open(const std::string& address, bool readOnly) {
  if (const auto connection = sharedstore::connectionOf(address)) {
    sharedstore::Options options;
    options.readOnly = readOnly;
    return sharedstore::openSharedDatabase(*connection, options);
  }
  localstore::Options options;
  options.readOnly = readOnly;
  return localstore::openLocalDatabase(address, options);
}

std::shared_ptr<multivalue::Database> create(const std::string& address) {
  const auto connection = sharedstore::connectionOf(address);
  return connection ? sharedstore::createSharedDatabase(*connection)
                    : localstore::createLocalDatabase(address);
}

multivalue::Checked check(const std::string& address, bool readOnly) {
  const auto connection = sharedstore::connectionOf(address);
  return connection ? sharedstore::checkSharedDatabase(*connection)
                    : localstore::checkLocalDatabase(address, readOnly);
}

}  // namespace stores
