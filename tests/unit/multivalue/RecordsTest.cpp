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

TEST(Records, WhatCouldNotBeToldFromMarksOutsideIsRefused) {
  TemporaryStore store;
  const auto file = store->OpenFile("TABLES");
  for (const char* const text : {"\xC3\xBD",
                                 "a\xC3\xBE"
                                 "b"}) {
    const auto record = file->ReadRecord("K");
    record->fields().set(2, text);
    EXPECT_EQ(errorOf([&] { record->DBWrite(); }), store::kBadValue);
    EXPECT_EQ(errorOf([&] { store->write("TABLES", "K", text); }), store::kBadValue);
    EXPECT_EQ(errorOf([&] { store->write("TABLES", text, "x"); }), store::kBadValue);
  }
  EXPECT_EQ(store->recordCount("TABLES"), 0);
  store->write("TABLES", "K", "\xC3\xBC\xC3\xBF");  // ü and ÿ
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

TEST(Records, ManyAreWrittenAsOneAfterTheOther) {
  const TemporaryStore store;
  store.put("ORGPRISECHARGE", "2", {"old;gone"});
  std::vector<multivalue::Database::Written> records;
  for (int i = 0; i < 1200; ++i) records.push_back({std::to_string(i), "A" + std::to_string(i)});
  records.push_back({"7", "last"});
  records.push_back({"2", recordText({"new;old"})});
  store->writeAll("ORGPRISECHARGE", records);
  EXPECT_EQ(store->recordCount("ORGPRISECHARGE"), 1200);
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"last\""), "7");
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"A7\""), "");
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"old\""), "2");
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"gone\""), "");
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"A1199\""), "1199");
  store->writeAll("ORGPRISECHARGE", {});
  EXPECT_EQ(store.underTest().fault(), "");
}

TEST(Records, OfManyNoneIsWrittenWhereOneIsRefused) {
  const TemporaryStore store;
  std::vector<multivalue::Database::Written> records;
  for (int i = 0; i < 700; ++i) records.push_back({std::to_string(i), "A"});
  for (const multivalue::Database::Written& wrong :
       {multivalue::Database::Written{"", "A"}, {"a\xFE", "A"}, {"a", "\xC3\xBE"}}) {
    records.push_back(wrong);
    EXPECT_EQ(errorOf([&] { store->writeAll("ORGPRISECHARGE", records); }), store::kBadValue);
    records.pop_back();
  }
  EXPECT_EQ(errorOf([&] { store->writeAll("NONE", records); }), store::kUnknownFile);
  EXPECT_EQ(store->recordCount("ORGPRISECHARGE"), 0);
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

// --- Records that somebody else has changed

class TwoClients : public testing::Test {
 protected:
  std::unique_ptr<store::Record> read() { return mine_->ReadRecord("K"); }
  // Writes a text over a record in hand.
  static unsigned write(store::Record& record, std::string_view text) {
    record.fields().setText(text);
    return errorOf([&] { record.DBWrite(); });
  }
  std::string stored() const {
    const auto file = store_.connect()->OpenFile("ORGPRISECHARGE");
    const auto record = file->ReadRecord("K");
    return record->found() ? record->fields().text() : "none";
  }

  TemporaryStore store_;
  std::shared_ptr<multivalue::Database> other_ = store_.connect();
  std::unique_ptr<store::File> mine_ = store_->OpenFile("ORGPRISECHARGE");
  std::unique_ptr<store::File> theirs_ = other_->OpenFile("ORGPRISECHARGE");
};

TEST_F(TwoClients, WhatSomebodyElseHasChangedIsNotOverwritten) {
  store_->write("ORGPRISECHARGE", "K", "before");
  const auto record = read();
  EXPECT_EQ(write(*theirs_->ReadRecord("K"), "theirs"), 0U);
  EXPECT_EQ(write(*record, "mine"), store::kChanged);
  EXPECT_EQ(write(*record, "mine"), store::kChanged) << "a second time";
  EXPECT_EQ(stored(), "theirs");
  EXPECT_EQ(store_.select("SSELECT ORGPRISECHARGE AVEC 1 = \"theirs\""), "K");
  EXPECT_EQ(write(*read(), "mine"), 0U);
  EXPECT_EQ(stored(), "mine");
}

TEST_F(TwoClients, WhatSomebodyElseHasCreatedIsNotOverwritten) {
  const auto record = read();
  other_->write("ORGPRISECHARGE", "K", "theirs");
  EXPECT_EQ(write(*record, "mine"), store::kChanged);
  EXPECT_EQ(stored(), "theirs");
}

TEST_F(TwoClients, AnEmptyRecordOfSomebodyElseIsNotOverwrittenEither) {
  const auto record = read();
  other_->write("ORGPRISECHARGE", "K", "");
  EXPECT_EQ(write(*record, "mine"), store::kChanged);
  EXPECT_EQ(stored(), "");
}

TEST_F(TwoClients, WhatSomebodyElseHasDeletedDoesNotComeBack) {
  store_->write("ORGPRISECHARGE", "K", "before");
  const auto record = read();
  EXPECT_EQ(theirs_->DeleteRecord("K"), 0);
  EXPECT_EQ(write(*record, "mine"), store::kChanged);
  EXPECT_EQ(stored(), "none");
}

TEST_F(TwoClients, WhatSomebodyElseHasPutBackIsAsItWasRead) {
  store_->write("ORGPRISECHARGE", "K", "before");
  const auto record = read();
  other_->write("ORGPRISECHARGE", "K", "theirs");
  other_->write("ORGPRISECHARGE", "K", "before");
  EXPECT_EQ(write(*record, "mine"), 0U);
}

TEST_F(TwoClients, OnesOwnWritesAndDeletionsAreNobodyElses) {
  const auto record = read();
  const auto again = read();
  EXPECT_EQ(write(*record, "first"), 0U);
  EXPECT_EQ(write(*record, "second"), 0U);
  EXPECT_EQ(write(*again, "third"), 0U) << "by the other record in hand";
  EXPECT_EQ(write(*record, "fourth"), 0U);
  EXPECT_EQ(mine_->DeleteRecord("K"), 0);
  EXPECT_EQ(write(*again, "fifth"), 0U);
  store_->write("ORGPRISECHARGE", "K", "sixth");
  EXPECT_EQ(write(*record, "seventh"), 0U);
  store_->writeAll("ORGPRISECHARGE", {{"J", "x"}, {"K", "eighth"}});
  EXPECT_EQ(write(*record, "ninth"), 0U);
  EXPECT_EQ(stored(), "ninth");
}

// What this client has read and written since says nothing of a record that it read before.
TEST_F(TwoClients, ARecordReadBeforeSomebodyElsesChangeStaysRefused) {
  store_->write("ORGPRISECHARGE", "K", "before");
  const auto early = read();
  other_->write("ORGPRISECHARGE", "K", "theirs");
  EXPECT_EQ(write(*read(), "theirs and mine"), 0U);
  EXPECT_EQ(write(*early, "mine"), store::kChanged);
  EXPECT_EQ(stored(), "theirs and mine");
}

TEST_F(TwoClients, AnUndoneTransactionLeavesARecordAsItWasRead) {
  store_->write("ORGPRISECHARGE", "K", "before");
  const auto record = read();
  {
    const auto transaction = store_->begin();
    EXPECT_EQ(write(*record, "undone"), 0U);
    EXPECT_EQ(write(*record, "undone too"), 0U);
  }
  EXPECT_EQ(write(*record, "mine"), 0U);
  {
    const auto transaction = store_->begin();
    EXPECT_EQ(write(*record, "kept"), 0U);
    transaction->commit();
  }
  EXPECT_EQ(write(*record, "after"), 0U);
  EXPECT_EQ(stored(), "after");
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
