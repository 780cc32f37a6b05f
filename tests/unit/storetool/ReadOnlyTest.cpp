// Stores and folders that may only be read.
#include <gtest/gtest.h>
#include <unistd.h>

#include <sstream>

#include "storetool/CommandLine.h"
#include "tests/support/ChildProcess.h"
#include "tests/unit/localstore/LocalStore.h"

namespace {

using localstore::openLocalDatabase;

TEST(ReadOnly, AStoreThatMayOnlyBeReadIsRefused) {
  LocalStore store;
  store->write("TABLES", "1", "x");
  TemporaryFolder folder;
  const std::string path = folder / "read-only.store";
  std::filesystem::copy_file(fromUtf8(store.path()), fromUtf8(path));
  std::filesystem::permissions(fromUtf8(path), std::filesystem::perms(0444));
  Child child([&](int pipe) {
    // Root may write whatever the permissions say.
    if (geteuid() == 0 && seteuid(65534) != 0) _exit(3);
    send(pipe, errorOf([&] { openLocalDatabase(path)->write("TABLES", "1", "y"); }));
    std::ostringstream out;
    std::ostringstream err;
    const std::vector<std::string> query = {"query", path, "SSELECT TABLES"};
    send(pipe, static_cast<unsigned>(storetool::runCommandLine(query, out, err, false)));
    const std::string told = "tessaline-store: " + path + ": the store is read-only\n";
    send(pipe, err.str() == told && out.str().empty() ? 1 : 0);
  });
  unsigned answer = 0;
  ASSERT_TRUE(child.receive(answer));
  EXPECT_EQ(answer, store::kIoFailure);
  ASSERT_TRUE(child.receive(answer));
  EXPECT_EQ(answer, 6U) << "exit code";
  ASSERT_TRUE(child.receive(answer));
  EXPECT_EQ(answer, 1U) << "other words";
}

}  // namespace
