#pragma once

namespace toolkit::headless {

// A line of a test: as the default of a last parameter, the line that calls.
struct Caller {
  const char* file = "";
  int line = 0;

  static constexpr Caller here(const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    return {file, line};
  }
};

}  // namespace toolkit::headless
