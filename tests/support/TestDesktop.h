// A headless desktop that fails the test when a question has no answer left, also from inside a
// trap, and tells where the user was at each box.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "toolkit/headless/HeadlessDesktop.h"
#include "toolkit/headless/User.h"

namespace toolkit {

void PrintTo(Icon icon, std::ostream* out);
void PrintTo(Buttons buttons, std::ostream* out);

}  // namespace toolkit

namespace toolkit::headless {

// "box «text», question, Yes/No, tab "Prise en charge", focus Txt_CodOrgChg"
void PrintTo(const Entry& entry, std::ostream* out);

}  // namespace toolkit::headless

namespace testing_support {

class TestDesktop : public toolkit::headless::HeadlessDesktop {
 public:
  TestDesktop();
  // A fault is reported at the caller of this user's last verb; boxes tell the tab in front and the
  // focus of its surface. Null while there is none.
  void follow(std::function<const toolkit::headless::User*()> user);
};

// "tab "Prise en charge", focus Txt_CodOrgChg"
std::string whereaboutsOf(const toolkit::Surface& surface);

// EXPECT_PRED_FORMAT1(noBoxes, desktop.takeBoxes())
testing::AssertionResult noBoxes(const char* expression,
                                 const std::vector<toolkit::headless::Entry>& boxes);

// As many as that: EXPECT_PRED_FORMAT2(boxCount, desktop_.takeBoxes(), 1U)
testing::AssertionResult boxCount(const char* expression, const char* countText,
                                  const std::vector<toolkit::headless::Entry>& boxes,
                                  std::size_t count);

// The helper that was called there shows up in what fails within it:
//   const auto trace = called("lookUp", at);
inline testing::ScopedTrace called(const char* helper, toolkit::headless::Caller at) {
  return {at.file, at.line, helper};
}

}  // namespace testing_support
