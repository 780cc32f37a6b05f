#include "toolkit/Trace.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string>

namespace toolkit {

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

}  // namespace toolkit
