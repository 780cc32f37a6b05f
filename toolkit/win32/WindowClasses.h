// The window classes of this module.
#pragma once

#include <windows.h>

namespace toolkit::win32 {

// The module that holds this code.
HINSTANCE moduleInstance();

// The class of surfaces and pages, registered at its first use, by whichever thread that is. It
// stays, as the module itself does: taken back by the last control of one thread, it would be
// missing to another thread that has just asked for it. Throws std::system_error.
const wchar_t* surfaceClass(WNDPROC procedure);

// Set on a surface's window while its pointer is the hourglass.
inline constexpr const wchar_t* kHourglassProperty = L"Tessaline.Hourglass";

}  // namespace toolkit::win32
