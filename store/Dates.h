// Dates on screen and in the store. Day 0 is 31/12/1967; the text on screen is dd/mm/yyyy.
// Independent of the locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace store {

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

// Completes what a user types or pastes to dd/mm/yyyy: "1/2/26", "1.2.2026", "010226", "01022026";
// any one character that is no digit separates; "0102" takes the year of `today`; two-digit years
// 00 to 49 are 20xx, 50 to 99 are 19xx. "" when it is no valid date.
std::string completeDate(std::string_view typed, int yearOfToday);

}  // namespace store
