#include "store/Dates.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using store::Date;

constexpr int kThisYear = 2026;

std::string completed(std::string_view typed) { return store::completeDate(typed, kThisYear); }

// --- Day numbers

TEST(Dates, DayZeroIsTheLastOf1967) {
  EXPECT_EQ(store::dayNumber({1967, 12, 31}), 0);
  EXPECT_EQ(store::dayNumber({1968, 1, 1}), 1);
  EXPECT_EQ(store::dayNumber({1967, 12, 30}), -1);
  EXPECT_EQ(store::dayNumber({2026, 1, 1}), 21186);
  EXPECT_EQ(store::dateOfDay(0), (Date{1967, 12, 31}));
}

TEST(Dates, EveryDayFrom1900To2099GoesToTextAndBack) {
  long expected = store::dayNumber({1900, 1, 1});
  for (int year = 1900; year <= 2099; ++year) {
    const bool leap = year % 4 == 0 && year != 1900;
    for (int month = 1; month <= 12; ++month) {
      const int days[] = {31, leap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
      for (int day = 1; day <= days[month - 1]; ++day, ++expected) {
        const Date date{year, month, day};
        ASSERT_EQ(store::dayNumber(date), expected);
        ASSERT_EQ(store::dateOfDay(expected), date);
        ASSERT_EQ(store::dayOfText(store::textOfDay(expected)), expected);
        ASSERT_EQ(completed(store::textOfDay(expected)), store::textOfDay(expected));
      }
    }
  }
  EXPECT_EQ(store::dateOfDay(expected), (Date{2100, 1, 1}));
}

TEST(Dates, AreShownWithLeadingZeros) {
  EXPECT_EQ(store::textOfDay(21186), "01/01/2026");
  EXPECT_EQ(store::textOfDay("21186"), "01/01/2026");
  EXPECT_EQ(store::textOfDay("0"), "31/12/1967");
  EXPECT_EQ(store::textOfDay("-1"), "30/12/1967");
  EXPECT_EQ(store::textOfDay(" 1 "), "01/01/1968");
}

TEST(Dates, AreShownFromTheWholePartOfADayNumber) {
  EXPECT_EQ(store::textOfDay("21186.99"), "01/01/2026");
  EXPECT_EQ(store::textOfDay("21186,5"), "01/01/2026");
  EXPECT_EQ(store::textOfDay("21186."), "01/01/2026");
}

TEST(Dates, AnUnreadableDayNumberShowsNothing) {
  for (const char* stored : {"", " ", "abc", "12a", "1.2.3", "1,5,5", "--1",
                             "99999999999999999999999999", "2147483647", "-2147483648"}) {
    EXPECT_EQ(store::textOfDay(stored), "") << stored;
  }
}

TEST(Dates, AreShownFromYear1To9999) {
  EXPECT_EQ(store::textOfDay(store::dayNumber({1, 1, 1})), "01/01/0001");
  EXPECT_EQ(store::textOfDay(store::dayNumber({1, 1, 1}) - 1), "");
  EXPECT_EQ(store::textOfDay(store::dayNumber({9999, 12, 31})), "31/12/9999");
  EXPECT_EQ(store::textOfDay(store::dayNumber({9999, 12, 31}) + 1), "");
}

TEST(Dates, AreReadFromScreenText) {
  EXPECT_EQ(store::dayOfText("01/01/2026"), 21186);
  EXPECT_EQ(store::dayOfText("1/1/2026"), 21186);
  EXPECT_EQ(store::dayOfText(" 01/01/2026 "), 21186);
}

TEST(Dates, AreNotReadFromAnythingElse) {
  for (const char* text :
       {"", "01/01/26", "01/01", "01.01.2026", "01012026", "1/1/2026/", "0/1/2026", "1/0/2026",
        "32/1/2026", "1/13/2026", "001/01/2026", "01/001/2026", "01/01/02026", "-1/01/2026",
        "a/b/cccc", "//", "1/ 1/2026", "01/01/1899", "01/01/2100"}) {
    EXPECT_EQ(store::dayOfText(text), std::nullopt) << text;
  }
}

// --- Completion of a typed date

TEST(CompletedDate, TakesOneOrTwoDigitsADayAndAMonth) {
  EXPECT_EQ(completed("1/2/26"), "01/02/2026");
  EXPECT_EQ(completed("01/02/2026"), "01/02/2026");
  EXPECT_EQ(completed("31/12/2099"), "31/12/2099");
}

TEST(CompletedDate, TakesDigitsWithoutSeparators) {
  EXPECT_EQ(completed("010226"), "01/02/2026");
  EXPECT_EQ(completed("01022026"), "01/02/2026");
}

TEST(CompletedDate, WithoutAYearTakesThatOfToday) {
  EXPECT_EQ(completed("0102"), "01/02/2026");
  EXPECT_EQ(completed("1/2"), "01/02/2026");
  EXPECT_EQ(store::completeDate("0102", 1999), "01/02/1999");
}

TEST(CompletedDate, TakesPointsAndDashesAsSeparators) {
  EXPECT_EQ(completed("1.2.2026"), "01/02/2026");
  EXPECT_EQ(completed("1-2-26"), "01/02/2026");
}

TEST(CompletedDate, TakesAnyOneCharacterThatIsNoDigitAsASeparator) {
  EXPECT_EQ(completed("1 2 26"), "01/02/2026");
  EXPECT_EQ(completed("1x2x2026"), "01/02/2026");
  EXPECT_EQ(completed("01\u20132026"), "");
  EXPECT_EQ(completed("01\u201302\u20132026"), "01/02/2026");
  EXPECT_EQ(completed("1\u00A02"), "01/02/2026");
  EXPECT_EQ(completed("1\u00E92\u00E926"), "01/02/2026");
  EXPECT_EQ(completed("01 / 02 / 2026"), "");
}

TEST(CompletedDate, PutsTwoDigitYearsInTheirCentury) {
  EXPECT_EQ(completed("1/1/00"), "01/01/2000");
  EXPECT_EQ(completed("1/1/49"), "01/01/2049");
  EXPECT_EQ(completed("1/1/50"), "01/01/1950");
  EXPECT_EQ(completed("1/1/99"), "01/01/1999");
}

TEST(CompletedDate, KnowsTheTwentyNinthOfFebruary) {
  EXPECT_EQ(completed("29/02/2024"), "29/02/2024");
  EXPECT_EQ(completed("290224"), "29/02/2024");
  EXPECT_EQ(completed("29/02/2000"), "29/02/2000");
  EXPECT_EQ(store::completeDate("2902", 2028), "29/02/2028");
  EXPECT_EQ(completed("29/02/2025"), "");
  EXPECT_EQ(completed("29/02/2026"), "");
  EXPECT_EQ(completed("29/02/1900"), "");
  EXPECT_EQ(completed("2902"), "");
  EXPECT_EQ(completed("30/02/2024"), "");
}

TEST(CompletedDate, StaysWithinTheYears1900To2099) {
  EXPECT_EQ(completed("01/01/1900"), "01/01/1900");
  EXPECT_EQ(completed("31/12/1899"), "");
  EXPECT_EQ(completed("31/12/2099"), "31/12/2099");
  EXPECT_EQ(completed("01/01/2100"), "");
  EXPECT_EQ(completed("29/02/2100"), "");
}

TEST(CompletedDate, RefusesNonsense) {
  for (const char* typed : {"",
                            " ",
                            "/",
                            "//",
                            "abc",
                            "1",
                            "12",
                            "123",
                            "12345",
                            "1234567",
                            "123456789",
                            "0/1/26",
                            "1/0/26",
                            "31/04/2026",
                            "32/1/26",
                            "1/13/26",
                            "1/2/3",
                            "1/2/026",
                            "1/2/20266",
                            "1/2/26/3",
                            "1//26",
                            "/2/26",
                            "a/b/c",
                            "1/2/-1",
                            "+1/2/26",
                            "0000",
                            "000000",
                            "00000000",
                            "é/2/26",
                            "1/2/26x",
                            "99999999",
                            "11111111111111111111111111111111111111111111111111/1/26",
                            "1/1/11111111111111111111111111111111111111111111111111"}) {
    EXPECT_EQ(completed(typed), "") << typed;
  }
}

TEST(CompletedDate, IgnoresBlanksAround) { EXPECT_EQ(completed("  1/2/26 "), "01/02/2026"); }

TEST(CompletedDate, LeavesACompletedDateAsItIs) {
  EXPECT_EQ(completed(completed("1/2/26")), "01/02/2026");
}

}  // namespace
