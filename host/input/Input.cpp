#include "host/input/Input.h"

#include <stdexcept>

namespace input {

namespace {

bool isExtended(WORD code) {
  return (code >= VK_PRIOR && code <= VK_DOWN) || code == VK_INSERT || code == VK_DELETE;
}

// The system's measure of the screen, from the left or upper edge.
LONG absolute(LONG pixels, int screen) { return (pixels * 65536 + screen - 1) / screen; }

}  // namespace

INPUT key(WORD code, bool up) {
  INPUT made{};
  made.type = INPUT_KEYBOARD;
  made.ki.wVk = code;
  made.ki.wScan = static_cast<WORD>(MapVirtualKeyW(code, MAPVK_VK_TO_VSC));
  made.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0U;
  if (isExtended(code)) made.ki.dwFlags |= KEYEVENTF_EXTENDEDKEY;
  return made;
}

INPUT character(wchar_t unit, bool up) {
  INPUT made{};
  made.type = INPUT_KEYBOARD;
  made.ki.wScan = unit;
  made.ki.dwFlags = KEYEVENTF_UNICODE | (up ? KEYEVENTF_KEYUP : 0U);
  return made;
}

INPUT mouse(POINT at, DWORD doing) {
  INPUT made{};
  made.type = INPUT_MOUSE;
  made.mi.dx = absolute(at.x, GetSystemMetrics(SM_CXSCREEN));
  made.mi.dy = absolute(at.y, GetSystemMetrics(SM_CYSCREEN));
  made.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE | doing;
  return made;
}

std::vector<INPUT> stroke(WORD code, const std::vector<WORD>& held) {
  std::vector<INPUT> inputs;
  inputs.reserve(2 * held.size() + 2);
  for (const WORD modifier : held) inputs.push_back(key(modifier, false));
  inputs.push_back(key(code, false));
  inputs.push_back(key(code, true));
  for (auto modifier = held.rbegin(); modifier != held.rend(); ++modifier) {
    inputs.push_back(key(*modifier, true));
  }
  return inputs;
}

std::vector<INPUT> typed(wchar_t unit) {
  constexpr int kShift = 1;
  const SHORT found = VkKeyScanW(unit);
  const int modifiers = found >> 8;
  if (found == -1 || modifiers > kShift) return {character(unit, false), character(unit, true)};
  const auto code = static_cast<WORD>(found & 0xFF);
  return modifiers == kShift ? stroke(code, {VK_SHIFT}) : stroke(code);
}

void send(std::vector<INPUT> inputs) {
  const auto count = static_cast<UINT>(inputs.size());
  if (SendInput(count, inputs.data(), sizeof(INPUT)) != count) {
    throw std::runtime_error("the system takes no input");
  }
}

}  // namespace input
