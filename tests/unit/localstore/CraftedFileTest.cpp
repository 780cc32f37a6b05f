// Files that somebody has made to look like a store: nothing of theirs runs.
#include <gtest/gtest.h>

#include "LocalStore.h"
#include "Plant.h"

namespace {

using localstore::openLocalDatabase;

constexpr const char* kTrigger =
    "CREATE TRIGGER planted AFTER INSERT ON record_TABLES BEGIN DELETE FROM record_ACCORD; END";
// Never comes to an end.
constexpr const char* kView =
    "ALTER TABLE record_TABLES RENAME TO kept; CREATE VIEW record_TABLES AS WITH RECURSIVE"
    " more(id, record) AS (SELECT 'x', 'y' UNION ALL SELECT id, record FROM more) SELECT * FROM "
    "more";

class CraftedFile : public testing::TestWithParam<const char*> {};

TEST_P(CraftedFile, IsRefusedBeforeAnythingIsRead) {
  const LocalStore store;
  plant(store.path(), GetParam());
  const auto open = [&] { openLocalDatabase(store.path()); };
  EXPECT_EQ(errorOf(open), store::kIoFailure);
  EXPECT_EQ(messageOf(open), store.path() + ": the tables of the file are not those of a store");
}

INSTANTIATE_TEST_SUITE_P(
    Table, CraftedFile,
    testing::Values(
        kTrigger, kView, "CREATE VIEW more AS SELECT 1", "CREATE TABLE more(x)",
        "CREATE TABLE \"record_MORE\"(id TEXT PRIMARY KEY, record BLOB NOT NULL) WITHOUT ROWID",
        "CREATE INDEX more ON record_TABLES(record)",
        "ALTER TABLE record_TABLES ADD COLUMN more TEXT",
        "DROP TABLE record_TABLES; CREATE TABLE record_TABLES(id TEXT PRIMARY KEY, record BLOB NOT "
        "NULL)",
        "DROP TABLE record_TABLES", "DROP TABLE index_ACCORD_1",
        "INSERT INTO store_file VALUES('MORE')", "INSERT INTO store_index VALUES('TABLES', 1)",
        "DELETE FROM store_file WHERE name = 'TABLES'",
        "DELETE FROM store_index WHERE file = 'ACCORD'"));

TEST(CraftedFileInUse, ATriggerThatIsPlantedLaterNeverRuns) {
  const LocalStore store;
  store->write("ACCORD", "1", "001");
  plant(store.path(), kTrigger);
  EXPECT_EQ(errorOf([&] { store->write("TABLES", "1", "x"); }), store::kIoFailure);
  EXPECT_EQ(store->recordCount("ACCORD"), 1);
  plant(store.path(), "DROP TRIGGER planted");
  store->write("TABLES", "1", "x");
  EXPECT_EQ(store.select("SSELECT TABLES"), "1");
}

TEST(CraftedFileInUse, AViewThatIsPlantedLaterIsNotRead) {
  const LocalStore store;
  plant(store.path(), kView);
  EXPECT_NE(errorOf([&] { store.select("SSELECT TABLES"); }), 0U);
}

}  // namespace
