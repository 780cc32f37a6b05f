#include "store/Dates.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <vector>

#include "store/Digits.h"
#include "text/Utf8.h"

namespace store {
namespace {

constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2099;

constexpr bool isLeap(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

int daysOfMonth(int year, int month) {
  constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && isLeap(year) ? 29 : kDays[static_cast<std::size_t>(month - 1)];
}

bool isDate(const Date& date) {
  return date.year >= kFirstYear && date.year <= kLastYear && date.month >= 1 && date.month <= 12 &&
         date.day >= 1 && date.day <= daysOfMonth(date.year, date.month);
}

// Days since the first of March of the year 0: with March first, the leap day ends the year.
constexpr long daysSinceMarch(const Date& date) {
  const long year = date.month > 2 ? date.year : date.year - 1L;
  const long month = date.month > 2 ? date.month - 3 : date.month + 9;
  const long era = (year >= 0 ? year : year - 399) / 400;
  const long yearOfEra = year - era * 400;
  const long dayOfYear = (153 * month + 2) / 5 + date.day - 1;
  return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
}

constexpr long kDayZero = daysSinceMarch({1967, 12, 31});

// A short run of digits; -1 when there is none, or more than `longest`.
int shortNumber(std::string_view digits, std::size_t longest) {
  if (!allDigits(digits) || digits.size() > longest) return -1;
  int number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

int fullYear(std::string_view digits) {
  const int year = shortNumber(digits, 4);
  if (digits.size() == 4) return year;
  if (digits.size() != 2 || year < 0) return -1;
  return year < 50 ? 2000 + year : 1900 + year;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  std::size_t begin = 0;
  for (std::size_t end; (end = text.find(separator, begin)) != text.npos; begin = end + 1) {
    parts.push_back(text.substr(begin, end - begin));
  }
  parts.push_back(text.substr(begin));
  return parts;
}

// Any character that is no digit separates, whatever its bytes.
std::vector<std::string_view> splitAtOthers(std::string_view text) {
  std::vector<std::string_view> parts;
  std::size_t begin = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isDigit(text[i])) continue;
    const bool insideCharacter = (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80U;
    if (!insideCharacter) parts.push_back(text.substr(begin, i - begin));
    begin = i + 1;
  }
  parts.push_back(text.substr(begin));
  return parts;
}

std::vector<std::string_view> partsOfTypedDate(std::string_view typed) {
  if (!allDigits(typed)) return splitAtOthers(typed);
  if (typed.size() == 4) return {typed.substr(0, 2), typed.substr(2)};
  if (typed.size() == 6 || typed.size() == 8) {
    return {typed.substr(0, 2), typed.substr(2, 2), typed.substr(4)};
  }
  return {};
}

// What a text can write as dd/mm/yyyy.
constexpr long kFirstTextDay = daysSinceMarch({1, 1, 1}) - kDayZero;
constexpr long kLastTextDay = daysSinceMarch({9999, 12, 31}) - kDayZero;

}  // namespace

long dayNumber(const Date& date) { return daysSinceMarch(date) - kDayZero; }

Date dateOfDay(long day) {
  const long days = day + kDayZero;
  const long era = (days >= 0 ? days : days - 146096) / 146097;
  const long dayOfEra = days - era * 146097;
  const long yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const long marchMonth = (5 * dayOfYear + 2) / 153;
  const long month = marchMonth < 10 ? marchMonth + 3 : marchMonth - 9;
  const long year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
  return {static_cast<int>(year), static_cast<int>(month),
          static_cast<int>(dayOfYear - (153 * marchMonth + 2) / 5 + 1)};
}

std::optional<long> dayOfText(std::string_view text) {
  const std::vector<std::string_view> parts = split(text::trim(text), '/');
  if (parts.size() != 3 || parts[2].size() != 4) return std::nullopt;
  const Date date{shortNumber(parts[2], 4), shortNumber(parts[1], 2), shortNumber(parts[0], 2)};
  if (!isDate(date)) return std::nullopt;
  return dayNumber(date);
}

std::string textOfDay(std::string_view day) {
  const std::string_view stored = text::trim(day);
  long number = 0;
  const char* const start = stored.data();
  const char* const end = start + stored.size();
  const auto [stop, error] = std::from_chars(start, end, number);
  if (error != std::errc()) return {};
  const std::string_view rest(stop, static_cast<std::size_t>(end - stop));
  const bool fraction = !rest.empty() && (rest[0] == '.' || rest[0] == ',') &&
                        std::all_of(rest.begin() + 1, rest.end(), isDigit);
  return rest.empty() || fraction ? textOfDay(number) : std::string();
}

std::string textOfDay(long day) {
  if (day < kFirstTextDay || day > kLastTextDay) return {};
  const Date date = dateOfDay(day);
  std::string out = "dd/mm/yyyy";
  putDigits(out.data() + 2, date.day, 2);
  putDigits(out.data() + 5, date.month, 2);
  putDigits(out.data() + 10, date.year, 4);
  return out;
}

std::string completeDate(std::string_view typed, int yearOfToday) {
  const std::vector<std::string_view> parts = partsOfTypedDate(text::trim(typed));
  if (parts.size() != 2 && parts.size() != 3) return {};
  const int year = parts.size() == 2 ? yearOfToday : fullYear(parts[2]);
  const Date date{year, shortNumber(parts[1], 2), shortNumber(parts[0], 2)};
  return isDate(date) ? textOfDay(dayNumber(date)) : std::string();
}

}  // namespace store
