// What the edit windows of text and combo boxes have in common.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace toolkit::win32 {

// Enter, Tab and Escape (and what Ctrl makes of them) belong to the surface: a single-line edit
// beeps at them.
bool isForSurfaceAlone(WPARAM unit);

// A command such as Ctrl+C, which is no key press.
bool isCommand(WPARAM unit);

// Puts together the units of a character as WM_CHAR brings them; 0 while the second one is missing.
char32_t joined(wchar_t& highSurrogate, WPARAM unit);

// The units of a character, for WM_CHAR to an edit's own procedure.
std::wstring unitsOf(char32_t character);

// Pastes what the clipboard holds, without marks and from its first line alone.
void pasteCleaned(HWND edit);

}  // namespace toolkit::win32
