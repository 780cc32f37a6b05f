#include "toolkit/headless/User.h"

#include <gtest/gtest.h>

#include "tests/support/Focus.h"

namespace toolkit::headless {
namespace {

using testing_support::hasFocus;

struct Form {
  Surface surface{"Form"};
  TextBox box{&surface, "Txt"};
  ComboBox combo{&surface, "Cbo"};
  ListBox list{&surface, "Lst"};
  ComboBox fixed{&surface, "Cbo_Fixed", ComboBox::Style::ListOnly};
  CommandButton button{&surface, "Cmd", "&Go"};
  SSTab tabs{&surface, "Ong", {"One", "Two"}};
  User user{surface};
};

TEST(User, FillReplacesAWholeField) {
  Form form;
  form.box.setText("before");
  form.combo.setText("before");
  EXPECT_TRUE(form.user.fill(form.box, "after"));
  EXPECT_TRUE(form.user.fill(form.combo, "after"));
  EXPECT_EQ(form.box.text(), "after");
  EXPECT_EQ(form.combo.text(), "after");
}

TEST(User, FillWithNothingEmptiesAField) {
  Form form;
  form.box.setText("before");
  form.combo.setText("before");
  EXPECT_TRUE(form.user.fill(form.box, ""));
  EXPECT_TRUE(form.user.fill(form.combo, ""));
  EXPECT_EQ(form.box.text(), "");
  EXPECT_EQ(form.combo.text(), "");
}

TEST(User, FillIsDroppedWhenTheFocusDoesNotArrive) {
  Form form;
  form.combo.onLostFocus = [&] { form.combo.setFocus(); };
  form.user.go(form.combo);
  EXPECT_FALSE(form.user.fill(form.box, "x"));
  EXPECT_EQ(form.box.text(), "");
}

TEST(User, EveryVerbSaysWhenItWasDropped) {
  Form form;
  EXPECT_FALSE(form.user.type("x"));
  EXPECT_FALSE(form.user.paste("x"));
  form.surface.setEnabled(false);
  EXPECT_FALSE(form.user.go(form.box));
  EXPECT_FALSE(form.user.click(form.button));
  EXPECT_FALSE(form.user.click(form.tabs, 1));
  EXPECT_FALSE(form.user.alt(U'g'));
  EXPECT_FALSE(form.user.tab());
  EXPECT_FALSE(form.user.open(form.combo));
  EXPECT_FALSE(form.user.scroll(form.list, 1));
  form.surface.setEnabled(true);
  EXPECT_TRUE(form.user.click(form.button));
  EXPECT_FALSE(form.user.type("x"));
  EXPECT_TRUE(form.user.click(form.tabs, 1));
}

TEST(User, AKeyThatItsHandlerDropsWasTakenAllTheSame) {
  Form form;
  form.box.onKeyPress = [](char32_t& key) { key = 0; };
  form.user.go(form.box);
  EXPECT_TRUE(form.user.type("x"));
  EXPECT_EQ(form.box.text(), "");
}

TEST(User, TypesTabsAndEntersOnItsWay) {
  Form form;
  form.user.go(form.box);
  EXPECT_TRUE(form.user.type("a\tb\r"));
  EXPECT_EQ(form.box.text(), "a");
  EXPECT_EQ(form.combo.text(), "b");
  EXPECT_PRED_FORMAT1(hasFocus, form.combo);
}

TEST(User, GoingOnTypingInAComboAppends) {
  Form form;
  form.user.fill(form.combo, "ab");
  form.user.type("c\bd");
  EXPECT_EQ(form.combo.text(), "abd");
}

}  // namespace
}  // namespace toolkit::headless
