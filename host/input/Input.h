// Keys and mouse as if from a user, for the tour and for tests: what SendInput is given.
#pragma once

#include <windows.h>

#include <string_view>
#include <vector>

namespace input {

// One event each. Keys of the grey block carry the flag by which windows know them from the number
// pad's: without it Shift would be taken for released while an arrow is pressed.
INPUT key(WORD code, bool up);
INPUT character(wchar_t unit, bool up);
// MOUSEEVENTF_... to do there; 0 only moves. In pixels of the screen.
INPUT mouse(POINT at, DWORD doing);

// A key pressed and released while others are held, pressed in this order.
std::vector<INPUT> stroke(WORD code, const std::vector<WORD>& held = {});
// A character by its key, with Shift where that is needed, or by itself where the keyboard has
// none.
std::vector<INPUT> typed(wchar_t unit);

// All at once: nothing that the display tells of its own keyboard comes in between.
// std::runtime_error when the system refuses.
void send(std::vector<INPUT> inputs);

}  // namespace input
