// An import takes its text as it comes.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "storetool/JsonLines.h"
#include "storetool/Transfer.h"
#include "tests/unit/localstore/LocalStore.h"

namespace {

// Its end is not written before the beginning has become records.
TEST(ImportStream, IsNeverHeldAsAWhole) {
  const LocalStore store;
  const TemporaryFolder folder;
  const std::string path = folder / "TABLES.jsonl";
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  std::atomic<bool> told = false;
  bool before = false;
  std::thread writer([&] {
    std::ofstream out(path);
    const auto lines = [&](int from, int to) {
      for (int i = from; i < to; ++i) out << storetool::jsonLine(std::to_string(i), "text") << '\n';
      out.flush();
    };
    lines(0, 10000);
    for (int i = 0; i < 2000 && !told; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    before = told;
    lines(10000, 11000);
  });
  const auto imported = storetool::importFiles(*store, {path}, [&](double) { told = true; });
  writer.join();
  EXPECT_TRUE(before);
  EXPECT_EQ(imported.records, 11000);
}

}  // namespace
