// What is announced is read together, and given for a short while.
#include "sharedstore/ReadAhead.h"

#include <gtest/gtest.h>

#include "SharedStoreUnderTest.h"
#include "sharedstore/SharedEngine.h"
#include "tests/support/StoreText.h"

namespace {

using sharedstore::ReadAhead;
using std::chrono::milliseconds;

constexpr milliseconds kLong{60000};

class Announced : public testing::Test {
 protected:
  Announced() {
    auto engine = std::make_unique<sharedstore::SharedEngine>(store_.connection());
    connection_ = &engine->connection();
    database_ = multivalue::databaseOver(std::move(engine));
    for (const char* const id : {"1", "2", "3"}) {
      database_->write("TABLES", id, std::string("T") + id);
      database_->write("TITRES", id, std::string("M") + id);
    }
    tables_ = database_->OpenFile("TABLES");
    titles_ = database_->OpenFile("TITRES");
  }
  template <typename Action>
  int messagesOf(const Action& action) const {
    const int before = connection_->messages();
    action();
    return connection_->messages() - before;
  }
  static std::string textOf(store::File& file, std::string_view id) {
    const auto record = file.ReadRecord(id);
    return record->found() ? record->fields().text() : "none";
  }
  void expectRead(store::File& file, std::string_view id, const std::string& text,
                  int messages) const {
    EXPECT_EQ(messagesOf([&] { EXPECT_EQ(textOf(file, id), text); }), messages) << id;
  }

  SharedStoreUnderTest store_;
  std::shared_ptr<multivalue::Database> database_;
  sharedstore::Connection* connection_ = nullptr;
  std::unique_ptr<store::File> tables_;
  std::unique_ptr<store::File> titles_;
};

TEST_F(Announced, RecordsOfAllFilesAreReadInOneMessageAndEachIsGivenOnce) {
  EXPECT_EQ(messagesOf([&] {
              tables_->announce({"1", "2", "none"});
              titles_->announce({"3", "3"});
            }),
            0);
  expectRead(*tables_, "3", "T3", 1);
  expectRead(*titles_, "3", "M3", 1);
  expectRead(*tables_, "2", "T2", 0);
  expectRead(*tables_, "none", "none", 0);
  expectRead(*tables_, "1", "T1", 0);
  expectRead(*titles_, "3", "M3", 0);
  expectRead(*tables_, "1", "T1", 1);
  expectRead(*titles_, "3", "M3", 1);
}

TEST_F(Announced, ASmallFileIsGivenTimeAndAgain) {
  titles_->announceAll();
  expectRead(*titles_, "1", "M1", 1);
  for (const char* const id : {"1", "2", "1"}) {
    expectRead(*titles_, id, std::string("M") + id, 0);
  }
  expectRead(*titles_, "none", "none", 0);
}

TEST_F(Announced, AFileThatIsNotSmallIsReadRecordByRecord) {
  std::vector<multivalue::Database::Written> many;
  for (std::size_t i = 0; i < ReadAhead::kMost; ++i) {
    many.push_back({"m" + std::to_string(i), "x"});
  }
  database_->writeAll("TITRES", many);
  titles_->announceAll();
  expectRead(*titles_, "1", "M1", 2);
  expectRead(*titles_, "1", "M1", 1);
}

TEST_F(Announced, WhatThisClientHasWrittenIsReadAnew) {
  tables_->announce({"1", "1", "2", "3"});
  const auto record = tables_->ReadRecord("1");
  record->fields().setText("new");
  record->DBWrite();
  expectRead(*tables_, "1", "new", 1);
  expectRead(*tables_, "2", "T2", 0);
  tables_->DeleteRecord("3");
  expectRead(*tables_, "3", "none", 1);
}

TEST_F(Announced, NothingIsGivenOutOfATransaction) {
  tables_->announce({"1", "1", "2"});
  expectRead(*tables_, "1", "T1", 1);
  store_.connect({})->write("TABLES", "1", "theirs");
  const auto transaction = database_->begin();
  expectRead(*tables_, "1", "theirs", 1);
}

// The others' change is met all the same: the version is compared when it is written.
TEST_F(Announced, AWriteOverWhatOthersHaveChangedSinceIsRefused) {
  tables_->announce({"1", "2"});
  expectRead(*tables_, "2", "T2", 1);
  store_.connect({})->write("TABLES", "1", "theirs");
  const auto record = tables_->ReadRecord("1");
  EXPECT_EQ(record->fields().text(), "T1");
  EXPECT_EQ(errorOf([&] { record->DBWrite(); }), store::kChanged);
  EXPECT_EQ(textOf(*tables_, "1"), "theirs");
}

TEST_F(Announced, AreReadOneByOneWhereOneFileOfThemCannotBeRead) {
  store_.administrator().execute("DROP TABLE \"record_TITRES\"");
  titles_->announce({"1"});
  tables_->announce({"1"});
  EXPECT_EQ(textOf(*tables_, "1"), "T1");
  EXPECT_EQ(errorOf([&] { titles_->ReadRecord("1"); }), store::kIoFailure);
}

TEST_F(Announced, WhatHasBeenKeptTooLongIsNotGiven) {
  ReadAhead brief{milliseconds(0)};
  ReadAhead lasting{kLong};
  for (ReadAhead* const each : {&brief, &lasting}) {
    each->announce("TABLES", {"1"});
    EXPECT_TRUE(each->expects("TABLES", "1"));
    EXPECT_FALSE(each->expects("TABLES", "2"));
    EXPECT_FALSE(each->expects("TITRES", "1"));
    each->read(*connection_);
    EXPECT_FALSE(each->expects("TABLES", "1"));
  }
  EXPECT_FALSE(brief.take("TABLES", "1").has_value());
  EXPECT_EQ(lasting.take("TABLES", "1"), ReadAhead::Text("T1"));
  EXPECT_FALSE(lasting.take("TABLES", "1").has_value());
}

TEST_F(Announced, TooManyAreForgotten) {
  ReadAhead ahead{kLong};
  std::vector<std::string> ids;
  for (std::size_t i = 0; i < ReadAhead::kMost; ++i) ids.push_back(std::to_string(i));
  ahead.announce("TABLES", ids);
  EXPECT_TRUE(ahead.expects("TABLES", "999"));
  ahead.announce("TABLES", {"more"});
  EXPECT_FALSE(ahead.expects("TABLES", "999"));
  EXPECT_TRUE(ahead.expects("TABLES", "more"));
}

}  // namespace
