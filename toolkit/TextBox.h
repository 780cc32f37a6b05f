#pragma once

#include "toolkit/Control.h"

namespace toolkit {

class TextBox : public Control {
 public:
  TextBox(Container* parent, std::string name);

  const std::string& text() const { return text_; }
  // By code: fires Change unless it is the text it has. The mark bytes 0xFE and 0xFD are removed.
  // Does not mind the limit.
  void setText(std::string_view text);
  // The same as if it had been emptied before: caret and selection start anew whatever it held, and
  // nothing that was typed before can be brought back.
  void renewText(std::string_view text);
  // Characters that the user can type; 0: no limit. Code may assign more.
  int maxLength() const { return maxLength_; }
  void setMaxLength(int characters);
  bool rightAligned() const { return rightAligned_; }
  void setRightAligned(bool right);
  // Caret and selection in characters, 0-based; assigning text moves the caret to its start.
  int selectionStart() const { return selectionStart_; }
  int selectionLength() const { return selectionLength_; }
  void select(int start, int length);

  // Fires for a character key, Enter (13) and Backspace (8), before it takes effect; the handler
  // may replace the key, or drop it with 0.
  std::function<void(char32_t& key)> onKeyPress;
  Handler onChange;

  // The user presses a character key: fires KeyPress and gives the key to keep, 0 to drop it.
  // The characters U+00FE and U+00FD are dropped always; control characters other than Enter and
  // Backspace are commands: kept without an event. 0 too while the box takes no input; of a
  // read-only one, for all but commands.
  char32_t userKeyPress(char32_t key);
  // The user's edit made this text: it becomes the text, without marks and cut to the limit (a
  // longer text that code assigned may stay as long as it was), with the caret at `caret` (-1: as
  // near as can be to where it was); fires Change if it differs. Without effect, and false, while
  // the box takes no input or is read-only. The peer is told only when its window does not hold the
  // outcome.
  bool userEdit(std::string_view text, int caret = -1);
  // The user moved caret or selection.
  bool userSelect(int start, int length);

 private:
  char32_t keyPressed(char32_t key) override;
  bool takesKeyPresses() const override { return true; }
  void arriving(By how) override;
  void placeSelection(int start, int length);

  std::string text_;
  int maxLength_ = 0;
  bool rightAligned_ = false;
  int selectionStart_ = 0;
  int selectionLength_ = 0;
};

}  // namespace toolkit
