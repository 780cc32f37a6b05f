#include "store/DynamicArray.h"
#include "tests/support/Seed.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

using store::DynamicArray;

// "|" for the attribute mark, "/" for the value mark.
std::string marked(std::string text) {
  for (char& character : text) {
    if (character == '|') character = store::kAttributeMark;
    if (character == '/') character = store::kValueMark;
  }
  return text;
}

std::string readable(std::string text) {
  for (char& character : text) {
    if (character == store::kAttributeMark) character = '|';
    if (character == store::kValueMark) character = '/';
  }
  return text;
}

DynamicArray array(const std::string& text) { return DynamicArray(marked(text)); }

std::string textOf(const DynamicArray& array) { return readable(array.text()); }

TEST(DynamicArray, BeginsEmpty) {
  const DynamicArray empty = store::NewDynamicArray();
  EXPECT_TRUE(empty.empty());
  EXPECT_EQ(empty.text(), "");
  EXPECT_EQ(empty.DCount(), 0);
  EXPECT_EQ(empty.DCount(1), 0);
  EXPECT_EQ(empty.get(1), "");
  EXPECT_EQ(empty.get(1, 1), "");
}

TEST(DynamicArray, ReadsAttributesAndValuesFromOne) {
  const DynamicArray record = array("CD01|a/b/c||d");
  EXPECT_EQ(record.get(1), "CD01");
  EXPECT_EQ(readable(std::string(record.get(2))), "a/b/c");
  EXPECT_EQ(record.get(2, 1), "a");
  EXPECT_EQ(record.get(2, 2), "b");
  EXPECT_EQ(record.get(2, 3), "c");
  EXPECT_EQ(record.get(3), "");
  EXPECT_EQ(record.get(4, 1), "d");
}

TEST(DynamicArray, ReadsNothingPastTheEnd) {
  const DynamicArray record = array("a|b/c");
  EXPECT_EQ(record.get(3), "");
  EXPECT_EQ(record.get(2, 3), "");
  EXPECT_EQ(record.get(9, 9), "");
  EXPECT_EQ(record.get(1, 2), "");
}

TEST(DynamicArray, ReadingDoesNotExtend) {
  DynamicArray record = array("a");
  EXPECT_EQ(record.get(7, 7), "");
  EXPECT_EQ(textOf(record), "a");
}

TEST(DynamicArray, RefusesPositionsBelowOne) {
  DynamicArray record = array("a/b|c");
  for (const int position : {0, -1}) {
    EXPECT_THROW(static_cast<void>(record.get(position)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(record.get(position, 1)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(record.get(1, position)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(record.get(9, position)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(record.DCount(position)), std::invalid_argument);
    EXPECT_THROW(record.set(position, "x"), std::invalid_argument);
    EXPECT_THROW(record.set(position, 1, "x"), std::invalid_argument);
    EXPECT_THROW(record.set(9, position, "x"), std::invalid_argument);
    EXPECT_THROW(record.Insert(position, 1, "x"), std::invalid_argument);
    EXPECT_THROW(record.Insert(9, position, "x"), std::invalid_argument);
    EXPECT_THROW(record.Delete(position, 1), std::invalid_argument);
    EXPECT_THROW(record.Delete(9, position), std::invalid_argument);
  }
  EXPECT_EQ(textOf(record), "a/b|c") << "a refused call changes nothing";
}

TEST(DynamicArray, AssigningPastTheEndExtendsWithEmptyAttributes) {
  DynamicArray record;
  record.set(3, "c");
  EXPECT_EQ(textOf(record), "||c");
  EXPECT_EQ(record.DCount(), 3);
  record.set(5, "");
  EXPECT_EQ(textOf(record), "||c||");
  EXPECT_EQ(record.DCount(), 5);
}

TEST(DynamicArray, AssigningPastTheEndExtendsWithEmptyValues) {
  DynamicArray record;
  record.set(2, 3, "c");
  EXPECT_EQ(textOf(record), "|//c");
  EXPECT_EQ(record.DCount(2), 3);
  record.set(2, 5, "");
  EXPECT_EQ(textOf(record), "|//c//");
  EXPECT_EQ(record.DCount(2), 5);
}

TEST(DynamicArray, AssigningReplacesAnAttributeOrAValue) {
  DynamicArray record = array("a|b/c/d|e");
  record.set(2, 2, "CC");
  EXPECT_EQ(textOf(record), "a|b/CC/d|e");
  record.set(2, 1, "");
  EXPECT_EQ(textOf(record), "a|/CC/d|e");
  record.set(2, 3, "D");
  EXPECT_EQ(textOf(record), "a|/CC/D|e");
  record.set(2, "x");
  EXPECT_EQ(textOf(record), "a|x|e");
  record.set(2, "");
  EXPECT_EQ(textOf(record), "a||e");
}

TEST(DynamicArray, AnEmptyTextAssignedToTheFirstAttributeLeavesItEmpty) {
  DynamicArray record;
  record.set(1, "");
  EXPECT_TRUE(record.empty());
  EXPECT_EQ(record.DCount(), 0);
  record.set(1, 1, "");
  EXPECT_EQ(record.DCount(1), 0);
  EXPECT_EQ(record.text(), "");
}

TEST(DynamicArray, AssigningAValueOfItselfIsSafe) {
  DynamicArray record = array("abc/defghijklmnopqrstuvwxyz|x");
  record.set(1, record.get(1, 2));
  EXPECT_EQ(textOf(record), "defghijklmnopqrstuvwxyz|x");
  record.set(4, record.get(1));
  EXPECT_EQ(textOf(record), "defghijklmnopqrstuvwxyz|x||defghijklmnopqrstuvwxyz");
  record.Insert(1, 1, record.get(2));
  EXPECT_EQ(textOf(record), "x/defghijklmnopqrstuvwxyz|x||defghijklmnopqrstuvwxyz");
}

TEST(DynamicArray, MarksInAnAssignedTextSeparate) {
  DynamicArray record = array("a|b|c");
  record.set(2, marked("x/y"));
  EXPECT_EQ(record.DCount(2), 2);
  record.set(2, marked("p|q"));
  EXPECT_EQ(textOf(record), "a|p|q|c");
  EXPECT_EQ(record.DCount(), 4);
  EXPECT_EQ(record.get(4), "c");
  record.set(1, 2, marked("r|s"));
  EXPECT_EQ(textOf(record), "a/r|s|p|q|c");
  EXPECT_EQ(record.get(2), "s");
}

TEST(DynamicArray, CountsAttributes) {
  EXPECT_EQ(array("a").DCount(), 1);
  EXPECT_EQ(array("a|").DCount(), 2);
  EXPECT_EQ(array("|").DCount(), 2);
  EXPECT_EQ(array("||c").DCount(), 3);
}

TEST(DynamicArray, CountsValues) {
  const DynamicArray record = array("a||b/|/|x/y/z");
  EXPECT_EQ(record.DCount(1), 1);
  EXPECT_EQ(record.DCount(2), 0);
  EXPECT_EQ(record.DCount(3), 2);
  EXPECT_EQ(record.DCount(4), 2);
  EXPECT_EQ(record.DCount(5), 3);
  EXPECT_EQ(record.DCount(6), 0);
}

TEST(DynamicArray, InsertMovesTheFollowingValuesUp) {
  DynamicArray record = array("k|a/b");
  record.Insert(2, 1, "x");
  EXPECT_EQ(textOf(record), "k|x/a/b");
  record.Insert(2, 3, "y");
  EXPECT_EQ(textOf(record), "k|x/a/y/b");
  record.Insert(2, 5, "z");
  EXPECT_EQ(textOf(record), "k|x/a/y/b/z");
  record.Insert(2, 2, "");
  EXPECT_EQ(textOf(record), "k|x//a/y/b/z");
}

TEST(DynamicArray, InsertIntoAnEmptyAttributeGivesItsOnlyValue) {
  DynamicArray record = array("a||c");
  record.Insert(2, 1, "x");
  EXPECT_EQ(textOf(record), "a|x|c");
}

TEST(DynamicArray, InsertPastTheEndExtends) {
  DynamicArray record;
  record.Insert(2, 3, "x");
  EXPECT_EQ(textOf(record), "|//x");
  record.Insert(2, 5, "y");
  EXPECT_EQ(textOf(record), "|//x//y");
}

TEST(DynamicArray, DeleteMovesTheFollowingValuesDown) {
  DynamicArray record = array("k|a/b/c|z");
  record.Delete(2, 2);
  EXPECT_EQ(textOf(record), "k|a/c|z");
  record.Delete(2, 1);
  EXPECT_EQ(textOf(record), "k|c|z");
  record.Delete(2, 1);
  EXPECT_EQ(textOf(record), "k||z");
  EXPECT_EQ(record.DCount(2), 0);
}

TEST(DynamicArray, DeleteTakesTheLastValueWithItsMark) {
  DynamicArray record = array("a/b/c");
  record.Delete(1, 3);
  EXPECT_EQ(textOf(record), "a/b");
  record = array("a/");
  record.Delete(1, 2);
  EXPECT_EQ(textOf(record), "a");
}

TEST(DynamicArray, DeletePastTheEndDoesNothing) {
  DynamicArray record = array("a|b/c");
  record.Delete(2, 3);
  record.Delete(7, 1);
  EXPECT_EQ(textOf(record), "a|b/c");
}

TEST(DynamicArray, TheFullTextIsReadAndAssigned) {
  for (const char* text : {"", "a", "|", "a|", "|a", "a/b|/|//", "é|œ/ÿ"}) {
    DynamicArray record = array("old|record");
    record.setText(marked(text));
    EXPECT_EQ(textOf(record), text);
    EXPECT_EQ(textOf(array(text)), text);
    EXPECT_EQ(record, array(text));
  }
}

TEST(DynamicArray, ComparesByTheFullText) {
  EXPECT_EQ(array("a|b"), array("a|b"));
  EXPECT_NE(array("a|b"), array("a|b|"));
  DynamicArray blank;
  blank.set(1, "");
  EXPECT_EQ(blank, DynamicArray());
}

TEST(DynamicArray, CopiesAreIndependent) {
  const DynamicArray read = array("a|b");
  DynamicArray edited = read;
  edited.set(2, "c");
  EXPECT_EQ(textOf(read), "a|b");
  EXPECT_EQ(textOf(edited), "a|c");
}

TEST(DynamicArray, ReadsInWhatAHostGaveWithoutAnyText) {
  DynamicArray record{std::string_view()};
  EXPECT_TRUE(record.empty());
}

TEST(DynamicArray, HoldsOneHundredThousandValuesInOneAttribute) {
  DynamicArray list;
  constexpr int kCount = 100'000;
  for (int i = 1; i <= kCount; ++i) list.set(1, i, std::to_string(i));
  EXPECT_EQ(list.DCount(1), kCount);
  for (int i = 1; i <= kCount; ++i) ASSERT_EQ(list.get(1, i), std::to_string(i));
  EXPECT_EQ(list.get(1, kCount + 1), "");
}

// --- The same operations on the plainest representation there is.

using Rows = std::vector<std::vector<std::string>>;

std::string joined(const Rows& rows) {
  std::string out;
  for (std::size_t a = 0; a < rows.size(); ++a) {
    if (a > 0) out += '|';
    for (std::size_t v = 0; v < rows[a].size(); ++v) out += (v > 0 ? "/" : "") + rows[a][v];
  }
  return out;
}

std::vector<std::string>& valuesAt(Rows& rows, std::size_t attribute, std::size_t count) {
  if (rows.size() < attribute) rows.resize(attribute, {""});
  if (rows[attribute - 1].size() < count) rows[attribute - 1].resize(count);
  return rows[attribute - 1];
}

void insertInto(Rows& rows, std::size_t a, std::size_t v, const std::string& text) {
  auto& values = valuesAt(rows, a, 1);
  if (v > values.size() || (values.size() == 1 && values[0].empty())) {
    valuesAt(rows, a, v)[v - 1] = text;
  } else {
    values.insert(values.begin() + static_cast<std::ptrdiff_t>(v) - 1, text);
  }
}

void deleteFrom(Rows& rows, std::size_t a, std::size_t v) {
  if (a > rows.size() || v > rows[a - 1].size()) return;
  auto& values = rows[a - 1];
  values.erase(values.begin() + static_cast<std::ptrdiff_t>(v) - 1);
  if (values.empty()) values.emplace_back();
}

TEST(DynamicArray, AgreesWithAPlainModelOverManyRandomOperations) {
  testing_support::Random random(20260101);
  const auto below = [&random](unsigned limit) { return random() % limit; };
  DynamicArray record;
  Rows model;
  for (int step = 0; step < 8'000; ++step) {
    if (step % 500 == 0) {
      record = DynamicArray();
      model.clear();
      // A short text is changed in another way than a long one.
      if (step % 1'000 == 0) {
        record.set(5, std::string(3'000, 'x'));
        valuesAt(model, 5, 1)[0] = std::string(3'000, 'x');
      }
    }
    const std::size_t a = below(4) + 1;
    const std::size_t v = below(60) + 1;
    const auto attribute = static_cast<int>(a);
    const auto value = static_cast<int>(v);
    const std::string text(below(3) == 0 ? 0 : below(12), static_cast<char>('a' + below(26)));
    // Read in anew it is one text, until a change takes it apart.
    if (below(4) == 0) record = DynamicArray(record.text());
    switch (below(5)) {
      case 0:
        record.Insert(attribute, value, text);
        insertInto(model, a, v, text);
        break;
      case 1:
        record.Delete(attribute, value);
        deleteFrom(model, a, v);
        break;
      default:
        record.set(attribute, value, text);
        valuesAt(model, a, v)[v - 1] = text;
    }
    ASSERT_EQ(textOf(record), joined(model)) << "step " << step;
    const std::size_t count = a <= model.size() ? model[a - 1].size() : 0;
    const bool none = count == 0 || (count == 1 && model[a - 1][0].empty());
    ASSERT_EQ(record.DCount(attribute), none ? 0 : static_cast<int>(count));
    const std::size_t probe = below(70) + 1;
    ASSERT_EQ(record.get(attribute, static_cast<int>(probe)),
              probe <= count ? model[a - 1][probe - 1] : "");
  }
}

TEST(DynamicArray, AChangeBeforeTheEndIsSeenBehindIt) {
  for (const std::size_t size : {1U, 500U, 4'000U}) {
    const std::string last(size, 'z');
    DynamicArray record = array("a|b/c|d|");
    record.set(4, last);
    EXPECT_EQ(record.get(3), "d");
    record.set(1, "longer than before");
    record.set(2, 3, "e");
    EXPECT_EQ(record.get(3), "d") << size;
    EXPECT_EQ(record.get(4), last) << size;
    record.set(2, record.get(4));
    EXPECT_EQ(record.get(2), last) << size;
    record.set(1, marked("x|y"));
    EXPECT_EQ(record.get(2), "y") << size;
    EXPECT_EQ(record.get(3), last) << size;
    EXPECT_EQ(record.DCount(), 5) << size;
    EXPECT_EQ(textOf(record), "x|y|" + last + "|d|" + last) << size;
  }
}

// Whether an array was read in or put together, and whether it was read meanwhile, is not to be
// seen.
TEST(DynamicArray, IsTheSameHoweverItCameToItsText) {
  testing_support::Random random(20260102);
  const auto below = [&random](unsigned limit) { return random() % limit; };
  for (int round = 0; round < 2'000; ++round) {
    DynamicArray kept;
    for (int step = 0; step < 12; ++step) {
      std::string text;
      // Long texts are read and changed in other ways.
      const std::size_t repeated = std::array<std::size_t, 4>{1, 1, 30, 120}[below(4)];
      for (std::size_t i = below(9) * repeated; i > 0; --i) text += "abcdef/|"[below(8)];
      const auto attribute = static_cast<int>(below(5)) + 1;
      const auto value = static_cast<int>(below(4)) + 1;
      DynamicArray readIn(kept.text());
      const std::size_t operation = below(5);
      for (DynamicArray* array : {&kept, &readIn}) {
        if (operation == 0) array->set(attribute, marked(text));
        if (operation == 1) array->set(attribute, value, marked(text));
        if (operation == 2) array->Insert(attribute, value, marked(text));
        if (operation == 3) array->Delete(attribute, value);
        if (operation == 4) array->dropEmptyEnd(attribute);
      }
      const DynamicArray again(kept.text());
      ASSERT_EQ(textOf(kept), textOf(readIn)) << "round " << round << ", step " << step;
      ASSERT_TRUE(kept == readIn && readIn == again);
      ASSERT_EQ(kept.empty(), again.empty());
      ASSERT_EQ(kept.DCount(), again.DCount());
      for (int a = 1; a <= again.DCount() + 1; ++a) {
        ASSERT_EQ(kept.get(a), again.get(a));
        ASSERT_EQ(kept.DCount(a), again.DCount(a));
        for (int v = again.DCount(a) + 1; v > 0; --v) ASSERT_EQ(kept.get(a, v), again.get(a, v));
      }
    }
  }
}

TEST(DynamicArray, AnArrayMovedFromCanBeFilledAgain) {
  DynamicArray first = array("a|b|c");
  EXPECT_EQ(first.DCount(), 3);
  const DynamicArray second = std::move(first);
  first = DynamicArray();
  first.set(2, "x");
  EXPECT_EQ(textOf(first), "|x");
  EXPECT_EQ(textOf(second), "a|b|c");
}

TEST(DynamicArray, TakesATextOver) {
  const DynamicArray taken = DynamicArray::taking(marked("a|b/c"));
  EXPECT_EQ(textOf(taken), "a|b/c");
  EXPECT_EQ(taken.get(2, 2), "c");
}

TEST(DynamicArray, DropsItsEmptyEndDownToAsMany) {
  const std::string mark(1, store::kAttributeMark);
  const auto dropped = [&](const std::string& text, int kept) {
    store::DynamicArray array(text);
    array.dropEmptyEnd(kept);
    return array.text();
  };
  EXPECT_EQ(dropped("a" + mark + "b" + mark + mark, 0), "a" + mark + "b");
  EXPECT_EQ(dropped("a" + mark + "b" + mark + mark, 3), "a" + mark + "b" + mark);
  EXPECT_EQ(dropped("a" + mark + "b" + mark + mark, 4), "a" + mark + "b" + mark + mark);
  EXPECT_EQ(dropped("a" + mark + "b", 5), "a" + mark + "b");
  EXPECT_EQ(dropped(mark + mark, 0), "");
  EXPECT_EQ(dropped("", 2), "");
}

}  // namespace
