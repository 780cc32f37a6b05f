#include "store/Counter.h"

#include <charconv>

#include "store/Layouts.h"
#include "text/Utf8.h"

namespace store {
namespace {

constexpr int kLargest = 999;

int lastNumber(std::string_view held) {
  const std::string_view digits = text::trim(held);
  if (digits.empty()) return 0;
  if (digits.find_first_not_of("0123456789") != std::string_view::npos) {
    throw NoCode(NoCode::Why::NoNumber);
  }
  int number = kLargest;  // kept by a number that is too long to be read
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

std::string padded(int number) {
  const std::string digits = std::to_string(number);
  return std::string(3 - digits.size(), '0') + digits;
}

}  // namespace

NoCode::NoCode(Why why)
    : StoreError(kBadValue, why == Why::AllGivenOut
                                ? "All funding-body codes of three characters have been given out."
                                : "The counter of funding-body codes holds no usable number."),
      why_(why) {}

std::string nextCode(File& counters) {
  constexpr int kUnknownAtMost = 3;
  for (int unknown = 0;;) {
    const std::unique_ptr<Record> counter = counters.ReadRecord(kCounterRecord);
    const int last = lastNumber(counter->fields().get(compteur::DernierOrgChg, 1));
    if (last >= kLargest) throw NoCode(NoCode::Why::AllGivenOut);
    std::string code = padded(last + 1);
    counter->fields().set(compteur::DernierOrgChg, 1, code);
    try {
      counter->DBWrite();
      return code;
    } catch (const StoreError& failure) {
      // Somebody else has taken this code, or may have: the next one is free.
      const bool mayBeTaken = failure.code() == kOutcomeUnknown && ++unknown <= kUnknownAtMost;
      if (failure.code() != kChanged && !mayBeTaken) throw;
    }
  }
}

}  // namespace store
