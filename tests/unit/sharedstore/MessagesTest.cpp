// How often each call goes to the server and back: what makes a distant one slow.
#include <gtest/gtest.h>

#include "SharedStoreUnderTest.h"
#include "sharedstore/SharedEngine.h"
#include "store/Request.h"
#include "tests/support/StoreText.h"

namespace {

class Messages : public testing::Test {
 protected:
  Messages() {
    auto engine = std::make_unique<sharedstore::SharedEngine>(store_.connection());
    connection_ = &engine->connection();
    database_ = multivalue::databaseOver(std::move(engine));
  }
  template <typename Action>
  int messagesOf(const Action& action) const {
    const int before = connection_->messages();
    action();
    return connection_->messages() - before;
  }
  void fill(int records) const {
    const auto transaction = database_->begin();
    for (int i = 0; i < records; ++i) {
      database_->write("ACCORD", std::to_string(10000 + i), recordText({"125"}));
    }
    transaction->commit();
  }
  // What a transaction has seen of the files is forgotten with it.
  void open() const { database_->OpenFile("ACCORD"); }

  SharedStoreUnderTest store_;
  std::shared_ptr<multivalue::Database> database_;
  sharedstore::Connection* connection_ = nullptr;
};

TEST_F(Messages, ARecordReadAndWritten) {
  std::unique_ptr<store::File> file;
  EXPECT_EQ(messagesOf([&] { file = database_->OpenFile("ORGPRISECHARGE"); }), 1);
  EXPECT_EQ(messagesOf([&] { file = database_->OpenFile("ORGPRISECHARGE"); }), 0);
  std::unique_ptr<store::Record> record;
  EXPECT_EQ(messagesOf([&] { record = file->ReadRecord("1"); }), 1);
  record->fields().setText(recordText({"A", "x"}));
  EXPECT_EQ(messagesOf([&] { record->DBWrite(); }), 1);
  record->fields().setText(recordText({"A", "y"}));
  EXPECT_EQ(messagesOf([&] { record->DBWrite(); }), 1);
  record->fields().setText(recordText({"B", "y"}));
  EXPECT_EQ(messagesOf([&] { record->DBWrite(); }), 1) << "an entry goes, another comes";
  EXPECT_EQ(messagesOf([&] { file->DeleteRecord("1"); }), 4);
  EXPECT_EQ(messagesOf([&] { file->DeleteRecord("1"); }), 3);
}

TEST_F(Messages, AWriteInATransactionOfTheCallersOwn) {
  const auto transaction = database_->begin();
  database_->write("TABLES", "0", "x");
  EXPECT_EQ(messagesOf([&] { database_->write("TABLES", "1", "x"); }), 2);
  EXPECT_EQ(messagesOf([&] { database_->write("TABLES", "1", "y"); }), 2);
  EXPECT_EQ(messagesOf([&] { transaction->commit(); }), 1);
}

TEST_F(Messages, ManyRecordsInBlocks) {
  std::vector<multivalue::Database::Written> records;
  for (int i = 0; i < 10000; ++i) {
    records.push_back({std::to_string(10000 + i), recordText({"125"})});
  }
  const auto write = [&] { database_->writeAll("ACCORD", records); };
  open();
  // The files' number, a reading and a writing for each 500, the end.
  EXPECT_EQ(messagesOf(write), 42);
  for (auto& each : records) each.record = recordText({"126"});
  EXPECT_EQ(messagesOf(write), 42);
  EXPECT_EQ(database_->recordCount("ACCORD"), 10000);
  EXPECT_EQ(store_.fault(), "");
}

TEST_F(Messages, ASelectionInBlocks) {
  const auto select = [&] {
    database_->ExecuteSentence(
        "SSELECT ACCORD AVEC OrgChgAcc = \"125\" AND AVEC 18 = \"\" AND AVEC @ID = \"1]\" PAR 6");
  };
  open();
  EXPECT_EQ(messagesOf(select), 1);
  fill(sharedstore::Rows::kBlock - 1);
  open();
  EXPECT_EQ(messagesOf(select), 1);
  fill(sharedstore::Rows::kBlock);
  open();
  EXPECT_EQ(messagesOf(select), 2) << "the next block is empty";
  fill(2 * sharedstore::Rows::kBlock + 1);
  open();
  EXPECT_EQ(messagesOf(select), 3);
}

}  // namespace
