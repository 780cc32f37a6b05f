#include "store/Request.h"

#include <gtest/gtest.h>

#include "tests/support/MemoryStore.h"

namespace {

using store::DynamicArray;

TEST(Request, PutsAValueBetweenDoubleQuotes) {
  EXPECT_EQ(store::quoted("001"), "\"001\"");
  EXPECT_EQ(store::quoted(""), "\"\"");
}

TEST(Request, SendsADoubleQuoteInAValueAsItIs) {
  EXPECT_EQ(store::quoted("L\"AIN"), "\"L\"AIN\"");
  EXPECT_EQ(store::quotedPrefix("\""), "\"\"]\"");
}

TEST(Request, PutsTheBeginsWithMarkInsideTheQuotes) {
  EXPECT_EQ(store::quotedPrefix("CD"), "\"CD]\"");
}

TEST(Request, HoldsSentenceFileAndColumns) {
  const DynamicArray request(
      store::request("SSELECT ORGPRISECHARGE PAR 1", "ORGPRISECHARGE", "0 1"));
  EXPECT_EQ(request.DCount(), 3);
  EXPECT_EQ(request.get(1), "SSELECT ORGPRISECHARGE PAR 1");
  EXPECT_EQ(request.get(2), "ORGPRISECHARGE");
  EXPECT_EQ(request.get(3), "0 1");
}

TEST(Request, RunsASelectionWithItsFullText) {
  testing_support::MemoryStore memory;
  memory.put("ACCORD", "00001001", {"001"});
  memory.put("ACCORD", "00002001", {"002"});
  const auto database = memory.connect();
  const DynamicArray answer =
      store::select(*database, "SSELECT ACCORD AVEC 1 = " + store::quoted("002"), "ACCORD", "0");
  EXPECT_EQ(answer.text(), "00002001");
  ASSERT_EQ(memory.calls().size(), 1U);
  EXPECT_EQ(memory.calls()[0].text,
            store::request("SSELECT ACCORD AVEC 1 = \"002\"", "ACCORD", "0"));
}

TEST(Request, TellsWhetherAnythingWasSelected) {
  EXPECT_FALSE(store::anySelected(DynamicArray()));
  EXPECT_TRUE(store::anySelected(DynamicArray("001")));
}

TEST(Request, TurnsAnAnswerOverWithItsColumnsAligned) {
  DynamicArray answer;
  answer.set(1, 1, "001");
  answer.set(1, 2, "CD01");
  answer.set(2, 1, "002");
  answer.set(3, 1, "003");
  answer.set(3, 2, "CD03");
  answer.set(3, 3, "x");
  const DynamicArray columns = store::turnedOver(answer);
  EXPECT_EQ(columns.DCount(), 3);
  EXPECT_EQ(columns.get(1, 2), "002");
  EXPECT_EQ(columns.get(2, 1), "CD01");
  EXPECT_EQ(columns.get(2, 2), "");
  EXPECT_EQ(columns.get(2, 3), "CD03");
  EXPECT_EQ(columns.get(3, 3), "x");
  EXPECT_EQ(columns.get(3, 1), "");
}

TEST(Request, TurnsOverAnAnswerWhoseFirstColumnBeginsEmpty) {
  DynamicArray answer;
  answer.set(1, 2, "a");
  answer.set(2, 1, "k");
  answer.set(2, 2, "b");
  const DynamicArray columns = store::turnedOver(answer);
  EXPECT_EQ(columns.get(1, 1), "");
  EXPECT_EQ(columns.get(1, 2), "k");
  EXPECT_EQ(columns.get(2, 2), "b");
}

TEST(Request, TurnsOverRecordsWithoutAnyValue) {
  DynamicArray answer;
  answer.set(3, 2, "c");
  answer.set(5, 1, "e");
  const DynamicArray columns = store::turnedOver(answer);
  EXPECT_EQ(columns.DCount(), 2);
  EXPECT_EQ(columns.get(1, 3), "");
  EXPECT_EQ(columns.get(1, 5), "e");
  EXPECT_EQ(columns.get(2, 3), "c");
  EXPECT_EQ(columns.get(2, 5), "");
}

TEST(Request, TurnsALongAnswerOverAsValueByValue) {
  DynamicArray answer;
  DynamicArray expected;
  for (int record = 1; record <= 1000; ++record) {
    for (int column = 1; column <= record % 4; ++column) {
      const std::string value = (record + column) % 3 == 0 ? "" : std::to_string(record * column);
      answer.set(record, column, value);
      expected.set(column, record, value);
    }
  }
  EXPECT_EQ(store::turnedOver(answer).text(), expected.text());
}

TEST(Request, TurnsAnEmptyAnswerOverToAnEmptyArray) {
  EXPECT_TRUE(store::turnedOver(DynamicArray()).empty());
}

}  // namespace
