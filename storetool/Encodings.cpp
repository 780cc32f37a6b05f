#include "storetool/Encodings.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "text/Utf8.h"

namespace storetool {

namespace {

// The characters of the bytes 0x80 to 0x9F.
constexpr char32_t kSpecial[] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                 0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

unsigned byteAt(std::string_view text, std::size_t at) {
  return at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
}

// How many bytes the character takes that begins there; 0 when none does.
std::size_t sizeAt(std::string_view text, std::size_t at) {
  const unsigned lead = byteAt(text, at);
  if (lead < 0x80) return 1;
  const std::size_t size = lead < 0xC2 || lead > 0xF4 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  for (std::size_t i = 1; i < size; ++i) {
    if ((byteAt(text, at + i) & 0xC0) != 0x80) return 0;
  }
  // Longer than needed, halves of UTF-16, beyond the last character.
  const unsigned second = byteAt(text, at + 1);
  const bool outside = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                       (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
  return outside ? 0 : size;
}

}  // namespace

bool isUtf8(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t size = sizeAt(text, at);
    if (size == 0) return false;
    at += size;
  }
  return true;
}

std::string fromWindows1252(std::string_view text) {
  std::string utf8;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      utf8 += c;
    } else {
      utf8 += text::encode(byte < 0xA0 ? kSpecial[byte - 0x80] : char32_t{byte});
    }
  }
  return utf8;
}

std::optional<std::string> toWindows1252(std::string_view utf8) {
  if (!isUtf8(utf8)) return std::nullopt;
  std::string bytes;
  for (const char32_t character : text::decode(utf8)) {
    const auto special = std::find(std::begin(kSpecial), std::end(kSpecial), character);
    if (special != std::end(kSpecial)) {
      bytes += static_cast<char>(0x80 + (special - std::begin(kSpecial)));
    } else if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
      bytes += static_cast<char>(character);
    } else {
      return std::nullopt;
    }
  }
  return bytes;
}

}  // namespace storetool
