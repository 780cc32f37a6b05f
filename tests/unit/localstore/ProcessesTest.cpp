// Several processes on one store, and processes that are killed while they write.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <sstream>

#include "ChildProcess.h"
#include "TemporaryStore.h"
#include "localstore/CommandLine.h"
#include "tests/support/Seed.h"

namespace {

using localstore::openLocalDatabase;

localstore::Options waiting(int milliseconds) {
  localstore::Options options;
  options.busyTimeout = milliseconds;
  return options;
}

TEST(Processes, WhatOneWritesTheOtherReadsAtOnce) {
  TemporaryStore store;
  const auto file = store->OpenFile("ORGPRISECHARGE");
  EXPECT_FALSE(file->ReadRecord("001")->found());
  Child child(
      [&](int) { openLocalDatabase(store.path())->write("ORGPRISECHARGE", "001", "CD01"); });
  ASSERT_EQ(child.finish(), 0);
  EXPECT_EQ(file->ReadRecord("001")->fields().text(), "CD01");
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"CD]\""), "001");
}

TEST(Processes, AReaderIsNotHeldUpAndSeesOnlyWhatIsCommitted) {
  TemporaryStore store;
  store.put("TABLES", "1", {"before"});
  Child child([&](int pipe) {
    const auto database = openLocalDatabase(store.path());
    const auto transaction = database->begin();
    database->write("TABLES", "1", "after");
    send(pipe, 1);
    pause();
  });
  unsigned ready = 0;
  ASSERT_TRUE(child.receive(ready));
  const auto other = openLocalDatabase(store.path(), waiting(0));
  EXPECT_EQ(other->OpenFile("TABLES")->ReadRecord("1")->fields().text(), "before");
  EXPECT_EQ(other->ExecuteSentence("SSELECT TABLES AVEC 1 = \"after\"").text(), "");
}

TEST(Processes, AWriterThatWaitsTooLongFailsAndWritesNothing) {
  TemporaryStore store;
  Child child([&](int pipe) {
    const auto database = openLocalDatabase(store.path());
    const auto transaction = database->begin();
    database->write("TABLES", "1", "child");
    send(pipe, 1);
    pause();
  });
  unsigned ready = 0;
  ASSERT_TRUE(child.receive(ready));
  const auto other = openLocalDatabase(store.path(), waiting(60));
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(errorOf([&] { other->write("TABLES", "2", "x"); }), store::kBusy);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(30));
  EXPECT_EQ(errorOf([&] { other->OpenFile("TABLES")->DeleteRecord("1"); }), store::kBusy);
  EXPECT_EQ(errorOf([&] { other->begin(); }), store::kBusy);
  child.killNow();
  child.finish();
  other->write("TABLES", "2", "y");
  EXPECT_EQ(store.select("SSELECT TABLES", "0 1"), "2,y");
}

TEST(Processes, AWriterThatNeedNotWaitTooLongSucceeds) {
  TemporaryStore store;
  Child child([&](int pipe) {
    const auto database = openLocalDatabase(store.path());
    const auto transaction = database->begin();
    database->write("TABLES", "1", "child");
    send(pipe, 1);
    usleep(50000);
    transaction->commit();
  });
  unsigned ready = 0;
  ASSERT_TRUE(child.receive(ready));
  const auto other = openLocalDatabase(store.path(), waiting(10000));
  other->write("TABLES", "2", "parent");
  EXPECT_EQ(store.select("SSELECT TABLES", "1"), "child|parent");
}

TEST(Processes, SeveralWritersLoseNothing) {
  TemporaryStore store;
  const auto writer = [&](char letter) {
    return [&store, letter](int) {
      const auto database = openLocalDatabase(store.path(), waiting(30000));
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

TEST(Processes, AStoreThatMayOnlyBeReadIsRefused) {
  TemporaryStore store;
  store.put("TABLES", "1", {"x"});
  TemporaryFolder folder;
  const std::string path = folder / "read-only.store";
  std::filesystem::copy_file(fromUtf8(store.path()), fromUtf8(path));
  std::filesystem::permissions(fromUtf8(path), std::filesystem::perms(0444));
  Child child([&](int pipe) {
    // Root may write whatever the permissions say.
    if (geteuid() == 0 && seteuid(65534) != 0) _exit(3);
    send(pipe, errorOf([&] { openLocalDatabase(path)->write("TABLES", "1", "y"); }));
    std::ostringstream out;
    std::ostringstream err;
    const std::vector<std::string> query = {"query", path, "SSELECT TABLES"};
    send(pipe, static_cast<unsigned>(localstore::runCommandLine(query, out, err, false)));
    const std::string told = "tessaline-store: " + path + ": the store is read-only\n";
    send(pipe, err.str() == told && out.str().empty() ? 1 : 0);
  });
  unsigned answer = 0;
  ASSERT_TRUE(child.receive(answer));
  EXPECT_EQ(answer, store::kIoFailure);
  ASSERT_TRUE(child.receive(answer));
  EXPECT_EQ(answer, 6U) << "exit code";
  ASSERT_TRUE(child.receive(answer));
  EXPECT_EQ(answer, 1U) << "other words";
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
void writeForever(const std::string& path, unsigned from, int pipe) {
  const auto database = openLocalDatabase(path);
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
unsigned checkRecords(localstore::LocalDatabase& database, unsigned from) {
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

void checkConfirmed(localstore::LocalDatabase& database, const std::vector<unsigned>& confirmed,
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
  TemporaryFolder folder;
  const std::string path = folder / "a.store";
  localstore::createLocalDatabase(path);
  testing_support::Random random(11);
  unsigned next = 1;
  std::vector<unsigned> confirmed;
  for (int round = 0; round < 200 && !HasFailure(); ++round) {
    const std::size_t before = confirmed.size();
    Child child([&](int pipe) { writeForever(path, next, pipe); });
    unsigned number = 0;
    for (unsigned wanted = random() % 4; wanted > 0 && child.receive(number); --wanted) {
      confirmed.push_back(number);
    }
    usleep(static_cast<useconds_t>(random() % 3000));
    child.killNow();
    child.finish();
    while (child.receive(number)) confirmed.push_back(number);
    const auto database = openLocalDatabase(path);
    checkConfirmed(*database, confirmed, before);
    next = std::max(next, checkRecords(*database, next) + 1);
  }
  const auto database = openLocalDatabase(path);
  checkRecords(*database, 0);
  checkConfirmed(*database, confirmed, 0);
  EXPECT_GT(confirmed.size(), 200U);
}

TEST(KilledWriter, LeavesNothingOfAnUnfinishedTransaction) {
  TemporaryFolder folder;
  const std::string path = folder / "a.store";
  localstore::createLocalDatabase(path);
  for (int round = 0; round < 10; ++round) {
    Child child([&](int pipe) {
      localstore::Options options;
      options.cacheSize = 64;  // pages go to the disk before the end
      const auto database = openLocalDatabase(path, options);
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
    const auto database = openLocalDatabase(path);
    ASSERT_EQ(database->recordCount("ORGPRISECHARGE"), 0);
    ASSERT_EQ(database->ExecuteSentence("SSELECT ORGPRISECHARGE AVEC 1 = \"V]\"").text(), "");
  }
}

}  // namespace
