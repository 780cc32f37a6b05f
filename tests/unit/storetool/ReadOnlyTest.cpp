// Stores and folders that may only be read.
#include <gtest/gtest.h>
#include <unistd.h>

#include <sys/resource.h>

#include <sstream>

#include "localstore/Backup.h"
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

// A store that only one who may write nothing near it looks at.
class ReadOnlyPlace : public testing::Test {
 protected:
  ReadOnlyPlace() {
    const LocalStore store;
    store->write("TABLES", "1", "x");
    localstore::backUp(store.path(), path_);
  }

  // What a command writes out, by nobody.
  std::string told(const std::vector<std::string>& arguments) {
    const std::string result = result_ / "out.txt";
    std::filesystem::permissions(fromUtf8(result_ / "."), std::filesystem::perms(0777));
    std::filesystem::permissions(fromUtf8(path_), std::filesystem::perms(0444));
    std::filesystem::permissions(fromUtf8(folder_ / "."), std::filesystem::perms(0555));
    Child child([&](int) {
      if (geteuid() == 0 && seteuid(65534) != 0) _exit(99);
      std::ostringstream out;
      const int code = storetool::runCommandLine(arguments, out, out, false);
      writeText(result, std::to_string(code) + " " + out.str());
    });
    EXPECT_EQ(child.finish(), 0);
    std::filesystem::permissions(fromUtf8(folder_ / "."), std::filesystem::perms(0755));
    return readText(result);
  }

  TemporaryFolder folder_;
  TemporaryFolder result_;
  const std::string path_ = folder_ / "a b?é#.store";
};

TEST_F(ReadOnlyPlace, IsReadWhenItIsSaidSo) {
  EXPECT_EQ(told({"query", path_, "SSELECT TABLES", "--columns", "0 1", "--read-only"}),
            "0 1\tx\n");
  EXPECT_EQ(told({"show", path_, "TABLES", "1", "--read-only"}), "0 1 Intitule: x\n");
  EXPECT_EQ(told({"check", path_, "--read-only"}), "0 1 records, no fault\n");
  EXPECT_EQ(told({"export", path_, "TABLES", "-o", result_ / "TABLES.csv", "--read-only"}),
            "0 1 records exported\n");
  EXPECT_EQ(told({"backup", path_, result_ / "copy.store", "--read-only"}), "0 ");
  EXPECT_EQ(told({"query", path_, "SSELECT TABLES"}),
            "6 tessaline-store: " + path_ + ": the store is read-only\n");
}

// What stands in the log was confirmed: an answer without it would be an old one.
TEST_F(ReadOnlyPlace, WithALogThatCannotBeReadAnswersNothingOld) {
  const LocalStore store;
  store->write("TABLES", "1", "newer");
  for (const char* const tail : {"", "-wal"}) {
    std::filesystem::copy_file(fromUtf8(store.path() + tail), fromUtf8(path_ + tail),
                               std::filesystem::copy_options::overwrite_existing);
  }
  const std::string answer =
      told({"query", path_, "SSELECT TABLES", "--columns", "1", "--read-only"});
  EXPECT_TRUE(answer == "0 newer\n" || answer.starts_with("6 ")) << answer;
}

TEST(ReadOnly, WritesAreRefusedAndReadsGoOn) {
  const LocalStore store;
  store->write("TABLES", "1", "x");
  localstore::Options options;
  options.readOnly = true;
  const auto database = openLocalDatabase(store.path(), options);
  EXPECT_EQ(errorOf([&] { database->write("TABLES", "1", "y"); }), store::kIoFailure);
  EXPECT_EQ(messageOf([&] { database->OpenFile("TABLES")->ReadRecord("1")->DBWrite(); }),
            store.path() + ": the store is read-only");
  store->write("TABLES", "1", "later");
  EXPECT_EQ(database->OpenFile("TABLES")->ReadRecord("1")->fields().text(), "later");
  EXPECT_EQ(errorOf([&] { openLocalDatabase(store.path() + "x", options); }), store::kIoFailure);
}

// A disk so full that nothing can be put beside the store either.
TEST(ReadOnly, AStoreOnAFullDiskIsRead) {
  const LocalStore store;
  store->write("TABLES", "1", "x");
  TemporaryFolder folder;
  const std::string path = folder / "a.store";
  localstore::backUp(store.path(), path);
  Child child([&](int) {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit none{0, 0};
    if (setrlimit(RLIMIT_FSIZE, &none) != 0) _exit(99);
    localstore::Options options;
    options.readOnly = true;
    const auto database = openLocalDatabase(path, options);
    if (database->OpenFile("TABLES")->ReadRecord("1")->fields().text() != "x") _exit(98);
  });
  EXPECT_EQ(child.finish(), 0);
}

}  // namespace
