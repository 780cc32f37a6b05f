#include <cstdio>
#include <cstdlib>

#include "tests/fuzz/Fuzz.h"

namespace fuzz {

void broken(const std::string& rule, const std::string& seen) {
  std::fprintf(stderr, "BROKEN: %s\n%s\n", rule.c_str(), seen.c_str());
  std::abort();
}

void expectSame(const char* rule, std::string_view actual, std::string_view expected) {
  if (actual != expected) broken(rule, readable(actual) + "\n  instead of " + readable(expected));
}

std::string readable(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string out = "\"";
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte < 0x7F && c != '\\') {
      out += c;
    } else {
      out += "\\x";
      out += kDigits[byte / 16];
      out += kDigits[byte % 16];
    }
  }
  return out + '"';
}

}  // namespace fuzz

// The name that libFuzzer calls.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::check({reinterpret_cast<const char*>(data), size});
  return 0;
}
