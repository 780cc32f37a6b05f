#include "tests/support/MemoryStore.h"

#include <gtest/gtest.h>

#include "store/Layouts.h"
#include "store/Request.h"
#include "tests/support/Same.h"

namespace {

using testing_support::CallKind;
using testing_support::MemoryStore;
using testing_support::same;
using Told = std::vector<std::string>;

class MemoryStoreTest : public testing::Test {
 protected:
  MemoryStoreTest() {
    memory.put("ORGPRISECHARGE", "001", {"CD02", "AISNE"});
    memory.put("ORGPRISECHARGE", "002", {"CD01", "AIN"});
    memory.put("ORGPRISECHARGE", "003", {"MUT", "MUTUELLE"});
  }
  std::string run(std::string_view sentence, std::string_view columns = "0") {
    std::string out;
    const auto answer = store::select(*database, sentence, "ORGPRISECHARGE", columns);
    for (int i = 1; i <= answer.DCount(); ++i) {
      for (int v = 1; v <= answer.DCount(i); ++v) {
        out += std::string(answer.get(i, v)) + (v < answer.DCount(i) ? "," : " ");
      }
    }
    return out;
  }

  MemoryStore memory;
  std::shared_ptr<store::Database> database = memory.connect();
};

TEST_F(MemoryStoreTest, AnswersSelectionsInTheirOrderWithTheirColumns) {
  EXPECT_EQ(run("SSELECT ORGPRISECHARGE"), "001 002 003 ");
  EXPECT_EQ(run("SSELECT ORGPRISECHARGE PAR 1", "0 1"), "002,CD01 001,CD02 003,MUT ");
  EXPECT_EQ(run("SSELECT ORGPRISECHARGE AVEC SigleOrgChg = \"CD]\" PAR SigleOrgChg"), "002 001 ");
  EXPECT_EQ(run("SSELECT ORGPRISECHARGE AVEC 1 # \"MUT\" AND AVEC @ID > \"1\""), "002 ");
  EXPECT_EQ(run("SSELECT ORGPRISECHARGE AVEC 1 = \"X\""), "");
  EXPECT_EQ(run("SSELECT NOWHERE"), "");
}

TEST_F(MemoryStoreTest, AConditionHoldsWhenOneValueSatisfiesIt) {
  memory.set("ORGPRISECHARGE", "003", store::orgprisecharge::AdrNatureVoie,
             "a\xFD"
             "b");
  EXPECT_EQ(run("SSELECT ORGPRISECHARGE AVEC 5 = \"b\""), "003 ");
  EXPECT_EQ(run("SSELECT ORGPRISECHARGE AVEC 5 = \"\""), "001 002 ");
}

TEST_F(MemoryStoreTest, AScriptedAnswerComesFirst) {
  memory.answer("SSELECT ORGPRISECHARGE PAR 1", {{"009", "ZZ"}});
  EXPECT_EQ(run("SSELECT ORGPRISECHARGE PAR 1", "0 1"), "009,ZZ ");
}

TEST_F(MemoryStoreTest, AnUnknownFieldIsAnError) {
  EXPECT_THROW(run("SSELECT ORGPRISECHARGE PAR Nobody"), store::StoreError);
}

TEST_F(MemoryStoreTest, KeepsAJournalOfAllCalls) {
  const auto file = database->OpenFile("ORGPRISECHARGE");
  const auto record = file->ReadRecord("004");
  EXPECT_FALSE(record->found());
  record->fields().set(store::orgprisecharge::SigleOrgChg, "NEW");
  record->DBWrite();
  EXPECT_EQ(memory.record("ORGPRISECHARGE", "004").get(store::orgprisecharge::SigleOrgChg), "NEW");
  EXPECT_EQ(file->DeleteRecord("004"), 0);
  EXPECT_EQ(file->DeleteRecord("004"), 0);
  database->ExecuteSentence("SET-DEC ,");
  EXPECT_PRED_FORMAT2(same, memory.told(),
                      (Told{"OpenFile ORGPRISECHARGE", "ReadRecord ORGPRISECHARGE 004",
                            "DBWrite ORGPRISECHARGE 004", "DeleteRecord ORGPRISECHARGE 004",
                            "DeleteRecord ORGPRISECHARGE 004", "ExecuteSentence SET-DEC ,"}));
  EXPECT_EQ(memory.calls(CallKind::DBWrite).front().text, "NEW");
}

TEST_F(MemoryStoreTest, FailsAtTheCallAskedForAndOnlyThere) {
  const auto file = database->OpenFile("ORGPRISECHARGE");
  memory.failAt(2, store::kBusy);
  EXPECT_TRUE(file->ReadRecord("001")->found());
  try {
    file->DeleteRecord("001");
    ADD_FAILURE() << "the second call should have failed";
  } catch (const store::StoreError& error) {
    EXPECT_EQ(error.code(), store::kBusy);
  }
  EXPECT_TRUE(memory.has("ORGPRISECHARGE", "001"));
  EXPECT_EQ(file->DeleteRecord("001"), 0);
}

TEST_F(MemoryStoreTest, FailsByKindAndFile) {
  memory.fail(CallKind::ReadRecord, "TABLES");
  memory.fail(CallKind::ExecuteSentence, "ACCORD");
  EXPECT_THROW(database->OpenFile("TABLES")->ReadRecord("X"), store::StoreError);
  EXPECT_TRUE(database->OpenFile("ORGPRISECHARGE")->ReadRecord("001")->found());
  EXPECT_THROW(store::select(*database, "SSELECT ACCORD", "ACCORD", "0"), store::StoreError);
  EXPECT_EQ(run("SSELECT ORGPRISECHARGE AVEC 1 = \"MUT\""), "003 ");
  memory.stopFailing();
  EXPECT_FALSE(database->OpenFile("TABLES")->ReadRecord("X")->found());
}

TEST_F(MemoryStoreTest, TellsWhenItsObjectsGo) {
  auto file = database->OpenFile("TABLES");
  auto record = file->ReadRecord("STATORGCHG");
  record.reset();
  memory.releases().push_back("rights");
  file.reset();
  database.reset();
  EXPECT_PRED_FORMAT2(same, memory.releases(),
                      (Told{"Record TABLES STATORGCHG", "rights", "File TABLES", "Database"}));
}

}  // namespace
