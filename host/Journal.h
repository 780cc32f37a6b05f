// What the host has done and heard, a line an event, for whoever watches it from outside.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace host {

class Journal {
 public:
  // UTF-8 path; "" keeps no journal. std::runtime_error when the file cannot be written.
  explicit Journal(const std::string& path);
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;
  ~Journal();

  // Written through at once.
  void write(std::string_view line);

 private:
  std::FILE* file_ = nullptr;
};

}  // namespace host
