// Comparisons that tell what differs, for EXPECT_PRED_FORMAT2(same, actual, expected), which stands
// for EXPECT_EQ(actual, expected) where this would print both sides whole.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "store/DynamicArray.h"

namespace testing_support {

template <class Texts, class Values>
Texts printed(const Values& values) {
  Texts texts;
  for (const typename Values::value_type& value : values) {
    texts.insert(texts.end(), testing::PrintToString(value));
  }
  return texts;
}

// What is missing, what is too much, and the first line out of its place.
testing::AssertionResult same(const char* actualText, const char* expectedText,
                              const std::vector<std::string>& actual,
                              const std::vector<std::string>& expected);
testing::AssertionResult same(const char* actualText, const char* expectedText,
                              const std::set<std::string>& actual,
                              const std::set<std::string>& expected);
// Rows of several columns.
testing::AssertionResult same(const char* actualText, const char* expectedText,
                              const std::vector<std::vector<std::string>>& actual,
                              const std::vector<std::vector<std::string>>& expected);
// Of anything else, as GoogleTest prints each.
template <class T>
testing::AssertionResult same(const char* actualText, const char* expectedText,
                              const std::vector<T>& actual, const std::vector<T>& expected) {
  return same(actualText, expectedText, printed<std::vector<std::string>>(actual),
              printed<std::vector<std::string>>(expected));
}
template <class T>
testing::AssertionResult same(const char* actualText, const char* expectedText,
                              const std::set<T>& actual, const std::set<T>& expected) {
  return same(actualText, expectedText, printed<std::set<std::string>>(actual),
              printed<std::set<std::string>>(expected));
}

// Two records of ORGPRISECHARGE, by their full texts: the attributes that differ, by number and
// name, the first of many.
testing::AssertionResult sameBody(const char* actualText, const char* expectedText,
                                  std::string_view actual, std::string_view expected);
// Of ACCORD.
testing::AssertionResult sameAgreement(const char* actualText, const char* expectedText,
                                       std::string_view actual, std::string_view expected);
// Attributes of ORGPRISECHARGE, by number.
testing::AssertionResult sameAttributes(const char* actualText, const char* expectedText,
                                        const std::map<int, std::string>& actual,
                                        const std::map<int, std::string>& expected);
// An attribute of ORGPRISECHARGE: "18 TypeOrgChg".
std::string bodyAttribute(int number);
// Of that file.
std::string attributesThatDiffer(std::string_view file, const store::DynamicArray& actual,
                                 const store::DynamicArray& expected);

}  // namespace testing_support
