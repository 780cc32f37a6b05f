#pragma once

#include <string>

namespace text {

// An error whose text may hold a person's data: it comes from somebody else's program.
class Discreet {
 public:
  virtual ~Discreet() = default;
  // What can be written down of it.
  virtual std::string withoutText() const = 0;
};

}  // namespace text
