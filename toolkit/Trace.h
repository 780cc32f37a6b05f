#pragma once

#include <string_view>

namespace toolkit {

// Appends one line "procedure: message" to the file that the environment variable TESSALINE_TRACE
// names; does nothing without it. Never give it the contents of a record.
void trace(std::string_view procedure, std::string_view message) noexcept;

}  // namespace toolkit
