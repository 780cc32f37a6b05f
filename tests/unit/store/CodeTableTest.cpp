#include "store/CodeTable.h"

#include <gtest/gtest.h>

namespace {

using store::DynamicArray;

DynamicArray table(std::initializer_list<std::string_view> codes,
                   std::initializer_list<std::string_view> labels) {
  DynamicArray record;
  record.set(1, "TABLE");
  int value = 0;
  for (const auto code : codes) record.set(2, ++value, code);
  value = 0;
  for (const auto label : labels) record.set(3, ++value, label);
  return record;
}

TEST(CodeTable, FindsTheFirstAttributeWhoseFirstValueEquals) {
  DynamicArray record;
  record.set(1, 1, "A");
  record.set(2, 1, "B");
  record.set(2, 2, "C");
  record.set(4, 1, "B");
  EXPECT_EQ(store::ChercherCodeTable(record, "A"), 1);
  EXPECT_EQ(store::ChercherCodeTable(record, "B"), 2);
}

TEST(CodeTable, FindsNothingAmongLaterValuesOrPastTheEnd) {
  DynamicArray record;
  record.set(1, 1, "A");
  record.set(1, 2, "C");
  EXPECT_EQ(store::ChercherCodeTable(record, "C"), 0);
  EXPECT_EQ(store::ChercherCodeTable(record, "a"), 0);
  EXPECT_EQ(store::ChercherCodeTable(record, ""), 0);
  EXPECT_EQ(store::ChercherCodeTable(DynamicArray(), ""), 0);
}

TEST(CodeTable, FindsAnEmptyAttributeByAnEmptyText) {
  DynamicArray record;
  record.set(3, "C");
  EXPECT_EQ(store::ChercherCodeTable(record, ""), 1);
}

TEST(CodeTable, WalksFromCodeToLabel) {
  const DynamicArray pieces = table({"CNI", "RIB"}, {"CARTE D'IDENTITE", "RELEVE BANCAIRE"});
  EXPECT_EQ(store::labelOfCode(pieces, "CNI"), "CARTE D'IDENTITE");
  EXPECT_EQ(store::labelOfCode(pieces, "RIB"), "RELEVE BANCAIRE");
}

TEST(CodeTable, TellsWhereACodeStands) {
  EXPECT_EQ(store::positionOfCode(table({"CNI", "RIB", "RIB"}, {}), "RIB"), 2);
  EXPECT_EQ(store::positionOfCode(table({"CNI", "", "RIB"}, {}), "RIB"), 0);
  EXPECT_EQ(store::positionOfCode(table({"CNI", "", "RIB"}, {}), ""), 0);
  EXPECT_EQ(store::positionOfCode(DynamicArray(), "CNI"), 0);
}

TEST(CodeTable, WalksFromLabelToCode) {
  const DynamicArray pieces = table({"CNI", "RIB"}, {"CARTE D'IDENTITE", "RELEVE BANCAIRE"});
  EXPECT_EQ(store::codeOfLabel(pieces, "RELEVE BANCAIRE"), "RIB");
  EXPECT_EQ(store::codeOfLabel(pieces, "RELEVE"), "");
}

TEST(CodeTable, ACodeWithoutALabelDoesNotHideTheLabelsAfterIt) {
  const DynamicArray pieces = table({"CNI", "VID", "RIB"}, {"CARTE D'IDENTITE", "", "RELEVE"});
  EXPECT_EQ(store::codeOfLabel(pieces, "RELEVE"), "RIB");
  EXPECT_EQ(store::codeOfLabel(pieces, ""), "");
}

TEST(CodeTable, AnUnknownCodeHasNoLabel) {
  const DynamicArray pieces = table({"CNI"}, {"CARTE D'IDENTITE"});
  EXPECT_EQ(store::labelOfCode(pieces, "XXX"), "");
  EXPECT_EQ(store::labelOfCode(pieces, ""), "");
  EXPECT_EQ(store::labelOfCode(DynamicArray(), "CNI"), "");
}

TEST(CodeTable, TheWalkEndsAtTheFirstEmptyValue) {
  const DynamicArray holed = table({"A", "", "C"}, {"a", "b", "c"});
  EXPECT_EQ(store::labelOfCode(holed, "A"), "a");
  EXPECT_EQ(store::labelOfCode(holed, "C"), "");
}

TEST(CodeTable, ACodeWithoutALabelHasAnEmptyOne) {
  EXPECT_EQ(store::labelOfCode(table({"A", "B"}, {"a"}), "B"), "");
}

}  // namespace
