// What the fuzzers share: a fuzzer is a program with one check() of its own, called with input
// after input; what is broken ends it, and libFuzzer keeps the input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fuzz {

// Holds for every input, or does not return.
void check(std::string_view input);

// Ends the program, telling the rule and what was seen.
[[noreturn]] void broken(const std::string& rule, const std::string& seen = {});

inline void expect(bool holds, const char* rule, const std::string& seen = {}) {
  if (!holds) broken(rule, seen);
}
void expectSame(const char* rule, std::string_view actual, std::string_view expected);

// Between quotes; bytes other than plain characters as \xHH.
std::string readable(std::string_view bytes);

// An input taken byte by byte from its front; past its end there are zeros.
class Bytes {
 public:
  explicit Bytes(std::string_view bytes) : rest_(bytes) {}

  bool empty() const { return rest_.empty(); }
  std::uint8_t next() {
    if (rest_.empty()) return 0;
    const auto byte = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return byte;
  }
  // Below the count, which is above zero.
  std::size_t below(std::size_t count) { return next() % count; }
  // Up to that many bytes.
  std::string text(std::size_t most) {
    const std::string_view taken = rest_.substr(0, most);
    rest_.remove_prefix(taken.size());
    return std::string(taken);
  }

 private:
  std::string_view rest_;
};

// The part of a text before the first mark; the text goes on behind it.
inline std::string_view upTo(char mark, std::string_view& text) {
  const std::string_view part = text.substr(0, text.find(mark));
  text.remove_prefix(part.size() == text.size() ? part.size() : part.size() + 1);
  return part;
}

}  // namespace fuzz
