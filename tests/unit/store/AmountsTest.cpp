#include "store/Amounts.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

TEST(Hundredths, EveryAmountUpTo999EurosIsShownAndReadBack) {
  for (long long amount = 0; amount <= 99999; ++amount) {
    const std::string shown = store::twoDecimals(amount);
    ASSERT_EQ(store::hundredths(shown), amount);
    ASSERT_EQ(store::hundredths(store::editable(shown)), amount);
    ASSERT_EQ(store::shownHundredths(std::to_string(amount)), shown);
    ASSERT_EQ(shown.size() - shown.find(','), 3U) << shown;
    ASSERT_EQ(store::hundredths("-" + shown), -amount);
  }
}

TEST(Hundredths, AreReadWithCommaOrPoint) {
  EXPECT_EQ(store::hundredths("12,5"), 1250);
  EXPECT_EQ(store::hundredths("12.5"), 1250);
  EXPECT_EQ(store::hundredths("12"), 1200);
  EXPECT_EQ(store::hundredths("12,"), 1200);
  EXPECT_EQ(store::hundredths(",5"), 50);
  EXPECT_EQ(store::hundredths("0"), 0);
  EXPECT_EQ(store::hundredths("007,50"), 750);
}

TEST(Hundredths, AreReadWithBlanksBetweenThousands) {
  EXPECT_EQ(store::hundredths("1 234,50"), 123450);
  EXPECT_EQ(store::hundredths("1\u00A0234,50"), 123450);
  EXPECT_EQ(store::hundredths("1\u202F234,50"), 123450);
  EXPECT_EQ(store::hundredths(" 12 "), 1200);
}

TEST(Hundredths, AreReadWithAMinus) {
  EXPECT_EQ(store::hundredths("-3"), -300);
  EXPECT_EQ(store::hundredths("-0,05"), -5);
  EXPECT_EQ(store::hundredths("-0"), 0);
}

TEST(Hundredths, AreRoundedHalfAwayFromZero) {
  EXPECT_EQ(store::hundredths("0,005"), 1);
  EXPECT_EQ(store::hundredths("0,0049999"), 0);
  EXPECT_EQ(store::hundredths("-0,005"), -1);
  EXPECT_EQ(store::hundredths("1,995"), 200);
  EXPECT_EQ(store::hundredths("1,994"), 199);
  EXPECT_EQ(store::hundredths("0," + std::string(40, '9')), 100);
}

TEST(Hundredths, AreNotReadFromWhatIsNoNumber) {
  for (const char* text : {"", " ", ",", ".", "-", "-,", "--3", "3-", "+3", "1,2,3", "1,2.3", "abc",
                           "12a", "1e3", "0x1", "nan", "½", "1;5"}) {
    EXPECT_EQ(store::hundredths(text), std::nullopt) << text;
  }
}

TEST(Hundredths, HoldFifteenDigitsAtMost) {
  EXPECT_EQ(store::hundredths("9999999999999,99"), 999'999'999'999'999);
  EXPECT_EQ(store::hundredths("-9999999999999,99"), -999'999'999'999'999);
  EXPECT_EQ(store::hundredths("9999999999999,995"), std::nullopt);
  EXPECT_EQ(store::hundredths("10000000000000"), std::nullopt);
  EXPECT_EQ(store::hundredths(std::string(40, '9')), std::nullopt);
  EXPECT_EQ(store::hundredths(std::string(40, '0') + "1"), 100);
}

TEST(Hundredths, AreShownWithTwoDecimalsAndAComma) {
  EXPECT_EQ(store::twoDecimals(1250), "12,50");
  EXPECT_EQ(store::twoDecimals(0), "0,00");
  EXPECT_EQ(store::twoDecimals(5), "0,05");
  EXPECT_EQ(store::twoDecimals(-5), "-0,05");
  EXPECT_EQ(store::twoDecimals(-1250), "-12,50");
  EXPECT_EQ(store::twoDecimals(123456789), "1234567,89");
  EXPECT_EQ(store::twoDecimals(std::numeric_limits<long long>::min()), "-92233720368547758,08");
}

TEST(Hundredths, AStoredNumberIsShownAsAnAmount) {
  EXPECT_EQ(store::shownHundredths("1250"), "12,50");
  EXPECT_EQ(store::shownHundredths("-5"), "-0,05");
  EXPECT_EQ(store::shownHundredths("0"), "0,00");
  EXPECT_EQ(store::shownHundredths(" 7 "), "0,07");
  EXPECT_EQ(store::shownHundredths("99"), "0,99");
  EXPECT_EQ(store::shownHundredths("100"), "1,00");
  EXPECT_EQ(store::shownHundredths("0100"), "1,00");
  EXPECT_EQ(store::shownHundredths("007"), "0,07");
  EXPECT_EQ(store::shownHundredths("123456789012345"), "1234567890123,45");
  EXPECT_EQ(store::shownHundredths("1234567890123456"), "12345678901234,56");
}

TEST(Hundredths, AStoredNumberWithDecimalsIsRoundedHalfAwayFromZero) {
  EXPECT_EQ(store::shownHundredths("1250.5"), "12,51");
  EXPECT_EQ(store::shownHundredths("1250,5"), "12,51");
  EXPECT_EQ(store::shownHundredths("1250,49999"), "12,50");
  EXPECT_EQ(store::shownHundredths("-1250.5"), "-12,51");
  EXPECT_EQ(store::shownHundredths("-1250,4"), "-12,50");
  EXPECT_EQ(store::shownHundredths("-0.5"), "-0,01");
  EXPECT_EQ(store::shownHundredths("-0,4"), "0,00");
  EXPECT_EQ(store::shownHundredths("0.5"), "0,01");
  EXPECT_EQ(store::shownHundredths(",5"), "0,01");
  EXPECT_EQ(store::shownHundredths(" 1250.5 "), "12,51");
  EXPECT_EQ(store::shownHundredths("999999999999998.5"), "9999999999999,99");
}

TEST(Hundredths, AnUnreadableStoredNumberShowsNothing) {
  for (const char* stored :
       {"", " ", "abc", "1 2", "-", ",", ".", "-.", "+3", "1.2.3", "1,2,3", "12,5a", "12.", "12,",
        "1e3", "9999999999999999999999", "1000000000000000,5", "999999999999999,5"}) {
    EXPECT_EQ(store::shownHundredths(stored), "") << stored;
  }
}

TEST(Hundredths, ATypedNumberIsReformatted) {
  EXPECT_EQ(store::reformatted("12.5"), "12,50");
  EXPECT_EQ(store::reformatted("1 234,5"), "1234,50");
  EXPECT_EQ(store::reformatted(" "), "");
  EXPECT_EQ(store::reformatted("abc"), "");
}

TEST(Hundredths, AreComparedInSinglePrecision) {
  EXPECT_EQ(store::singlePrecision("12,5"), 12.5F);
  EXPECT_EQ(store::singlePrecision("16777217"), 16777216.0F);
  EXPECT_EQ(store::singlePrecision("abc"), 0.0F);
}

TEST(Hundredths, AreMadeEditable) {
  EXPECT_EQ(store::editable("1 234,50"), "1234,5");
  EXPECT_EQ(store::editable("12,00"), "12");
  EXPECT_EQ(store::editable("10,00"), "10");
  EXPECT_EQ(store::editable("0,00"), "0");
  EXPECT_EQ(store::editable("12,05"), "12,05");
  EXPECT_EQ(store::editable("-0,50"), "-0,5");
  EXPECT_EQ(store::editable("100"), "100");
  EXPECT_EQ(store::editable(""), "");
  EXPECT_EQ(store::editable(" "), "");
}

TEST(DecimalKey, LetsDigitsAndEditingKeysThrough) {
  for (char32_t key = U'0'; key <= U'9'; ++key) EXPECT_EQ(store::decimalKey(key), key);
  EXPECT_EQ(store::decimalKey(8), 8U);
  EXPECT_EQ(store::decimalKey(13), 13U);
  EXPECT_EQ(store::decimalKey(U'-'), U'-');
}

TEST(DecimalKey, TurnsThePointIntoAComma) {
  EXPECT_EQ(store::decimalKey(U','), U',');
  EXPECT_EQ(store::decimalKey(U'.'), U',');
}

TEST(DecimalKey, DropsEverythingElse) {
  for (const char32_t key : U"a+/: é\u0660eE\t") {
    EXPECT_EQ(store::decimalKey(key), 0U) << static_cast<unsigned>(key);
  }
}

TEST(WholeNumber, IsReadAtTheStartOfAText) {
  EXPECT_EQ(store::wholeNumber("12abc"), 12);
  EXPECT_EQ(store::wholeNumber(""), 0);
  EXPECT_EQ(store::wholeNumber("abc"), 0);
  EXPECT_EQ(store::wholeNumber("  7"), 7);
  EXPECT_EQ(store::wholeNumber("-3"), -3);
  EXPECT_EQ(store::wholeNumber("+3"), 3);
  EXPECT_EQ(store::wholeNumber("-"), 0);
  EXPECT_EQ(store::wholeNumber("2,9"), 2);
  EXPECT_EQ(store::wholeNumber("006"), 6);
}

TEST(WholeNumber, StaysAtItsLimits) {
  EXPECT_EQ(store::wholeNumber("2147483646"), 2147483646);
  EXPECT_EQ(store::wholeNumber("2147483647"), 2147483647);
  EXPECT_EQ(store::wholeNumber("2147483648"), 2147483647);
  EXPECT_EQ(store::wholeNumber("-" + std::string(40, '9')), -2147483647);
}

}  // namespace
