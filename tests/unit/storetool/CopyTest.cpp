#include "storetool/Copy.h"

#include <gtest/gtest.h>

#include "localstore/Check.h"
#include "localstore/LocalDatabase.h"
#include "tests/support/StoreText.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using storetool::Copied;
using storetool::copyStore;

class Copy : public testing::Test {
 protected:
  void fill(int records) const {
    const auto transaction = from_->begin();
    from_->createFile("OWN");
    for (int i = 0; i < records; ++i) {
      from_->write("ORGPRISECHARGE", std::to_string(10000 + i), recordText({"A;B", "\xFF\x01"}));
    }
    from_->write("OWN", "1", "");
    transaction->commit();
  }

  TemporaryFolder folder_;
  std::shared_ptr<multivalue::Database> from_ = localstore::createLocalDatabase(folder_ / "from");
  std::shared_ptr<multivalue::Database> to_ = localstore::createLocalDatabase(folder_ / "to");
};

TEST_F(Copy, CarriesAllFilesAndRecords) {
  fill(3);
  const Copied copied = copyStore(*from_, *to_, [](double) {});
  EXPECT_EQ(copied.records, 4);
  EXPECT_TRUE(copied.unlike.empty());
  EXPECT_EQ(to_->recordCount("ORGPRISECHARGE"), 3);
  EXPECT_EQ(to_->OpenFile("ORGPRISECHARGE")->ReadRecord("10001")->fields().text(),
            recordText({"A;B", "\xFF\x01"}));
  EXPECT_TRUE(to_->OpenFile("OWN")->ReadRecord("1")->found());
  EXPECT_TRUE(localstore::checkLocalDatabase(folder_ / "to").faults.empty());
}

TEST_F(Copy, LeavesATargetWithRecordsAsItIs) {
  fill(3);
  to_->write("TABLES", "1", "x");
  EXPECT_EQ(messageOf([&] { copyStore(*from_, *to_, [](double) {}); }),
            "the store to copy to has records already, in TABLES");
  EXPECT_EQ(to_->recordCount("ORGPRISECHARGE"), 0);
}

TEST_F(Copy, CopiesNothingWhenARecordCannotBeWritten) {
  fill(3);
  localstore::Options small;
  small.maxPages = 80;
  const auto full = localstore::openLocalDatabase(folder_ / "to", small);
  from_->write("TABLES", "1", std::string(1000000, 'x'));
  EXPECT_EQ(errorOf([&] { copyStore(*from_, *full, [](double) {}); }), store::kIoFailure);
  for (const std::string& file : to_->fileNames()) EXPECT_EQ(to_->recordCount(file), 0) << file;
}

TEST_F(Copy, TellsWhatSomebodyHasChangedMeanwhile) {
  fill(1100);
  bool changed = false;
  double last = 0;
  const Copied copied = copyStore(*from_, *to_, [&](double done) {
    EXPECT_GE(done, last);
    EXPECT_LE(done, 1);
    last = done;
    if (!changed) from_->write("ORGPRISECHARGE", "10000", "changed");
    changed = true;
  });
  EXPECT_TRUE(changed);
  EXPECT_EQ(copied.unlike, std::vector<std::string>{"ORGPRISECHARGE"});
}

}  // namespace
