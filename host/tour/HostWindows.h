// The windows of a running host, found from another process: the child controls by their names, and
// the message boxes.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace tour {

struct Box {
  HWND window = nullptr;
  std::wstring title;
  std::wstring text;
  std::vector<std::wstring> buttons;  // captions without the mnemonic mark
};

class HostWindows {
 public:
  // From now on the host is the top-level window with this title, of whatever program.
  void workOn(std::wstring title) { title_ = std::move(title); }

  // Null while the host has no visible window.
  HWND frame() const;
  // The form that is open over the host's window, null when there is none. Asks no window anything,
  // so that it answers for a host that is busy too.
  HWND form() const;
  // The control with this name, of an open form first; null when there is none. Windows of the
  // host's own have no name: "=TEXT" is the one that shows this text.
  HWND control(const std::wstring& name) const;
  // What has the keyboard, as `control` would find it; "" for nothing of the host's.
  std::wstring focused() const;
  // Is the keyboard in no field yet or any more: at the host's window or its menu, or at the
  // control itself, which drops what is typed while it is busy?
  bool parked() const;
  // The window of the control as a whole.
  HWND surface() const;
  // The visible message box of the host; its window is null when there is none.
  Box box() const;
  // The box's button with this caption, null when it has none.
  HWND button(const Box& box, const std::wstring& caption) const;

 private:
  std::wstring title_;  // "" for the host in C++
};

// What a window shows. A window that does not answer within a second shows "".
std::wstring textOf(HWND window);
// The lines of a combo box's or list box's list.
std::vector<std::wstring> linesOf(HWND window);
// Where a line of a list box is on the screen, once it has been scrolled into view; an empty
// rectangle when there is no such line. Positions from 0.
RECT placeOfLine(HWND list, int line);
// Waits until the window's thread has taken in what was sent to it so far.
void settle(HWND window);

}  // namespace tour
