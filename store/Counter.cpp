#include "store/Counter.h"

#include <charconv>

#include "store/Layouts.h"

namespace store {
namespace {

constexpr int kLargest = 999;

int lastNumber(std::string_view text) {
  if (text.empty()) return 0;
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool digitsOnly = text.find_first_not_of("0123456789") == std::string_view::npos;
  if (!digitsOnly || error != std::errc()) {
    throw StoreError(kBadValue, "The counter of funding-body codes holds no usable number.");
  }
  return number;
}

std::string padded(int number) {
  const std::string digits = std::to_string(number);
  return std::string(3 - digits.size(), '0') + digits;
}

}  // namespace

std::string nextCode(File& counters) {
  const std::unique_ptr<Record> counter = counters.ReadRecord(kCounterRecord);
  const int last = lastNumber(counter->fields().get(compteur::DernierOrgChg, 1));
  if (last >= kLargest) {
    throw StoreError(kBadValue, "All funding-body codes of three characters have been given out.");
  }
  std::string code = padded(last + 1);
  counter->fields().set(compteur::DernierOrgChg, 1, code);
  counter->DBWrite();
  return code;
}

}  // namespace store
