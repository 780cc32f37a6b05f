// The top-level window of a host: a field, the place of the control, another field.
#pragma once

#include <windows.h>

#include <functional>

namespace container {

class HostWindow {
 public:
  // Shown, in the foreground. Throws std::runtime_error when Windows makes no window.
  HostWindow();
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;
  ~HostWindow();

  HWND handle() const { return window_; }
  HWND before() const { return before_; }
  HWND after() const { return after_; }
  // Where the control goes, in client pixels.
  RECT place() const;
  // How often its menu was asked for by the keyboard. It does not open: it would keep the loop.
  int menus() const { return menus_; }
  // Takes the window down at once; harmless the second time.
  void destroy();

  // Called before the window and its children go.
  std::function<void()> onDestroy;
  // The window has been activated and would give the focus to nobody in particular.
  std::function<void()> onFocus;

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM w, LPARAM l);

  HWND window_ = nullptr;
  HWND before_ = nullptr;
  HWND after_ = nullptr;
  int menus_ = 0;
};

// Dispatches what is waiting, and what that brings, until nothing is left. Each message goes
// through `translate` first when there is one; true: used up.
void pump(const std::function<bool(MSG&)>& translate = {});
// The same until `done` or the time is over; true when done.
bool pumpUntil(const std::function<bool()>& done, DWORD milliseconds,
               const std::function<bool(MSG&)>& translate = {});

}  // namespace container
