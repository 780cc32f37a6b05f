// The control at design time: a window that shows its picture and takes nothing.
#pragma once

#include <windows.h>

#include <functional>

namespace ocx {

// No children, no keyboard; the mouse passes through it to the container's own window, which moves
// and sizes what it designs.
class DesignWindow {
 public:
  using Paint = std::function<void(HDC context, const RECT& area)>;

  // Places are pixels of the parent. std::system_error when Windows gives no window.
  DesignWindow(HWND parent, const RECT& place, Paint paint);
  DesignWindow(const DesignWindow&) = delete;
  DesignWindow& operator=(const DesignWindow&) = delete;
  ~DesignWindow();

  // Null once the container has destroyed it from outside.
  HWND handle() const { return window_; }
  void setPlace(const RECT& place);
  void show(bool visible);
  void repaint();

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  static LRESULT received(HWND window, UINT message, WPARAM first, LPARAM second);
  void paint();

  Paint paint_;
  HWND window_ = nullptr;
};

}  // namespace ocx
