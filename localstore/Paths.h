#pragma once

#include <filesystem>
#include <string>
#include <system_error>

namespace localstore {

// Of a path in UTF-8, on every system.
inline std::filesystem::path pathOf(const std::string& utf8) {
  return {std::u8string(utf8.begin(), utf8.end())};
}

// A store's file and what SQLite keeps beside it.
inline void removeStore(const std::string& path) {
  for (const char* const tail : {"", "-wal", "-shm", "-journal"}) {
    std::error_code ignored;
    std::filesystem::remove(pathOf(path + tail), ignored);
  }
}

}  // namespace localstore
