// While one lives, the trace goes to a file of its own.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace testing_support {

inline void setEnvironment(const char* name, const char* value) {
#ifdef _WIN32
  _putenv_s(name, value);
#else
  setenv(name, value, 1);
#endif
}

class TraceFile {
 public:
  TraceFile() {
    std::remove(path_.c_str());
    setEnvironment("TESSALINE_TRACE", path_.c_str());
  }
  ~TraceFile() {
    setEnvironment("TESSALINE_TRACE", "");
    std::remove(path_.c_str());
  }
  TraceFile(const TraceFile&) = delete;
  TraceFile& operator=(const TraceFile&) = delete;

  const std::string& path() const { return path_; }
  std::string read() const {
    std::ifstream file(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::string path_ = testing::TempDir() + "tessaline_trace_" +
                      testing::UnitTest::GetInstance()->current_test_info()->name() + ".log";
};

}  // namespace testing_support
