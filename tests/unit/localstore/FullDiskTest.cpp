// Stores that may grow so far and no further: as on a full disk.
#include <gtest/gtest.h>

#include <filesystem>

#include "AgreementStore.h"
#include "LocalStoreUnderTest.h"
#include "localstore/LocalDatabase.h"

namespace {

using localstore::createLocalDatabase;
using localstore::openLocalDatabase;

// A new one that may grow by so many pages.
auto newStoreWithRoomFor(const std::string& path, long pages) {
  createLocalDatabase(path);
  localstore::Options options;
  options.maxPages = static_cast<long>(std::filesystem::file_size(path) / 4096) + pages;
  return openLocalDatabase(path, options);
}

TEST(FullDisk, ARefusedWriteChangesNothing) {
  TemporaryFolder folder;
  const std::string path = folder / "a.store";
  const auto database = newStoreWithRoomFor(path, 8);
  const auto file = database->OpenFile("ORGPRISECHARGE");
  int written = 0;
  unsigned code = 0;
  while (code == 0 && written < 1000) {
    const auto record = file->ReadRecord(std::to_string(1000 + written));
    record->fields().setText(recordText({"S" + std::to_string(written), std::string(900, 'x')}));
    code = errorOf([&] { record->DBWrite(); });
    written += code == 0;
  }
  EXPECT_EQ(code, store::kIoFailure);
  EXPECT_GT(written, 3);
  EXPECT_EQ(database->recordCount("ORGPRISECHARGE"), written);
  const auto selected = database->ExecuteSentence("SSELECT ORGPRISECHARGE AVEC 1 = \"S]\"");
  EXPECT_EQ(selected.DCount(), written);
  EXPECT_EQ(file->DeleteRecord("1000"), 0);
}

TEST(FullDisk, AStoreThatDoesNotFitIsNotMade) {
  TemporaryFolder folder;
  localstore::Options options;
  options.maxPages = 2;
  EXPECT_EQ(errorOf([&] { createLocalDatabase(folder / "a.store", options); }), store::kIoFailure);
  EXPECT_TRUE(std::filesystem::is_empty(fromUtf8(folder / ".")));
}

TEST(FullDisk, ATransactionThatDoesNotFitIsUndoneWhole) {
  TemporaryFolder folder;
  const std::string path = folder / "a.store";
  const auto database = newStoreWithRoomFor(path, 20);
  const auto fill = [&] {
    const auto transaction = database->begin();
    for (int i = 0; i < 10000; ++i) {
      database->write("TABLES", std::to_string(i), std::string(500, 'x'));
    }
    transaction->commit();
  };
  EXPECT_EQ(errorOf(fill), store::kIoFailure);
  EXPECT_EQ(database->recordCount("TABLES"), 0);
  database->write("TABLES", "1", "x");
  EXPECT_EQ(database->recordCount("TABLES"), 1);
}

// SQLite undoes the whole by itself: what came after it was once kept without what came before.
TEST(FullDisk, ATransactionThatHasFailedTakesNoMoreWrites) {
  TemporaryFolder folder;
  const std::string path = folder / "a.store";
  const auto database = newStoreWithRoomFor(path, 20);
  const auto file = database->OpenFile("TABLES");
  {
    const auto transaction = database->begin();
    unsigned code = 0;
    for (int i = 0; i < 10000 && code == 0; ++i) {
      code = errorOf([&] { database->write("TABLES", std::to_string(i), std::string(500, 'x')); });
    }
    EXPECT_EQ(code, store::kIoFailure);
    EXPECT_EQ(messageOf([&] { database->write("TABLES", "after", "x"); }),
              path + ": the transaction has been undone by an earlier failure");
    EXPECT_EQ(errorOf([&] { file->DeleteRecord("0"); }), store::kIoFailure);
    EXPECT_EQ(errorOf([&] { file->ReadRecord("after")->DBWrite(); }), store::kIoFailure);
    EXPECT_EQ(errorOf([&] { database->createFile("NEW"); }), store::kIoFailure);
    EXPECT_EQ(errorOf([&] { transaction->commit(); }), store::kIoFailure);
  }
  EXPECT_EQ(database->recordCount("TABLES"), 0);
  database->write("TABLES", "1", "x");
  EXPECT_EQ(database->recordCount("TABLES"), 1);
}

// With ever more room, the write fails ever later, and then not at all.
TEST(FullDisk, AnAgreementUpdateThatDoesNotFitLeavesAllAsItWas) {
  const AgreementStore store;
  const auto& file = dynamic_cast<const LocalStoreUnderTest&>(store.underTest());
  store.putBody();
  store.putElements("00001", "90000");
  {
    const auto transaction = store->begin();
    for (int i = 100; i < 400; ++i) {
      store.putAgreement("00001" + std::to_string(i), {{9, std::string(40, 'x')}});
      store.putAgreement("00002" + std::to_string(i));
    }
    store->write("TEMPO", "ACCORDSLIMITE125", "old");
    transaction->commit();
  }
  const Content agreements = contentOf(*store, "ACCORD");
  const Content lists = contentOf(*store, "TEMPO");
  const long smallest = static_cast<long>(std::filesystem::file_size(file.path()) / 4096);
  int failures = 0;
  for (long room = 0;; ++room) {
    localstore::Options options;
    options.cacheSize = 16;
    options.maxPages = smallest + room;
    const auto database = localstore::openLocalDatabase(file.path(), options);
    const unsigned code =
        errorOf([&] { database->ExecuteSentence(updateRequest(kScaleDate, "125")); });
    if (code == 0) break;
    ++failures;
    ASSERT_EQ(code, store::kIoFailure);
    ASSERT_EQ(contentOf(*database, "ACCORD"), agreements) << room;
    ASSERT_EQ(contentOf(*database, "TEMPO"), lists) << room;
  }
  EXPECT_GT(failures, 2);
  EXPECT_EQ(store.modified().size(), 300 * 9U - 1);
  EXPECT_EQ(store.limit().size(), 300 * 9U - 1);
}

}  // namespace
