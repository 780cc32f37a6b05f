// The engine and its check by themselves.
#include "sharedstore/SharedEngine.h"

#include <gtest/gtest.h>

#include "AgreementStore.h"
#include "ExchangesOfMany.h"
#include "SharedStoreUnderTest.h"

namespace {

class Shared : public testing::Test {
 protected:
  SharedStoreUnderTest store_;
  std::shared_ptr<multivalue::Database> database_ = store_.connect({});
};

TEST_F(Shared, TheCheckFindsWhatIsNotWhole) {
  database_->write("ORGPRISECHARGE", "1", recordText({"A;B"}));
  EXPECT_EQ(store_.fault(), "");
  store_.administrator().execute("UPDATE \"record_ORGPRISECHARGE\" SET record = 'C'");
  EXPECT_EQ(store_.fault(), "ORGPRISECHARGE, index of attribute 1: a wrong entry for record \"1\"");
  store_.administrator().execute("DELETE FROM \"index_ORGPRISECHARGE_1\"");
  EXPECT_EQ(store_.fault(),
            "ORGPRISECHARGE, index of attribute 1: 0 right entries, but the records make 1");
  store_.administrator().execute("INSERT INTO \"index_ORGPRISECHARGE_1\" VALUES ('C', '1', true)");
  EXPECT_EQ(store_.fault(), "");
  store_.administrator().execute("UPDATE \"index_ORGPRISECHARGE_1\" SET first = false");
  EXPECT_EQ(store_.fault(), "ORGPRISECHARGE, index of attribute 1: a wrong entry for record \"1\"");
  store_.administrator().execute("UPDATE \"index_ORGPRISECHARGE_1\" SET first = true");
  store_.administrator().execute("UPDATE \"record_ORGPRISECHARGE\" SET id = 'a\\376'");
  EXPECT_EQ(store_.fault(), "ORGPRISECHARGE: record \"a\xFE\" has no key of a record");
}

TEST_F(Shared, AnExchangeTellsWhetherWhatIsStoredWasAsExpected) {
  sharedstore::SharedEngine engine(store_.connection());
  const auto file = engine.describe("ORGPRISECHARGE");
  const auto whole = engine.begin();
  const auto exchange = [&](std::optional<std::string_view> before,
                            std::optional<std::string_view> after) {
    return engine.exchange(*file, "1", before, after);
  };
  EXPECT_TRUE(exchange({}, {}));
  EXPECT_FALSE(exchange("A", "B"));
  EXPECT_FALSE(exchange("A", {}));
  EXPECT_TRUE(exchange({}, "A"));
  EXPECT_FALSE(exchange({}, {}));
  EXPECT_FALSE(exchange({}, "B"));
  EXPECT_FALSE(exchange("B", "C"));
  EXPECT_FALSE(exchange("B", {}));
  EXPECT_EQ(engine.read(*file, "1"), "A");
  EXPECT_TRUE(exchange("A", "B"));
  EXPECT_TRUE(exchange("B", {}));
  EXPECT_EQ(engine.read(*file, "1"), std::nullopt);
}

TEST_F(Shared, AnExchangeOfManyTellsWhetherAllWereAsExpected) {
  sharedstore::SharedEngine engine(store_.connection());
  const auto file = engine.describe("ORGPRISECHARGE");
  expectExchangesOfManyTold(engine, *file);
  EXPECT_EQ(database_->ExecuteSentence("SSELECT ORGPRISECHARGE AVEC 1 = \"A2\"").text(), "1");
  EXPECT_EQ(store_.fault(), "");
}

// What the statement passes over need not come here: the rows that it gives are counted.
class PushedDown : public Shared {
 protected:
  PushedDown() {
    const auto transaction = database_->begin();
    for (int i = 0; i < 40; ++i) {
      database_->write("ACCORD", std::to_string(100 + i),
                       recordOf({{accord::OrgChgAcc, i % 2 == 0 ? "001" : "002"},
                                 {accord::DateFinAcc, i == 7   ? "1,5"
                                                      : i == 9 ? "x"
                                                               : std::to_string(21000 + i)},
                                 {accord::CodActAcc, i % 4 == 0 ? "a\\b\xFF\xC3\xA9" : "none"},
                                 {accord::ClotureAcc, i % 5 == 0 ? "" : "O"}}));
    }
    transaction->commit();
  }
  int given(const std::vector<multivalue::Test>& tests) {
    sharedstore::SharedEngine engine(store_.connection());
    const auto file = engine.describe("ACCORD");
    const auto cursor = engine.scan({*file, nullptr, multivalue::Scan::Gives::Records, &tests});
    multivalue::Entry entry;
    int rows = 0;
    while (cursor->next(entry)) ++rows;
    return rows;
  }
  static multivalue::Test test(int attribute, multivalue::Operator comparison,
                               std::string_view value) {
    return {attribute, multivalue::Criterion(comparison, value)};
  }
};

TEST_F(PushedDown, RangesAndCheapTestsAreTheServersWork) {
  using multivalue::Operator;
  EXPECT_EQ(given({}), 40);
  EXPECT_EQ(given({test(accord::OrgChgAcc, Operator::Equal, "001")}), 20) << "an index";
  EXPECT_EQ(given({test(0, Operator::Equal, "11]")}), 10) << "a range of keys";
  EXPECT_EQ(given({test(0, Operator::Equal, "[9")}), 4);
  EXPECT_EQ(given({test(accord::ClotureAcc, Operator::Equal, "")}), 8);
  EXPECT_EQ(given({test(accord::ClotureAcc, Operator::Different, "")}), 32);
  EXPECT_EQ(given({test(accord::CodActAcc, Operator::Equal, "a\\b\xFF\xC3\xA9")}), 10);
  EXPECT_EQ(given({test(accord::CodActAcc, Operator::Equal, "[\\b\xFF]")}), 10);
  EXPECT_EQ(given({test(accord::CodActAcc, Operator::Equal, "ab]")}), 0);
  EXPECT_EQ(given({test(accord::DateFinAcc, Operator::AtLeast, "21030")}), 10 + 2)
      << "what is no plain number is the caller's work";
  EXPECT_EQ(given({test(accord::DateFinAcc, Operator::Greater, "21030")}), 9 + 2);
  EXPECT_EQ(given({test(accord::DateFinAcc, Operator::Less, "21010")}), 8 + 2);
  EXPECT_EQ(given({test(accord::DateFinAcc, Operator::AtMost, "21010")}), 9 + 2);
  EXPECT_EQ(given({test(accord::OrgChgAcc, Operator::Equal, "001"), test(0, Operator::Equal, "11]"),
                   test(accord::ClotureAcc, Operator::Equal, ""),
                   test(accord::DateFinAcc, Operator::AtLeast, "21011")}),
            0);
  EXPECT_EQ(given({test(accord::OrgChgAcc, Operator::Equal, "001"), test(0, Operator::Equal, "11]"),
                   test(accord::ClotureAcc, Operator::Equal, "")}),
            1);
}

// Of records that are looked at up to their first attribute nothing else is sent.
TEST_F(Shared, OfRecordsNoMoreIsSentThanIsLookedAt) {
  const std::string mark(1, '\xFE');
  database_->write("ORGPRISECHARGE", "001",
                   "PREMIER\xFD"
                   "B" +
                       mark + "name" + mark + "street");
  database_->write("ORGPRISECHARGE", "002", "ALONE");
  database_->write("ORGPRISECHARGE", "003", mark + "without");
  const auto given = [&](int last) {
    sharedstore::SharedEngine engine(store_.connection());
    const auto file = engine.describe("ORGPRISECHARGE");
    multivalue::Scan scan{*file};
    scan.lastAttribute = last;
    const auto cursor = engine.scan(scan);
    std::vector<std::string> records;
    for (multivalue::Entry entry; cursor->next(entry);) records.emplace_back(entry.record);
    return records;
  };
  using Records = std::vector<std::string>;
  const Records whole = {
      "PREMIER\xFD"
      "B" +
          mark + "name" + mark + "street",
      "ALONE", mark + "without"};
  EXPECT_EQ(given(1), (Records{"PREMIER\xFD"
                               "B",
                               "ALONE", ""}));
  EXPECT_EQ(given(0), whole);
  EXPECT_EQ(given(2), whole) << "what has no short name is sent as it is";
}

// Whatever stands in a key, a value, a name or a sentence is data.
TEST_F(Shared, NothingThatIsStoredIsRun) {
  const std::string evil[] = {"'; DROP TABLE store_file; --",
                              "\\'; DROP TABLE store_file; --",
                              "?::bytea",
                              "{fn now()}",
                              "$1",
                              "\"",
                              std::string("a\0b", 3),
                              "%_\\"};
  for (const std::string& text : evil) {
    database_->write("ORGPRISECHARGE", text, text);
    const auto file = database_->OpenFile("ORGPRISECHARGE");
    EXPECT_EQ(file->ReadRecord(text)->fields().text(), text);
    EXPECT_EQ(database_->ExecuteSentence("SSELECT ORGPRISECHARGE AVEC 1 = \"" + text + "\"").text(),
              text);
    EXPECT_EQ(
        database_->ExecuteSentence("SSELECT ORGPRISECHARGE AVEC @ID = \"" + text + "\"").text(),
        text);
    EXPECT_EQ(errorOf([&] { database_->OpenFile(text); }), store::kUnknownFile);
    EXPECT_EQ(errorOf([&] { database_->createFile(text); }), store::kBadValue);
  }
  EXPECT_EQ(database_->recordCount("ORGPRISECHARGE"), 8);
  EXPECT_EQ(store_.fault(), "");
}

}  // namespace
