// A user at the keyboard and the mouse of real windows: everything goes through SendInput.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/windows/container/HostWindow.h"

namespace container {

// Where the user sits: a host's window, its message loop and the control's window in it.
struct Stage {
  HostWindow& window;
  std::function<void()> pump;
  std::function<HWND()> controlWindow;
};

// Every verb is followed by what it brings: the message loop runs until nothing is waiting.
// Before each, the host's window must be in the foreground, else std::runtime_error.
class Typist {
 public:
  explicit Typist(Stage stage) : stage_(std::move(stage)) {}

  // Characters into the window that has the focus.
  void type(std::wstring_view text);
  // One key by its virtual code, with Shift, Ctrl or Alt held.
  void key(WORD code, bool shift = false, bool control = false, bool alt = false);
  void alt(wchar_t letter);
  // One key held while the other one is pressed, and released before it.
  void crossed(WORD held, WORD code);
  // The mouse, on the middle of a control of this name (of a combo box: on its text), or of a
  // window.
  void click(const std::wstring& name);
  void click(HWND window, int x = -1, int y = -1);
  // A tab of the control's pages, by its position.
  void clickTab(int tab);
  // A line of a list box, scrolled into view if need be, with Shift or Ctrl held.
  enum class Held { Nothing, Shift, Control };
  void clickLine(const std::wstring& name, int line, Held held = Held::Nothing);
  void doubleClickLine(const std::wstring& name, int line);
  // The arrow of a combo box; the list stays open. A line of the open list is then chosen by
  // clickOpenLine.
  void clickArrow(const std::wstring& name);
  void clickOpenLine(const std::wstring& name, int line);
  // The arrow at the end of a horizontal scroll bar.
  void clickScrollEnd(const std::wstring& name);
  // The wheel over the middle of a control, so many notches towards the user.
  void wheel(const std::wstring& name, int notches);
  // Replaces what a field holds: clicks into it, selects all, types.
  void fill(const std::wstring& name, std::wstring_view text);
  // The same in the field that has the focus.
  void retype(std::wstring_view text);

  // The window of a control by the name that it answers to; null when there is none.
  HWND find(const std::wstring& name) const;
  std::wstring text(const std::wstring& name) const;
  bool enabled(const std::wstring& name) const;
  bool visible(const std::wstring& name) const;
  // The name of the control that has the focus: of the combo box when its own field has it; "" when
  // the focus is outside the control.
  std::wstring focused() const;
  // The lines of a combo or list box.
  std::vector<std::wstring> lines(const std::wstring& name) const;
  // The positions of a list box's selected lines.
  std::vector<int> selected(const std::wstring& name) const;
  // Is the list of a combo box open?
  bool opened(const std::wstring& name) const;
  // Is an option or check box set?
  bool checked(const std::wstring& name) const;
  // The tab in front.
  int tab() const;

 private:
  void send(const std::vector<INPUT>& inputs);
  HWND require(const std::wstring& name) const;
  POINT middleOfLine(HWND list, int line);
  void press(POINT onScreen, Held held = Held::Nothing);

  Stage stage_;
  int clicks_ = 0;
};

// What a window answers to WM_GETCONTROLNAME; "" when nothing.
std::wstring nameOf(HWND window);
// The window below another one that answers so; null when there is none.
HWND childOf(HWND parent, const std::wstring& name);
// The lines of a combo or list box.
std::vector<std::wstring> linesOf(HWND window);

}  // namespace container
