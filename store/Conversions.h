// Between what is on screen and what is in the store. Independent of the locale: no strtod, no
// floating-point formatting.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace store {

// --- Dates. Day 0 is 31/12/1967; the text on screen is dd/mm/yyyy.

struct Date {
  int year = 0;
  int month = 0;  // 1 to 12
  int day = 0;    // 1 to 31
  bool operator==(const Date&) const = default;
};

long dayNumber(const Date& date);
Date dateOfDay(long day);

// Day number of a dd/mm/yyyy text (one digit for day or month is accepted); nothing when it is no
// date of the years 1900 to 2099.
std::optional<long> dayOfText(std::string_view text);
// dd/mm/yyyy; "" for an empty or unreadable day number, or one outside the years 1 to 9999. A
// fraction is cut off.
std::string textOfDay(std::string_view day);
std::string textOfDay(long day);

// Completes what a user types to dd/mm/yyyy: "1/2/26", "1.2.2026", "010226", "01022026"; "0102"
// takes the year of `today`; two-digit years 00 to 49 are 20xx, 50 to 99 are 19xx.
// "" when it is no valid date.
std::string completeDate(std::string_view typed, int yearOfToday);

// --- Numbers. Held as integers of hundredths, shown with two decimals and a comma.

// Hundredths of a text with comma or point, thousands' blanks ignored: "12,5" -> 1250. Rounded half
// away from zero past two decimals. Nothing when it is no number or would not fit in 15 digits.
std::optional<long long> hundredths(std::string_view text);
// 1250 -> "12,50"; -5 -> "-0,05".
std::string twoDecimals(long long hundredths);
// A stored number of hundredths ("1250") as shown ("12,50"); "" for an empty or unreadable one.
std::string shownHundredths(std::string_view stored);
// Display text back to editable text: without blanks, comma kept, no trailing zero decimals:
// "1 234,50" -> "1234,5".
std::string editable(std::string_view shown);

// Key filter for decimal entry: digits, Backspace, Enter and minus pass; comma and point give a
// comma; anything else gives 0.
char32_t decimalKey(char32_t key);

// Whole number at the start of a text, as classic conversions read it: "12abc" -> 12, "" -> 0.
// Beyond 2147483647 either way it stays there.
long wholeNumber(std::string_view text);

}  // namespace store
