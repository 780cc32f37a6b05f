// A store in a file is written by one client at a time, whatever each of them writes.
#include <gtest/gtest.h>
#include <unistd.h>

#include "Clients.h"
#include "LocalStore.h"

namespace {

TEST(OneWriter, KeepsTheOthersOutOfAllRecords) {
  LocalStore store;
  Child child([&](int pipe) {
    const auto database = localstore::openLocalDatabase(store.path());
    holdWritten(*database, "child", pipe);
  });
  unsigned ready = 0;
  ASSERT_TRUE(child.receive(ready));
  localstore::Options impatient;
  impatient.busyTimeout = 60;
  const auto other = localstore::openLocalDatabase(store.path(), impatient);
  EXPECT_EQ(errorOf([&] { other->write("TABLES", "2", "x"); }), store::kBusy);
  EXPECT_EQ(errorOf([&] { other->OpenFile("TABLES")->DeleteRecord("1"); }), store::kBusy);
  EXPECT_EQ(errorOf([&] { other->begin(); }), store::kBusy);
  child.killNow();
  child.finish();
  other->write("TABLES", "2", "y");
  EXPECT_EQ(store.select("SSELECT TABLES"), "2");
}

TEST(OneWriter, KeepsOutByHavingBegunAlone) {
  LocalStore store;
  localstore::Options impatient;
  impatient.busyTimeout = 20;
  const auto other = localstore::openLocalDatabase(store.path(), impatient);
  {
    const auto transaction = store->begin();
    EXPECT_EQ(errorOf([&] { other->write("TABLES", "2", "x"); }), store::kBusy);
    EXPECT_EQ(errorOf([&] { other->ExecuteSentence("MAJTXACCGENE |01/02/2026|125"); }),
              store::kBusy);
  }
  other->write("TABLES", "2", "x");
  EXPECT_EQ(store->recordCount("TABLES"), 1);
}

// What waits for it to end goes on with what it has left.
TEST(OneWriter, IsWaitedFor) {
  LocalStore store;
  Child child([&](int pipe) {
    const auto database = localstore::openLocalDatabase(store.path());
    const auto transaction = database->begin();
    database->write("TABLES", "1", "child");
    send(pipe, 1);
    usleep(50000);
    transaction->commit();
  });
  unsigned ready = 0;
  ASSERT_TRUE(child.receive(ready));
  localstore::Options patient;
  patient.busyTimeout = 10000;
  localstore::openLocalDatabase(store.path(), patient)->write("TABLES", "2", "parent");
  EXPECT_EQ(store.select("SSELECT TABLES"),
            "1\xFE"
            "2");
}

}  // namespace
