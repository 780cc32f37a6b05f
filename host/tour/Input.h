// The keyboard, as if from the user: what is sent goes to whatever window is in front.
#pragma once

#include <windows.h>

#include <string_view>

namespace tour {

// std::runtime_error when the system refuses the input.
void typeText(std::wstring_view text);
// "Tab", "Enter", "Escape", "Down", "Up", "Home", "End", "Delete", "Backspace", "Space", a letter;
// preceded by "Alt+", "Ctrl+" or "Shift+". std::invalid_argument for any other.
void pressKey(std::wstring_view key);

}  // namespace tour
