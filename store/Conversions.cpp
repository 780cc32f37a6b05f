#include "store/Conversions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <vector>

#include "text/Utf8.h"

namespace store {
namespace {

constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2099;
constexpr long kLargestWhole = std::numeric_limits<std::int32_t>::max();
constexpr long long kLargestHundredths = 999'999'999'999'999;

bool isDigit(char character) { return character >= '0' && character <= '9'; }

bool allDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

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

std::vector<std::string_view> split(std::string_view text, std::string_view separators) {
  std::vector<std::string_view> parts;
  std::size_t begin = 0;
  for (std::size_t end; (end = text.find_first_of(separators, begin)) != text.npos;) {
    parts.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  parts.push_back(text.substr(begin));
  return parts;
}

std::vector<std::string_view> partsOfTypedDate(std::string_view typed) {
  if (!allDigits(typed)) return split(typed, "/.-");
  if (typed.size() == 4) return {typed.substr(0, 2), typed.substr(2)};
  if (typed.size() == 6 || typed.size() == 8) {
    return {typed.substr(0, 2), typed.substr(2, 2), typed.substr(4)};
  }
  return {};
}

// What a text can write as dd/mm/yyyy.
constexpr long kFirstTextDay = daysSinceMarch({1, 1, 1}) - kDayZero;
constexpr long kLastTextDay = daysSinceMarch({9999, 12, 31}) - kDayZero;

// The last digits of a number, right-aligned before `end`; back comes where they begin. Numbers are
// written by the hundreds when a record is shown, so without a text in between.
template <class Number>
char* putDigits(char* end, Number number, int digits) {
  for (; digits > 0; --digits, number /= 10) *--end = static_cast<char>('0' + number % 10);
  return end;
}

// Blanks between thousands: the plain one, the no-break one and the narrow no-break one.
std::string withoutBlanks(std::string_view text) {
  std::string out;
  for (const char32_t character : text::decode(text)) {
    if (character != U' ' && character != U'\u00A0' && character != U'\u202F') {
      out += text::encode(character);
    }
  }
  return out;
}

// The first two decimals as a number, the half rounded up.
long long roundedCents(std::string_view decimals) {
  const auto digit = [decimals](std::size_t i) {
    return i < decimals.size() ? decimals[i] - '0' : 0;
  };
  return digit(0) * 10 + digit(1) + (digit(2) >= 5 ? 1 : 0);
}

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
  const std::vector<std::string_view> parts = split(text::trim(text), "/");
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

std::optional<long long> hundredths(std::string_view text) {
  const std::string number = withoutBlanks(text);
  std::string_view digits = number;
  const bool negative = !digits.empty() && digits[0] == '-';
  if (negative) digits.remove_prefix(1);
  const std::vector<std::string_view> parts = split(digits, ",.");
  const std::string_view decimals = parts.size() == 2 ? parts[1] : std::string_view();
  if (parts.size() > 2 || (parts[0].empty() && decimals.empty())) return std::nullopt;
  if (!parts[0].empty() && !allDigits(parts[0])) return std::nullopt;
  if (!decimals.empty() && !allDigits(decimals)) return std::nullopt;
  const std::string_view units =
      parts[0].substr(std::min(parts[0].find_first_not_of('0'), parts[0].size()));
  if (units.size() > 13) return std::nullopt;
  long long value = 0;
  std::from_chars(units.data(), units.data() + units.size(), value);
  value = value * 100 + roundedCents(decimals);
  if (value > kLargestHundredths) return std::nullopt;
  return negative ? -value : value;
}

std::string twoDecimals(long long hundredths) {
  const bool negative = hundredths < 0;
  const auto magnitude = negative ? 0ULL - static_cast<unsigned long long>(hundredths)
                                  : static_cast<unsigned long long>(hundredths);
  std::array<char, 24> text{};  // a sign, eighteen digits, a comma and two digits at the most
  char* const end = text.data() + text.size();
  char* begin = putDigits(end, magnitude, 2);
  *--begin = ',';
  auto units = magnitude / 100;
  do {
    begin = putDigits(begin, units, 1);
    units /= 10;
  } while (units > 0);
  if (negative) *--begin = '-';
  return {begin, end};
}

std::string shownHundredths(std::string_view stored) {
  const std::string_view number = text::trim(stored);
  long long value = 0;
  const char* const start = number.data();
  const char* const end = start + number.size();
  const auto [stop, error] = std::from_chars(start, end, value);
  return error == std::errc() && stop == end ? twoDecimals(value) : std::string();
}

std::string editable(std::string_view shown) {
  std::string out = withoutBlanks(shown);
  if (out.find(',') == std::string::npos) return out;
  out.erase(out.find_last_not_of('0') + 1);
  if (!out.empty() && out.back() == ',') out.pop_back();
  return out;
}

char32_t decimalKey(char32_t key) {
  constexpr char32_t kBackspace = 8;
  constexpr char32_t kEnter = 13;
  if (key >= U'0' && key <= U'9') return key;
  if (key == kBackspace || key == kEnter || key == U'-') return key;
  return key == U',' || key == U'.' ? U',' : 0;
}

long wholeNumber(std::string_view text) {
  std::string_view rest = text;
  rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
  const bool negative = !rest.empty() && rest[0] == '-';
  if (!rest.empty() && (rest[0] == '-' || rest[0] == '+')) rest.remove_prefix(1);
  long value = 0;
  for (std::size_t i = 0; i < rest.size() && isDigit(rest[i]); ++i) {
    const long digit = rest[i] - '0';
    if (value > (kLargestWhole - digit) / 10) {
      value = kLargestWhole;
      break;
    }
    value = value * 10 + digit;
  }
  return negative ? -value : value;
}

}  // namespace store
