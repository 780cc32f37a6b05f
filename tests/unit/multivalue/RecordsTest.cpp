// Records, files and transactions, as every engine keeps them.
#include <gtest/gtest.h>

#include "TemporaryStore.h"

namespace {

TEST(Records, ARecordComesBackExactlyAsWritten) {
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

TEST(Records, ARecordThatDoesNotExistReadsEmptyAndCanBeWritten) {
  TemporaryStore store;
  const auto file = store->OpenFile("TABLES");
  const auto record = file->ReadRecord("K");
  EXPECT_FALSE(record->found());
  EXPECT_TRUE(record->fields().empty());
  record->fields().set(2, "x");
  record->DBWrite();
  EXPECT_EQ(file->ReadRecord("K")->fields().get(2), "x");
}

TEST(Records, KeysAreComparedByteByByte) {
  TemporaryStore store;
  store.put("TABLES", "k", {"lower"});
  store.put("TABLES", "K", {"upper"});
  store.put("TABLES", "K ", {"blank"});
  const auto file = store->OpenFile("TABLES");
  EXPECT_EQ(file->ReadRecord("k")->fields().text(), "lower");
  EXPECT_EQ(file->ReadRecord("K")->fields().text(), "upper");
  EXPECT_EQ(file->ReadRecord("K ")->fields().text(), "blank");
}

TEST(Records, DeletingTellsWhetherThereWasARecord) {
  TemporaryStore store;
  store.put("TABLES", "K", {"x"});
  const auto file = store->OpenFile("TABLES");
  EXPECT_EQ(file->DeleteRecord("K"), 0);
  EXPECT_EQ(file->DeleteRecord("K"), static_cast<int>(store::kRecordNotFound));
  EXPECT_FALSE(file->ReadRecord("K")->found());
}

TEST(Records, AnIdentifierIsNotEmptyAndHoldsNoMark) {
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

TEST(Records, AnUnknownFileIsRefused) {
  TemporaryStore store;
  EXPECT_EQ(errorOf([&] { store->OpenFile("NOWHERE"); }), store::kUnknownFile);
  EXPECT_EQ(errorOf([&] { store->OpenFile(""); }), store::kUnknownFile);
  EXPECT_EQ(errorOf([&] { store->OpenFile("orgprisecharge"); }), store::kUnknownFile);
  EXPECT_EQ(errorOf([&] { store->write("NOWHERE", "1", ""); }), store::kUnknownFile);
}

TEST(Records, FileNamesAreKeptFromWhatASentenceOrATableCannotSay) {
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

TEST(Records, TwoObjectsOnOneStoreSeeEachOthersFilesAtOnce) {
  TemporaryStore one;
  const auto other = one.connect();
  EXPECT_EQ(errorOf([&] { other->OpenFile("LATER"); }), store::kUnknownFile);
  one->createFile("LATER");
  one->write("LATER", "1", "x");
  EXPECT_EQ(other->OpenFile("LATER")->ReadRecord("1")->fields().text(), "x");
  other->write("LATER", "1", "y");
  EXPECT_EQ(one.select("SSELECT LATER AVEC 1 = \"y\""), "1");
}

TEST(Records, ATransactionIsKeptWholeOrNotAtAll) {
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

TEST(Records, AFileOfAnUndoneTransactionIsForgottenByTheNextToo) {
  TemporaryStore store;
  {
    const auto transaction = store->begin();
    store->createFile("ONE");
    store->write("ONE", "1", "x");
  }
  store->createFile("TWO");
  EXPECT_EQ(errorOf([&] { store->write("ONE", "1", "x"); }), store::kUnknownFile);
}

TEST(Records, ARefusedWriteInATransactionLeavesTheOthers) {
  TemporaryStore store;
  const auto transaction = store->begin();
  store.put("ORGPRISECHARGE", "1", {"A"});
  EXPECT_EQ(errorOf([&] { store->write("ORGPRISECHARGE", "", "B"); }), store::kBadValue);
  store.put("ORGPRISECHARGE", "2", {"C"});
  transaction->commit();
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE PAR 1", "1"), "A|C");
}

TEST(Records, RecordsAreVisitedByKeyWhileOthersAreRead) {
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

}  // namespace
