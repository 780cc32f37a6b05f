#include "text/Utf8.h"

#include <algorithm>

namespace text {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

struct Character {
  char32_t code = 0;
  std::size_t bytes = 1;
  bool valid = true;  // false for a byte outside UTF-8, which then stands for itself
};

unsigned byteAt(std::string_view utf8, std::size_t offset) {
  return static_cast<unsigned char>(utf8[offset]);
}

std::size_t sequenceLength(unsigned lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

bool isSurrogate(char32_t code) { return code >= 0xD800 && code <= 0xDFFF; }

// Overlong forms, surrogates and anything past U+10FFFF are no UTF-8.
bool isSoundCode(char32_t code, std::size_t bytes) {
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  return code >= kSmallest[bytes] && code <= 0x10FFFF && !isSurrogate(code);
}

// The character that starts at an offset below the text's size.
Character characterAt(std::string_view utf8, std::size_t offset) {
  const unsigned lead = byteAt(utf8, offset);
  const Character outside{lead, 1, false};
  const std::size_t bytes = sequenceLength(lead);
  if (bytes == 1) return {lead, 1, true};
  if (bytes == 0 || offset + bytes > utf8.size()) return outside;
  char32_t code = lead & (0xFFU >> (bytes + 1));
  for (std::size_t i = 1; i < bytes; ++i) {
    const unsigned next = byteAt(utf8, offset + i);
    if ((next & 0xC0U) != 0x80U) return outside;
    code = (code << 6U) | (next & 0x3FU);
  }
  return isSoundCode(code, bytes) ? Character{code, bytes, true} : outside;
}

// How many bytes the character has that starts there; most have one.
std::size_t bytesAt(std::string_view utf8, std::size_t offset) {
  return byteAt(utf8, offset) < 0x80 ? 1 : characterAt(utf8, offset).bytes;
}

// Has each character one byte? Most texts are so, and then nothing has to be counted.
bool plain(std::string_view utf8) {
  unsigned bytes = 0;
  for (const char byte : utf8) bytes |= static_cast<unsigned char>(byte);
  return bytes < 0x80;
}

// Byte offset after `count` characters from an offset, at most the text's size.
std::size_t skip(std::string_view utf8, std::size_t offset, std::size_t count) {
  if (offset >= utf8.size()) return utf8.size();
  const std::string_view first = utf8.substr(offset, count);
  if (plain(first)) return offset + first.size();
  for (; count > 0 && offset < utf8.size(); --count) offset += bytesAt(utf8, offset);
  return offset;
}

void append(std::string& out, char32_t code) {
  const auto put = [&out](char32_t byte) { out += static_cast<char>(byte); };
  const auto follow = [&put](char32_t bits) { put(0x80U | (bits & 0x3FU)); };
  if (code > 0x10FFFF || isSurrogate(code)) code = kReplacement;
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0U | (code >> 6U));
    follow(code);
  } else if (code < 0x10000) {
    put(0xE0U | (code >> 12U));
    follow(code >> 6U);
    follow(code);
  } else {
    put(0xF0U | (code >> 18U));
    follow(code >> 12U);
    follow(code >> 6U);
    follow(code);
  }
}

}  // namespace

std::size_t length(std::string_view utf8) {
  if (plain(utf8)) return utf8.size();
  std::size_t count = 0;
  for (std::size_t offset = 0; offset < utf8.size(); ++count) {
    offset += bytesAt(utf8, offset);
  }
  return count;
}

char32_t at(std::string_view utf8, std::size_t position) {
  if (position == 0) return 0;
  const std::size_t offset = skip(utf8, 0, position - 1);
  return offset < utf8.size() ? characterAt(utf8, offset).code : 0;
}

std::string left(std::string_view utf8, std::size_t count) {
  return std::string(utf8.substr(0, skip(utf8, 0, count)));
}

std::string mid(std::string_view utf8, std::size_t position, std::size_t count) {
  const std::size_t begin = skip(utf8, 0, position == 0 ? 0 : position - 1);
  const std::size_t end = count == std::string_view::npos ? utf8.size() : skip(utf8, begin, count);
  return std::string(utf8.substr(begin, end - begin));
}

std::string fit(std::string_view utf8, std::size_t count) {
  std::string out;
  addFit(out, utf8, count);
  return out;
}

void addFit(std::string& out, std::string_view utf8, std::size_t count) {
  std::size_t offset = 0;
  for (; count > 0 && offset < utf8.size(); --count) offset += bytesAt(utf8, offset);
  out.append(utf8, 0, offset).append(count, ' ');
}

char32_t upper(char32_t character) {
  if (character >= U'a' && character <= U'z') return character - 0x20;
  if (character >= U'\u00E0' && character <= U'\u00FC' && character != U'\u00F7') {
    return character - 0x20;
  }
  if (character == U'\u0153') return U'\u0152';
  if (character == U'\u00FF') return U'\u0178';
  return character;
}

std::string upper(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  for (std::size_t offset = 0; offset < utf8.size();) {
    const Character character = characterAt(utf8, offset);
    if (character.valid) {
      append(out, upper(character.code));
    } else {
      out += utf8[offset];
    }
    offset += character.bytes;
  }
  return out;
}

std::string encode(char32_t character) {
  std::string out;
  append(out, character);
  return out;
}

std::vector<char32_t> decode(std::string_view utf8) {
  std::vector<char32_t> out;
  out.reserve(utf8.size());
  for (std::size_t offset = 0; offset < utf8.size();) {
    const Character character = characterAt(utf8, offset);
    out.push_back(character.code);
    offset += character.bytes;
  }
  return out;
}

std::u16string toUtf16(std::string_view utf8) {
  std::u16string out;
  out.reserve(utf8.size());
  for (std::size_t offset = 0; offset < utf8.size();) {
    const Character character = characterAt(utf8, offset);
    offset += character.bytes;
    if (character.code < 0x10000) {
      out += static_cast<char16_t>(character.code);
    } else {
      const char32_t above = character.code - 0x10000;
      out += static_cast<char16_t>(0xD800U + (above >> 10U));
      out += static_cast<char16_t>(0xDC00U + (above & 0x3FFU));
    }
  }
  return out;
}

std::string fromUtf16(std::u16string_view utf16) {
  const auto isLow = [&utf16](std::size_t i) {
    return i < utf16.size() && utf16[i] >= 0xDC00 && utf16[i] <= 0xDFFF;
  };
  std::string out;
  out.reserve(utf16.size());
  for (std::size_t i = 0; i < utf16.size(); ++i) {
    char32_t code = utf16[i];
    if (code >= 0xD800 && code <= 0xDBFF && isLow(i + 1)) {
      code = 0x10000U + ((code - 0xD800U) << 10U) + (utf16[++i] - 0xDC00U);
    }
    append(out, code);
  }
  return out;
}

std::string_view trim(std::string_view utf8) {
  const std::size_t begin = std::min(utf8.find_first_not_of(' '), utf8.size());
  const std::size_t end = utf8.find_last_not_of(' ');
  return end == std::string_view::npos ? std::string_view() : utf8.substr(begin, end + 1 - begin);
}

}  // namespace text
