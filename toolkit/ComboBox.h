#pragma once

#include "toolkit/Control.h"
#include "toolkit/ListItems.h"

namespace toolkit {

class ComboBox : public Control {
 public:
  enum class Style { Editable, ListOnly };  // typed text allowed, or not
  ComboBox(Container* parent, std::string name, Style style = Style::Editable);

  Style style() const { return style_; }

  const ListItems& items() const { return items_; }
  int listCount() const { return items_.count(); }
  const std::string& list(int line) const { return items_.text(line); }
  long itemData(int line) const { return items_.data(line); }
  // Filling fires nothing. setItems replaces all lines in one pass, as clear() and then adding:
  // text and choice are gone, and Change fires, once the lines stand, if there was a text.
  void addItem(std::string_view text, long data = 0);
  void setItems(std::vector<ListItem> items);
  // Removing the chosen line fires nothing: none is chosen any more, and the text stays (of a
  // ListOnly combo, it goes).
  void removeItem(int line);
  // Also clears the text and the chosen line; fires Change if there was a text.
  void clear();

  const std::string& text() const { return text_; }
  // By code: another text fires Change and no line is chosen any more (of a ListOnly combo, the
  // line that equals it is chosen instead, and fires Click, or none); the text it has changes
  // nothing and keeps the chosen line.
  void setText(std::string_view text);

  int listIndex() const { return listIndex_; }  // the chosen line, -1 for none
  // By code: another line takes its text and fires Click; the same fires nothing; -1 clears line
  // and text (and fires Change if there was a text). Throws std::invalid_argument past the end.
  void setListIndex(int line);

  // Caret and selection in characters, 0-based. Assigning text or choosing a line moves the caret
  // to its end. Never of a ListOnly combo.
  int selectionStart() const { return selectionStart_; }
  int selectionLength() const { return selectionLength_; }
  void select(int start, int length);

  // What the user types is completed by the line that it begins, without regard to capitals and
  // accents: the rest stands selected behind it. Left with such a rest, the field takes the line as
  // it is written in the list. What is typed in full stays as typed. Before it is shown.
  bool completes() const { return completes_; }
  void setCompletes(bool completes) { completes_ = completes; }

  int maxLength() const { return maxLength_; }
  void setMaxLength(int characters);

  std::function<void(char32_t& key)> onKeyPress;  // as of a text box; none when ListOnly
  Handler onChange;    // the user types, or code assigns another text; not when a line is chosen
  Handler onClick;     // a line is chosen by the user (the same one again counts) or by code
  Handler onDropDown;  // the user is about to open the list

  // The list. While it is open nothing is chosen: the user points at lines, and confirms one or
  // none. It is closed, as if cancelled, when the focus goes elsewhere or no line is left.
  bool opened() const { return opened_; }
  int pointedLine() const { return pointed_; }  // -1 until the user points at one
  // By code: gives it the focus (see setFocus) and opens its list, unless it has no line or takes
  // no input. Fires no DropDown; text and choice stay, and Enter still means what stands in the
  // field.
  void openList();
  // Its window has closed the list by itself: nothing is chosen.
  void closedUp() { closeList(false); }

  char32_t userKeyPress(char32_t key);  // as of a text box
  // As of a text box (caret -1: at the end); never of a ListOnly combo.
  bool userEdit(std::string_view text, int caret = -1);
  bool userSelect(int start, int length);
  // Each moves the focus there first; false when it was dropped, there is no such line, or the
  // combo is read-only.
  bool userChoose(int line);  // closes the list
  bool userDropDown();        // opens it, unless DropDown takes focus or input away
  // In the open list; false when it is closed, or this was dropped.
  bool userPoint(int line);
  bool userCloseUp(bool confirmed);  // the line pointed at is chosen, or all is as it was

 private:
  char32_t keyPressed(char32_t key) override;
  bool takesKeyPresses() const override { return style_ == Style::Editable; }
  bool hasOpenList() const override { return opened_; }
  bool listTakesEnter() const override;
  void closeList(bool confirmed) override;
  void arriving(By how) override;
  void leaving() override;
  void placeSelection(int start, int length);
  int length() const;  // of the text
  bool complete();     // is there a rest that was not typed
  void takeCompletion();
  void open(bool browsing);
  // Gives back whether there was a text.
  bool choose(int line);

  Style style_;
  ListItems items_;
  std::string text_;
  int listIndex_ = -1;
  int selectionStart_ = 0;
  int selectionLength_ = 0;
  int maxLength_ = 0;
  bool completes_ = false;
  int completed_ = -1;  // the line that the selected rest is of
  bool opened_ = false;
  int pointed_ = -1;
  bool browsing_ = false;  // the user has opened the list, and typed nothing since
};

}  // namespace toolkit
