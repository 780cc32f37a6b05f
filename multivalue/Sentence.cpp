#include "multivalue/Sentence.h"

#include <array>
#include <utility>

#include "store/StoreError.h"
#include "text/Utf8.h"

namespace multivalue {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

// Blanks, operators and the double quote end a word.
constexpr auto kEndsWord = [] {
  std::array<bool, 256> ends{};
  for (const char c : std::string_view(" \t=#<>\"")) ends[static_cast<unsigned char>(c)] = true;
  return ends;
}();
bool endsWord(char c) { return kEndsWord[static_cast<unsigned char>(c)]; }

bool equalsKeyword(std::string_view word, std::string_view keyword) {
  if (word.size() != keyword.size()) return false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    const char c = word[i];
    const char upper = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    if (upper != keyword[i]) return false;
  }
  return true;
}

bool isKeyword(std::string_view word) {
  return equalsKeyword(word, "AVEC") || equalsKeyword(word, "AND") || equalsKeyword(word, "PAR");
}

class Parser {
 public:
  explicit Parser(std::string_view sentence) : sentence_(sentence) {}

  Sentence parse() {
    Sentence parsed;
    if (!takeKeyword("SSELECT") && !takeKeyword("SELECT")) {
      refuse(at_, "SSELECT or SELECT is expected");
    }
    parsed.file = name("a file is expected");
    if (takeKeyword("AVEC")) {
      parsed.conditions.push_back(condition());
      while (takeKeyword("AND")) {
        if (!takeKeyword("AVEC")) refuse(at_, "AVEC is expected after AND");
        parsed.conditions.push_back(condition());
      }
    }
    while (takeKeyword("PAR")) {
      do {
        parsed.order.push_back(name("a field is expected after PAR"));
      } while (!atEnd() && !isKeyword(peek()));
    }
    if (!atEnd()) refuse(at_, expectation(parsed));
    return parsed;
  }

 private:
  static std::string expectation(const Sentence& parsed) {
    if (!parsed.order.empty()) return "a field, PAR or the end is expected";
    if (!parsed.conditions.empty()) return "AND AVEC, PAR or the end is expected";
    return "AVEC, PAR or the end is expected";
  }

  [[noreturn]] void refuse(std::size_t offset, const std::string& reason) const {
    refuseSentence(sentence_, offset, reason);
  }

  void skipBlanks() {
    while (at_ < sentence_.size() && isBlank(sentence_[at_])) ++at_;
  }

  bool atEnd() {
    skipBlanks();
    return at_ == sentence_.size();
  }

  std::string_view peek() {
    skipBlanks();
    if (at_ == peekedAt_) return peeked_;
    std::size_t end = at_;
    while (end < sentence_.size() && !endsWord(sentence_[end])) ++end;
    peekedAt_ = at_;
    peeked_ = sentence_.substr(at_, end - at_);
    return peeked_;
  }

  bool takeKeyword(std::string_view keyword) {
    const std::string_view word = peek();
    if (!equalsKeyword(word, keyword)) return false;
    at_ += word.size();
    return true;
  }

  Word name(const char* reason) {
    const std::string_view word = peek();
    if (word.empty() || isKeyword(word)) refuse(at_, reason);
    Word taken{std::string(word), at_};
    at_ += word.size();
    return taken;
  }

  Condition condition() {
    Condition taken;
    taken.field = name("a field is expected after AVEC");
    taken.comparison = comparison();
    taken.value = value();
    return taken;
  }

  Operator comparison() {
    skipBlanks();
    const std::string_view rest = sentence_.substr(at_);
    static constexpr std::pair<std::string_view, Operator> kOperators[] = {
        {"<=", Operator::AtMost},   {">=", Operator::AtLeast}, {"=", Operator::Equal},
        {"#", Operator::Different}, {"<", Operator::Less},     {">", Operator::Greater}};
    for (const auto& [sign, meaning] : kOperators) {
      if (!rest.starts_with(sign)) continue;
      at_ += sign.size();
      return meaning;
    }
    refuse(at_, "an operator is expected: = # < <= > >=");
  }

  std::string value() {
    if (atEnd()) refuse(at_, "a value is expected");
    if (sentence_[at_] == '"') return quotedValue();
    const std::string_view word = peek();
    if (word.empty() || isKeyword(word)) refuse(at_, "a value is expected");
    at_ += word.size();
    return std::string(word);
  }

  std::string quotedValue() {
    const std::size_t start = at_ + 1;
    // Where no quote ends the value as it should, what stands behind the first word is refused.
    std::size_t close = std::string_view::npos;
    for (std::size_t end = start; end < sentence_.size(); ++end) {
      if (sentence_[end] != '"') continue;
      if (goesOnAt(end + 1)) {
        close = end;
        break;
      }
      if (close == std::string_view::npos && isBlank(sentence_[end + 1])) close = end;
    }
    if (close == std::string_view::npos) {
      refuse(at_, "the value's closing double quote is missing");
    }
    at_ = close + 1;
    return std::string(sentence_.substr(start, close - start));
  }

  // Does there stand what may follow a condition?
  bool goesOnAt(std::size_t place) const {
    if (place < sentence_.size() && !isBlank(sentence_[place])) return false;
    Parser rest(sentence_);
    rest.at_ = place;
    if (rest.atEnd() || rest.takeKeyword("PAR")) return true;
    return rest.takeKeyword("AND") && rest.takeKeyword("AVEC");
  }

  std::string_view sentence_;
  std::size_t at_ = 0;
  std::string_view peeked_;  // the word there
  std::size_t peekedAt_ = std::string_view::npos;
};

}  // namespace

bool isSelection(std::string_view sentence) {
  std::size_t start = 0;
  while (start < sentence.size() && isBlank(sentence[start])) ++start;
  std::size_t end = start;
  while (end < sentence.size() && !isBlank(sentence[end])) ++end;
  const std::string_view word = sentence.substr(start, end - start);
  return equalsKeyword(word, "SSELECT") || equalsKeyword(word, "SELECT");
}

Sentence parseSentence(std::string_view sentence) { return Parser(sentence).parse(); }

void refuseSentence(std::string_view sentence, std::size_t offset, const std::string& reason) {
  const std::size_t place = text::length(sentence.substr(0, offset)) + 1;
  throw store::StoreError(store::kBadSentence,
                          "character " + std::to_string(place) + ": " + reason);
}

}  // namespace multivalue
