// What a surface posts to its own window, to be done when nothing of it runs.
#pragma once

#include <windows.h>

namespace toolkit::win32 {

inline constexpr UINT kDeliver = WM_APP + 1;        // the notes
inline constexpr UINT kRefresh = WM_APP + 2;        // windows go back to what their objects hold
inline constexpr UINT kBringKeyboard = WM_APP + 3;  // to where the surface has its focus
inline constexpr UINT kTakeFocus = WM_APP + 4;      // from the surface's window to a control

}  // namespace toolkit::win32
