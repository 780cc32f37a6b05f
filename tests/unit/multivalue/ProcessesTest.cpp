// Several processes on one store, and processes that are killed while they write.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include "Clients.h"
#include "TemporaryStore.h"
#include "store/Counter.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/Seed.h"

namespace {

Connecting waiting(int milliseconds) {
  Connecting how;
  how.busyTimeout = milliseconds;
  return how;
}

TEST(Processes, WhatOneWritesTheOtherReadsAtOnce) {
  TemporaryStore store;
  const auto file = store->OpenFile("ORGPRISECHARGE");
  EXPECT_FALSE(file->ReadRecord("001")->found());
  Child child([&](int) { store.connect()->write("ORGPRISECHARGE", "001", "CD01"); });
  ASSERT_EQ(child.finish(), 0);
  EXPECT_EQ(file->ReadRecord("001")->fields().text(), "CD01");
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"CD]\""), "001");
}

TEST(Processes, AReaderIsNotHeldUpAndSeesOnlyWhatIsCommitted) {
  TemporaryStore store;
  store.put("TABLES", "1", {"before"});
  Child child([&](int pipe) { holdWritten(*store.connect(), "after", pipe); });
  unsigned ready = 0;
  ASSERT_TRUE(child.receive(ready));
  const auto other = store.connect(waiting(0));
  EXPECT_EQ(other->OpenFile("TABLES")->ReadRecord("1")->fields().text(), "before");
  EXPECT_EQ(other->ExecuteSentence("SSELECT TABLES AVEC 1 = \"after\"").text(), "");
}

TEST(Processes, AWriterThatWaitsTooLongFailsAndWritesNothing) {
  TemporaryStore store;
  store.put("TABLES", "1", {"before"});
  Child child([&](int pipe) { holdWritten(*store.connect(), "child", pipe); });
  unsigned ready = 0;
  ASSERT_TRUE(child.receive(ready));
  const auto other = store.connect(waiting(60));
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(errorOf([&] { other->write("TABLES", "1", "x"); }), store::kBusy);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(30));
  EXPECT_EQ(errorOf([&] { other->OpenFile("TABLES")->DeleteRecord("1"); }), store::kBusy);
  child.killNow();
  child.finish();
  EXPECT_EQ(store.select("SSELECT TABLES", "0 1"), "1,before");
  store.connect()->write("TABLES", "1", "y");
  EXPECT_EQ(store.select("SSELECT TABLES", "0 1"), "1,y");
}

TEST(Processes, AWriterThatNeedNotWaitTooLongSucceeds) {
  TemporaryStore store;
  Child child([&](int pipe) {
    const auto database = store.connect();
    const auto transaction = database->begin();
    database->write("TABLES", "1", "child");
    database->write("TABLES", "2", "child");
    send(pipe, 1);
    usleep(50000);
    transaction->commit();
  });
  unsigned ready = 0;
  ASSERT_TRUE(child.receive(ready));
  const auto other = store.connect(waiting(10000));
  other->write("TABLES", "1", "parent");
  EXPECT_EQ(store.select("SSELECT TABLES", "1"), "parent|child");
}

TEST(Processes, SeveralWritersLoseNothing) {
  TemporaryStore store;
  const auto writer = [&](char letter) {
    return [&store, letter](int) {
      const auto database = store.connect(waiting(30000));
      for (int i = 0; i < 25; ++i) {
        database->write("ORGPRISECHARGE", letter + std::to_string(i), std::string(1, letter));
      }
    };
  };
  Child a(writer('a'));
  Child b(writer('b'));
  Child c(writer('c'));
  EXPECT_EQ(a.finish(), 0);
  EXPECT_EQ(b.finish(), 0);
  EXPECT_EQ(c.finish(), 0);
  EXPECT_EQ(store->recordCount("ORGPRISECHARGE"), 75);
  EXPECT_EQ(store->ExecuteSentence("SSELECT ORGPRISECHARGE AVEC 1 = \"b\"").DCount(), 25);
}

// --- Two that work on the same records

constexpr int kRounds = 1000;

TEST(TwoAtOnce, NoConfirmedSaveIsLost) {
  const TemporaryStore store;
  store->write("ORGPRISECHARGE", "001", "0");
  const auto count = [&](int) { countUp(*store.connect(waiting(60000)), kRounds); };
  Child one(count);
  Child other(count);
  EXPECT_EQ(one.finish(), 0);
  EXPECT_EQ(other.finish(), 0);
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE", "1"), std::to_string(2 * kRounds));
}

// Each code is given out once, and the body of each stays its creator's.
TEST(TwoAtOnce, NoCodeIsGivenOutTwice) {
  constexpr int kEach = 499;  // the codes end at 999
  for (int stores = 0; stores < kRounds / kEach; ++stores) {
    const TemporaryStore store;
    const auto create = [&](const std::string& who) {
      return [&store, who](int) {
        const auto database = store.connect(waiting(60000));
        const auto counters = database->OpenFile("COMPTEUR");
        const auto bodies = database->OpenFile("ORGPRISECHARGE");
        for (int i = 0; i < kEach; ++i) {
          const auto body = bodies->ReadRecord(store::nextCode(*counters));
          body->fields().setText(who + std::to_string(i));
          body->DBWrite();
        }
      };
    };
    Child one(create("A"));
    Child other(create("B"));
    EXPECT_EQ(one.finish(), 0);
    EXPECT_EQ(other.finish(), 0);
    EXPECT_EQ(store->recordCount("ORGPRISECHARGE"), 2 * kEach);
    for (const char* const who : {"A", "B"}) {
      const std::string sentence = std::string("SSELECT ORGPRISECHARGE AVEC 1 = \"") + who + "]\"";
      EXPECT_EQ(store->ExecuteSentence(sentence).DCount(), kEach);
    }
  }
}

TEST(TwoAtOnce, WhatOneDeletesTheOthersSaveDoesNotBringBack) {
  const TemporaryStore store;
  {
    const auto transaction = store->begin();
    for (int i = 0; i < kRounds; ++i) store->write("ORGPRISECHARGE", std::to_string(i), "before");
    transaction->commit();
  }
  Child saver([&](int) {
    const auto database = store.connect(waiting(60000));
    const auto file = database->OpenFile("ORGPRISECHARGE");
    for (int i = 0; i < kRounds; ++i) {
      const auto record = file->ReadRecord(std::to_string(i));
      if (!record->found()) continue;
      record->fields().setText("saved");
      const unsigned code = errorOf([&] { record->DBWrite(); });
      if (code != 0 && code != store::kChanged) throw std::runtime_error("another error");
    }
  });
  Child deleter([&](int) {
    const auto database = store.connect(waiting(60000));
    const auto file = database->OpenFile("ORGPRISECHARGE");
    for (int i = 0; i < kRounds; ++i) {
      if (file->DeleteRecord(std::to_string(i)) != 0) throw std::runtime_error("nothing there");
    }
  });
  EXPECT_EQ(saver.finish(), 0);
  EXPECT_EQ(deleter.finish(), 0);
  EXPECT_EQ(store->recordCount("ORGPRISECHARGE"), 0);
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"saved\""), "");
}

// --- Kill tests

// Each attribute tells the version, so that a torn record would show; the first has an index.
std::string version(unsigned number) {
  const std::string text = "V" + std::to_string(number);
  return recordText({text, text + ";" + text, std::string(300, 'x') + text});
}

unsigned versionOf(std::string_view record) {
  const store::DynamicArray fields(record);
  const std::string text(fields.get(1).substr(1));
  return static_cast<unsigned>(std::stoul(text));
}

// Writes a record of its own and the same record over and over, confirming each pair.
void writeForever(const TemporaryStore& store, unsigned from, int pipe) {
  const auto database = store.connect();
  const auto file = database->OpenFile("ORGPRISECHARGE");
  for (unsigned number = from;; ++number) {
    for (const std::string& id : {"own" + std::to_string(number), std::string("shared")}) {
      const auto record = file->ReadRecord(id);
      record->fields().setText(version(number));
      record->DBWrite();
    }
    send(pipe, number);
  }
}

// Looks at every record from a version on, and at the index entries of each; gives the newest
// version.
unsigned checkRecords(multivalue::Database& database, unsigned from) {
  unsigned newest = 0;
  database.forEachRecord("ORGPRISECHARGE", [&](std::string_view id, std::string_view record) {
    const unsigned found = versionOf(record);
    newest = std::max(newest, found);
    if (found < from) return;
    EXPECT_EQ(record, version(found)) << "torn: " << id;
    const auto selected = database.ExecuteSentence("SSELECT ORGPRISECHARGE AVEC 1 = \"V" +
                                                   std::to_string(found) + "\" PAR @ID");
    const bool own = id != "shared";
    EXPECT_EQ(selected.get(own ? 1 : selected.DCount(), 1), id) << "missing in the index";
  });
  return newest;
}

void checkConfirmed(multivalue::Database& database, const std::vector<unsigned>& confirmed,
                    std::size_t from) {
  const auto file = database.OpenFile("ORGPRISECHARGE");
  for (std::size_t i = from; i < confirmed.size(); ++i) {
    EXPECT_TRUE(file->ReadRecord("own" + std::to_string(confirmed[i]))->found())
        << "lost: " << confirmed[i];
  }
  if (confirmed.empty()) return;
  EXPECT_GE(versionOf(file->ReadRecord("shared")->fields().text()), confirmed.back());
}

TEST(KilledWriter, LosesNoConfirmedRecordAndTearsNone) {
  const TemporaryStore store;
  testing_support::Random random(11);
  unsigned next = 1;
  std::vector<unsigned> confirmed;
  for (int round = 0; round < 200 && !HasFailure(); ++round) {
    const std::size_t before = confirmed.size();
    Child child([&](int pipe) { writeForever(store, next, pipe); });
    unsigned number = 0;
    for (unsigned wanted = random() % 4; wanted > 0 && child.receive(number); --wanted) {
      confirmed.push_back(number);
    }
    usleep(static_cast<useconds_t>(random() % 3000));
    child.killNow();
    child.finish();
    while (child.receive(number)) confirmed.push_back(number);
    const auto database = store.connect();
    checkConfirmed(*database, confirmed, before);
    next = std::max(next, checkRecords(*database, next) + 1);
    if (round % 10 == 0) {
      EXPECT_EQ(store.underTest().fault(), "");
    }
  }
  const auto database = store.connect();
  checkRecords(*database, 0);
  checkConfirmed(*database, confirmed, 0);
  EXPECT_EQ(store.underTest().fault(), "");
  EXPECT_GT(confirmed.size(), 200U);
}

TEST(KilledWriter, LeavesNothingOfAnUnfinishedTransaction) {
  const TemporaryStore store;
  for (int round = 0; round < 10; ++round) {
    Child child([&](int pipe) {
      Connecting how;
      how.littleMemory = true;
      const auto database = store.connect(how);
      const auto transaction = database->begin();
      for (int i = 0;; ++i) {
        database->write("ORGPRISECHARGE", std::to_string(i), version(1));
        if (i == 300) send(pipe, 1);
      }
    });
    unsigned ready = 0;
    ASSERT_TRUE(child.receive(ready));
    usleep(1000U * static_cast<unsigned>(round));
    child.killNow();
    child.finish();
    const auto database = store.connect();
    ASSERT_EQ(database->recordCount("ORGPRISECHARGE"), 0);
    ASSERT_EQ(database->ExecuteSentence("SSELECT ORGPRISECHARGE AVEC 1 = \"V]\"").text(), "");
    ASSERT_EQ(store.underTest().fault(), "");
  }
}

}  // namespace
