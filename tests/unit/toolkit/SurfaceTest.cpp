// Errors in handlers: the surface comes back to rest whatever a handler throws.
#include "toolkit/Surface.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/support/Focus.h"
#include "toolkit/Buttons.h"
#include "toolkit/ControlClosed.h"
#include "toolkit/TextBox.h"

namespace toolkit {
namespace {

using testing_support::hasFocus;

struct Form {
  Surface surface{"Form"};
  TextBox first{&surface, "Txt_1"};
  TextBox second{&surface, "Txt_2"};
  CommandButton button{&surface, "Cmd"};
};

void fail() { throw std::runtime_error("handler"); }

TEST(SurfaceErrors, AnErrorInAHandlerReachesTheCallerAndEndsTheAction) {
  Form form;
  form.button.onClick = fail;
  EXPECT_THROW(form.button.userClick(), std::runtime_error);
  EXPECT_FALSE(form.surface.busy());
  EXPECT_TRUE(form.surface.moveFocus(&form.first));
}

TEST(SurfaceErrors, AnErrorInLostFocusLeavesTheFocusWhereItWas) {
  Form form;
  form.surface.moveFocus(&form.first);
  form.first.onLostFocus = [&] {
    form.second.setFocus();
    fail();
  };
  EXPECT_THROW(form.surface.moveFocus(&form.button), std::runtime_error);
  EXPECT_PRED_FORMAT1(hasFocus, form.first);
  form.first.onLostFocus = nullptr;
  EXPECT_TRUE(form.surface.moveFocus(&form.button));
}

TEST(SurfaceErrors, AnErrorInGotFocusLeavesTheFocusWhereItWent) {
  Form form;
  form.second.onGotFocus = fail;
  EXPECT_THROW(form.surface.moveFocus(&form.second), std::runtime_error);
  EXPECT_PRED_FORMAT1(hasFocus, form.second);
  EXPECT_FALSE(form.surface.busy());
}

TEST(SurfaceErrors, TheFocusStillMovesOnWhenAHandlerFailed) {
  Form form;
  form.button.onClick = [&] {
    form.button.setEnabled(false);
    fail();
  };
  EXPECT_THROW(form.button.userClick(), std::runtime_error);
  EXPECT_PRED_FORMAT1(hasFocus, form.first);
}

TEST(SurfaceErrors, ASecondErrorWhileTheFocusMovesOnIsSwallowed) {
  Form form;
  form.first.onGotFocus = [] { throw ControlClosed(); };
  form.button.onClick = [&] {
    form.button.setEnabled(false);
    fail();
  };
  EXPECT_THROW(form.button.userClick(), std::runtime_error);
  EXPECT_FALSE(form.surface.busy());
}

TEST(SurfaceErrors, AnErrorWhileTheFocusMovesOnReachesTheCaller) {
  Form form;
  form.first.onGotFocus = [] { throw ControlClosed(); };
  form.button.onClick = [&] { form.button.setEnabled(false); };
  EXPECT_THROW(form.button.userClick(), ControlClosed);
  EXPECT_FALSE(form.surface.busy());
  EXPECT_PRED_FORMAT1(hasFocus, form.first);
}

TEST(Surface, MoveFocusIsTrueOnlyIfItArrived) {
  Form form;
  EXPECT_TRUE(form.surface.moveFocus(&form.first));
  EXPECT_TRUE(form.surface.moveFocus(&form.first));
  form.first.onLostFocus = [&] { form.first.setFocus(); };
  EXPECT_FALSE(form.surface.moveFocus(&form.second));
  form.first.onLostFocus = [&] { form.second.setFocus(); };
  EXPECT_TRUE(form.surface.moveFocus(&form.second));
  form.button.onGotFocus = [&] { form.button.setEnabled(false); };
  EXPECT_FALSE(form.surface.moveFocus(&form.button));
}

TEST(Surface, WithoutAnyStopIsNotEnteredByTab) {
  Surface surface("Form");
  EXPECT_FALSE(surface.enter(false));
  EXPECT_FALSE(surface.key({Key::Tab}));
  EXPECT_FALSE(surface.key({Key::PageDown, 0, false, true}));
  EXPECT_FALSE(surface.key({Key::Enter}));
}

TEST(Surface, KeySaysWhetherTheStrokeIsUsed) {
  Form form;
  form.surface.moveFocus(&form.button);
  EXPECT_FALSE(form.surface.key({Key::Tab}));
  EXPECT_TRUE(form.surface.key({Key::Tab, 0, true}));
  EXPECT_PRED_FORMAT1(hasFocus, form.second);
  EXPECT_TRUE(form.surface.key({Key::Enter}));
  EXPECT_FALSE(form.surface.key({Key::Character, U'x'}));
  EXPECT_FALSE(form.surface.key({Key::Home}));
  form.surface.setEnabled(false);
  EXPECT_FALSE(form.surface.key({Key::Enter}));
}

}  // namespace
}  // namespace toolkit
