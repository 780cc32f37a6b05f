// A flag that is set for the length of a scope.
#pragma once

#include <utility>

namespace toolkit::win32 {

class Scoped {
 public:
  explicit Scoped(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
  Scoped(const Scoped&) = delete;
  Scoped& operator=(const Scoped&) = delete;
  ~Scoped() { flag_ = before_; }

 private:
  bool& flag_;
  bool before_;
};

}  // namespace toolkit::win32
