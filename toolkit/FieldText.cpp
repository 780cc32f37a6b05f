#include "toolkit/FieldText.h"

#include <algorithm>

#include "text/Utf8.h"
#include "toolkit/Keys.h"

namespace toolkit {

namespace {

constexpr char32_t kDelete = 127;

bool isMarkByte(char c) { return c == '\xFE' || c == '\xFD'; }

}  // namespace

bool isMark(char32_t character) { return character == 0xFE || character == 0xFD; }

bool holdsMarkBytes(std::string_view text) {
  return std::any_of(text.begin(), text.end(), isMarkByte);
}

std::string withoutMarkBytes(std::string_view text) {
  std::string kept(text);
  std::erase_if(kept, isMarkByte);
  return kept;
}

std::string acceptedEdit(std::string_view edit, std::string_view before, int limit) {
  std::string kept;
  for (const char32_t character : text::decode(withoutMarkBytes(edit))) {
    if (!isMark(character)) kept += text::encode(character);
  }
  if (limit <= 0) return kept;
  return text::left(kept, std::max(static_cast<std::size_t>(limit), text::length(before)));
}

bool isKeyPress(char32_t key) {
  return key == kBackspace || key == kEnter || (key >= U' ' && key != kDelete);
}

}  // namespace toolkit
