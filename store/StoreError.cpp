#include "store/StoreError.h"

#include <cstddef>

namespace store {
namespace {

std::string hexadecimal(unsigned code) {
  std::string text = "0x00000000";
  for (std::size_t at = text.size() - 1; code != 0; --at, code /= 16) {
    text[at] = "0123456789ABCDEF"[code % 16];
  }
  return text;
}

}  // namespace

std::string StoreError::withoutText() const {
  return member_.empty() ? hexadecimal(code_) : member_ + " " + hexadecimal(code_);
}

}  // namespace store
