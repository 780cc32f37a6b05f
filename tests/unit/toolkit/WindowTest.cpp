#include "toolkit/Window.h"

#include <gtest/gtest.h>

#include "toolkit/Buttons.h"

namespace toolkit {
namespace {

class Windows : public ::testing::Test {
 protected:
  Window window{"Frm_Form", "Caption", 3000, 1500};
  CommandButton cancel{&window.surface(), "Cmd_Annuler", "Annuler"};
  int cancelled = 0;
  int asked = 0;

  Windows() {
    cancel.onClick = [this] { ++cancelled; };
    window.setOpen(true);
  }
};

TEST_F(Windows, StayOpenWhenNobodyWantsToHearOfTheTitleBar) {
  EXPECT_FALSE(window.closable());
  window.userClose();
  EXPECT_TRUE(window.open());
  EXPECT_EQ(cancelled, 0);
}

TEST_F(Windows, ClickTheirCancelButtonWhenTheUserClosesThem) {
  window.surface().setCancelButton(&cancel);
  window.onCloseAsked = [this] { ++asked; };
  EXPECT_TRUE(window.closable());
  window.userClose();
  EXPECT_EQ(cancelled, 1);
  EXPECT_EQ(asked, 0);
}

TEST_F(Windows, AreAskedWithoutACancelButtonThatTakesInput) {
  window.surface().setCancelButton(&cancel);
  cancel.setEnabled(false);
  window.onCloseAsked = [this] { ++asked; };
  EXPECT_TRUE(window.closable());
  window.userClose();
  EXPECT_EQ(cancelled, 0);
  EXPECT_EQ(asked, 1);
}

TEST_F(Windows, HearNothingWhileTheyTakeNoInputOrAreClosed) {
  window.onCloseAsked = [this] {
    ++asked;
    window.userClose();
  };
  window.userClose();
  EXPECT_EQ(asked, 1);
  window.surface().setEnabled(false);
  window.userClose();
  window.surface().setEnabled(true);
  window.setOpen(false);
  window.userClose();
  EXPECT_EQ(asked, 1);
}

}  // namespace
}  // namespace toolkit
