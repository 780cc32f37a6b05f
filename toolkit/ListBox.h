#pragma once

#include "toolkit/Control.h"
#include "toolkit/ListItems.h"

namespace toolkit {

class ListBox : public Control {
 public:
  enum class Selection { Single, Extended };  // Extended: several lines, with Ctrl and Shift
  ListBox(Container* parent, std::string name, Selection selection = Selection::Single);

  Selection selection() const { return selection_; }
  // Without its own scroll bar it moves by its selection and setTopIndex alone, in step with
  // others. Set before it is shown.
  bool scrollBar() const { return scrollBar_; }
  void setScrollBar(bool own) { scrollBar_ = own; }
  // Lines of numbers end at the right edge, or before the bar that stands over it while that is
  // shown. Set before it is shown; the bar, null for none, must outlive it.
  bool rightAligned() const { return rightAligned_; }
  void setRightAligned(const Control* bar = nullptr);
  // Twips at the right edge that the bar covers now.
  int covered() const;

  const ListItems& items() const { return items_; }
  int listCount() const { return items_.count(); }
  const std::string& list(int line) const { return items_.text(line); }
  long itemData(int line) const { return items_.data(line); }
  // Another number each time that the lines have been changed or set anew.
  unsigned changes() const { return changes_; }
  // Changing the lines fires nothing; removing the selected line fires nothing either.
  void addItem(std::string_view text, long data = 0);
  void insertItem(int line, std::string_view text, long data = 0);
  void replaceItem(int line, std::string_view text, long data = 0);
  void setItems(std::vector<ListItem> items);
  // Empties it; what it held comes back, as room for the lines that are set next.
  std::vector<ListItem> takeItems();
  void removeItem(int line);
  void removeItems(const std::vector<int>& lines);  // in ascending order
  void removeSelected();
  void clear();
  // The line goes to another place, those between move up or down by one. Selection and focus
  // rectangle stay with their lines.
  void moveItem(int from, int to);

  // The selected line (Extended: the one that has the focus rectangle, which keeps its place when
  // its line is removed), -1 for none.
  int listIndex() const { return listIndex_; }
  // By code: another line fires Click, the same nothing; -1 selects none and fires nothing.
  // Extended: moves the focus rectangle only. Throws std::invalid_argument past the end.
  void setListIndex(int line);
  bool selected(int line) const;
  // Single: as setListIndex. Extended: fires Click, or nothing when it changes nothing.
  // Throws std::invalid_argument past the end.
  void setSelected(int line, bool selected);
  int selectedCount() const;
  std::vector<int> selectedLines() const;  // in ascending order
  // By code. Single: as setListIndex(-1). Extended: fires Click, once, or nothing when none was
  // selected; the focus rectangle stays.
  void selectNone();

  // First line that is in view; a line past the ends is pulled in.
  int topIndex() const { return topIndex_; }
  void setTopIndex(int line);
  // Lines that are in view whole, as its window says; 0 without a window: all are.
  int linesInView() const { return linesInView_; }
  void setLinesInView(int lines) { linesInView_ = lines; }
  // Scrolls by no more than it takes.
  void bringIntoView(int line);

  Handler onClick;
  Handler onDblClick;  // Enter does the same, for the lines that are selected
  Handler onScroll;    // the user has scrolled, or moved the selection out of view

  // Each of the user's deeds moves the focus there first; false when it was dropped, or there is
  // no such line. Selecting what is selected fires nothing.
  // The user selects one line, and only it.
  bool userSelect(int line);
  // The user made this selection (Extended), with the focus rectangle on `line`.
  bool userSelect(int line, const std::vector<int>& lines);
  // The user double-clicks a line: selects it as a click does, then fires DblClick (unless Click
  // has disabled or hidden the list). Beside the lines (-1) nothing but the focus moves.
  bool userDblClick(int line);
  // The user scrolls to a first line in view. The focus stays where it is.
  void userScroll(int line);

 private:
  char32_t keyPressed(char32_t key) override;
  void requireLine(int line) const;
  void linesChanged();
  void selectByUser(int line, std::vector<char> flags);

  Selection selection_;
  bool scrollBar_ = true;
  bool rightAligned_ = false;
  const Control* bar_ = nullptr;
  ListItems items_;
  unsigned changes_ = 0;
  std::vector<char> selected_;  // Extended: one flag a line
  int listIndex_ = -1;
  int topIndex_ = 0;
  int linesInView_ = 0;
};

}  // namespace toolkit
