#include "localstore/LocalDatabase.h"

#include <gtest/gtest.h>

#include "ExchangesOfMany.h"
#include "LocalStore.h"
#include "localstore/Place.h"
#include "localstore/SqliteEngine.h"
#include "tests/support/Seed.h"

namespace {

using localstore::createLocalDatabase;
using localstore::openLocalDatabase;

TEST(LocalDatabase, FilesAndRecordsOutliveTheDatabaseObject) {
  TemporaryFolder folder;
  auto database = createLocalDatabase(folder / "a.store");
  auto file = database->OpenFile("TABLES");
  database.reset();
  auto record = file->ReadRecord("K");
  record->fields().setText("x");
  record->DBWrite();
  EXPECT_TRUE(file->ReadRecord("K")->found());
}

TEST(LocalDatabase, AStoreIsFoundAgainAsItWasLeft) {
  TemporaryFolder folder;
  const std::string path = folder / "h\xC3\xB4te \xC5\x93uvre \xE9\xAD\x9A.store";
  {
    const auto database = createLocalDatabase(path);
    database->createFile("MINE");
    database->write("MINE", "1", "x");
  }
  EXPECT_TRUE(std::filesystem::exists(fromUtf8(path)));
  const auto database = openLocalDatabase(path);
  EXPECT_EQ(database->OpenFile("MINE")->ReadRecord("1")->fields().text(), "x");
  EXPECT_EQ(database->fieldName("ORGPRISECHARGE", 1), "SigleOrgChg");
}

// --- Many records at once

TEST(ManyRecords, AnExchangeTellsWhetherAllWereAsExpected) {
  const LocalStore store;
  localstore::SqliteEngine engine(store.path(), localstore::Connection::Mode::Open);
  const auto file = engine.describe("ORGPRISECHARGE");
  expectExchangesOfManyTold(engine, *file);
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"A2\""), "1");
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"A\""), "");
}

TEST(ManyRecords, WhatIsReadIsAlignedWithTheIdentifiers) {
  const LocalStore store;
  store->write("TABLES", "1", "x");
  store->write("TABLES", "2", "");
  localstore::SqliteEngine engine(store.path(), localstore::Connection::Mode::Open);
  const auto file = engine.describe("TABLES");
  const auto whole = engine.begin();
  EXPECT_EQ(engine.readAllLocked(*file, {"2", "9", "1"}),
            (std::vector<std::optional<std::string>>{"", std::nullopt, "x"}));
  EXPECT_TRUE(engine.readAllLocked(*file, {}).empty());
}

// --- Stores that cannot be used

TEST(UnusableStore, AMissingFileOrADirectoryIsNoStore) {
  TemporaryFolder folder;
  EXPECT_EQ(errorOf([&] { openLocalDatabase(folder / "none.store"); }), store::kIoFailure);
  EXPECT_FALSE(std::filesystem::exists(fromUtf8(folder / "none.store")));
  EXPECT_EQ(errorOf([&] { openLocalDatabase(folder / "."); }), store::kIoFailure);
  EXPECT_EQ(errorOf([&] { createLocalDatabase(folder / "."); }), store::kIoFailure);
  EXPECT_EQ(errorOf([&] { createLocalDatabase(folder / "missing/a.store"); }), store::kIoFailure);
  EXPECT_EQ(errorOf([&] { openLocalDatabase(""); }), store::kIoFailure);
}

TEST(UnusableStore, AStoreInMemoryIsNoStore) {
  for (const char* const path : {"", ":memory:"}) {
    EXPECT_EQ(errorOf([&] { createLocalDatabase(path); }), store::kIoFailure);
    EXPECT_EQ(errorOf([&] { openLocalDatabase(path); }), store::kIoFailure);
  }
}

TEST(UnusableStore, ASharesNameIsKnownInAllItsWays) {
  for (const char* const path :
       {R"(\\server\share\a.store)", "//server/share/a.store", R"(\\?\UNC\server\share\a.store)",
        R"(\\.\unc\server\a)", R"(/\server\a)"}) {
    EXPECT_TRUE(localstore::namesShare(path)) << path;
  }
  for (const char* const path : {R"(C:\a.store)", "a.store", R"(\a.store)", "/home/a.store", "",
                                 R"(\\?\C:\a.store)", R"(\\.\C:\a.store)"}) {
    EXPECT_FALSE(localstore::namesShare(path)) << path;
  }
}

// The log of a large transaction does not stay that large.
TEST(LocalDatabase, TheLogIsBounded) {
  LocalStore store;
  const auto logSize = [&] { return std::filesystem::file_size(fromUtf8(store.path() + "-wal")); };
  {
    const auto transaction = store->begin();
    for (int i = 0; i < 30000; ++i) {
      store->write("TABLES", std::to_string(i), std::string(1000, 'x'));
    }
    transaction->commit();
  }
  EXPECT_GT(logSize(), std::uintmax_t{20} << 20);
  for (int i = 0; i < 3; ++i) store->write("TABLES", "1", std::to_string(i));
  EXPECT_LE(logSize(), std::uintmax_t{16} << 20);
}

TEST(UnusableStore, AnExistingFileIsNotOverwritten) {
  LocalStore store;
  store->write("TABLES", "1", "x");
  EXPECT_EQ(errorOf([&] { createLocalDatabase(store.path()); }), store::kIoFailure);
  EXPECT_EQ(store.select("SSELECT TABLES"), "1");
}

TEST(UnusableStore, AnotherKindOfFileIsNoStore) {
  TemporaryFolder folder;
  const std::string path = folder / "a.store";
  for (const std::string& content :
       {std::string(), std::string("text"), std::string(5000, 'x'),
        std::string("SQLite format 3") + '\0' + std::string(5000, '\1')}) {
    writeText(path, content);
    EXPECT_EQ(errorOf([&] { openLocalDatabase(path); }), store::kIoFailure) << content.size();
    EXPECT_EQ(readText(path), content);
  }
  EXPECT_EQ(messageOf([&] {
              writeText(path, "");
              openLocalDatabase(path);
            }),
            path + ": the file is no store");
}

// Everything a damaged store may be asked; what it answers is not looked at.
void askEverything(const std::string& path) {
  const auto database = openLocalDatabase(path);
  for (const std::string& name : database->fileNames()) {
    database->forEachRecord(name, [](std::string_view, std::string_view) {});
  }
  database->ExecuteSentence("SSELECT ORGPRISECHARGE AVEC 1 = \"S]\" PAR 1");
  database->write("ORGPRISECHARGE", "00500", recordText({"SX", "y"}));
  database->OpenFile("ORGPRISECHARGE")->DeleteRecord("00400");
}

TEST(UnusableStore, ADamagedFileIsAnErrorAndNeverACrash) {
  TemporaryFolder folder;
  const std::string whole = folder / "whole.store";
  {
    const auto database = createLocalDatabase(whole);
    const auto transaction = database->begin();
    for (int i = 0; i < 2000; ++i) {
      database->write("ORGPRISECHARGE", std::to_string(100000 + i),
                      recordText({"S" + std::to_string(i), std::string(50, 'x')}));
    }
    transaction->commit();
  }
  const std::string content = readText(whole);
  const std::string damaged = folder / "damaged.store";
  testing_support::Random random(7);
  int errors = 0;
  for (int round = 0; round < 60; ++round) {
    std::string text = content;
    if (round % 6 == 0) text.resize(random() % text.size());
    for (int scratch = 0; scratch < 40 && !text.empty(); ++scratch) {
      const std::size_t at = random() % text.size();
      // The first page's header stays in half of the rounds, so that the damage is met later.
      if (round % 2 == 0 && at < 100) continue;
      for (std::size_t i = at; i < std::min(at + 64, text.size()); ++i) {
        text[i] = static_cast<char>(random());
      }
    }
    for (const char* const tail : {"-wal", "-shm"}) std::filesystem::remove(damaged + tail);
    writeText(damaged, text);
    errors += errorOf([&] { askEverything(damaged); }) != 0;
  }
  EXPECT_GT(errors, 30);
}

}  // namespace
