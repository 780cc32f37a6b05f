// Text inside the system is UTF-8. Everything here counts characters (Unicode code points), never
// bytes. A byte that belongs to no UTF-8 sequence counts as one character and is kept as it is.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace text {

// Number of characters.
std::size_t length(std::string_view utf8);

// The character at a 1-based position, 0 past the end.
char32_t at(std::string_view utf8, std::size_t position);

// The first `count` characters.
std::string left(std::string_view utf8, std::size_t count);

// `count` characters from a 1-based position; empty past the end.
std::string mid(std::string_view utf8, std::size_t position,
                std::size_t count = std::string_view::npos);

// Cut to `count` characters, or padded with blanks on the right to that length.
std::string fit(std::string_view utf8, std::size_t count);
// Behind a text.
void addFit(std::string& out, std::string_view utf8, std::size_t count);

// Upper case, French letters included (é -> É, œ -> Œ, ÿ -> Ÿ); independent of the locale.
std::string upper(std::string_view utf8);
char32_t upper(char32_t character);

std::string encode(char32_t character);
std::vector<char32_t> decode(std::string_view utf8);

// UTF-16 and back. A lone surrogate becomes U+FFFD; a byte outside UTF-8 becomes the character of
// the same number (so the store's mark bytes 0xFE and 0xFD are U+00FE and U+00FD outside).
std::u16string toUtf16(std::string_view utf8);
std::string fromUtf16(std::u16string_view utf16);

// Without blanks at both ends.
std::string_view trim(std::string_view utf8);

}  // namespace text
