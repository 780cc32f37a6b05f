// Text between the portable objects (UTF-8, counted in characters) and windows (UTF-16, counted in
// units).
#pragma once

#include <string>
#include <string_view>

namespace toolkit::win32 {

std::wstring wide(std::string_view utf8);
std::string narrow(std::wstring_view utf16);

// A position in `text` counted in characters, from one counted in units, and back.
int charactersIn(std::wstring_view text, int units);
int unitsOf(std::wstring_view text, int characters);

// The store's two marks as they come from a keyboard or a clipboard.
inline constexpr wchar_t kAttributeMark = 0x00FE;
inline constexpr wchar_t kValueMark = 0x00FD;

}  // namespace toolkit::win32
