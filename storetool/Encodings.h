#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace storetool {

bool isUtf8(std::string_view text);

// Every byte is a character; the five that Windows leaves open are those of the same number.
std::string fromWindows1252(std::string_view text);
// Nothing for a text with a character that Windows-1252 has not, or that is no UTF-8.
std::optional<std::string> toWindows1252(std::string_view utf8);

}  // namespace storetool
