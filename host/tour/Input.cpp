#include "host/tour/Input.h"

#include <stdexcept>
#include <vector>

#include "host/input/Input.h"

namespace tour {

namespace {

struct NamedKey {
  std::wstring_view name;
  WORD code;
};

constexpr NamedKey kKeys[] = {
    {L"Tab", VK_TAB},        {L"Enter", VK_RETURN}, {L"Escape", VK_ESCAPE}, {L"Down", VK_DOWN},
    {L"Up", VK_UP},          {L"Home", VK_HOME},    {L"End", VK_END},       {L"Delete", VK_DELETE},
    {L"Backspace", VK_BACK}, {L"Space", VK_SPACE},  {L"Right", VK_RIGHT},   {L"Left", VK_LEFT},
};

constexpr NamedKey kModifiers[] = {
    {L"Alt+", VK_MENU}, {L"Ctrl+", VK_CONTROL}, {L"Shift+", VK_SHIFT}};

WORD codeOf(std::wstring_view name) {
  for (const NamedKey& known : kKeys) {
    if (known.name == name) return known.code;
  }
  if (name.size() != 1 || name[0] < L'A' || name[0] > L'Z') {
    throw std::invalid_argument("no such key");
  }
  return static_cast<WORD>(name[0]);  // a letter is its own code
}

}  // namespace

void typeText(std::wstring_view text) {
  for (const wchar_t code : text) input::send(input::typed(code));
}

void pressKey(std::wstring_view name) {
  std::vector<WORD> held;
  for (const NamedKey& modifier : kModifiers) {
    if (name.starts_with(modifier.name)) {
      held.push_back(modifier.code);
      name.remove_prefix(modifier.name.size());
    }
  }
  input::send(input::stroke(codeOf(name), held));
}

}  // namespace tour
