// The two ways in which a procedure traps errors. What is trapped goes to the trace with the
// procedure's name; ControlClosed passes through both.
#pragma once

#include <functional>
#include <initializer_list>
#include <string_view>

namespace toolkit {

// Runs the steps in order; a step that throws does not stop the next ("resume next").
// Returns true when every step succeeded.
bool resumeNext(std::string_view procedure, std::initializer_list<std::function<void()>> steps);

// Runs the handler; it ends quietly at the first error. Returns true when it succeeded.
bool quietly(std::string_view procedure, const std::function<void()>& handler);

// No trap: runs the handler, and traces an error under the procedure's name on its way out.
void tracing(std::string_view procedure, const std::function<void()>& handler);

}  // namespace toolkit
