#include "toolkit/win32/Strokes.h"

#include <array>
#include <utility>

namespace toolkit::win32 {

namespace {

bool down(int virtualKey) { return GetKeyState(virtualKey) < 0; }

std::optional<Key> keyOf(WPARAM virtualKey) {
  static constexpr std::array<std::pair<WPARAM, Key>, 12> kKeys{{{VK_TAB, Key::Tab},
                                                                 {VK_RETURN, Key::Enter},
                                                                 {VK_ESCAPE, Key::Escape},
                                                                 {VK_SPACE, Key::Space},
                                                                 {VK_LEFT, Key::Left},
                                                                 {VK_RIGHT, Key::Right},
                                                                 {VK_UP, Key::Up},
                                                                 {VK_DOWN, Key::Down},
                                                                 {VK_PRIOR, Key::PageUp},
                                                                 {VK_NEXT, Key::PageDown},
                                                                 {VK_HOME, Key::Home},
                                                                 {VK_END, Key::End}}};
  for (const auto& [virtualCode, key] : kKeys) {
    if (virtualCode == virtualKey) return key;
  }
  return std::nullopt;
}

}  // namespace

std::optional<KeyStroke> strokeOf(UINT message, WPARAM wParam) {
  KeyStroke stroke;
  stroke.shift = down(VK_SHIFT);
  stroke.control = down(VK_CONTROL);
  if (message == WM_SYSCHAR) {
    stroke.character = static_cast<char32_t>(wParam);
    stroke.alt = true;
    return stroke;
  }
  const std::optional<Key> key = message == WM_KEYDOWN ? keyOf(wParam) : std::nullopt;
  if (!key) return std::nullopt;
  stroke.key = *key;
  return stroke;
}

bool isSystemKey(UINT message) { return message == WM_SYSKEYDOWN || message == WM_SYSCHAR; }

bool wrapsAround(const KeyStroke& stroke) {
  return stroke.key == Key::Tab && !stroke.control && !stroke.alt;
}

}  // namespace toolkit::win32
