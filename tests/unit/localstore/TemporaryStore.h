// A folder of its own for a test, gone with it, and a store inside.
#pragma once

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "localstore/LocalDatabase.h"
#include "store/Request.h"

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

// A record's text from attributes in which ";" stands between values.
inline std::string recordText(std::initializer_list<std::string> attributes) {
  std::string text;
  bool first = true;
  for (std::string attribute : attributes) {
    for (char& c : attribute) {
      if (c == ';') c = store::kValueMark;
    }
    if (!first) text += store::kAttributeMark;
    text += attribute;
    first = false;
  }
  return text;
}

class TemporaryStore {
 public:
  explicit TemporaryStore(const localstore::Options& options = {})
      : database_(localstore::createLocalDatabase(path(), options)) {}

  std::string path() const { return folder_ / "test.store"; }
  localstore::LocalDatabase& operator*() const { return *database_; }
  localstore::LocalDatabase* operator->() const { return database_.get(); }

  void put(std::string_view file, std::string_view id,
           std::initializer_list<std::string> attributes) const {
    database_->createFile(file);
    database_->write(file, id, recordText(attributes));
  }

  // The answer with "|" between records and "," between columns.
  std::string select(std::string_view sentence, std::string_view columns = "0") const {
    std::string text = database_->ExecuteSentence(store::request(sentence, "", columns)).text();
    for (char& c : text) {
      if (c == store::kAttributeMark) c = '|';
      if (c == store::kValueMark) c = ',';
    }
    return text;
  }

 private:
  TemporaryFolder folder_;
  std::shared_ptr<localstore::LocalDatabase> database_;
};

// Code of the StoreError that an action throws, 0 when it throws none.
template <typename Action>
unsigned errorOf(const Action& action) {
  try {
    action();
  } catch (const store::StoreError& error) {
    return error.code();
  }
  return 0;
}

template <typename Action>
std::string messageOf(const Action& action) {
  try {
    action();
  } catch (const store::StoreError& error) {
    return error.what();
  }
  return "no error";
}
