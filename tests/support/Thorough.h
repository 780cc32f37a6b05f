// What takes long for what it may find is done in part, and whole by ./test --thorough.
#pragma once

#include <cstdlib>

namespace testing_support {

inline bool thorough() { return std::getenv("TESSALINE_THOROUGH") != nullptr; }

}  // namespace testing_support
