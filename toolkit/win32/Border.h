// The border between Windows and the code of this system: no exception passes it.
#pragma once

#include <exception>
#include <utility>

#include "toolkit/ControlClosed.h"
#include "toolkit/Trace.h"

namespace toolkit::win32 {

// Every window, subclass, dialog and enumeration procedure is one call of it. Runs `body` and gives
// its result; an error ends the handler it comes from, is traced, and `fallback` is given.
template <class Result, class Body>
Result windowBorder(const char* procedure, Result fallback, Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (const ControlClosed&) {
    trace(procedure, "the control was closed");
  } catch (const std::exception& error) {
    trace(procedure, error);
  } catch (...) {
    trace(procedure, "unknown error");
  }
  return fallback;
}

}  // namespace toolkit::win32
