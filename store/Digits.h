// Runs of digits, as dates and amounts are read and written.
#pragma once

#include <algorithm>
#include <string_view>

namespace store {

inline bool isDigit(char character) { return character >= '0' && character <= '9'; }

inline bool allDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

// The last digits of a number, right-aligned before `end`; back comes where they begin. Numbers are
// written by the hundreds when a record is shown, so without a text in between.
template <class Number>
char* putDigits(char* end, Number number, int digits) {
  for (; digits > 0; --digits, number /= 10) *--end = static_cast<char>('0' + number % 10);
  return end;
}

}  // namespace store
