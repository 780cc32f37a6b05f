#include <stdexcept>

#include "tests/unit/toolkit/RuleTest.h"

namespace toolkit::test {
namespace {

class ScrollBarRules : public RuleTest {
 protected:
  TextBox box{&surface, "Txt_Box"};
  ScrollBar bar{&surface, "Bdv_Bar", ScrollBar::Direction::Vertical};
  TextBox after{&surface, "Txt_After"};

  ScrollBarRules() {
    bar.setRange(0, 10);
    bar.onChange = [this] { events.push_back(std::to_string(bar.value())); };
  }
};

TEST_F(ScrollBarRules, ChangeFiresWhenTheUserScrolls) {
  user().scroll(bar, 4);
  EXPECT_EQ(bar.value(), 4);
  EXPECT_EQ(taken(), Events{"4"});
}

TEST_F(ScrollBarRules, ChangeFiresWhenCodeSetsAnotherValue) {
  user();
  bar.setValue(3);
  bar.setValue(3);
  EXPECT_EQ(taken(), Events{"3"});
}

TEST_F(ScrollBarRules, ResettingTheValueFiresNothing) {
  bar.setValue(3);
  taken();
  user();
  bar.resetValue(0);
  EXPECT_EQ(bar.value(), 0);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ScrollBarRules, ANewMaximumPullsTheValueInSilently) {
  bar.setValue(9);
  taken();
  user();
  bar.setRange(0, 5);
  EXPECT_EQ(bar.value(), 5);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ScrollBarRules, AMaximumBelowTheMinimumIsAllowed) {
  bar.setValue(9);
  taken();
  user();
  bar.setRange(0, -1);
  EXPECT_EQ(bar.max(), -1);
  EXPECT_EQ(bar.value(), 0);
  bar.setValue(0);
  EXPECT_THROW(bar.setValue(1), std::invalid_argument);
  bar.setRange(0, 5);
  bar.setValue(5);
  EXPECT_EQ(taken(), Events{"5"});
}

TEST_F(ScrollBarRules, AValueOutsideTheRangeIsRefusedFromCode) {
  user();
  EXPECT_THROW(bar.setValue(11), std::invalid_argument);
  EXPECT_THROW(bar.resetValue(-1), std::invalid_argument);
  EXPECT_EQ(bar.value(), 0);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ScrollBarRules, ADisabledBarDoesNotScroll) {
  bar.setEnabled(false);
  user().scroll(bar, 4);
  EXPECT_EQ(bar.value(), 0);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ScrollBarRules, ScrollingTakesTheFocusAndIsDroppedWhenItDoesNotArrive) {
  user().scroll(bar, 4);
  EXPECT_PRED_FORMAT1(hasFocus, bar);
  box.onLostFocus = [this] { box.setFocus(); };
  user().go(box);
  user().scroll(bar, 8);
  EXPECT_EQ(bar.value(), 4);
  EXPECT_PRED_FORMAT1(hasFocus, box);
}

TEST_F(ScrollBarRules, TabPassesABarByUnlessToldOtherwise) {
  user().go(box);
  user().tab();
  EXPECT_PRED_FORMAT1(hasFocus, after);
  bar.setTabStop(true);
  user().tab(true);
  EXPECT_PRED_FORMAT1(hasFocus, bar);
}

}  // namespace
}  // namespace toolkit::test
