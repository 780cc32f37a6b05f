#pragma once

#include <filesystem>
#include <string>

namespace localstore {

// Of a path in UTF-8, on every system.
inline std::filesystem::path pathOf(const std::string& utf8) {
  return {std::u8string(utf8.begin(), utf8.end())};
}

}  // namespace localstore
