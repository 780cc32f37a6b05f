// What the comparisons say when they fail.
#include "tests/support/Same.h"

namespace {

using testing_support::same;
using testing_support::sameAgreement;
using testing_support::sameAttributes;
using testing_support::sameBody;
using Lines = std::vector<std::string>;

std::string record(std::initializer_list<std::string_view> attributes) {
  std::string text;
  for (const std::string_view attribute : attributes) {
    if (!text.empty()) text += store::kAttributeMark;
    text += attribute;
  }
  return text;
}

TEST(Same, SaysNothingOfWhatIsTheSame) {
  EXPECT_TRUE(same("a", "b", Lines{"x"}, Lines{"x"}));
  EXPECT_TRUE(same("a", "b", std::set<int>{1}, std::set<int>{1}));
  EXPECT_TRUE(sameBody("a", "b", "CAF", "CAF"));
  EXPECT_TRUE(sameAttributes("a", "b", {{1, "x"}}, {{1, "x"}}));
}

TEST(Same, TellsWhatAListMissesAndWhatItHasTooMuch) {
  EXPECT_STREQ(same("lines()", "kAll", Lines{"x", "z"}, Lines{"x", "y"}).message(),
               "lines() is not kAll\n"
               "  missing: \"y\"\n"
               "  too much: \"z\"\n"
               "  first difference at line 1: \"z\" instead of \"y\"");
}

TEST(Same, TellsOfLinesInAnotherOrder) {
  EXPECT_STREQ(same("a", "b", Lines{"x", "y"}, Lines{"y", "x"}).message(),
               "a is not b\n  first difference at line 0: \"x\" instead of \"y\"");
}

TEST(Same, CountsALineAsOftenAsItStands) {
  EXPECT_STREQ(same("a", "b", Lines{"x"}, Lines{"x", "x"}).message(),
               "a is not b\n"
               "  missing: \"x\"\n"
               "  first difference at line 1: none instead of \"x\"");
}

TEST(Same, TellsEightOfManyLines) {
  const std::string told = same("a", "b", Lines(20, "x"), {}).message();
  EXPECT_NE(told.find(" and 12 more"), std::string::npos) << told;
}

TEST(Same, TellsRowsByTheirColumns) {
  EXPECT_STREQ(same("a", "b", std::vector<Lines>{{"1", "2"}}, std::vector<Lines>{}).message(),
               "a is not b\n"
               "  too much: \"1 ; 2\"\n"
               "  first difference at line 0: \"1 ; 2\" instead of none");
}

TEST(Same, TellsOfASetAndOfValuesThatAreNoTexts) {
  EXPECT_STREQ(same("a", "b", std::set<long>{1, 3}, std::set<long>{1, 2}).message(),
               "a is not b\n  missing: \"2\"\n  too much: \"3\"");
  EXPECT_STREQ(same("a", "b", std::vector<int>{1}, std::vector<int>{2}).message(),
               "a is not b\n"
               "  missing: \"2\"\n"
               "  too much: \"1\"\n"
               "  first difference at line 0: \"1\" instead of \"2\"");
}

TEST(Same, TellsTheAttributesThatDifferByNumberAndName) {
  EXPECT_STREQ(sameBody("a", "b",
                        record({"CAF",
                                "Un\xFD"
                                "Deux"}),
                        record({"CAF", "Caisse", "Bât. A"}))
                   .message(),
               "a is not b\n"
               "  2 RaisonOrgChg: \"Un|Deux\" instead of \"Caisse\"\n"
               "  3 AdrComplement: \"\" instead of \"Bât. A\"");
  EXPECT_STREQ(sameAgreement("a", "b", "001", "002").message(),
               "a is not b\n  1 OrgChgAcc: \"001\" instead of \"002\"");
}

TEST(Same, TellsFiveOfManyAttributes) {
  const std::string told =
      sameBody("a", "b", record({"x", "x", "x", "x", "x", "x", "x"}), "").message();
  EXPECT_TRUE(told.ends_with("\n  5 AdrNatureVoie: \"x\" instead of \"\"\n  and 2 more")) << told;
}

TEST(Same, ShortensWhatTheTestCompares) {
  EXPECT_EQ(std::string(sameBody(std::string(90, 'a').c_str(), "b", "x", "").message()),
            std::string(80, 'a') + "... is not b\n  1 SigleOrgChg: \"x\" instead of \"\"");
}

TEST(Same, TellsOfAttributesThatAreAllEmpty) {
  EXPECT_STREQ(sameBody("a", "b", record({"CAF", ""}), "CAF").message(),
               "a is not b\n  2 attributes instead of 1, all of them the same");
}

TEST(Same, TellsAttributesOfATableByNumberAndName) {
  EXPECT_STREQ(
      sameAttributes("a", "b", {{18, "P"}}, {{18, "C"}}).message(),
      "a is not b\n"
      "  missing: \"18 TypeOrgChg: C\"\n"
      "  too much: \"18 TypeOrgChg: P\"\n"
      "  first difference at line 0: \"18 TypeOrgChg: P\" instead of \"18 TypeOrgChg: C\"");
}

}  // namespace
