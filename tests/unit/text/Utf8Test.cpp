#include "text/Utf8.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

const std::string kMark = "\xFE";

TEST(Utf8, CountsCharactersNotBytes) {
  EXPECT_EQ(text::length(""), 0U);
  EXPECT_EQ(text::length("Ain"), 3U);
  EXPECT_EQ(text::length("œuvré"), 5U);
  EXPECT_EQ(text::length("€"), 1U);
  EXPECT_EQ(text::length("\U0001F600"), 1U);
}

TEST(Utf8, CountsEachByteOutsideUtf8AsOneCharacter) {
  EXPECT_EQ(text::length("a\xFE\xFD"), 3U);
  EXPECT_EQ(text::length("\xC3"), 1U) << "sequence cut at the end";
  EXPECT_EQ(text::length("\xE2\x82"), 2U);
  EXPECT_EQ(text::length("\x80"), 1U) << "continuation without a lead";
  EXPECT_EQ(text::length("\xC0\xAF"), 2U) << "overlong";
  EXPECT_EQ(text::length("\xE0\x80\xAF"), 3U) << "overlong";
  EXPECT_EQ(text::length("\xED\xA0\x80"), 3U) << "surrogate";
  EXPECT_EQ(text::length("\xF4\x90\x80\x80"), 4U) << "past the last character";
  EXPECT_EQ(text::length("\xF4\x8F\xBF\xBF"), 1U) << "the last character";
}

TEST(Utf8, CountsTheZeroCharacter) { EXPECT_EQ(text::length("a\0b"s), 3U); }

TEST(Utf8, FindsTheCharacterAtAPosition) {
  EXPECT_EQ(text::at("aé€", 1), U'a');
  EXPECT_EQ(text::at("aé€", 2), U'é');
  EXPECT_EQ(text::at("aé€", 3), U'€');
  EXPECT_EQ(text::at("a" + kMark, 2), U'\u00FE');
}

TEST(Utf8, FindsNoCharacterPastTheEndOrBeforeTheFirst) {
  EXPECT_EQ(text::at("aé€", 4), 0U);
  EXPECT_EQ(text::at("aé€", 0), 0U);
  EXPECT_EQ(text::at("", 1), 0U);
}

TEST(Utf8, CutsOnTheLeft) {
  EXPECT_EQ(text::left("Intermédiaire", 7), "Intermé");
  EXPECT_EQ(text::left("Intermédiaire", 6), "Interm");
  EXPECT_EQ(text::left("été", 0), "");
  EXPECT_EQ(text::left("été", 9), "été");
  EXPECT_EQ(text::left(kMark + "ab", 2), kMark + "a");
}

TEST(Utf8, CutsFromAPosition) {
  EXPECT_EQ(text::mid("département", 2, 3), "épa");
  EXPECT_EQ(text::mid("département", 2), "épartement");
  EXPECT_EQ(text::mid("été", 3, 5), "é");
  EXPECT_EQ(text::mid("été", 4), "");
  EXPECT_EQ(text::mid("été", 99, 1), "");
}

TEST(Utf8, FitsByCuttingOrByPaddingWithBlanks) {
  EXPECT_EQ(text::fit("été", 5), "été  ");
  EXPECT_EQ(text::fit("été", 3), "été");
  EXPECT_EQ(text::fit("été", 2), "ét");
  EXPECT_EQ(text::fit("", 2), "  ");
  EXPECT_EQ(text::fit("été", 0), "");
  std::string line = "à ";
  text::addFit(line, "été", 4);
  text::addFit(line, "\xFEx", 1);
  EXPECT_EQ(line, "à été \xFE");
}

TEST(Utf8, PutsFrenchLettersInUpperCase) {
  EXPECT_EQ(text::upper("abcxyz 0-9 ABC"), "ABCXYZ 0-9 ABC");
  EXPECT_EQ(text::upper("àâäçéèêëîïôöùûüÿæœ"), "ÀÂÄÇÉÈÊËÎÏÔÖÙÛÜŸÆŒ");
}

TEST(Utf8, LeavesWhatHasNoUpperCase) {
  EXPECT_EQ(text::upper("÷×ß€@[`{"), "÷×ß€@[`{");
  EXPECT_EQ(text::upper(U'÷'), U'÷');
}

TEST(Utf8, KeepsMarkBytesInUpperCase) {
  EXPECT_EQ(text::upper("a\xFE\xFD"
                        "é\xE9"),
            "A\xFE\xFD"
            "É\xE9");
}

TEST(Utf8, EncodesAndDecodesEveryCharacter) {
  for (char32_t code = 1; code <= 0x10FFFF; ++code) {
    if (code >= 0xD800 && code <= 0xDFFF) continue;
    const std::string bytes = text::encode(code);
    ASSERT_EQ(text::decode(bytes), std::vector<char32_t>{code}) << std::hex << +code;
  }
}

TEST(Utf8, EncodesNoSurrogateAndNothingPastTheLastCharacter) {
  EXPECT_EQ(text::encode(0xD800), "\uFFFD");
  EXPECT_EQ(text::encode(0x110000), "\uFFFD");
}

TEST(Utf8, GoesToUtf16AndBack) {
  EXPECT_EQ(text::toUtf16("aé€\U0001F600"), u"aé€\U0001F600");
  EXPECT_EQ(text::fromUtf16(u"aé€\U0001F600"), "aé€\U0001F600");
  for (char32_t code = 1; code <= 0x10FFFF; ++code) {
    if (code >= 0xD800 && code <= 0xDFFF) continue;
    const std::string bytes = text::encode(code);
    ASSERT_EQ(text::fromUtf16(text::toUtf16(bytes)), bytes) << std::hex << +code;
  }
}

TEST(Utf8, ShowsMarkBytesOutsideAsTheCharactersOfTheSameNumber) {
  EXPECT_EQ(text::toUtf16("a\xFE\xFD"), u"a\u00FE\u00FD");
}

TEST(Utf8, TakesTheMarkCharactersFromOutsideAsPlainCharacters) {
  EXPECT_EQ(text::fromUtf16(u"\u00FE\u00FD"), "\xC3\xBE\xC3\xBD");
}

TEST(Utf8, ReplacesLoneSurrogates) {
  EXPECT_EQ(text::fromUtf16(std::u16string{u'a', char16_t(0xD83D), u'b'}), "a\uFFFDb");
  EXPECT_EQ(text::fromUtf16(std::u16string{char16_t(0xDE00), u'b'}), "\uFFFDb");
  EXPECT_EQ(text::fromUtf16(std::u16string{char16_t(0xD83D)}), "\uFFFD");
  EXPECT_EQ(text::fromUtf16(std::u16string{char16_t(0xDE00), char16_t(0xD83D)}), "\uFFFD\uFFFD");
}

TEST(Utf8, TrimsBlanksAtBothEndsOnly) {
  EXPECT_EQ(text::trim("  a b "), "a b");
  EXPECT_EQ(text::trim("   "), "");
  EXPECT_EQ(text::trim(""), "");
  EXPECT_EQ(text::trim("\ta\t"), "\ta\t");
}

}  // namespace
