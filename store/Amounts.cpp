#include "store/Amounts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "store/Digits.h"
#include "text/Utf8.h"

namespace store {
namespace {

constexpr long kLargestWhole = std::numeric_limits<std::int32_t>::max();
constexpr std::size_t kMostDigits = 15;
constexpr long long kLargest = 999'999'999'999'999;

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

// The runs of digits of a decimal number.
struct Decimal {
  bool negative;
  std::string_view units;  // without leading zeros
  std::string_view decimals;
};

std::optional<Decimal> decimal(std::string_view number) {
  const bool negative = !number.empty() && number[0] == '-';
  if (negative) number.remove_prefix(1);
  const std::size_t comma = std::min(number.find_first_of(",."), number.size());
  const std::string_view units = number.substr(0, comma);
  const std::string_view decimals = number.substr(std::min(comma + 1, number.size()));
  if (units.empty() && decimals.empty()) return std::nullopt;
  if (!std::all_of(units.begin(), units.end(), isDigit)) return std::nullopt;
  if (!std::all_of(decimals.begin(), decimals.end(), isDigit)) return std::nullopt;
  const std::size_t zeros = std::min(units.find_first_not_of('0'), units.size());
  return Decimal{negative, units.substr(zeros), decimals};
}

// The units followed by so many of the decimals, as one number: the half is rounded away from zero.
// Nothing past 15 digits.
std::optional<long long> scaled(const Decimal& number, std::size_t decimals) {
  if (number.units.size() + decimals > kMostDigits) return std::nullopt;
  const auto digit = [&number](std::size_t i) {
    return i < number.decimals.size() ? number.decimals[i] - '0' : 0;
  };
  long long value = 0;
  for (const char unit : number.units) value = value * 10 + (unit - '0');
  for (std::size_t i = 0; i < decimals; ++i) value = value * 10 + digit(i);
  if (digit(decimals) >= 5) ++value;
  if (value > kLargest) return std::nullopt;
  return number.negative ? -value : value;
}

}  // namespace

std::optional<long long> hundredths(std::string_view text) {
  const std::string digits = withoutBlanks(text);
  const auto number = decimal(digits);
  return number ? scaled(*number, 2) : std::nullopt;
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

std::string reformatted(std::string_view typed) {
  const auto number = hundredths(typed);
  return number ? twoDecimals(*number) : std::string();
}

float singlePrecision(std::string_view text) {
  return static_cast<float>(static_cast<double>(hundredths(text).value_or(0)) / 100.0);
}

std::optional<long long> storedHundredths(std::string_view stored) {
  const std::string_view text = text::trim(stored);
  long long value = 0;
  const char* const start = text.data();
  const char* const end = start + text.size();
  const auto [stop, error] = std::from_chars(start, end, value);
  if (error == std::errc() && stop == end) return value;
  if (text.empty() || !isDigit(text.back())) return std::nullopt;
  const auto number = decimal(text);
  return number ? scaled(*number, 0) : std::nullopt;
}

// Most are digits alone, and shown by the hundreds: a comma goes between them.
std::string shownHundredths(std::string_view stored) {
  if (stored.size() > 2 && stored.size() <= kMostDigits && stored.front() != '0') {
    const std::size_t units = stored.size() - 2;
    std::array<char, kMostDigits + 1> shown;
    bool plain = true;
    for (std::size_t i = 0; i < stored.size(); ++i) {
      plain = plain && isDigit(stored[i]);
      shown[i < units ? i : i + 1] = stored[i];
    }
    shown[units] = ',';
    if (plain) return {shown.data(), stored.size() + 1};
  }
  const auto number = storedHundredths(stored);
  return number ? twoDecimals(*number) : std::string();
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
