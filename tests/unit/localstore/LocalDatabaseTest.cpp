#include "localstore/LocalDatabase.h"

#include <gtest/gtest.h>

#include "TemporaryStore.h"
#include "tests/support/Seed.h"

namespace {

using localstore::createLocalDatabase;
using localstore::openLocalDatabase;

TEST(LocalDatabase, ARecordComesBackExactlyAsWritten) {
  TemporaryStore store;
  const auto file = store->OpenFile("TABLES");
  const std::string texts[] = {"",
                               "A",
                               recordText({"A", "", "x;y;;z", ""}),
                               std::string("a\0b", 3),
                               "\xC3\xA9 \xFF \x01 \"quoted\" 'too'\r\n",
                               std::string(200000, 'x')};
  for (const std::string& text : texts) {
    const auto record = file->ReadRecord("K");
    record->fields().setText(text);
    record->DBWrite();
    const auto again = file->ReadRecord("K");
    EXPECT_TRUE(again->found());
    EXPECT_EQ(again->fields().text(), text);
  }
}

TEST(LocalDatabase, ARecordThatDoesNotExistReadsEmptyAndCanBeWritten) {
  TemporaryStore store;
  const auto file = store->OpenFile("TABLES");
  const auto record = file->ReadRecord("K");
  EXPECT_FALSE(record->found());
  EXPECT_TRUE(record->fields().empty());
  record->fields().set(2, "x");
  record->DBWrite();
  EXPECT_EQ(file->ReadRecord("K")->fields().get(2), "x");
}

TEST(LocalDatabase, KeysAreComparedByteByByte) {
  TemporaryStore store;
  store.put("TABLES", "k", {"lower"});
  store.put("TABLES", "K", {"upper"});
  store.put("TABLES", "K ", {"blank"});
  const auto file = store->OpenFile("TABLES");
  EXPECT_EQ(file->ReadRecord("k")->fields().text(), "lower");
  EXPECT_EQ(file->ReadRecord("K")->fields().text(), "upper");
  EXPECT_EQ(file->ReadRecord("K ")->fields().text(), "blank");
}

TEST(LocalDatabase, DeletingTellsWhetherThereWasARecord) {
  TemporaryStore store;
  store.put("TABLES", "K", {"x"});
  const auto file = store->OpenFile("TABLES");
  EXPECT_EQ(file->DeleteRecord("K"), 0);
  EXPECT_EQ(file->DeleteRecord("K"), static_cast<int>(store::kRecordNotFound));
  EXPECT_FALSE(file->ReadRecord("K")->found());
}

TEST(LocalDatabase, AnIdentifierIsNotEmptyAndHoldsNoMark) {
  TemporaryStore store;
  const auto file = store->OpenFile("ORGPRISECHARGE");
  for (const char* const id : {"", "a\xFE", "\xFD",
                               "a\xFD"
                               "b"}) {
    const auto record = file->ReadRecord(id);
    EXPECT_FALSE(record->found());
    EXPECT_EQ(errorOf([&] { record->DBWrite(); }), store::kBadValue);
    EXPECT_EQ(errorOf([&] { file->DeleteRecord(id); }), 0U);
  }
  EXPECT_EQ(store->recordCount("ORGPRISECHARGE"), 0);
}

TEST(LocalDatabase, AnUnknownFileIsRefused) {
  TemporaryStore store;
  EXPECT_EQ(errorOf([&] { store->OpenFile("NOWHERE"); }), store::kUnknownFile);
  EXPECT_EQ(errorOf([&] { store->OpenFile(""); }), store::kUnknownFile);
  EXPECT_EQ(errorOf([&] { store->OpenFile("orgprisecharge"); }), store::kUnknownFile);
  EXPECT_EQ(errorOf([&] { store->write("NOWHERE", "1", ""); }), store::kUnknownFile);
}

TEST(LocalDatabase, FileNamesAreKeptFromWhatASentenceOrATableCannotSay) {
  TemporaryStore store;
  for (const char* const name : {"", "A B", "A\"B", "A;B", "\xC3\xA9", "A=1"}) {
    EXPECT_EQ(errorOf([&] { store->createFile(name); }), store::kBadValue) << name;
  }
  EXPECT_EQ(errorOf([&] { store->createFile("accord"); }), store::kBadValue);
  store->createFile("ACCORD");
  store->createFile("NEW-FILE_2.x");
  store.put("NEW-FILE_2.x", "1", {"a"});
  EXPECT_EQ(store.select("SSELECT NEW-FILE_2.x", "0 1"), "1,a");
}

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

TEST(LocalDatabase, TwoObjectsOnOneStoreSeeEachOthersFilesAtOnce) {
  TemporaryStore one;
  const auto other = openLocalDatabase(one.path());
  EXPECT_EQ(errorOf([&] { other->OpenFile("LATER"); }), store::kUnknownFile);
  one->createFile("LATER");
  one->write("LATER", "1", "x");
  EXPECT_EQ(other->OpenFile("LATER")->ReadRecord("1")->fields().text(), "x");
  other->write("LATER", "1", "y");
  EXPECT_EQ(one.select("SSELECT LATER AVEC 1 = \"y\""), "1");
}

TEST(LocalDatabase, ATransactionIsKeptWholeOrNotAtAll) {
  TemporaryStore store;
  {
    const auto transaction = store->begin();
    store->createFile("NEW");
    store->write("NEW", "1", "x");
    store.put("ORGPRISECHARGE", "1", {"A"});
    EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"A\""), "1");
  }
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"A\""), "");
  EXPECT_EQ(errorOf([&] { store->OpenFile("NEW"); }), store::kUnknownFile);
  {
    const auto transaction = store->begin();
    store.put("ORGPRISECHARGE", "1", {"A"});
    transaction->commit();
  }
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"A\""), "1");
}

TEST(LocalDatabase, AFileOfAnUndoneTransactionIsForgottenByTheNextToo) {
  TemporaryStore store;
  {
    const auto transaction = store->begin();
    store->createFile("ONE");
    store->write("ONE", "1", "x");
  }
  store->createFile("TWO");
  EXPECT_EQ(errorOf([&] { store->write("ONE", "1", "x"); }), store::kUnknownFile);
}

TEST(LocalDatabase, ARefusedWriteInATransactionLeavesTheOthers) {
  TemporaryStore store;
  const auto transaction = store->begin();
  store.put("ORGPRISECHARGE", "1", {"A"});
  EXPECT_EQ(errorOf([&] { store->write("ORGPRISECHARGE", "", "B"); }), store::kBadValue);
  store.put("ORGPRISECHARGE", "2", {"C"});
  transaction->commit();
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE PAR 1", "1"), "A|C");
}

TEST(LocalDatabase, RecordsAreVisitedByKeyWhileOthersAreRead) {
  TemporaryStore store;
  for (const char* const id : {"2", "1", "3"}) store.put("TABLES", id, {id});
  std::string seen;
  const auto file = store->OpenFile("TABLES");
  store->forEachRecord("TABLES", [&](std::string_view id, std::string_view record) {
    seen += id;
    seen += record;
    store->forEachRecord("TABLES",
                         [&](std::string_view inner, std::string_view) { seen += inner; });
    seen += file->ReadRecord(id)->fields().text();
  });
  EXPECT_EQ(seen, "111231221232331233");
  EXPECT_EQ(store->recordCount("TABLES"), 3);
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

TEST(UnusableStore, AnExistingFileIsNotOverwritten) {
  TemporaryStore store;
  store.put("TABLES", "1", {"x"});
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

TEST(FullDisk, ARefusedWriteChangesNothing) {
  TemporaryFolder folder;
  const std::string path = folder / "a.store";
  createLocalDatabase(path);
  localstore::Options options;
  options.maxPages = static_cast<long>(std::filesystem::file_size(path) / 4096 + 8);
  const auto database = openLocalDatabase(path, options);
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
}

TEST(FullDisk, ATransactionThatDoesNotFitIsUndoneWhole) {
  TemporaryFolder folder;
  const std::string path = folder / "a.store";
  createLocalDatabase(path);
  localstore::Options options;
  options.maxPages = static_cast<long>(std::filesystem::file_size(path) / 4096 + 20);
  const auto database = openLocalDatabase(path, options);
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

}  // namespace
