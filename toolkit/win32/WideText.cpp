#include "toolkit/win32/WideText.h"

#include <windows.h>

#include <algorithm>

#include "text/Utf8.h"

namespace toolkit::win32 {

std::wstring wide(std::string_view utf8) {
  const std::u16string units = text::toUtf16(utf8);
  return {units.begin(), units.end()};
}

std::string narrow(std::wstring_view utf16) {
  return text::fromUtf16(std::u16string(utf16.begin(), utf16.end()));
}

int charactersIn(std::wstring_view text, int units) {
  const std::wstring_view part = text.substr(0, static_cast<std::size_t>(std::max(units, 0)));
  return static_cast<int>(std::count_if(part.begin(), part.end(),
                                        [](wchar_t unit) { return !IS_LOW_SURROGATE(unit); }));
}

int unitsOf(std::wstring_view text, int characters) {
  std::size_t unit = 0;
  for (int i = 0; i < characters && unit < text.size(); ++i) {
    unit += IS_HIGH_SURROGATE(text[unit]) && unit + 1 < text.size() ? 2U : 1U;
  }
  return static_cast<int>(unit);
}

}  // namespace toolkit::win32
