#pragma once

#include <windows.h>

#include <string>

namespace toolkit::win32 {

// What the look of the windows takes from the container around them.
struct Ambience {
  std::wstring fontName = L"MS Shell Dlg";
  int fontSize = 8;  // points
  COLORREF backColor = GetSysColor(COLOR_BTNFACE);
  unsigned dpi = 0;  // 0: that of the window
};

}  // namespace toolkit::win32
