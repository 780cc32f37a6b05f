// What a benchmark allocates by new, for Google Benchmark's report of its memory.
#pragma once

#include <benchmark/benchmark.h>

namespace bench {

// Linking it replaces the program's operator new and delete. Bytes are those that the C library
// set aside; what a C library such as SQLite takes from it is not among them.
class HeapManager : public benchmark::MemoryManager {
 public:
  void Start() override;
  void Stop(Result* result) override;
  // Counting started anew, outside the library's own runs, and the bytes in use since then.
  static void count();
  static long long inUse();
};

}  // namespace bench
