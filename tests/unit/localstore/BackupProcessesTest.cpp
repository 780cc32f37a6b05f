// Copies of a store that others write to all the time.
#include <gtest/gtest.h>

#include "LocalStore.h"
#include "localstore/Backup.h"
#include "localstore/Check.h"
#include "tests/support/ChildProcess.h"

namespace {

using localstore::openLocalDatabase;

// Writes records one after the other, each confirmed by its number.
void writeForever(const std::string& path, int pipe) {
  const auto database = openLocalDatabase(path);
  for (unsigned number = 1;; ++number) {
    database->write("ORGPRISECHARGE", std::to_string(number),
                    recordText({"S" + std::to_string(number), std::string(200, 'x')}));
    send(pipe, number);
    usleep(1000);  // the store stays small enough to be looked at fifty times
  }
}

TEST(BackupUnderWriting, IsWholeAndHoldsAllThatWasConfirmedBefore) {
  const LocalStore store;
  TemporaryFolder folder;
  Child child([&](int pipe) { writeForever(store.path(), pipe); });
  unsigned confirmed = 0;
  long long before = 0;
  for (int i = 0; i < 50 && !testing::Test::HasFailure(); ++i) {
    const std::string copy = folder / ("copy" + std::to_string(i));
    // A writer that is never heard would wait in the end.
    const long long committed = store->recordCount("ORGPRISECHARGE");
    while (confirmed <= committed) ASSERT_TRUE(child.receive(confirmed));
    localstore::backUp(store.path(), copy);
    const auto checked = localstore::checkLocalDatabase(copy);
    EXPECT_TRUE(checked.faults.empty());
    EXPECT_GE(checked.records, committed);
    const auto database = openLocalDatabase(copy);
    const auto file = database->OpenFile("ORGPRISECHARGE");
    // As many as were confirmed, and the last of them: then all of them.
    const auto last = static_cast<unsigned>(committed);
    for (unsigned number = last > 50 ? last - 50 : 1; number <= last; ++number) {
      EXPECT_TRUE(file->ReadRecord(std::to_string(number))->found()) << number;
    }
    EXPECT_GT(checked.records, before) << "nobody writes";
    before = checked.records;
  }
  child.killNow();
}

}  // namespace
