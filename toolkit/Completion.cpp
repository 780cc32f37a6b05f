#include "toolkit/Completion.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "text/Utf8.h"

namespace toolkit {

namespace {

// The French letters with accents, by the capital that they are read as.
char32_t plain(char32_t character) {
  static constexpr std::array<std::pair<std::u32string_view, char32_t>, 7> kAccents{
      {{U"ÀÂÄ", U'A'},
       {U"Ç", U'C'},
       {U"ÉÈÊË", U'E'},
       {U"ÎÏ", U'I'},
       {U"ÔÖ", U'O'},
       {U"ÙÛÜ", U'U'},
       {U"Ÿ", U'Y'}}};
  const char32_t capital = text::upper(character);
  for (const auto& [accented, letter] : kAccents) {
    if (accented.find(capital) != std::u32string_view::npos) return letter;
  }
  return capital;
}

std::vector<char32_t> plain(std::string_view utf8) {
  std::vector<char32_t> characters = text::decode(utf8);
  for (char32_t& character : characters) character = plain(character);
  return characters;
}

}  // namespace

int lineBegunBy(const ListItems& items, std::string_view text) {
  const std::vector<char32_t> begun = plain(text);
  if (begun.empty()) return -1;
  for (int line = 0; line < items.count(); ++line) {
    const std::vector<char32_t> whole = plain(items.text(line));
    const bool goesOn = whole.size() > begun.size();
    if (goesOn && std::equal(begun.begin(), begun.end(), whole.begin())) return line;
  }
  return -1;
}

}  // namespace toolkit
