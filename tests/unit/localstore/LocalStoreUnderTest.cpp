#include "LocalStoreUnderTest.h"

#include "localstore/Check.h"
#include "localstore/LocalDatabase.h"

LocalStoreUnderTest::LocalStoreUnderTest() { localstore::createLocalDatabase(path()); }

std::shared_ptr<multivalue::Database> LocalStoreUnderTest::connect(const Connecting& how) const {
  localstore::Options options;
  options.busyTimeout = how.busyTimeout;
  if (how.littleMemory) options.cacheSize = 64;
  return localstore::openLocalDatabase(path(), options);
}

std::string LocalStoreUnderTest::fault() const {
  const localstore::Checked checked = localstore::checkLocalDatabase(path());
  return checked.faults.empty() ? std::string() : checked.faults.front();
}

std::unique_ptr<StoreUnderTest> newStore() { return std::make_unique<LocalStoreUnderTest>(); }
