#include "toolkit/Trace.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string>

#include "text/Discreet.h"

namespace toolkit {

namespace {

bool textsWanted() {
  const char* wanted = std::getenv("TESSALINE_TRACE_TEXTS");
  return wanted && std::string_view(wanted) == "1";
}

}  // namespace

void trace(std::string_view procedure, std::string_view message) noexcept {
  const char* path = std::getenv("TESSALINE_TRACE");
  if (!path || !*path) return;
  try {
    std::string line = std::string(procedure) + ": " + std::string(message);
    for (char& c : line) {
      if (c == '\n' || c == '\r') c = ' ';
    }
    line += '\n';
    const auto close = [](std::FILE* file) { std::fclose(file); };
    const std::unique_ptr<std::FILE, decltype(close)> file(std::fopen(path, "ab"), close);
    if (file) std::fwrite(line.data(), 1, line.size(), file.get());
  } catch (const std::exception&) {
    return;  // a trace that cannot be written is no reason to fail
  }
}

void trace(std::string_view procedure, const std::exception& error) noexcept {
  const auto* discreet = dynamic_cast<const text::Discreet*>(&error);
  try {
    if (discreet && !textsWanted()) return trace(procedure, discreet->withoutText());
  } catch (const std::exception&) {
    return;  // as above
  }
  trace(procedure, error.what());
}

}  // namespace toolkit
