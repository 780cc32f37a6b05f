#include "localstore/Check.h"

#include <gtest/gtest.h>

#include "LocalStore.h"
#include "Plant.h"

namespace {

using localstore::checkLocalDatabase;

class Check : public testing::Test {
 protected:
  Check() {
    for (int i = 0; i < 30; ++i) {
      store_->write("ACCORD", std::to_string(100 + i), recordText({"001;002", "x"}));
    }
    store_->write("TABLES", "T", "");
  }

  // The faults after that was done to the file, a line each.
  std::string faultsAfter(const std::string& statements) {
    plant(store_.path(), statements);
    std::string lines;
    for (const std::string& fault : checkLocalDatabase(store_.path()).faults) lines += fault + "\n";
    return lines;
  }

  LocalStore store_;
};

TEST_F(Check, AStoreInUseHasNoFault) {
  const auto checked = checkLocalDatabase(store_.path());
  EXPECT_EQ(checked.records, 31);
  EXPECT_TRUE(checked.faults.empty());
}

TEST_F(Check, AMissingIndexEntryIsFound) {
  EXPECT_EQ(faultsAfter("DELETE FROM index_ACCORD_1 WHERE id = '105' AND value = '002'"),
            "ACCORD, index of attribute 1: 59 right entries, but the records make 60\n");
}

TEST_F(Check, AnEntryOfNoRecordIsFound) {
  EXPECT_EQ(faultsAfter("INSERT INTO index_ACCORD_1 VALUES('001', '200', 1)"),
            "ACCORD, index of attribute 1: a wrong entry for record \"200\"\n");
}

TEST_F(Check, AnEntryOfAnotherValueIsFound) {
  EXPECT_EQ(faultsAfter("INSERT INTO index_ACCORD_1 VALUES('003', '105', 0)"),
            "ACCORD, index of attribute 1: a wrong entry for record \"105\"\n");
}

TEST_F(Check, AnEntryThatSaysToBeTheFirstIsFound) {
  EXPECT_EQ(faultsAfter("UPDATE index_ACCORD_1 SET first = 1 WHERE id = '105' AND value = '002'"),
            "ACCORD, index of attribute 1: a wrong entry for record \"105\"\n"
            "ACCORD, index of attribute 1: 59 right entries, but the records make 60\n");
}

TEST_F(Check, RecordsThatCannotBeReadAreFound) {
  EXPECT_EQ(faultsAfter("INSERT INTO record_TABLES VALUES('', x'41'), ('text', 'x'),"
                        " (CAST(x'61FD' AS TEXT), x'42')"),
            "TABLES: record \"\" cannot be read\n"
            "TABLES: record \"a\xFD\" cannot be read\n"
            "TABLES: record \"text\" cannot be read\n");
}

TEST_F(Check, NoMoreFaultsAreToldThanAnybodyReads) {
  plant(store_.path(),
        "DELETE FROM index_ACCORD_1;"
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 500)"
        " INSERT INTO index_ACCORD_1 SELECT 'x', i, 1 FROM n");
  EXPECT_EQ(checkLocalDatabase(store_.path()).faults.size(), localstore::kMostFaults);
}

TEST_F(Check, DamagedPagesAreFound) {
  const LocalStore large;
  {
    const auto transaction = large->begin();
    for (int i = 0; i < 3000; ++i) {
      large->write("ACCORD", std::to_string(10000 + i), recordText({"001", std::string(90, 'x')}));
    }
    transaction->commit();
  }
  TemporaryFolder folder;
  const std::string path = folder / "damaged.store";
  plant(large.path(), "PRAGMA wal_checkpoint(TRUNCATE)");
  std::string content = readText(large.path());
  content.replace(content.size() / 2, 2000, std::string(2000, '\x55'));
  writeText(path, content);
  EXPECT_FALSE(checkLocalDatabase(path).faults.empty());
}

TEST_F(Check, WhatIsNoStoreIsRefused) {
  EXPECT_EQ(errorOf([&] { checkLocalDatabase(store_.path() + "x"); }), store::kIoFailure);
}

}  // namespace
