#include "sharedstore/SharedDatabase.h"

#include <gtest/gtest.h>

#include "AgreementStore.h"
#include "Clients.h"
#include "SharedStoreUnderTest.h"
#include "store/Counter.h"
#include "tests/support/ChildProcess.h"

namespace {

TEST(SharedDatabase, AStoreIsNotMadeOverAnother) {
  const SharedStoreUnderTest store;
  store.connect({})->write("TABLES", "1", "x");
  EXPECT_EQ(messageOf([&] { sharedstore::createSharedDatabase(store.connection()); }),
            "the database holds a store already");
  EXPECT_EQ(store.connect({})->recordCount("TABLES"), 1);
  EXPECT_EQ(store.fault(), "");
}

TEST(SharedDatabase, AStoreOfAnotherFormatIsRefused) {
  const SharedStoreUnderTest store;
  store.administrator().execute("UPDATE store_state SET format = 2");
  EXPECT_EQ(messageOf([&] { store.connect({}); }), "the store has a format that is not known here");
  EXPECT_EQ(messageOf([&] { sharedstore::checkSharedDatabase(store.connection()); }),
            "the store has a format that is not known here");
}

TEST(SharedDatabase, WhatIsOnlyReadIsNotWritten) {
  const SharedStoreUnderTest store;
  store.connect({})->write("ORGPRISECHARGE", "1", "A");
  sharedstore::Options options;
  options.readOnly = true;
  const auto reader = sharedstore::openSharedDatabase(store.connection(), options);
  EXPECT_EQ(errorOf([&] { reader->write("ORGPRISECHARGE", "1", "B"); }), store::kIoFailure);
  EXPECT_EQ(errorOf([&] { reader->createFile("NEW"); }), store::kIoFailure);
  EXPECT_EQ(reader->ExecuteSentence("SSELECT ORGPRISECHARGE AVEC 1 = \"A\"").text(), "1");
}

// --- Two that write at once

TEST(SharedDatabase, AWriterOfAnotherRecordDoesNotWait) {
  const SharedStoreUnderTest store;
  const auto one = store.connect({});
  Connecting impatient;
  impatient.busyTimeout = 1;
  const auto other = store.connect(impatient);
  const auto transaction = one->begin();
  one->write("ORGPRISECHARGE", "1", "one");
  other->write("ORGPRISECHARGE", "2", "other");
  EXPECT_EQ(other->recordCount("ORGPRISECHARGE"), 1);
  transaction->commit();
  EXPECT_EQ(other->recordCount("ORGPRISECHARGE"), 2);
}

// The rows that an update reads stay as they are until it ends; other bodies' do not concern it.
TEST(SharedDatabase, AnAgreementUpdateHoldsItsOwnBodyAlone) {
  const AgreementStore store;
  for (const char* const code : {"125", "126"}) {
    store.putBody({}, code);
    store.putAgreement(std::string("00001") + code, {{accord::OrgChgAcc, code}});
  }
  store.putElements("00001", "90000");
  Connecting impatient;
  impatient.busyTimeout = 50;
  const auto other = store.connect(impatient);
  const auto transaction = store->begin();
  store.update();
  EXPECT_EQ(errorOf([&] { other->write("ACCORD", "00001125", "x"); }), store::kBusy);
  EXPECT_EQ(errorOf([&] { other->write("ORGPRISECHARGE", "125", "x"); }), store::kBusy);
  EXPECT_EQ(errorOf([&] { other->write("ELTSFACTAIDE", "00001", "x"); }), store::kBusy);
  EXPECT_EQ(errorOf([&] { other->ExecuteSentence(updateRequest(kScaleDate, "125")); }),
            store::kBusy);
  other->ExecuteSentence(updateRequest(kScaleDate, "126"));
  other->write("ACCORD", "00002126", "y");
  transaction->commit();
  EXPECT_EQ(store.modified("125"), "00001125");
  EXPECT_EQ(store.modified("126"), "00001126");
}

// A server that lets no two transactions meet undoes one of them, which is then run again.
TEST(SharedDatabase, AnUndoneTransactionIsRunAgain) {
  const SharedStoreUnderTest store("-c default_transaction_isolation=serializable");
  store.connect({})->write("ORGPRISECHARGE", "001", "0");
  constexpr int kRounds = 200;
  const auto count = [&](int) { countUp(*store.connect({}), kRounds); };
  Child one(count);
  Child other(count);
  EXPECT_EQ(one.finish(), 0);
  EXPECT_EQ(other.finish(), 0);
  EXPECT_EQ(store.connect({})->OpenFile("ORGPRISECHARGE")->ReadRecord("001")->fields().text(),
            std::to_string(2 * kRounds));
}

// Each of two waits for what the other has: the server undoes one of them.
TEST(SharedDatabase, ATransactionOfTheCallersOwnIsNotRunAgain) {
  const SharedStoreUnderTest store;
  store.connect({})->write("TABLES", "1", "");
  store.connect({})->write("TABLES", "2", "");
  const auto cross = [&](const char* first, const char* second) {
    return [&store, first, second](int pipe) {
      const auto database = store.connect({});
      const unsigned code = errorOf([&] {
        const auto transaction = database->begin();
        database->write("TABLES", first, first);
        usleep(300000);
        database->write("TABLES", second, first);
        transaction->commit();
      });
      send(pipe, code);
    };
  };
  Child one(cross("1", "2"));
  Child other(cross("2", "1"));
  unsigned first = 1;
  unsigned second = 1;
  ASSERT_TRUE(one.receive(first));
  ASSERT_TRUE(other.receive(second));
  EXPECT_EQ(first | second, store::kBusy);
  EXPECT_EQ(first & second, 0U);
}

// --- Between two calls

TEST(SharedDatabase, HoldsNoTransactionBetweenTwoCalls) {
  const SharedStoreUnderTest store;
  const auto database = store.connect({});
  const auto sessions = [&] {
    sharedstore::Statement count(
        store.administrator(),
        sharedstore::Sql("SELECT count(*) FROM pg_stat_activity WHERE application_name LIKE"
                         " current_schema() || '%' AND state <> 'idle'"));
    return count.next() ? count.number(0) : -1;
  };
  {
    const auto transaction = database->begin();
    for (int i = 0; i < 1200; ++i) database->write("ORGPRISECHARGE", std::to_string(i), "A;x");
    EXPECT_EQ(sessions(), 1);
    transaction->commit();
  }
  EXPECT_EQ(sessions(), 0);
  int seen = 0;
  database->forEachRecord("ORGPRISECHARGE", [&](std::string_view, std::string_view) {
    if (seen++ % 400 == 0) EXPECT_EQ(sessions(), 0);
  });
  EXPECT_EQ(seen, 1200);
  EXPECT_EQ(database->ExecuteSentence("SSELECT ORGPRISECHARGE AVEC 1 = \"A]\"").DCount(), 1200);
  database->write("ORGPRISECHARGE", "1", "B");
  EXPECT_EQ(errorOf([&] { database->createFile("accord"); }), store::kBadValue);
  EXPECT_EQ(sessions(), 0);
}

// What is written while it is gone through, is met or not; nothing else is.
TEST(SharedDatabase, RecordsAreWrittenWhileTheyAreVisited) {
  const SharedStoreUnderTest store;
  const auto database = store.connect({});
  {
    const auto transaction = database->begin();
    for (int i = 0; i < 1100; ++i) database->write("TABLES", std::to_string(10000 + i), "old");
    transaction->commit();
  }
  int seen = 0;
  database->forEachRecord("TABLES", [&](std::string_view id, std::string_view record) {
    EXPECT_EQ(record, "old");
    if (++seen % 100 != 0) return;
    database->write("TABLES", id, "new");
    const auto undone = database->begin();
    database->write("TABLES", id, "undone");
  });
  EXPECT_EQ(seen, 1100);
  EXPECT_EQ(database->ExecuteSentence("SSELECT TABLES AVEC 1 = \"new\"").DCount(), 11);
}

// A failed statement spoils its transaction: what comes after it must not be taken for kept.
TEST(SharedDatabase, ATransactionWithAFailedStatementIsNotKept) {
  const SharedStoreUnderTest store;
  const auto database = store.connect({});
  const auto other = store.connect({});
  other->write("TABLES", "1", "");
  Connecting impatient;
  impatient.busyTimeout = 20;
  const auto mine = store.connect(impatient);
  const auto theirs = other->begin();
  other->write("TABLES", "1", "theirs");
  const auto transaction = mine->begin();
  mine->write("TABLES", "2", "mine");
  EXPECT_EQ(errorOf([&] { mine->write("TABLES", "1", "mine"); }), store::kBusy);
  mine->write("TABLES", "3", "mine");
  transaction->commit();
  theirs->commit();
  EXPECT_EQ(database->ExecuteSentence("SSELECT TABLES AVEC 1 = \"mine\"").text(),
            "2\xFE"
            "3");
}

}  // namespace
