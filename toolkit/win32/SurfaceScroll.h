// The scroll bars of a surface's window that has less room than the surface needs.
#pragma once

#include <windows.h>

#include <optional>

namespace toolkit::win32 {

class SurfaceScroll {
 public:
  // Shows the bars that a window needs for what is in it; all in pixels. Before the windows in it
  // are placed, which stand further left and up by origin().
  void fit(HWND window, SIZE content);
  POINT origin() const { return origin_; }
  bool active() const { return content_.cx > room_.cx || content_.cy > room_.cy; }

  // WM_HSCROLL and WM_VSCROLL of the window's own bars, and the wheel. Nothing: not for them.
  std::optional<LRESULT> message(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  // Scrolls as little as brings a window below it into view.
  void reveal(HWND window, HWND inside);

 private:
  void scrollTo(HWND window, POINT origin);
  int after(HWND window, int bar, WORD code, int line) const;

  SIZE content_{};
  SIZE room_{};
  POINT origin_{};
  int wheel_ = 0;  // turned, but not scrolled by yet
};

}  // namespace toolkit::win32
