// Numbers on screen and in the store: held as integers of hundredths, shown with two decimals and a
// comma. Independent of the locale: no strtod, no floating-point formatting.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace store {

// Hundredths of a text with comma or point, thousands' blanks ignored: "12,5" -> 1250. Rounded half
// away from zero past two decimals. Nothing when it is no number or would not fit in 15 digits.
std::optional<long long> hundredths(std::string_view text);
// 1250 -> "12,50"; -5 -> "-0,05".
std::string twoDecimals(long long hundredths);
// A typed number as it is shown: "12.5" -> "12,50"; "" for what is no number.
std::string reformatted(std::string_view typed);
// A shown or typed number as the checks compare them; 0 for what is none.
float singlePrecision(std::string_view text);
// A stored number of hundredths; one with decimals ("1250,5", "1250.5") is rounded half away from
// zero. Nothing for an empty or unreadable one.
std::optional<long long> storedHundredths(std::string_view stored);
// The same as shown: "1250" -> "12,50", "1250.5" -> "12,51"; "" for an empty or unreadable one.
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
