// A folder of its own for a test, gone with it.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::random_device random;
    path_ = std::filesystem::temp_directory_path() /
            ("tessaline-" + std::to_string(random()) + std::to_string(random()));
    std::filesystem::create_directories(path_);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  std::string operator/(const std::string& name) const {
    const std::u8string utf8 =
        (path_ / std::filesystem::path(std::u8string(name.begin(), name.end()))).u8string();
    return {utf8.begin(), utf8.end()};
  }

 private:
  std::filesystem::path path_;
};

inline std::filesystem::path fromUtf8(const std::string& path) {
  return {std::u8string(path.begin(), path.end())};
}

inline void writeText(const std::string& path, std::string_view text) {
  std::ofstream file(fromUtf8(path), std::ios::binary);
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
}

inline std::string readText(const std::string& path) {
  std::ifstream file(fromUtf8(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
