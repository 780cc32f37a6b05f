// Dates and amounts: any text is read or refused, and what is shown reads back as the same value.
// An input is a text, as typed and as stored.
#include "store/Conversions.h"

#include <algorithm>
#include <charconv>

#include "tests/fuzz/Fuzz.h"
#include "text/Utf8.h"

namespace fuzz {
namespace {

constexpr int kYearOfToday = 2026;
constexpr long long kLargestReadBack = 999'999'999'999'999;

// The whole number that a text is, when it is one.
std::optional<long long> storedNumber(std::string_view stored) {
  const std::string_view number = text::trim(stored);
  long long value = 0;
  const char* const start = number.data();
  const char* const end = start + number.size();
  const auto [stop, error] = std::from_chars(start, end, value);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

void checkDay(long day) {
  expect(store::dayNumber(store::dateOfDay(day)) == day, "a day's date is that day",
         std::to_string(day));
  const std::string shown = store::textOfDay(day);
  expect(shown.size() == 10, "a day is shown as dd/mm/yyyy", shown);
  expectSame("a shown day completes to itself", store::completeDate(shown, kYearOfToday), shown);
  expect(store::dayOfText(shown) == day, "a shown day reads back", shown);
}

void checkDates(std::string_view input) {
  if (const std::optional<long> day = store::dayOfText(input)) {
    checkDay(*day);
    expectSame("what reads as a day completes to it", store::completeDate(input, kYearOfToday),
               store::textOfDay(*day));
  }
  const std::string completed = store::completeDate(input, kYearOfToday);
  if (!completed.empty()) {
    const std::optional<long> day = store::dayOfText(completed);
    expect(day.has_value(), "a completed date is a day", completed);
    checkDay(*day);
  }
  const std::string shown = store::textOfDay(input);
  if (shown.empty()) return;
  const std::optional<long> day = store::dayOfText(shown);
  const std::optional<long long> stored = storedNumber(input);
  if (day && stored) expect(*day == *stored, "a stored day is shown as itself", shown);
}

// Digits, at most one of "," and ".", read by thousandths and rounded by the third decimal.
std::optional<long long> roundedByThousandths(std::string text) {
  const bool negative = text.starts_with('-');
  if (negative) text.erase(0, 1);
  const std::size_t point = std::min(text.find_first_of(",."), text.size());
  const std::string decimals = point < text.size() ? text.substr(point + 1) : "";
  const std::string digits = text.substr(0, point) + (decimals + "000").substr(0, 3);
  const bool plain =
      std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
  if (!plain || digits.size() > 16 || text.size() < (point < text.size() ? 2U : 1U)) {
    return std::nullopt;
  }
  long long thousandths = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), thousandths);
  const long long value = (thousandths + 5) / 10;
  return negative ? -value : value;
}

void checkAmount(long long amount) {
  const std::string shown = store::twoDecimals(amount);
  expectSame("a stored amount is shown alike", store::shownHundredths(std::to_string(amount)),
             shown);
  const std::optional<long long> back = store::hundredths(shown);
  if (amount >= -kLargestReadBack && amount <= kLargestReadBack) {
    expect(back == amount, "a shown amount reads back", shown);
    expect(store::hundredths(store::editable(shown)) == amount, "an amount to be edited reads back",
           store::editable(shown));
  } else {
    expect(!back, "an amount of more than 15 digits is refused", shown);
  }
}

void checkAmounts(std::string_view input) {
  const std::optional<long long> read = store::hundredths(input);
  if (read) {
    checkAmount(*read);
    const std::optional<long long> rounded = roundedByThousandths(std::string(input));
    if (rounded) expect(read == rounded, "half a cent is rounded away from zero", readable(input));
    if (input.find('-') == std::string_view::npos) {
      expect(store::hundredths("-" + std::string(input)) == -*read,
             "an amount below zero is read like the one above", readable(input));
    }
  }
  if (const std::optional<long long> stored = storedNumber(input)) {
    checkAmount(*stored);
    expectSame("a stored amount is shown by its number", store::shownHundredths(input),
               store::twoDecimals(*stored));
  }
}

void checkNumbers(std::string_view input) {
  const long whole = store::wholeNumber(input);
  expect(whole >= -2147483647L && whole <= 2147483647L, "a whole number stays within its bounds",
         std::to_string(whole));
  expect(store::wholeNumber(std::to_string(whole)) == whole, "a whole number reads back",
         std::to_string(whole));
  for (const char32_t key : text::decode(input)) {
    const char32_t kept = store::decimalKey(key);
    expect(kept == 0 || store::decimalKey(kept) == kept, "a key that passes once passes again",
           text::encode(key));
    const bool changed = kept != 0 && kept != key;
    expect(!changed || (key == U'.' && kept == U','), "a key becomes a comma only as a point",
           text::encode(key));
  }
}

}  // namespace

void check(std::string_view input) {
  checkDates(input);
  checkAmounts(input);
  checkNumbers(input);
}

}  // namespace fuzz
