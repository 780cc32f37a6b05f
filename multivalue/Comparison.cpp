#include "multivalue/Comparison.h"

#include <array>
#include <cstddef>
#include <optional>

#include "store/DynamicArray.h"

namespace multivalue {

namespace {

// Digits without leading zeros before the point and without trailing zeros after it; zero is
// neither negative nor written.
struct Decimal {
  bool negative = false;
  std::string_view whole;
  std::string_view fraction;
};

std::size_t digitsAt(std::string_view text, std::size_t start) {
  std::size_t end = start;
  while (end < text.size() && text[end] >= '0' && text[end] <= '9') ++end;
  return end - start;
}

std::optional<Decimal> decimal(std::string_view text) {
  Decimal number;
  std::size_t at = 0;
  if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
    number.negative = text[0] == '-';
    at = 1;
  }
  const std::size_t whole = digitsAt(text, at);
  if (whole == 0) return std::nullopt;
  number.whole = text.substr(at, whole);
  at += whole;
  if (at < text.size() && (text[at] == '.' || text[at] == ',')) {
    const std::size_t fraction = digitsAt(text, at + 1);
    if (fraction == 0) return std::nullopt;
    number.fraction = text.substr(at + 1, fraction);
    at += 1 + fraction;
  }
  if (at != text.size()) return std::nullopt;
  while (number.whole.starts_with('0')) number.whole.remove_prefix(1);
  while (number.fraction.ends_with('0')) number.fraction.remove_suffix(1);
  if (number.whole.empty() && number.fraction.empty()) number.negative = false;
  return number;
}

// Digits that need no further look: no sign, no leading zero, no fraction.
bool isPlain(std::string_view text) {
  return !text.empty() && text[0] != '0' && digitsAt(text, 0) == text.size();
}

struct Letter {
  std::string_view accented;
  std::string_view base;
};

// The accented letters of U+00C0 to U+017F that French and its neighbours write.
constexpr Letter kLetters[] = {
    {"À", "A"}, {"Á", "A"},  {"Â", "A"},  {"Ã", "A"}, {"Ä", "A"}, {"Å", "A"}, {"Æ", "AE"},
    {"Ç", "C"}, {"È", "E"},  {"É", "E"},  {"Ê", "E"}, {"Ë", "E"}, {"Ì", "I"}, {"Í", "I"},
    {"Î", "I"}, {"Ï", "I"},  {"Ñ", "N"},  {"Ò", "O"}, {"Ó", "O"}, {"Ô", "O"}, {"Õ", "O"},
    {"Ö", "O"}, {"Ø", "O"},  {"Ù", "U"},  {"Ú", "U"}, {"Û", "U"}, {"Ü", "U"}, {"Ý", "Y"},
    {"à", "a"}, {"á", "a"},  {"â", "a"},  {"ã", "a"}, {"ä", "a"}, {"å", "a"}, {"æ", "ae"},
    {"ç", "c"}, {"è", "e"},  {"é", "e"},  {"ê", "e"}, {"ë", "e"}, {"ì", "i"}, {"í", "i"},
    {"î", "i"}, {"ï", "i"},  {"ñ", "n"},  {"ò", "o"}, {"ó", "o"}, {"ô", "o"}, {"õ", "o"},
    {"ö", "o"}, {"ø", "o"},  {"ù", "u"},  {"ú", "u"}, {"û", "u"}, {"ü", "u"}, {"ÿ", "y"},
    {"Ÿ", "Y"}, {"Œ", "OE"}, {"œ", "oe"}, {"Š", "S"}, {"š", "s"}, {"Ž", "Z"}, {"ž", "z"}};

constexpr std::size_t kFirstLetter = 0xC0;
constexpr std::size_t kPastLetters = 0x180;

// A letter of two bytes, from 0; past all of them for anything else.
constexpr std::size_t placeOf(std::string_view letter) {
  constexpr std::size_t kNone = kPastLetters - kFirstLetter;
  if (letter.size() != 2) return kNone;
  const auto lead = static_cast<unsigned char>(letter[0]);
  const auto next = static_cast<unsigned char>(letter[1]);
  if (lead < 0xC3 || lead > 0xC5 || (next & 0xC0) != 0x80) return kNone;
  return ((lead & 0x1FU) << 6 | (next & 0x3FU)) - kFirstLetter;
}

constexpr auto kBases = [] {
  std::array<std::string_view, kPastLetters - kFirstLetter + 1> bases;
  for (const Letter& letter : kLetters) bases[placeOf(letter.accented)] = letter.base;
  return bases;
}();

// The base letters of an accented one; "" of anything else.
std::string_view baseOf(std::string_view letter) { return kBases[placeOf(letter)]; }

// A text byte after byte, each accented letter as its base letters.
class BaseLetters {
 public:
  explicit BaseLetters(std::string_view text) : rest_(text) {}

  // -1 at the end.
  int next() {
    if (base_.empty()) {
      if (rest_.empty()) return -1;
      std::size_t size = 1;
      base_ = rest_.substr(0, size);
      const std::string_view base = baseOf(rest_.substr(0, 2));
      if (!base.empty()) {
        base_ = base;
        size = 2;
      }
      rest_.remove_prefix(size);
    }
    const int byte = static_cast<unsigned char>(base_.front());
    base_.remove_prefix(1);
    return byte;
  }

 private:
  std::string_view rest_;
  std::string_view base_;  // of the letter being given
};

int sign(int comparison) { return (comparison > 0) - (comparison < 0); }

int compareDecimals(const Decimal& a, const Decimal& b) {
  if (a.negative != b.negative) return a.negative ? -1 : 1;
  int magnitude = 0;
  if (a.whole.size() != b.whole.size()) {
    magnitude = a.whole.size() < b.whole.size() ? -1 : 1;
  } else {
    magnitude = sign(a.whole.compare(b.whole));
    if (magnitude == 0) magnitude = sign(a.fraction.compare(b.fraction));
  }
  return a.negative ? -magnitude : magnitude;
}

// Without any byte that is part of a letter of more, and without zeros.
bool isPlainText(std::string_view text) {
  bool other = false;
  for (const char c : text) other |= static_cast<unsigned char>(c - 1) >= 0x7F;
  return !other;
}

// What keys of the order begin with, so that kinds of text stand apart. A text that begins with a
// greater byte needs none.
constexpr unsigned char kNegative = 1;
constexpr unsigned char kPositive = 2;
constexpr unsigned char kText = 3;

// How many digits stand before the point, then all digits. Of two negative numbers the greater
// magnitude comes first: every byte is turned over, with one behind that no digit turns into.
std::string keyOf(const Decimal& number) {
  std::string key(1, static_cast<char>(number.negative ? kNegative : kPositive));
  std::size_t digits = number.whole.size();
  for (; digits >= 0xFF; digits -= 0xFF) key += static_cast<char>(0xFF);
  key += static_cast<char>(digits);
  key += number.whole;
  key += number.fraction;
  if (!number.negative) return key;
  for (std::size_t i = 1; i < key.size(); ++i) {
    key[i] = static_cast<char>(~static_cast<unsigned char>(key[i]));
  }
  key += static_cast<char>(0xFF);
  return key;
}

// The base letters, with an end that comes before all that goes on, then the text itself.
void addKeyOfLetters(std::string& key, std::string_view text) {
  BaseLetters letters(text);
  for (int byte = letters.next(); byte >= 0; byte = letters.next()) {
    key += static_cast<char>(byte);
    if (byte == 0) key += static_cast<char>(0xFF);
  }
  (key += '\0') += '\0';
  key += text;
}

}  // namespace

int compareSizes(std::string_view a, std::string_view b) {
  if (isPlain(a) && isPlain(b)) {
    return a.size() == b.size() ? sign(a.compare(b)) : a.size() < b.size() ? -1 : 1;
  }
  const std::optional<Decimal> left = decimal(a);
  if (left) {
    const std::optional<Decimal> right = decimal(b);
    if (right) return compareDecimals(*left, *right);
  }
  return sign(a.compare(b));
}

int compareForOrder(std::string_view a, std::string_view b) {
  std::string roomOfA;
  std::string roomOfB;
  return sign(orderKey(a, roomOfA).compare(orderKey(b, roomOfB)));
}

std::string_view orderKey(std::string_view text, std::string& room) {
  if (text.empty()) return text;
  if (const std::optional<Decimal> number = decimal(text)) {
    room = keyOf(*number);
    return room;
  }
  const bool plain = isPlainText(text);
  const bool apart = static_cast<unsigned char>(text.front()) > kText;
  if (plain && apart) return text;
  room.clear();
  if (!apart) room += static_cast<char>(kText);
  if (plain) {
    room += text;
  } else {
    addKeyOfLetters(room, text);
  }
  return room;
}

Criterion::Criterion(Operator comparison, std::string_view value) : comparison_(comparison) {
  if (comparison == Operator::Equal || comparison == Operator::Different) {
    const bool begins = value.ends_with(']');
    if (begins) value.remove_suffix(1);
    const bool ends = value.starts_with('[');
    if (ends) value.remove_prefix(1);
    if (begins) match_ = ends ? Match::Contains : Match::Begins;
    if (ends && !begins) match_ = Match::Ends;
  }
  text_ = value;
}

bool Criterion::holdsForValue(std::string_view value) const {
  const auto matches = [&] {
    switch (match_) {
      case Match::Begins:
        return value.starts_with(text_);
      case Match::Ends:
        return value.ends_with(text_);
      case Match::Contains:
        return value.find(text_) != std::string_view::npos;
      case Match::Whole:
        break;
    }
    return value == text_;
  };
  switch (comparison_) {
    case Operator::Equal:
      return matches();
    case Operator::Different:
      return !matches();
    case Operator::Less:
      return compareSizes(value, text_) < 0;
    case Operator::AtMost:
      return compareSizes(value, text_) <= 0;
    case Operator::Greater:
      return compareSizes(value, text_) > 0;
    case Operator::AtLeast:
      return compareSizes(value, text_) >= 0;
  }
  return false;
}

bool Criterion::holdsForAttribute(std::string_view attribute) const {
  if (text_.empty() && match_ == Match::Whole) {
    if (comparison_ == Operator::Equal) return attribute.empty();
    if (comparison_ == Operator::Different) return !attribute.empty();
  }
  for (;;) {
    const std::size_t mark = attribute.find(store::kValueMark);
    if (holdsForValue(attribute.substr(0, mark))) return true;
    if (mark == std::string_view::npos) return false;
    attribute.remove_prefix(mark + 1);
  }
}

}  // namespace multivalue
