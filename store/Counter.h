#pragma once

#include <string>

#include "store/Database.h"

namespace store {

inline constexpr const char* kCounterRecord = "999";

// The counter gives no code, though every call on the store has succeeded.
class NoCode : public StoreError {
 public:
  enum class Why { AllGivenOut, NoNumber };
  explicit NoCode(Why why);
  Why why() const { return why_; }

 private:
  Why why_;
};

// The next funding-body code: reads the counter record again, adds one to attribute 10, value 1
// (blanks around it do not count, empty counts as "000"), pads it to three characters, writes the
// record and gives the code back. Where the store tells (kChanged) that somebody else has taken a
// code in between, it begins again; where it does not know whether it has written
// (kOutcomeUnknown), three times at most: the code may be another's. Throws NoCode when the counter
// holds no number, or past "999": a code of four characters could never be looked up.
std::string nextCode(File& counters);

}  // namespace store
