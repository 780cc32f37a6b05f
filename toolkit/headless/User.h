// A user at the keyboard and the mouse of a surface without windows.
#pragma once

#include <string_view>

#include "toolkit/Buttons.h"
#include "toolkit/ComboBox.h"
#include "toolkit/ListBox.h"
#include "toolkit/SSTab.h"
#include "toolkit/ScrollBar.h"
#include "toolkit/Surface.h"
#include "toolkit/TextBox.h"

namespace toolkit::headless {

// Every verb gives back false when the action was dropped: the control does not take input, or the
// focus did not arrive.
class User {
 public:
  explicit User(Surface& surface) : surface_(surface) {}

  // Clicks into a field, as the mouse does: moves the focus there.
  bool go(Control& control) { return surface_.moveFocus(&control); }
  // Types into the control that has the focus, key by key, at the caret; '\b' and '\r' are
  // Backspace and Enter, '\t' moves on.
  bool type(std::string_view keys);
  bool press(const KeyStroke& stroke) { return surface_.key(stroke); }
  bool press(Key key);
  bool tab(bool backwards = false);
  bool alt(char32_t letter);
  // Replaces a whole field: goes there, selects all, types.
  bool fill(Control& field, std::string_view keys);
  bool paste(std::string_view text);  // over the selection of the text box that has the focus

  bool click(CommandButton& button);
  bool click(OptionButton& option);
  bool click(CheckBox& box);
  bool click(SSTab& tabs, int tab);
  bool click(ListBox& list, int line, bool control = false, bool shift = false);
  bool dblClick(ListBox& list, int line);
  bool open(ComboBox& combo);
  bool choose(ComboBox& combo, int line);  // opens it and chooses
  bool scroll(ScrollBar& bar, int value);

 private:
  bool typeKey(char32_t key);
  bool typeInto(TextBox& box, char32_t key);
  bool typeInto(ComboBox& combo, char32_t key);
  bool select(ListBox& list, int line, bool control, bool shift);

  Surface& surface_;
  // A combo box keeps no caret: typing goes to the end of its text, or over the whole of it.
  ComboBox* selectedCombo_ = nullptr;
  ListBox* anchored_ = nullptr;  // where a selection with Shift starts
  int anchor_ = 0;
};

}  // namespace toolkit::headless
