#include "toolkit/win32/Typing.h"

#include "text/Utf8.h"
#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

constexpr WPARAM kBackspace = 8;
constexpr WPARAM kControlBackspace = 127;

bool controlDown() { return GetKeyState(VK_CONTROL) < 0; }

// Other programs look into it as well, for a moment.
bool openClipboard(HWND owner) {
  for (int tries = 0; tries < 10; ++tries) {
    if (OpenClipboard(owner)) return true;
    Sleep(5);
  }
  return false;
}

std::wstring clipboardText(HWND owner) {
  std::wstring text;
  if (!openClipboard(owner)) return text;
  if (HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    if (const auto* characters = static_cast<const wchar_t*>(GlobalLock(data))) {
      text = characters;
      GlobalUnlock(data);
    }
  }
  CloseClipboard();
  return text;
}

}  // namespace

bool isForSurfaceAlone(WPARAM unit) {
  return unit == '\r' || unit == '\n' || unit == '\t' || unit == 27 || unit == kControlBackspace;
}

bool isCommand(WPARAM unit) {
  if (unit == kBackspace) return controlDown();
  return unit < 32;
}

char32_t joined(wchar_t& highSurrogate, WPARAM unit) {
  const auto part = static_cast<wchar_t>(unit);
  if (IS_HIGH_SURROGATE(part)) {
    highSurrogate = part;
    return 0;
  }
  if (IS_LOW_SURROGATE(part) && highSurrogate) {
    const char32_t high = static_cast<char32_t>(highSurrogate) - HIGH_SURROGATE_START;
    highSurrogate = 0;
    return 0x10000 + (high << 10) + (static_cast<char32_t>(part) - LOW_SURROGATE_START);
  }
  highSurrogate = 0;
  return part;
}

std::wstring unitsOf(char32_t character) { return wide(text::encode(character)); }

void pasteCleaned(HWND edit) {
  std::wstring cleaned;
  for (const wchar_t unit : clipboardText(edit)) {
    if (unit == L'\r' || unit == L'\n') break;
    if (unit != kAttributeMark && unit != kValueMark) cleaned += unit;
  }
  SendMessageW(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(cleaned.c_str()));
}

}  // namespace toolkit::win32
