#pragma once

#include <windows.h>

#include <string>

namespace toolkit::win32 {

// A colour as the container gives it: one of its own, or one of the system's by its index, which is
// looked up each time that something is painted.
class AmbientColor {
 public:
  AmbientColor(COLORREF own) : own_(own) {}  // NOLINT(google-explicit-constructor): is a colour
  static AmbientColor ofSystem(int index) {
    AmbientColor color(0);
    color.index_ = index;
    return color;
  }
  COLORREF now() const { return index_ < 0 ? own_ : GetSysColor(index_); }

 private:
  COLORREF own_;
  int index_ = -1;
};

// What the look of the windows takes from the container around them.
struct Ambience {
  std::wstring fontName = L"MS Shell Dlg";
  int fontSize = 800;  // hundredths of a point
  bool fontBold = false;
  AmbientColor backColor = AmbientColor::ofSystem(COLOR_BTNFACE);
  AmbientColor foreColor = AmbientColor::ofSystem(COLOR_BTNTEXT);
  unsigned dpi = 0;  // 0: that of the window
};

}  // namespace toolkit::win32
