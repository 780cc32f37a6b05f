#include "localstore/Backup.h"

#include <gtest/gtest.h>

#include "LocalStore.h"
#include "Plant.h"
#include "localstore/Check.h"

namespace {

using localstore::backUp;
using localstore::openLocalDatabase;
using localstore::restore;

class Backup : public testing::Test {
 protected:
  Backup() { store_->write("TABLES", "1", "kept"); }

  static std::string tables(const std::string& path) {
    const auto database = openLocalDatabase(path);
    return database->ExecuteSentence(store::request("SSELECT TABLES", "", "1")).text();
  }
  bool exists(const std::string& name) const {
    return std::filesystem::exists(fromUtf8(folder_ / name));
  }

  LocalStore store_;
  TemporaryFolder folder_;
  const std::string copy_ = folder_ / "copie é.store";
};

TEST_F(Backup, IsAStoreInOneFile) {
  backUp(store_.path(), copy_);
  EXPECT_TRUE(localstore::checkLocalDatabase(copy_).faults.empty());
  EXPECT_EQ(tables(copy_), "kept");
  EXPECT_FALSE(exists("copie é.store.part"));
}

TEST_F(Backup, HoldsWhatIsInTheLogAndNothingOfAnOpenTransaction) {
  const auto other = openLocalDatabase(store_.path());
  const auto transaction = other->begin();
  other->write("TABLES", "1", "not yet");
  backUp(store_.path(), copy_);
  EXPECT_EQ(tables(copy_), "kept");
}

TEST_F(Backup, NeverOverwritesAFile) {
  writeText(copy_, "precious");
  EXPECT_EQ(errorOf([&] { backUp(store_.path(), copy_); }), store::kIoFailure);
  EXPECT_EQ(readText(copy_), "precious");
  EXPECT_EQ(errorOf([&] { backUp(store_.path(), store_.path()); }), store::kIoFailure);
}

TEST_F(Backup, LeavesNothingWhenItCannotBeMade) {
  EXPECT_EQ(errorOf([&] { backUp(folder_ / "none.store", copy_); }), store::kIoFailure);
  EXPECT_EQ(errorOf([&] { backUp(store_.path(), folder_ / "missing/a.store"); }),
            store::kIoFailure);
  plant(store_.path(), "INSERT INTO index_ACCORD_1 VALUES('001', '200', 1)");
  EXPECT_EQ(messageOf([&] { backUp(store_.path(), copy_); }),
            store_.path() +
                ": the store is not whole: ACCORD, index of attribute 1: a wrong entry for record "
                "\"200\"");
  EXPECT_FALSE(exists("copie é.store"));
  EXPECT_FALSE(exists("copie é.store.part"));
}

TEST_F(Backup, RestoreIsRefusedWhileTheStoreIsOpen) {
  backUp(store_.path(), copy_);
  store_->write("TABLES", "1", "later");
  EXPECT_EQ(messageOf([&] { restore(copy_, store_.path()); }),
            store_.path() + ": the store is open elsewhere");
  EXPECT_EQ(tables(store_.path()), "later");
  EXPECT_EQ(errorOf([&] { store_->write("TABLES", "1", "again"); }), 0U);
}

TEST_F(Backup, RestorePutsTheCopyInThePlaceOfTheStore) {
  const std::string path = folder_ / "a.store";
  backUp(store_.path(), path);
  openLocalDatabase(path)->write("TABLES", "1", "later");
  backUp(store_.path(), copy_);
  restore(copy_, path);
  EXPECT_EQ(tables(path), "kept");
  EXPECT_EQ(tables(copy_), "kept");
  EXPECT_FALSE(exists("a.store.part"));
}

TEST_F(Backup, RestoreMakesAStoreWhereThereIsNone) {
  backUp(store_.path(), copy_);
  restore(copy_, folder_ / "new.store");
  EXPECT_EQ(tables(folder_ / "new.store"), "kept");
}

// A log of what was there before must not be taken for one of the copy.
TEST_F(Backup, RestoreDropsALogThatWasLeftBehind) {
  const std::string path = folder_ / "a.store";
  backUp(store_.path(), copy_);
  store_->write("TABLES", "1", "in the log");
  for (const char* const tail : {"", "-wal", "-shm"}) {
    std::filesystem::copy_file(fromUtf8(store_.path() + tail), fromUtf8(path + tail));
  }
  EXPECT_GT(std::filesystem::file_size(fromUtf8(path + "-wal")), 0U);
  restore(copy_, path);
  EXPECT_FALSE(exists("a.store-wal"));
  EXPECT_EQ(tables(path), "kept");
  EXPECT_TRUE(localstore::checkLocalDatabase(path).faults.empty());
}

TEST_F(Backup, RestoreReplacesAStoreThatIsDamaged) {
  const std::string path = folder_ / "a.store";
  backUp(store_.path(), copy_);
  for (const std::string& content : {std::string("text"), std::string(9000, '\1')}) {
    writeText(path, content);
    writeText(path + "-wal", content);
    restore(copy_, path);
    EXPECT_EQ(tables(path), "kept");
  }
}

TEST_F(Backup, RestoreOfWhatIsNoCopyLeavesTheStore) {
  const std::string path = folder_ / "a.store";
  backUp(store_.path(), path);
  writeText(copy_, "text");
  EXPECT_EQ(errorOf([&] { restore(copy_, path); }), store::kIoFailure);
  EXPECT_EQ(errorOf([&] { restore(folder_ / "none.store", path); }), store::kIoFailure);
  EXPECT_EQ(errorOf([&] { restore(path, path); }), store::kIoFailure);
  EXPECT_EQ(errorOf([&] { restore(path, folder_ / "."); }), store::kIoFailure);
  EXPECT_EQ(tables(path), "kept");
}

}  // namespace
