// The demo host's menu. Its letters are those that no caption of the control has: the control is
// asked first.
#pragma once

#include <windows.h>

namespace host {

// Belongs to the window that it is given to.
HMENU makeMenu();

// Does what a command of the menu says; false for a command that is none of it.
bool runMenuCommand(WORD command, HWND owner);

}  // namespace host
