#include "tests/support/Same.h"

#include <algorithm>
#include <cstddef>

#include "multivalue/StandardFiles.h"

namespace testing_support {
namespace {

using Lines = std::vector<std::string>;

constexpr std::size_t kMostTold = 8;  // of each kind: what matters shows on few lines

std::string inQuotes(std::string_view text) {
  std::string shown = "\"";
  for (const char byte : text) shown += byte == store::kValueMark ? '|' : byte;
  return shown + "\"";
}

// " "a" "b""; of more than kMostTold, how many more there are.
std::string listed(const Lines& lines) {
  std::string told;
  for (std::size_t i = 0; i < lines.size() && i < kMostTold; ++i) told += " " + inQuotes(lines[i]);
  if (lines.size() > kMostTold)
    told += " and " + std::to_string(lines.size() - kMostTold) + " more";
  return told;
}

// What the first holds more often than the second.
Lines beyond(Lines first, const Lines& second) {
  for (const std::string& line : second) {
    const auto found = std::find(first.begin(), first.end(), line);
    if (found != first.end()) first.erase(found);
  }
  return first;
}

testing::AssertionResult heading(std::string_view actual, std::string_view expected) {
  const auto shortened = [](std::string_view code) {
    constexpr std::size_t kMost = 80;
    return std::string(code.substr(0, kMost)) + (code.size() > kMost ? "..." : "");
  };
  return testing::AssertionFailure() << shortened(actual) << " is not " << shortened(expected);
}

Lines joined(const std::vector<Lines>& rows) {
  Lines lines;
  for (const Lines& row : rows) {
    std::string line;
    for (const std::string& text : row) line += (line.empty() ? "" : " ; ") + text;
    lines.push_back(line);
  }
  return lines;
}

std::string nameOf(std::string_view file, int attribute) {
  if (const multivalue::StandardFile* standard = multivalue::standardFile(file)) {
    for (const multivalue::FieldName& field : standard->fields) {
      if (field.attribute == attribute) return std::string(field.name);
    }
  }
  return "without a name";
}

std::string numbered(std::string_view file, int attribute) {
  return std::to_string(attribute) + " " + nameOf(file, attribute);
}

testing::AssertionResult sameRecord(std::string_view file, const char* actualText,
                                    const char* expectedText, std::string_view actual,
                                    std::string_view expected) {
  if (actual == expected) return testing::AssertionSuccess();
  return heading(actualText, expectedText)
         << attributesThatDiffer(file, store::DynamicArray(actual), store::DynamicArray(expected));
}

}  // namespace

testing::AssertionResult same(const char* actualText, const char* expectedText, const Lines& actual,
                              const Lines& expected) {
  if (actual == expected) return testing::AssertionSuccess();
  testing::AssertionResult result = heading(actualText, expectedText);
  const Lines missing = beyond(expected, actual);
  const Lines tooMuch = beyond(actual, expected);
  if (!missing.empty()) result << "\n  missing:" << listed(missing);
  if (!tooMuch.empty()) result << "\n  too much:" << listed(tooMuch);
  const auto [here, there] =
      std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
  result << "\n  first difference at line " << here - actual.begin() << ": "
         << (here == actual.end() ? "none" : inQuotes(*here)) << " instead of "
         << (there == expected.end() ? "none" : inQuotes(*there));
  return result;
}

testing::AssertionResult same(const char* actualText, const char* expectedText,
                              const std::set<std::string>& actual,
                              const std::set<std::string>& expected) {
  if (actual == expected) return testing::AssertionSuccess();
  const Lines has(actual.begin(), actual.end());
  const Lines should(expected.begin(), expected.end());
  testing::AssertionResult result = heading(actualText, expectedText);
  const Lines missing = beyond(should, has);
  const Lines tooMuch = beyond(has, should);
  if (!missing.empty()) result << "\n  missing:" << listed(missing);
  if (!tooMuch.empty()) result << "\n  too much:" << listed(tooMuch);
  return result;
}

testing::AssertionResult same(const char* actualText, const char* expectedText,
                              const std::vector<Lines>& actual,
                              const std::vector<Lines>& expected) {
  return same(actualText, expectedText, joined(actual), joined(expected));
}

testing::AssertionResult sameBody(const char* actualText, const char* expectedText,
                                  std::string_view actual, std::string_view expected) {
  return sameRecord("ORGPRISECHARGE", actualText, expectedText, actual, expected);
}

testing::AssertionResult sameAgreement(const char* actualText, const char* expectedText,
                                       std::string_view actual, std::string_view expected) {
  return sameRecord("ACCORD", actualText, expectedText, actual, expected);
}

std::string bodyAttribute(int number) { return numbered("ORGPRISECHARGE", number); }

testing::AssertionResult sameAttributes(const char* actualText, const char* expectedText,
                                        const std::map<int, std::string>& actual,
                                        const std::map<int, std::string>& expected) {
  if (actual == expected) return testing::AssertionSuccess();
  const auto named = [](const std::map<int, std::string>& attributes) {
    Lines lines;
    for (const auto& [number, text] : attributes) {
      lines.push_back(bodyAttribute(number) + ": " + text);
    }
    return lines;
  };
  return same(actualText, expectedText, named(actual), named(expected));
}

std::string attributesThatDiffer(std::string_view file, const store::DynamicArray& actual,
                                 const store::DynamicArray& expected) {
  constexpr int kMost = 5;
  std::string told;
  int differ = 0;
  const int count = std::max(actual.DCount(), expected.DCount());
  for (int i = 1; i <= count; ++i) {
    if (actual.get(i) == expected.get(i) || ++differ > kMost) continue;
    told += "\n  " + numbered(file, i) + ": " + inQuotes(actual.get(i)) + " instead of " +
            inQuotes(expected.get(i));
  }
  if (differ > kMost) told += "\n  and " + std::to_string(differ - kMost) + " more";
  if (told.empty()) {
    told = "\n  " + std::to_string(actual.DCount()) + " attributes instead of " +
           std::to_string(expected.DCount()) + ", all of them the same";
  }
  return told;
}

}  // namespace testing_support
