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
#include "toolkit/headless/Caller.h"

namespace toolkit::headless {

// Every verb gives back false when the action was dropped: the control does not take input, or the
// focus did not arrive. `at` is kept as caller().
class User {
 public:
  explicit User(Surface& surface) : surface_(surface) {}

  // Clicks into a field, as the mouse does: moves the focus there.
  bool go(Control& control, Caller at = Caller::here());
  // Types into the control that has the focus, key by key, at the caret; '\b' and '\r' are
  // Backspace and Enter, '\t' moves on.
  bool type(std::string_view keys, Caller at = Caller::here());
  // Up and Down in a combo box choose the line beside; while its list is open they only point at
  // it. With Alt they, and F4, open and close the list (closing confirms).
  bool press(const KeyStroke& stroke, Caller at = Caller::here());
  bool press(Key key, Caller at = Caller::here());
  bool tab(bool backwards = false, Caller at = Caller::here());
  bool alt(char32_t letter, Caller at = Caller::here());
  // Replaces a whole field: goes there, selects all, types.
  bool fill(Control& field, std::string_view keys, Caller at = Caller::here());
  // Over the selection of the text box that has the focus.
  bool paste(std::string_view text, Caller at = Caller::here());

  bool click(CommandButton& button, Caller at = Caller::here());
  bool click(OptionButton& option, Caller at = Caller::here());
  bool click(CheckBox& box, Caller at = Caller::here());
  bool click(SSTab& tabs, int tab, Caller at = Caller::here());
  bool click(ListBox& list, int line, bool control = false, bool shift = false,
             Caller at = Caller::here());
  bool dblClick(ListBox& list, int line, Caller at = Caller::here());
  // On the empty part below the lines.
  bool dblClickBeside(ListBox& list, Caller at = Caller::here());
  // Opens its list; one that is open already is closed first, nothing being chosen.
  bool open(ComboBox& combo, Caller at = Caller::here());
  // Opens it, unless it is open, and chooses.
  bool choose(ComboBox& combo, int line, Caller at = Caller::here());
  bool scroll(ScrollBar& bar, int value, Caller at = Caller::here());
  // Turns the wheel until that line is the first that is seen.
  bool scroll(ListBox& list, int line, Caller at = Caller::here());
  // Turns the mouse wheel over it, towards the user. False: it is left to the surface around it.
  bool wheel(ComboBox& combo, Caller at = Caller::here());

  const Surface& surface() const { return surface_; }
  // Who has called the last verb.
  Caller caller() const { return caller_; }

 private:
  bool typeKey(char32_t key);
  bool pressIn(ComboBox& combo, const KeyStroke& stroke);
  bool select(ListBox& list, int line, bool control, bool shift);

  Surface& surface_;
  Caller caller_;
  ListBox* anchored_ = nullptr;  // where a selection with Shift starts
  int anchor_ = 0;
};

}  // namespace toolkit::headless
