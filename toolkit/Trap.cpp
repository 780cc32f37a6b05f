#include "toolkit/Trap.h"

#include <exception>

#include "toolkit/Trace.h"

namespace toolkit {

bool resumeNext(std::string_view procedure, std::initializer_list<std::function<void()>> steps) {
  bool all = true;
  for (const std::function<void()>& step : steps) all = quietly(procedure, step) && all;
  return all;
}

bool quietly(std::string_view procedure, const std::function<void()>& handler) {
  try {
    handler();
    return true;
  } catch (const std::exception& error) {
    trace(procedure, error);
    return false;
  }
}

void tracing(std::string_view procedure, const std::function<void()>& handler) {
  try {
    handler();
  } catch (const std::exception& error) {
    trace(procedure, error);
    throw;
  }
}

}  // namespace toolkit
