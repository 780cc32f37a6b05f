#pragma once

#include <exception>
#include <string_view>

namespace toolkit {

// Appends one line "procedure: message" to the file that the environment variable TESSALINE_TRACE
// names; does nothing without it. Never give it the contents of a record.
void trace(std::string_view procedure, std::string_view message) noexcept;

// The same for an error: its text, but only what a text::Discreet one tells of itself unless
// TESSALINE_TRACE_TEXTS is "1".
void trace(std::string_view procedure, const std::exception& error) noexcept;

}  // namespace toolkit
