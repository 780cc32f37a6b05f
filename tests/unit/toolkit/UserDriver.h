// The user of a surface, whatever stands behind it: without windows, or through real ones. The rule
// tests (`rules` in CMakeLists.txt) speak to this interface alone and look at the portable objects
// only, so the same assertions run in both worlds; each world links its own makeDriver.
#pragma once

#include <memory>
#include <string_view>

#include "toolkit/Buttons.h"
#include "toolkit/ComboBox.h"
#include "toolkit/ListBox.h"
#include "toolkit/SSTab.h"
#include "toolkit/ScrollBar.h"
#include "toolkit/Surface.h"
#include "toolkit/TextBox.h"

namespace toolkit::test {

// Each verb returns when all that it caused has happened. What the surface does not take is dropped
// without a word: a test looks at the outcome.
class UserDriver {
 public:
  UserDriver() = default;
  UserDriver(const UserDriver&) = delete;
  UserDriver& operator=(const UserDriver&) = delete;
  virtual ~UserDriver() = default;

  // Clicks into a field with the mouse.
  virtual void go(Control& control) = 0;
  // Types into whatever has the focus, key by key; '\b', '\r' and '\t' are Backspace, Enter, Tab.
  virtual void type(std::string_view keys) = 0;
  // A key that is no character: arrows, PageUp, Escape, Space, Home...
  virtual void press(const KeyStroke& stroke) = 0;
  virtual void tab(bool backwards = false) = 0;
  // Alt and a letter: a mnemonic.
  virtual void alt(char32_t letter) = 0;
  // Selects the whole text of the text box that has the focus.
  virtual void selectAll() = 0;
  // Pastes over the selection of the text box that has the focus.
  virtual void paste(std::string_view text) = 0;

  // With the mouse.
  virtual void click(CommandButton& button) = 0;
  virtual void click(OptionButton& option) = 0;
  virtual void click(CheckBox& box) = 0;
  virtual void click(SSTab& tabs, int tab) = 0;
  // A line that is in view, plainly, or with Ctrl or Shift held down.
  virtual void click(ListBox& list, int line, bool control = false, bool shift = false) = 0;
  virtual void dblClick(ListBox& list, int line) = 0;
  // On the empty part below the lines.
  virtual void dblClickBeside(ListBox& list) = 0;
  // Opens the list of a combo box; chooses one of its lines (which opens it first).
  virtual void open(ComboBox& combo) = 0;
  virtual void choose(ComboBox& combo, int line) = 0;
  // Turns the mouse wheel over it by a notch, towards the user.
  virtual void wheel(ComboBox& combo) = 0;
  // Moves a scroll bar to a value.
  virtual void scroll(ScrollBar& bar, int value) = 0;
};

// A user in front of the surface, which has been filled and laid out (layOut of Layout.h) and must
// outlive the driver. No control has the focus yet.
std::unique_ptr<UserDriver> makeDriver(Surface& surface);

}  // namespace toolkit::test
