#include <stdexcept>
#include <utility>

#include "tests/unit/toolkit/RuleTest.h"

namespace toolkit::test {
namespace {

class ListBoxRules : public RuleTest {
 protected:
  ListBox list{&surface, "Lst_Single"};
  ListBox several{&surface, "Lst_Extended", ListBox::Selection::Extended};
  TextBox other{&surface, "Txt_Other"};

  ListBoxRules() {
    for (ListBox* box : {&list, &several}) box->setItems({{"a", 1}, {"b", 2}, {"c", 3}, {"d", 4}});
  }

  void noteEvents(ListBox& box) {
    box.onClick = [this, &box] { events.push_back("click " + std::to_string(box.listIndex())); };
    box.onDblClick = note("double click");
  }

  std::string selectedOf(const ListBox& box) const {
    std::string lines;
    for (int line = 0; line < box.listCount(); ++line) {
      if (box.selected(line)) lines += box.list(line);
    }
    return lines;
  }
};

TEST_F(ListBoxRules, ClickFiresWhenTheUserSelectsAnotherLine) {
  noteEvents(list);
  user().click(list, 1);
  EXPECT_EQ(taken(), Events{"click 1"});
  EXPECT_EQ(list.listIndex(), 1);
  EXPECT_PRED_FORMAT1(hasFocus, list);
}

TEST_F(ListBoxRules, EachChangeOfTheLinesIsCountedAndNothingElse) {
  unsigned before = several.changes();
  const auto counted = [&] { return std::exchange(before, several.changes()) != before; };
  several.setSelected(1, true);
  several.setListIndex(2);
  several.setTopIndex(1);
  several.selectNone();
  EXPECT_FALSE(counted());
  several.setItems(several.items().all());
  EXPECT_TRUE(counted());
  several.addItem("e");
  EXPECT_TRUE(counted());
  several.replaceItem(0, "A");
  EXPECT_TRUE(counted());
  several.moveItem(0, 1);
  EXPECT_TRUE(counted());
  several.removeItem(0);
  EXPECT_TRUE(counted());
  several.takeItems();
  EXPECT_TRUE(counted());
}

TEST_F(ListBoxRules, TheLinesThatAreTakenAreNotInItAnyMore) {
  list.setListIndex(2);
  list.setTopIndex(1);
  noteEvents(list);
  user();
  EXPECT_EQ(list.takeItems(), (std::vector<ListItem>{{"a", 1}, {"b", 2}, {"c", 3}, {"d", 4}}));
  EXPECT_EQ(taken(), Events{});
  EXPECT_EQ(list.listCount(), 0);
  EXPECT_EQ(list.listIndex(), -1);
  EXPECT_EQ(list.topIndex(), 0);
}

TEST_F(ListBoxRules, ClickDoesNotFireWhenTheUserSelectsTheSelectedLine) {
  list.setListIndex(1);
  noteEvents(list);
  user().click(list, 1);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ListBoxRules, EnterDoesWhatADoubleClickDoesAndKeepsTheSelection) {
  user().go(several);
  EXPECT_FALSE(surface.wouldUse({Key::Enter}));
  user().click(several, 1);
  user().click(several, 3, true);
  EXPECT_FALSE(surface.wouldUse({Key::Enter}));
  noteEvents(several);
  EXPECT_TRUE(surface.wouldUse({Key::Enter}));
  user().press(KeyStroke{Key::Enter});
  EXPECT_EQ(taken(), Events{"double click"});
  EXPECT_EQ(selectedOf(several), "bd");
}

TEST_F(ListBoxRules, ScrollingByTheUserIsTold) {
  list.onScroll = note("scroll");
  user();
  list.setTopIndex(1);
  EXPECT_EQ(taken(), Events{});
  list.userScroll(2);
  EXPECT_EQ(taken(), Events{"scroll"});
}

TEST_F(ListBoxRules, ClickFiresWhenCodeSelectsAnotherLine) {
  noteEvents(list);
  user();
  list.setListIndex(2);
  EXPECT_EQ(taken(), Events{"click 2"});
}

TEST_F(ListBoxRules, ClickDoesNotFireWhenCodeSelectsTheSelectedLine) {
  list.setListIndex(2);
  noteEvents(list);
  user();
  list.setListIndex(2);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ListBoxRules, ListsThatSelectEachOtherComeToRest) {
  list.onClick = [this] {
    events.emplace_back("first");
    several.setSelected(list.listIndex(), true);
  };
  several.onClick = [this] {
    events.emplace_back("second");
    list.setListIndex(3);
  };
  user().click(list, 3);
  EXPECT_EQ(taken(), (Events{"first", "second"}));
}

TEST_F(ListBoxRules, SelectingNoLineFiresNothing) {
  list.setListIndex(2);
  noteEvents(list);
  user();
  list.setListIndex(-1);
  EXPECT_EQ(list.listIndex(), -1);
  EXPECT_EQ(list.selectedCount(), 0);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ListBoxRules, RemovingTheSelectedLineFiresNothing) {
  list.setListIndex(2);
  noteEvents(list);
  user();
  list.removeItem(2);
  EXPECT_EQ(list.listIndex(), -1);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ListBoxRules, TheSelectionFollowsItsLineWhenLinesAboveComeAndGo) {
  list.setListIndex(2);
  several.setSelected(2, true);
  noteEvents(list);
  noteEvents(several);
  user();
  for (ListBox* box : {&list, &several}) {
    box->insertItem(0, "new");
    EXPECT_EQ(selectedOf(*box), "c");
    box->removeItem(1);
    EXPECT_EQ(selectedOf(*box), "c");
  }
  EXPECT_EQ(list.listIndex(), 2);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ListBoxRules, FillingFiresNothing) {
  list.setListIndex(0);
  noteEvents(list);
  user();
  list.addItem("e", 5);
  list.insertItem(1, "between", 6);
  list.replaceItem(0, "A", 7);
  EXPECT_EQ(list.listIndex(), 0);
  list.setItems({{"x", 8}});
  list.clear();
  EXPECT_EQ(list.listIndex(), -1);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ListBoxRules, ItemDataTravelsWithItsLineAndReadingPastTheEndGivesNothing) {
  user();
  list.insertItem(1, "between", 9);
  list.removeItem(0);
  EXPECT_EQ(list.list(0), "between");
  EXPECT_EQ(list.itemData(0), 9);
  EXPECT_EQ(list.itemData(1), 2);
  EXPECT_EQ(list.list(4), "");
  EXPECT_EQ(list.itemData(4), 0);
  EXPECT_EQ(list.list(-1), "");
  EXPECT_FALSE(list.selected(4));
}

TEST_F(ListBoxRules, ALineThatIsNotThereIsRefused) {
  user();
  EXPECT_THROW(list.setListIndex(4), std::invalid_argument);
  EXPECT_THROW(list.setSelected(4, true), std::invalid_argument);
  EXPECT_THROW(list.removeItem(4), std::invalid_argument);
  EXPECT_THROW(list.insertItem(5, "x"), std::invalid_argument);
  EXPECT_THROW(list.replaceItem(-1, "x"), std::invalid_argument);
  EXPECT_EQ(list.listCount(), 4);
}

TEST_F(ListBoxRules, ADoubleClickSelectsTheLineFirst) {
  noteEvents(list);
  user().dblClick(list, 1);
  EXPECT_EQ(taken(), (Events{"click 1", "double click"}));
}

TEST_F(ListBoxRules, ADoubleClickOnTheSelectedLineIsADoubleClickAlone) {
  list.setListIndex(1);
  noteEvents(list);
  user().dblClick(list, 1);
  EXPECT_EQ(taken(), Events{"double click"});
}

TEST_F(ListBoxRules, ADisabledListHearsOfNoClickOrDoubleClick) {
  noteEvents(list);
  list.setEnabled(false);
  user().dblClick(list, 1);
  user().click(list, 2);
  EXPECT_EQ(taken(), Events{});
  EXPECT_EQ(list.listIndex(), -1);
}

TEST_F(ListBoxRules, AListThatItsClickDisablesHearsOfNoDoubleClick) {
  noteEvents(list);
  list.onClick = [this] {
    events.emplace_back("click");
    list.setEnabled(false);
  };
  user().dblClick(list, 1);
  EXPECT_EQ(taken(), Events{"click"});
}

TEST_F(ListBoxRules, AClickIsDroppedWhenALostFocusHandlerKeepsTheFocus) {
  noteEvents(list);
  other.onLostFocus = [this] { other.setFocus(); };
  user().go(other);
  user().click(list, 1);
  user().dblClick(list, 2);
  EXPECT_PRED_FORMAT1(hasFocus, other);
  EXPECT_EQ(list.listIndex(), -1);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ListBoxRules, APlainClickInAnExtendedListSelectsThatLineAlone) {
  several.setSelected(0, true);
  noteEvents(several);
  user().click(several, 2);
  EXPECT_EQ(selectedOf(several), "c");
  EXPECT_EQ(several.selectedCount(), 1);
  EXPECT_EQ(taken(), Events{"click 2"});
}

TEST_F(ListBoxRules, CtrlAddsAndTakesAwaySingleLines) {
  user().click(several, 0);
  user().click(several, 2, true);
  EXPECT_EQ(selectedOf(several), "ac");
  user().click(several, 0, true);
  EXPECT_EQ(selectedOf(several), "c");
  EXPECT_EQ(several.listIndex(), 0);
}

TEST_F(ListBoxRules, ShiftSelectsFromTheLineClickedBefore) {
  user().click(several, 1);
  noteEvents(several);
  user().click(several, 3, false, true);
  EXPECT_EQ(selectedOf(several), "bcd");
  user().click(several, 0, false, true);
  EXPECT_EQ(selectedOf(several), "ab");
  EXPECT_EQ(taken(), (Events{"click 3", "click 0"}));
}

TEST_F(ListBoxRules, SelectingInAnExtendedListByCodeFiresClickWhenItChangesSomething) {
  noteEvents(several);
  user();
  several.setSelected(1, true);
  several.setSelected(1, true);
  several.setSelected(2, false);
  EXPECT_EQ(selectedOf(several), "b");
  EXPECT_EQ(taken(), Events{"click -1"});
}

TEST_F(ListBoxRules, TheListIndexOfAnExtendedListMovesTheFocusRectangleOnly) {
  several.setSelected(1, true);
  noteEvents(several);
  user();
  several.setListIndex(3);
  EXPECT_EQ(several.listIndex(), 3);
  EXPECT_EQ(selectedOf(several), "b");
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ListBoxRules, ADoubleClickBesideTheLinesMovesTheFocusAlone) {
  list.setListIndex(1);
  several.setSelected(1, true);
  several.setListIndex(2);
  for (ListBox* box : {&list, &several}) {
    noteEvents(*box);
    user().go(other);
    user().dblClickBeside(*box);
    EXPECT_TRUE(box->hasFocus());
    EXPECT_EQ(selectedOf(*box), "b");
    EXPECT_EQ(taken(), Events{});
  }
  EXPECT_EQ(several.listIndex(), 2);
}

TEST_F(ListBoxRules, ADoubleClickInAnEmptyListIsNone) {
  list.clear();
  noteEvents(list);
  user().dblClickBeside(list);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ListBoxRules, AMovedLineTakesSelectionFocusRectangleAndDataWithIt) {
  user().click(several, 0);
  user().click(several, 2, true);
  noteEvents(several);
  several.moveItem(0, 3);
  EXPECT_EQ(selectedOf(several), "ca");
  EXPECT_EQ(several.list(3), "a");
  EXPECT_EQ(several.itemData(3), 1);
  EXPECT_EQ(several.listIndex(), 1);
  several.moveItem(1, 0);
  EXPECT_EQ(several.list(0), "c");
  EXPECT_EQ(several.listIndex(), 0);
  several.moveItem(3, 0);
  EXPECT_EQ(selectedOf(several), "ac");
  EXPECT_EQ(several.listIndex(), 1);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ListBoxRules, MovingALineToOrFromNowhereIsRefused) {
  user();
  EXPECT_THROW(list.moveItem(0, 4), std::invalid_argument);
  EXPECT_THROW(list.moveItem(-1, 0), std::invalid_argument);
  list.moveItem(2, 2);
  EXPECT_EQ(list.list(2), "c");
}

TEST_F(ListBoxRules, RemovingTheSelectedLinesLeavesTheFocusRectangleInItsPlace) {
  user().click(several, 0);
  user().click(several, 2, true);
  noteEvents(several);
  several.removeSelected();
  EXPECT_EQ(several.listCount(), 2);
  EXPECT_EQ(several.list(several.listIndex()), "d");
  EXPECT_EQ(several.selectedCount(), 0);
  user().click(several, 1);
  taken();
  several.removeSelected();
  EXPECT_EQ(several.list(several.listIndex()), "b");
  user().click(several, 0);
  taken();
  several.removeSelected();
  EXPECT_EQ(several.listIndex(), -1);
  several.removeSelected();
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ListBoxRules, TheFocusRectangleFollowsALineThatStays) {
  user().click(several, 3);
  several.removeItems({0, 2});
  EXPECT_EQ(several.list(several.listIndex()), "d");
  EXPECT_EQ(selectedOf(several), "d");
  EXPECT_THROW(several.removeItems({0, 2}), std::invalid_argument);
  EXPECT_EQ(several.listCount(), 2);
}

TEST_F(ListBoxRules, SelectingNoneFiresClickOnceOrNothing) {
  user().click(several, 1);
  user().click(several, 3, true);
  noteEvents(several);
  several.selectNone();
  EXPECT_EQ(taken(), Events{"click 3"});
  EXPECT_EQ(several.selectedCount(), 0);
  several.selectNone();
  list.setListIndex(1);
  noteEvents(list);
  list.selectNone();
  EXPECT_EQ(list.listIndex(), -1);
  EXPECT_EQ(taken(), Events{});
}

TEST_F(ListBoxRules, TheSelectedLinesAreGivenInOrder) {
  EXPECT_EQ(several.selectedLines(), std::vector<int>{});
  user().click(several, 3);
  user().click(several, 1, true);
  EXPECT_EQ(several.selectedLines(), (std::vector<int>{1, 3}));
  user().click(list, 2);
  EXPECT_EQ(list.selectedLines(), std::vector<int>{2});
}

TEST_F(ListBoxRules, ALineIsBroughtIntoViewByNoMoreThanItTakes) {
  user();
  list.setTopIndex(1);
  list.setLinesInView(2);
  list.bringIntoView(2);
  EXPECT_EQ(list.topIndex(), 1);
  list.bringIntoView(3);
  EXPECT_EQ(list.topIndex(), 2);
  list.bringIntoView(0);
  EXPECT_EQ(list.topIndex(), 0);
  list.setLinesInView(0);
  list.bringIntoView(3);
  EXPECT_EQ(list.topIndex(), 0);
}

TEST_F(ListBoxRules, TheFirstLineInViewIsPulledIn) {
  user();
  list.setTopIndex(-1);
  EXPECT_EQ(list.topIndex(), 0);
  list.clear();
  list.setTopIndex(5);
  EXPECT_EQ(list.topIndex(), 0);
}

}  // namespace
}  // namespace toolkit::test
