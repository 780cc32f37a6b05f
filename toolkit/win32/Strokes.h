// Key messages as the strokes that a surface knows.
#pragma once

#include <windows.h>

#include <optional>

#include "toolkit/Surface.h"

namespace toolkit::win32 {

// The stroke that a key message stands for, with the shift keys as they are now; none for keys
// that a surface has no use for.
std::optional<KeyStroke> strokeOf(UINT message, WPARAM wParam);

// Of those with Alt, which are the system's when nobody here wants them.
bool isSystemKey(UINT message);

// Tab, which goes round where no host takes it on.
bool wrapsAround(const KeyStroke& stroke);

}  // namespace toolkit::win32
