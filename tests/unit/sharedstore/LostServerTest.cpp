// Sessions that the server ends, between two calls and within them.
#include <gtest/gtest.h>

#include "SharedStoreUnderTest.h"
#include "tests/support/StoreText.h"

namespace {

class LostServer : public testing::Test {
 protected:
  void endSessions() const {
    sharedstore::Statement ended(
        store_.administrator(),
        sharedstore::Sql("SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity"
                         " WHERE application_name LIKE current_schema() || '%'"));
    int sessions = 0;
    while (ended.next()) ++sessions;
    EXPECT_GE(sessions, 1);
  }
  std::string stored(std::string_view id) const {
    const auto record = store_.connect({})->OpenFile("ORGPRISECHARGE")->ReadRecord(id);
    return record->found() ? record->fields().text() : "none";
  }

  SharedStoreUnderTest store_;
  std::shared_ptr<multivalue::Database> database_ = store_.connect({});
};

TEST_F(LostServer, ReadingsAreTriedOnceMore) {
  database_->write("ORGPRISECHARGE", "1", "A");
  const auto file = database_->OpenFile("ORGPRISECHARGE");
  endSessions();
  EXPECT_EQ(file->ReadRecord("1")->fields().text(), "A");
  endSessions();
  EXPECT_EQ(database_->ExecuteSentence("SSELECT ORGPRISECHARGE AVEC 1 = \"A\"").text(), "1");
  endSessions();
  EXPECT_EQ(database_->recordCount("ORGPRISECHARGE"), 1);
  const auto other = store_.connect({});
  endSessions();
  EXPECT_TRUE(other->OpenFile("ACCORD"));
  endSessions();
  EXPECT_GT(database_->fileNames().size(), 8U);
}

// The session's bound goes with it, and comes with the next.
TEST_F(LostServer, ANewSessionHasWhatTheLastOneHad) {
  Connecting impatient;
  impatient.busyTimeout = 30;
  const auto mine = store_.connect(impatient);
  endSessions();
  for (const unsigned error : {store::kIoFailure, 0U}) {
    const auto undone = mine->begin();
    EXPECT_EQ(errorOf([&] { mine->write("ORGPRISECHARGE", "1", "undone"); }), error);
  }
  const auto other = store_.connect({});
  other->write("ORGPRISECHARGE", "1", "");
  const auto transaction = other->begin();
  other->write("ORGPRISECHARGE", "1", "theirs");
  EXPECT_EQ(errorOf([&] { mine->write("ORGPRISECHARGE", "1", "mine"); }), store::kBusy);
}

TEST_F(LostServer, AWriteThatWasNotBegunIsDoneOnce) {
  const auto file = database_->OpenFile("ORGPRISECHARGE");
  const auto record = file->ReadRecord("1");
  endSessions();
  record->fields().setText("A");
  record->DBWrite();
  EXPECT_EQ(stored("1"), "A");
  endSessions();
  EXPECT_EQ(file->DeleteRecord("1"), 0);
  EXPECT_EQ(stored("1"), "none");
}

TEST_F(LostServer, ATransactionOfTheCallersOwnIsLostWithIt) {
  {
    const auto transaction = database_->begin();
    database_->write("ORGPRISECHARGE", "1", "A");
    endSessions();
    EXPECT_EQ(errorOf([&] { database_->write("ORGPRISECHARGE", "2", "A"); }), store::kIoFailure);
    EXPECT_EQ(errorOf([&] { database_->recordCount("ORGPRISECHARGE"); }), store::kIoFailure);
    EXPECT_EQ(errorOf([&] { transaction->commit(); }), store::kIoFailure);
  }
  EXPECT_EQ(database_->recordCount("ORGPRISECHARGE"), 0);
  database_->write("ORGPRISECHARGE", "3", "A");
  EXPECT_EQ(stored("3"), "A");
}

// The client cannot tell whether the server has kept it, so it says that, and does nothing twice.
TEST_F(LostServer, AWriteThatWasNotConfirmedIsOfUnknownOutcome) {
  {
    const auto transaction = database_->begin();
    database_->write("ORGPRISECHARGE", "1", "A");
    endSessions();
    EXPECT_EQ(errorOf([&] { transaction->commit(); }), store::kOutcomeUnknown);
  }
  EXPECT_EQ(stored("1"), "none");
  database_->write("ORGPRISECHARGE", "1", "B");
  EXPECT_EQ(stored("1"), "B");
}

TEST_F(LostServer, AnAnswerThatIsCutOffIsNotTakenForWhole) {
  {
    const auto transaction = database_->begin();
    for (int i = 0; i < 1200; ++i) database_->write("TABLES", std::to_string(i), "x");
    transaction->commit();
  }
  int seen = 0;
  EXPECT_EQ(errorOf([&] {
              database_->forEachRecord("TABLES", [&](std::string_view, std::string_view) {
                if (++seen == 10) endSessions();
              });
            }),
            store::kIoFailure);
  EXPECT_EQ(seen, sharedstore::Rows::kBlock);
  seen = 0;
  EXPECT_EQ(errorOf([&] {
              database_->forEachRecord("TABLES", [&](std::string_view, std::string_view) {
                if (++seen != 10) return;
                endSessions();
                EXPECT_EQ(database_->recordCount("TABLES"), 1200);
              });
            }),
            store::kIoFailure);
  EXPECT_EQ(database_->recordCount("TABLES"), 1200);
}

}  // namespace
