#include <gtest/gtest.h>

#include "TemporaryStore.h"
#include "tests/support/Seed.h"

namespace {

struct Malformed {
  const char* sentence;
  const char* message;
};

class MalformedSentence : public testing::TestWithParam<Malformed> {};

TEST_P(MalformedSentence, IsRefusedWithItsPlace) {
  TemporaryStore store;
  const auto run = [&] { store.select(GetParam().sentence); };
  EXPECT_EQ(messageOf(run), GetParam().message);
  EXPECT_EQ(errorOf(run), store::kBadSentence);
}

INSTANTIATE_TEST_SUITE_P(
    Table, MalformedSentence,
    testing::Values(
        Malformed{"SSELECT", "character 8: a file is expected"},
        Malformed{"SSELECT AVEC 1 = \"x\"", "character 9: a file is expected"},
        Malformed{"SSELECT \"ACCORD\"", "character 9: a file is expected"},
        Malformed{"SSELECT ACCORD 1 = \"x\"", "character 16: AVEC, PAR or the end is expected"},
        Malformed{"SSELECT ACCORD AVEC", "character 20: a field is expected after AVEC"},
        Malformed{"SSELECT ACCORD AVEC = \"x\"", "character 21: a field is expected after AVEC"},
        Malformed{"SSELECT ACCORD AVEC PAR 1", "character 21: a field is expected after AVEC"},
        Malformed{"SSELECT ACCORD AVEC 1", "character 22: an operator is expected: = # < <= > >="},
        Malformed{"SSELECT ACCORD AVEC 1 \"x\"",
                  "character 23: an operator is expected: = # < <= > >="},
        Malformed{"SSELECT ACCORD AVEC 1 LIKE \"x\"",
                  "character 23: an operator is expected: = # < <= > >="},
        Malformed{"SSELECT ACCORD AVEC 1 =", "character 24: a value is expected"},
        Malformed{"SSELECT ACCORD AVEC 1 = = \"x\"", "character 25: a value is expected"},
        Malformed{"SSELECT ACCORD AVEC 1 = PAR 1", "character 25: a value is expected"},
        Malformed{"SSELECT ACCORD AVEC 1 = \"x",
                  "character 25: the value's closing double quote is missing"},
        Malformed{"SSELECT ACCORD AVEC 1 = \"",
                  "character 25: the value's closing double quote is missing"},
        Malformed{"SSELECT ACCORD AVEC 1 = \"a\" b",
                  "character 29: AND AVEC, PAR or the end is expected"},
        Malformed{"SSELECT ACCORD AVEC 1 = \"a\" \"b\" c",
                  "character 29: AND AVEC, PAR or the end is expected"},
        Malformed{"SSELECT ACCORD AVEC 1 = \"x\" AVEC 2 = 5",
                  "character 29: AND AVEC, PAR or the end is expected"},
        Malformed{"SSELECT ACCORD AVEC 1 = \"x\" AND 2 = 5",
                  "character 33: AVEC is expected after AND"},
        Malformed{"SSELECT ACCORD AVEC 1 = \"x\" AND", "character 32: AVEC is expected after AND"},
        Malformed{"SSELECT ACCORD PAR", "character 19: a field is expected after PAR"},
        Malformed{"SSELECT ACCORD PAR \"1\"", "character 20: a field is expected after PAR"},
        Malformed{"SSELECT ACCORD PAR 1 AVEC 1 = \"x\"",
                  "character 22: a field, PAR or the end is expected"},
        Malformed{"SSELECT ACCORD PAR 1 PAR", "character 25: a field is expected after PAR"},
        Malformed{"SSELECT ACCORD AVEC Nothing = \"x\"",
                  "character 21: unknown field Nothing in file ACCORD"},
        Malformed{"SSELECT ACCORD AVEC orgchgacc = \"x\"",
                  "character 21: unknown field orgchgacc in file ACCORD"},
        Malformed{"SSELECT ACCORD AVEC -1 = \"x\"",
                  "character 21: unknown field -1 in file ACCORD"},
        Malformed{"SSELECT ACCORD AVEC 99999999999999999999 = \"x\"",
                  "character 21: unknown field 99999999999999999999 in file ACCORD"},
        Malformed{"SSELECT ACCORD AVEC 10000 = \"x\"",
                  "character 21: unknown field 10000 in file ACCORD"},
        Malformed{"SSELECT ACCORD AVEC 1x = \"x\"",
                  "character 21: unknown field 1x in file ACCORD"},
        Malformed{"SSELECT ACCORD PAR SigleOrgChg",
                  "character 20: unknown field SigleOrgChg in file ACCORD"},
        // Places count characters, not bytes: é is two bytes.
        Malformed{"SSELECT ACCORD AVEC 1 = \"\xC3\xA9\xC3\xA9\" PAR Nothing",
                  "character 34: unknown field Nothing in file ACCORD"}));

TEST(SentenceRequest, AnUnknownFileIsNamedWithItsPlace) {
  TemporaryStore store;
  const auto run = [&] { store.select("SSELECT NOWHERE PAR 1"); };
  EXPECT_EQ(errorOf(run), store::kUnknownFile);
  EXPECT_EQ(messageOf(run), "character 9: unknown file NOWHERE");
  EXPECT_EQ(errorOf([&] { store.select("SSELECT accord"); }), store::kUnknownFile);
}

TEST(SentenceRequest, TheFileOfTheRequestMustBeTheSentences) {
  TemporaryStore store;
  const auto run = [&](const char* file) {
    return [&store, file] { store->ExecuteSentence(store::request("SSELECT ACCORD", file, "0")); };
  };
  EXPECT_EQ(errorOf(run("ACCORD")), 0U);
  EXPECT_EQ(errorOf(run("")), 0U);
  EXPECT_EQ(messageOf(run("TABLES")),
            "character 9: the sentence selects from ACCORD, the request from TABLES");
}

TEST(SentenceRequest, AnUnknownColumnIsNamedWithItsPlace) {
  TemporaryStore store;
  const auto run = [&](const char* columns) {
    return [&store, columns] { store.select("SSELECT ACCORD", columns); };
  };
  EXPECT_EQ(messageOf(run("0 Nothing")),
            "columns, character 3: unknown field Nothing in file ACCORD");
  EXPECT_EQ(errorOf(run("0 -1")), store::kBadSentence);
  EXPECT_EQ(errorOf(run("0,1")), store::kBadSentence);
}

TEST(SentenceRequest, TheCommandsOfASessionAreAccepted) {
  TemporaryStore store;
  store::DynamicArray commands;
  commands.set(1, "SET-DEC ,");
  commands.set(2, "DATE.FORMAT");
  commands.set(3, "UDT.OPTIONS 11 ON");
  EXPECT_TRUE(store->ExecuteSentence(commands.text()).empty());
  EXPECT_TRUE(store->ExecuteSentence("DATE.FORMAT").empty());
}

TEST(SentenceRequest, AnUnknownCommandIsRefused) {
  TemporaryStore store;
  for (const char* const command :
       {"", "SSELEC ACCORD", "DELETE ACCORD", "SET-DEC", "MAJTXACC |01/01/2026|001", " "}) {
    EXPECT_EQ(errorOf([&] { store->ExecuteSentence(command); }), store::kBadSentence) << command;
  }
  EXPECT_EQ(messageOf([&] { store->ExecuteSentence("ERASE everything"); }),
            "character 1: unknown command \"ERASE\"");
  EXPECT_EQ(errorOf([&] {
              store->ExecuteSentence(recordText({"DATE.FORMAT", "NONSENSE"}));
            }),
            store::kBadSentence);
}

// Sentences made of pieces in any order, with bytes changed, dropped and doubled at random: each
// is answered or refused with one of the codes that tell a bad sentence.
TEST(SentenceFuzz, AnySentenceIsAnsweredOrRefused) {
  TemporaryStore store;
  store.put("ORGPRISECHARGE", "001", {"CD01", "x;y"});
  const std::string pieces[] = {"SSELECT", "SELECT", " ",   " ",   " ",      "ORGPRISECHARGE",
                                "AVEC",    "AND",    "PAR", "@ID", "1",      "SigleOrgChg",
                                "=",       "#",      "<=",  ">",   "\"",     "\"CD]\"",
                                "\"[1\"",  "\"\"",   "]",   "[",   "\xC3",   "\xFE",
                                "\xFD",    "ACCORD", "-1",  "\t",  "\"a\"b", "99999999999"};
  testing_support::Random random(20260101);
  const auto below = [&](std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
  };
  int answered = 0;
  int refused = 0;
  for (int i = 0; i < 40000; ++i) {
    std::string sentence =
        below(3) == 0 ? "" : "SSELECT ORGPRISECHARGE AVEC 1 = \"CD]\" AND AVEC 2 # \"z\" PAR 1 ";
    for (std::size_t n = below(8); n > 0; --n) sentence += pieces[below(std::size(pieces))];
    for (std::size_t n = below(4); n > 0 && !sentence.empty(); --n) {
      const std::size_t at = below(sentence.size());
      switch (below(3)) {
        case 0:
          sentence[at] = static_cast<char>(below(256));
          break;
        case 1:
          sentence.erase(at, 1 + below(4));
          break;
        default:
          sentence.insert(at, pieces[below(std::size(pieces))]);
      }
    }
    const unsigned code = errorOf([&] { store->ExecuteSentence(sentence); });
    (code == 0 ? answered : refused) += 1;
    ASSERT_TRUE(code == 0 || code == store::kBadSentence || code == store::kUnknownFile)
        << sentence << " gives " << code;
  }
  EXPECT_GT(answered, 500);
  EXPECT_GT(refused, 500);
}

}  // namespace
