#include "host/tour/Input.h"

#include <stdexcept>
#include <vector>

namespace tour {

namespace {

struct NamedKey {
  std::wstring_view name;
  WORD code;
};

constexpr NamedKey kKeys[] = {
    {L"Tab", VK_TAB},        {L"Enter", VK_RETURN}, {L"Escape", VK_ESCAPE}, {L"Down", VK_DOWN},
    {L"Up", VK_UP},          {L"Home", VK_HOME},    {L"End", VK_END},       {L"Delete", VK_DELETE},
    {L"Backspace", VK_BACK}, {L"Space", VK_SPACE},
};

constexpr NamedKey kModifiers[] = {
    {L"Alt+", VK_MENU}, {L"Ctrl+", VK_CONTROL}, {L"Shift+", VK_SHIFT}};

void send(std::vector<INPUT> inputs) {
  const auto count = static_cast<UINT>(inputs.size());
  if (SendInput(count, inputs.data(), sizeof(INPUT)) != count) {
    throw std::runtime_error("the system takes no input");
  }
}

INPUT key(WORD code, bool up) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = code;
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(code, MAPVK_VK_TO_VSC));
  input.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
  return input;
}

INPUT character(wchar_t code, bool up) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wScan = code;
  input.ki.dwFlags = KEYEVENTF_UNICODE | (up ? KEYEVENTF_KEYUP : 0U);
  return input;
}

void press(WORD code, const std::vector<WORD>& held) {
  std::vector<INPUT> inputs;
  inputs.reserve(2 * held.size() + 2);
  for (const WORD modifier : held) {
    inputs.push_back(key(modifier, false));
  }
  inputs.push_back(key(code, false));
  inputs.push_back(key(code, true));
  for (auto modifier = held.rbegin(); modifier != held.rend(); ++modifier) {
    inputs.push_back(key(*modifier, true));
  }
  send(std::move(inputs));
}

WORD codeOf(std::wstring_view name) {
  for (const NamedKey& known : kKeys) {
    if (known.name == name) {
      return known.code;
    }
  }
  if (name.size() != 1 || name[0] < L'A' || name[0] > L'Z') {
    throw std::invalid_argument("no such key");
  }
  return static_cast<WORD>(name[0]);  // a letter is its own code
}

// A key of the keyboard where there is one, else the character itself.
void typeCharacter(wchar_t code) {
  const SHORT found = VkKeyScanW(code);
  const int modifiers = found >> 8;
  if (found == -1 || modifiers > 1) {
    send({character(code, false), character(code, true)});
    return;
  }
  std::vector<WORD> held;
  if (modifiers == 1) {
    held.push_back(VK_SHIFT);
  }
  press(static_cast<WORD>(found & 0xFF), held);
}

}  // namespace

void typeText(std::wstring_view text) {
  for (const wchar_t code : text) {
    typeCharacter(code);
  }
}

void pressKey(std::wstring_view name) {
  std::vector<WORD> held;
  for (const NamedKey& modifier : kModifiers) {
    if (name.starts_with(modifier.name)) {
      held.push_back(modifier.code);
      name.remove_prefix(modifier.name.size());
    }
  }
  press(codeOf(name), held);
}

}  // namespace tour
