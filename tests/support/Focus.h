// Who has the focus, for EXPECT_PRED_FORMAT1(hasFocus, control).
#pragma once

#include <gtest/gtest.h>

#include "toolkit/Surface.h"

namespace testing_support {

inline testing::AssertionResult hasFocus(const char* expression, const toolkit::Control& control) {
  if (control.hasFocus()) return testing::AssertionSuccess();
  const toolkit::Surface* surface = control.surface();
  const toolkit::Control* focus = surface ? surface->focus() : nullptr;
  return testing::AssertionFailure()
         << expression << " (" << control.name()
         << ") has no focus: " << (focus ? focus->name() + " has it" : "nobody has");
}

}  // namespace testing_support
