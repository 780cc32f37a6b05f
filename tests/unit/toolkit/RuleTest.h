// What the rule tests share: a surface, its user, and a list of what happened.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/Focus.h"
#include "tests/unit/toolkit/Layout.h"
#include "tests/unit/toolkit/UserDriver.h"

namespace toolkit::test {

using testing_support::hasFocus;

using Events = std::vector<std::string>;

class RuleTest : public ::testing::Test {
 protected:
  // The user sits down at the surface the first time it is asked for: controls that a test adds
  // come before that. Controls are members of the fixtures, so that the user leaves before them.
  UserDriver& user() {
    if (!user_) {
      layOut(surface);
      user_ = makeDriver(surface);
    }
    return *user_;
  }

  void TearDown() override { user_.reset(); }

  Control::Handler note(std::string_view event) {
    return [this, event = std::string(event)] { events.push_back(event); };
  }

  void noteFocus(Control& control) {
    control.onGotFocus = note(control.name() + " got");
    control.onLostFocus = note(control.name() + " lost");
  }

  // What happened since the last call.
  Events taken() { return std::exchange(events, {}); }

  Surface surface{"Form"};
  Events events;

 private:
  std::unique_ptr<UserDriver> user_;
};

}  // namespace toolkit::test
