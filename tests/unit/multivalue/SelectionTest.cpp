#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string_view>

#include "TemporaryStore.h"
#include "multivalue/StandardFiles.h"
#include "store/Layouts.h"

namespace {

// A file without an index and one whose attribute 1 has one: both must answer alike.
class Selection : public testing::TestWithParam<const char*> {
 protected:
  void put(std::string_view id, std::initializer_list<std::string> attributes) {
    store_.put(GetParam(), id, attributes);
  }
  std::string select(const std::string& rest, std::string_view columns = "0") {
    return store_.select("SSELECT " + std::string(GetParam()) + " " + rest, columns);
  }

  TemporaryStore store_;
};

INSTANTIATE_TEST_SUITE_P(Files, Selection, testing::Values("PLAIN", "ORGPRISECHARGE"));

TEST_P(Selection, WithoutConditionGivesAllRecordsByKey) {
  put("003", {"A"});
  put("001", {"C"});
  put("002", {"B"});
  EXPECT_EQ(select(""), "001|002|003");
  EXPECT_EQ(store_.select("SELECT " + std::string(GetParam())), "001|002|003");
}

TEST_P(Selection, OfAnEmptyFileIsEmpty) {
  store_->createFile(GetParam());
  EXPECT_EQ(select(""), "");
  EXPECT_EQ(select("AVEC 1 = \"x\""), "");
  EXPECT_EQ(select("AVEC @ID = \"x]\" PAR 1"), "");
}

TEST_P(Selection, EqualComparesTheWholeValueAsText) {
  put("1", {"AB"});
  put("2", {"ABC"});
  put("3", {"ab"});
  put("4", {"10"});
  put("5", {"010"});
  EXPECT_EQ(select("AVEC 1 = \"AB\""), "1");
  EXPECT_EQ(select("AVEC 1 = \"10\""), "4");
  EXPECT_EQ(select("AVEC 1 = \"AB \""), "");
}

TEST_P(Selection, AClosingBracketMeansBeginsWith) {
  put("1", {"AB"});
  put("2", {"ABC"});
  put("3", {"AC"});
  put("4", {""});
  EXPECT_EQ(select("AVEC 1 = \"AB]\""), "1|2");
  EXPECT_EQ(select("AVEC 1 = \"A]\""), "1|2|3");
  EXPECT_EQ(select("AVEC 1 = \"ABCD]\""), "");
  EXPECT_EQ(select("AVEC 1 = \"]\""), "1|2|3|4");
}

TEST_P(Selection, BeginsWithCountsBytesAtTheEdgesOfTheRange) {
  put("1", {"\xC3\xA9t\xC3\xA9"});      // été
  put("2", {"\xC3\xA9"});               // é
  put("3", {"\xC3\xAA"});               // ê
  put("4", {"\xF4\x8F\xBF\xBF tail"});  // the last code point
  put("5", {"a\xFF"});                  // no UTF-8
  put("6", {"a\xFF\xFF"});
  put("7", {"b"});
  EXPECT_EQ(select("AVEC 1 = \"\xC3\xA9]\""), "1|2");
  EXPECT_EQ(select("AVEC 1 = \"\xF4\x8F\xBF\xBF]\""), "4");
  EXPECT_EQ(select("AVEC 1 = \"a\xFF]\""), "5|6");
  EXPECT_EQ(select("AVEC 1 = \"\xFF]\""), "");
}

TEST_P(Selection, AnOpeningBracketMeansEndsWithAndBothMeanContains) {
  put("1", {"XAB"});
  put("2", {"ABX"});
  put("3", {"AXB"});
  EXPECT_EQ(select("AVEC 1 = \"[AB\""), "1");
  EXPECT_EQ(select("AVEC 1 = \"[X]\""), "1|2|3");
  EXPECT_EQ(select("AVEC 1 = \"[B]\""), "1|2|3");
  EXPECT_EQ(select("AVEC 1 # \"[B\""), "2");
}

TEST_P(Selection, DifferentIsTheOppositeOnASingleValue) {
  put("1", {"O"});
  put("2", {"N"});
  put("3", {""});
  EXPECT_EQ(select("AVEC 1 # \"O\""), "2|3");
  EXPECT_EQ(select("AVEC 1 # \"O]\""), "2|3");
}

TEST_P(Selection, EmptyValueAsksForAnEmptyAttribute) {
  put("1", {"x"});
  put("2", {""});
  put("3", {"", "y"});
  put("4", {";"});
  EXPECT_EQ(select("AVEC 1 = \"\""), "2|3");
  EXPECT_EQ(select("AVEC 1 # \"\""), "1|4");
  EXPECT_EQ(select("AVEC 9 = \"\""), "1|2|3|4");
}

TEST_P(Selection, SizesAreNumericWhenBothSidesAreNumbers) {
  put("1", {"9"});
  put("2", {"10"});
  put("3", {"-5"});
  put("4", {"9,5"});
  put("5", {"0010.0"});
  EXPECT_EQ(select("AVEC 1 < \"10\""), "1|3|4");
  EXPECT_EQ(select("AVEC 1 <= \"10\""), "1|2|3|4|5");
  EXPECT_EQ(select("AVEC 1 > \"9\""), "2|4|5");
  EXPECT_EQ(select("AVEC 1 >= \"9,50\""), "2|4|5");
  EXPECT_EQ(select("AVEC 1 < \"-4\""), "3");
  EXPECT_EQ(select("AVEC 1 > \"99999999999999999999999\""), "");
  EXPECT_EQ(select("AVEC 1 < \"99999999999999999999999\""), "1|2|3|4|5");
}

TEST_P(Selection, SizesAreThoseOfTextsOtherwise) {
  put("1", {"9"});
  put("2", {"10"});
  put("3", {"B"});
  put("4", {""});
  EXPECT_EQ(select("AVEC 1 >= \"A\""), "3");
  EXPECT_EQ(select("AVEC 1 < \"A\""), "1|2|4");
  EXPECT_EQ(select("AVEC 1 < \"1a\""), "2|4");
  EXPECT_EQ(select("AVEC 1 <= \"\""), "4");
}

TEST_P(Selection, BracketsAreTextForSizes) {
  put("1", {"A"});
  put("2", {"A]"});
  put("3", {"B"});
  EXPECT_EQ(select("AVEC 1 >= \"A]\""), "2|3");
}

TEST_P(Selection, OneValueThatSatisfiesIsEnough) {
  put("1", {"A;B"});
  put("2", {"B;C"});
  put("3", {"C"});
  put("4", {"A;A"});
  EXPECT_EQ(select("AVEC 1 = \"B\""), "1|2");
  EXPECT_EQ(select("AVEC 1 # \"A\""), "1|2|3");
  EXPECT_EQ(select("AVEC 1 > \"B\""), "2|3");
  EXPECT_EQ(select("AVEC 1 = \"A\" AND AVEC 1 = \"B\""), "1");
}

TEST_P(Selection, AnswersAlikeWhenAnIndexThatAnswersAloneProvesTooLong) {
  constexpr int kMore = 1100;  // an index that is tried is left after 1 024 entries
  store_->createFile(GetParam());
  const auto transaction = store_->begin();
  for (int i = 0; i < kMore; ++i) {
    const std::string id = std::to_string(10000 + i);
    store_->write(GetParam(), id, recordText({"A" + id, "x"}));
  }
  transaction->commit();
  const store::DynamicArray found = store_->ExecuteSentence(store::request(
      "SSELECT " + std::string(GetParam()) + " AVEC 1 = \"A]\" AND AVEC @ID >= \"10050\" PAR 1", "",
      "0 1"));
  ASSERT_EQ(found.DCount(), kMore - 50);
  EXPECT_EQ(found.get(1, 1), "10050");
  EXPECT_EQ(found.get(1, 2), "A10050");
  EXPECT_EQ(found.get(kMore - 50, 1), "11099");
  EXPECT_EQ(found.get(kMore - 50, 2), "A11099");
}

TEST_P(Selection, ARecordMetUnderSeveralValuesComesOnce) {
  put("1", {"AA;AB;AC"});
  put("2", {"X;AB"});
  put("3", {"AB;AB"});
  EXPECT_EQ(select("AVEC 1 = \"A]\"", "0 1"), "1,AA|2,X|3,AB");
  EXPECT_EQ(select("AVEC 1 = \"A]\" PAR 1", "0 1"), "1,AA|3,AB|2,X");
}

TEST_P(Selection, AllConditionsMustHold) {
  put("001A", {"L1", "x"});
  put("001B", {"L2", "x"});
  put("002A", {"L1", "y"});
  EXPECT_EQ(select("AVEC 1 = \"L]\" AND AVEC @ID = \"001]\" PAR 1", "0 1"), "001A,L1|001B,L2");
  EXPECT_EQ(select("AVEC 1 = \"L1\" AND AVEC 2 = \"y\""), "002A");
  EXPECT_EQ(select("AVEC @ID = \"001]\" AND AVEC @ID # \"001A\""), "001B");
  EXPECT_EQ(select("AVEC 2 = \"x\" AND AVEC 2 = \"y\""), "");
}

TEST_P(Selection, TheKeyCanBeComparedInEveryWay) {
  put("1", {});
  put("12", {});
  put("2", {});
  put("A2", {});
  EXPECT_EQ(select("AVEC @ID = \"1\""), "1");
  EXPECT_EQ(select("AVEC @ID = \"1]\""), "1|12");
  EXPECT_EQ(select("AVEC @ID = \"[2\""), "12|2|A2");
  EXPECT_EQ(select("AVEC @ID # \"2\""), "1|12|A2");
  EXPECT_EQ(select("AVEC @ID > \"2\""), "12|A2");
  EXPECT_EQ(select("AVEC @ID <= \"2\""), "1|2");
  EXPECT_EQ(select("AVEC @ID = \"\""), "");
  EXPECT_EQ(select("AVEC 0 = \"12\""), "12");
}

TEST_P(Selection, ParOrdersAndTiesComeByKey) {
  put("3", {"B", "1"});
  put("1", {"B", "2"});
  put("2", {"A", "2"});
  put("4", {"B", "1"});
  EXPECT_EQ(select("PAR 1"), "2|1|3|4");
  EXPECT_EQ(select("PAR 1 PAR 2"), "2|3|4|1");
  EXPECT_EQ(select("PAR 1 2"), "2|3|4|1");
  EXPECT_EQ(select("PAR 2 PAR 1"), "3|4|2|1");
  EXPECT_EQ(select("AVEC 1 = \"B\" PAR 2 "), "3|4|1");
}

TEST_P(Selection, ParPutsTheEmptyFirstThenNumbersBySizeThenTexts) {
  put("1", {"B"});
  put("2", {"10"});
  put("3", {"9"});
  put("4", {""});
  put("5", {"1a"});
  put("6", {"-1"});
  put("7", {" "});
  EXPECT_EQ(select("PAR 1"), "4|6|3|2|7|5|1");
}

TEST_P(Selection, ParPutsAccentedLettersWithTheirBaseLetters) {
  const char* const inOrder[] = {
      "E",  "EB",    "ECOLE", "ÉCOLE",  "ECOLES", "ÉCOLES",  "EZ",  "OE",  "Œ",       "OF",  "a",
      "eb", "école", "ecolf", "garcon", "garçon", "garçonS", "œuf", "zoé", "zoe\xFF", "\xFF"};
  int number = 0;
  std::string keys;
  for (const char* const text : inOrder) {
    const std::string key = std::to_string(100 + number++);
    keys += (keys.empty() ? "" : "|") + key;
    put(key, {text});
  }
  EXPECT_EQ(select("PAR 1"), keys);
  EXPECT_EQ(select("AVEC 1 = \"E]\" PAR 1"), "100|101|102|104|106");
  EXPECT_EQ(select("AVEC 1 >= \"Z\" AND AVEC 1 < \"b\""), "110");
}

TEST_P(Selection, ParSortsManyThatBeginAlike) {
  std::vector<std::string> inOrder = {"",    "-1" + std::string(300, '0'),
                                      "-12", "-2,5",
                                      "-2",  "-0,5",
                                      "0",   "0,05",
                                      "0,5", "1",
                                      "1,5", "2",
                                      "10",  "99",
                                      "100"};
  inOrder.push_back("1" + std::string(254, '0'));
  inOrder.push_back("1" + std::string(255, '0'));
  inOrder.emplace_back("\x01");
  inOrder.push_back(std::string("\x02") + "A");
  for (const char* const text : {"\x03", " ", "+x", "-", "1 a", "1a", "A", "Á"}) {
    inOrder.emplace_back(text);
  }
  inOrder.emplace_back("A\0B", 3);
  inOrder.emplace_back("A\1");
  const std::string label = "CLIENTS VENTES DE PRESTATIONS ";
  for (int i = 1'000; i < 1'040; ++i) {
    inOrder.push_back(label + std::to_string(i));
    inOrder.push_back(label + std::to_string(i) + "É");
    inOrder.push_back(label + std::to_string(i) + "F");
  }
  std::string keys;
  std::string ofLabels;
  for (std::size_t i = 0; i < inOrder.size(); ++i) {
    const std::string key = std::to_string(1'000 + i * 7'919 % 1'000);
    put(key, {inOrder[i]});
    keys += (keys.empty() ? "" : "|") + key;
    if (inOrder[i].starts_with("CLI")) ofLabels += (ofLabels.empty() ? "" : "|") + key;
  }
  EXPECT_EQ(select("PAR 1"), keys);
  EXPECT_EQ(select("PAR 2 PAR 1"), keys);
  EXPECT_EQ(select("AVEC 1 = \"CLI]\" PAR 1"), ofLabels);
}

TEST_P(Selection, RowsThatAreSortedAlikeComeByKey) {
  std::string keys;
  for (int i = 100; i < 150; ++i) {
    const std::string key = std::to_string(100 + i * 7 % 50);
    put(key, {i % 2 == 0 ? "1,0" : "01"});
    keys += (keys.empty() ? "" : "|") + std::to_string(i);
  }
  EXPECT_EQ(select("PAR 1"), keys);
}

TEST_P(Selection, ParOfAMultivaluedAttributeLooksAtItsFirstValue) {
  put("1", {"B;A"});
  put("2", {"A;Z"});
  EXPECT_EQ(select("PAR 1"), "2|1");
}

// Most rows come as they have to stand; one that does not moves among those that came before.
TEST_P(Selection, ParMovesARowThatDoesNotComeInTurn) {
  put("1", {"AB"});
  put("2", {"AD"});
  put("3", {"AÉ"});
  put("4", {"AF"});
  put("5", {"AD"});
  EXPECT_EQ(select("AVEC 1 = \"A]\" PAR 1", "0 1"), "1,AB|2,AD|5,AD|3,AÉ|4,AF");
  EXPECT_EQ(select("AVEC 1 = \"A]\" PAR 1", "1 0 1"), "AB,1,AB|AD,2,AD|AD,5,AD|AÉ,3,AÉ|AF,4,AF");
  EXPECT_EQ(select("AVEC 1 = \"A]\" PAR 1", "0"), "1|2|5|3|4");
  put("6", {"AA;AG;AC"});
  put("7", {"Z;AC"});
  EXPECT_EQ(select("AVEC 1 = \"A]\" PAR 1", "0 1"), "6,AA|1,AB|2,AD|5,AD|3,AÉ|4,AF|7,Z");
  EXPECT_EQ(select("AVEC 1 = \"AC]\" PAR 1", "0 1"), "6,AA|7,Z");
}

TEST_P(Selection, KeysComeAsTextsButParOnTheKeyKnowsNumbers) {
  put("9", {});
  put("10", {});
  put("100", {});
  EXPECT_EQ(select(""), "10|100|9");
  EXPECT_EQ(select("PAR @ID"), "9|10|100");
}

TEST_P(Selection, AnswersOneAttributeARecordWithTheColumnsAsValues) {
  put("001", {"CD01", "Ain", "x;y"});
  put("002", {"CD02"});
  EXPECT_EQ(select("", "0 1"), "001,CD01|002,CD02");
  EXPECT_EQ(select("", "1 0 2"), "CD01,001,Ain|CD02,002,");
  EXPECT_EQ(select("", "3"), "x|");
  EXPECT_EQ(select("", " 0  3 0 "), "001,x,001|002,,002");
  EXPECT_EQ(select("", ""), "001|002");
  EXPECT_EQ(select("", "@ID 1"), "001,CD01|002,CD02");
}

TEST_P(Selection, FollowsEveryWriteAndDeletion) {
  put("1", {"A;B"});
  put("2", {"A"});
  put("1", {"B;C"});
  EXPECT_EQ(select("AVEC 1 = \"A\""), "2");
  EXPECT_EQ(select("AVEC 1 = \"B]\"", "0 1"), "1,B");
  EXPECT_EQ(select("AVEC 1 = \"C\"", "0 1"), "1,B");
  put("1", {"C;B"});
  EXPECT_EQ(select("AVEC 1 = \"B\"", "0 1"), "1,C");
  store_->OpenFile(GetParam())->DeleteRecord("1");
  EXPECT_EQ(select("AVEC 1 = \"C\""), "");
  EXPECT_EQ(select(""), "2");
}

// Enough records for every way into them, and for none: a range of keys, the index alone, the index
// with its records, all records.
TEST(SelectionPaths, AnIndexChangesNoAnswer) {
  TemporaryStore store;
  const char* const words[] = {"AB", "ABC", "B", "", "10", "9", "B;AB", "AB;AC;AB"};
  {
    const auto transaction = store->begin();
    for (int i = 0; i < 700; ++i) {
      const std::string id = std::to_string(100000 + i * 7919 % 700);
      for (const char* const file : {"PLAIN", "ORGPRISECHARGE"}) {
        store.put(file, id, {words[i % 8], words[i % 5]});
      }
    }
    transaction->commit();
  }
  int found = 0;
  for (const std::string value : {"AB", "A]", "]", "[B", "B]", "10", "1]", "", "none", "none]"}) {
    for (const char* const rest :
         {"", " AND AVEC @ID = \"1001]\"", " AND AVEC @ID = \"1]\"", " AND AVEC @ID = \"100501\"",
          " AND AVEC 2 = \"B]\"", " AND AVEC 1 # \"B\"", " AND AVEC 1 = \"AC]\""}) {
      for (const char* const order : {"", " PAR 2 PAR 1"}) {
        for (const char* const columns : {"0 1", "2"}) {
          const std::string sentence = " AVEC 1 = \"" + value + "\"" + rest + order;
          const std::string plain = store.select("SSELECT PLAIN" + sentence, columns);
          ASSERT_EQ(store.select("SSELECT ORGPRISECHARGE" + sentence, columns), plain) << sentence;
          found += !plain.empty();
        }
      }
    }
  }
  EXPECT_GT(found, 80);
}

// --- Files, names and requests

TEST(SelectionNames, DictionaryNamesStandForAttributes) {
  TemporaryStore store;
  store.put("ORGPRISECHARGE", "001", {"CD01"});
  store.put("ORGPRISECHARGE", "002", {"CD02"});
  store.put("ACCORD", "A1", {"001"});
  store.put("ACTIVITES", "X", {"Aide", "010"});
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC SigleOrgChg = \"CD]\" PAR SigleOrgChg",
                         "0 SigleOrgChg"),
            "001,CD01|002,CD02");
  EXPECT_EQ(store.select("SSELECT ACCORD AVEC OrgChgAcc = \"001\""), "A1");
  EXPECT_EQ(store.select("SSELECT ACTIVITES AVEC CodAssoActivite = \"010\" PAR 1 ", "0 1 12"),
            "X,Aide,");
}

TEST(SelectionNames, ActiveAgreementsOfABody) {
  TemporaryStore store;
  const auto agreement = [&](const char* id, const char* body, const char* end,
                             const char* closed) {
    store.put("ACCORD", id,
              {body, "", "", "", "20000", end, "", "", "", "", "", "", "", "", "", "", "", closed});
  };
  agreement("1", "001", "21186", "");
  agreement("2", "001", "21185", "");
  agreement("3", "001", "30000", "O");
  agreement("4", "002", "30000", "");
  agreement("5", "001", "100000", "");
  EXPECT_EQ(store.select("SSELECT ACCORD AVEC OrgChgAcc = \"001\" AND AVEC 18 = \"\""
                         " AND AVEC 6 >= \"21186\""),
            "1|5");
  EXPECT_EQ(store.select("SSELECT ACCORD AVEC OrgChgAcc = \"001\" AND AVEC 18 # \"O\""
                         " AND AVEC 6 > \"21185\""),
            "1|5");
}

TEST(SelectionNames, ADoubleQuoteInsideAValueIsPartOfIt) {
  TemporaryStore store;
  store.put("ORGPRISECHARGE", "1", {"AB\"CD"});
  store.put("ORGPRISECHARGE", "2", {"AB\""});
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"AB\"C]\" PAR 1"), "1");
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"AB\"\""), "2");
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"AB\"]\""), "1|2");
}

TEST(SelectionNames, ANameWithQuotesCanBeSearched) {
  TemporaryStore store;
  store.put("ORGPRISECHARGE", "1", {"RESIDENCE \"LES PINS\" NORD", "x"});
  store.put("ORGPRISECHARGE", "2", {"\"LES PINS\"", "x"});
  store.put("ORGPRISECHARGE", "3", {"\"A\" AND CO AVEC \"B\" PARC", "y"});
  const auto select = [&](const std::string& value, const std::string& rest = "") {
    return store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"" + value + "\"" + rest);
  };
  EXPECT_EQ(select("RESIDENCE \"LES PINS\" NORD"), "1");
  EXPECT_EQ(select("RESIDENCE \"LES PINS\" ]", "  PAR 1"), "1");
  EXPECT_EQ(select("[\"LES PINS\"", " AND AVEC 2 = \"x\" PAR 1"), "2");
  EXPECT_EQ(select("[\" NORD]", " and avec 2 = \"x\""), "1");
  EXPECT_EQ(select("\"A\" AND CO AVEC \"B\" PARC"), "3");
  EXPECT_EQ(select("\"A\" AND CO]", " AND AVEC 2 = \"y\""), "3");
}

TEST(SelectionNames, KeywordsMayBeInLowerCaseAndBlanksMany) {
  TemporaryStore store;
  store.put("ORGPRISECHARGE", "1", {"A", "5"});
  EXPECT_EQ(store.select("  sselect  ORGPRISECHARGE avec 1=\"A\"  and avec 2>=4 par 1  "), "1");
}

TEST(SelectionNames, EveryAttributeOfABodyHasOneName) {
  using namespace store::orgprisecharge;
  std::map<int, int> names;
  std::set<std::string_view> once;
  for (const multivalue::FieldName& field : multivalue::standardFile(kFile)->fields) {
    ++names[field.attribute];
    EXPECT_TRUE(once.insert(field.name).second) << field.name;
  }
  for (int number = 1; number <= Dernier; ++number) {
    const bool keptFree = number > AdrMail && number <= store::adresse::Dernier;
    EXPECT_EQ(names[number], keptFree ? 0 : 1) << number;
  }
  EXPECT_EQ(names.rbegin()->first, Dernier);
}

TEST(SelectionNames, AStandardFileHasItsDictionaryAndItsIndexes) {
  TemporaryStore store;
  EXPECT_EQ(store->fieldName("ORGPRISECHARGE", 1), "SigleOrgChg");
  EXPECT_EQ(store->fieldName("ORGPRISECHARGE", 999), "");
  for (const char* const name :
       {"ORGPRISECHARGE", "PARAMBORDORGCHG", "COMPTEUR", "TABLES", "ACTIVITES", "ASSOCIATION",
        "PLANCOMPTABLE", "PERIODESPAIE", "ACCORD", "DEMANDACC", "TEMPO", "CONSTANTESPAIE"}) {
    EXPECT_TRUE(store->OpenFile(name)) << name;
  }
}

}  // namespace
