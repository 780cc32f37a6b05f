#include "store/Counter.h"

#include <gtest/gtest.h>

#include <optional>

#include "store/Layouts.h"
#include "tests/support/MemoryStore.h"
#include "tests/support/Same.h"

namespace {

using testing_support::CallKind;
using testing_support::MemoryStore;
using Why = store::NoCode::Why;
using testing_support::same;

class Counter : public testing::Test {
 protected:
  void holds(std::string_view last) {
    memory.set("COMPTEUR", "999", store::compteur::DernierOrgChg, last);
  }
  std::string held() const {
    return std::string(memory.record("COMPTEUR", "999").get(store::compteur::DernierOrgChg, 1));
  }
  std::string next() { return store::nextCode(*counters); }
  std::optional<store::NoCode::Why> refusal() {
    try {
      next();
    } catch (const store::NoCode& none) {
      return none.why();
    }
    return std::nullopt;
  }
  unsigned codeOfFailure() {
    try {
      next();
    } catch (const store::StoreError& error) {
      return error.code();
    }
    return 0;
  }

  MemoryStore memory;
  std::unique_ptr<store::Database> database = memory.connect();
  std::unique_ptr<store::File> counters = database->OpenFile("COMPTEUR");
};

// A store of which somebody else takes a code just before this one writes the counter.
class Overtaken : public store::File {
 public:
  Overtaken(MemoryStore& memory, store::File& counters) : memory_(memory), counters_(counters) {}
  std::unique_ptr<store::Record> ReadRecord(std::string_view id) override {
    auto record = counters_.ReadRecord(id);
    if (times-- > 0) {
      memory_.set("COMPTEUR", "999", store::compteur::DernierOrgChg, std::to_string(++taken));
    }
    return record;
  }
  int DeleteRecord(std::string_view id) override { return counters_.DeleteRecord(id); }

  int times = 0;
  int taken = 0;

 private:
  MemoryStore& memory_;
  store::File& counters_;
};

TEST_F(Counter, ACodeThatSomebodyElseTakesMeanwhileIsNotGivenAgain) {
  memory.watchOverChanges();
  holds("041");
  Overtaken overtaken(memory, *counters);
  overtaken.times = 2;
  overtaken.taken = 41;
  EXPECT_EQ(store::nextCode(overtaken), "044");
  EXPECT_EQ(held(), "044");
}

TEST_F(Counter, WithoutARecordGivesTheFirstCode) {
  EXPECT_EQ(next(), "001");
  EXPECT_EQ(held(), "001");
}

TEST_F(Counter, WithoutAttributeTenGivesTheFirstCode) {
  memory.put("COMPTEUR", "999", {"a"});
  EXPECT_EQ(next(), "001");
  EXPECT_EQ(memory.record("COMPTEUR", "999").get(1), "a");
}

TEST_F(Counter, AddsOneAndPadsToThreeCharacters) {
  holds("009");
  EXPECT_EQ(next(), "010");
  EXPECT_EQ(next(), "011");
  holds("99");
  EXPECT_EQ(next(), "100");
}

TEST_F(Counter, GivesTheLastCodeOfThreeCharactersAndThenRefuses) {
  holds("998");
  EXPECT_EQ(next(), "999");
  for (const char* past : {"999", "1000", "99999999999999999999"}) {
    holds(past);
    EXPECT_EQ(refusal(), Why::AllGivenOut) << past;
    EXPECT_EQ(held(), past);
  }
}

TEST_F(Counter, IgnoresBlanksAroundItsNumber) {
  for (const char* blanks : {" 12", "12 ", "  012  "}) {
    holds(blanks);
    EXPECT_EQ(next(), "013") << blanks;
    EXPECT_EQ(held(), "013");
  }
  holds("  ");
  EXPECT_EQ(next(), "001");
}

TEST_F(Counter, RefusesWhatIsNoNumber) {
  for (const char* wrong : {"abc", "12a", "-1", "1 2", "1,5", "999a"}) {
    holds(wrong);
    EXPECT_EQ(refusal(), Why::NoNumber) << wrong;
    EXPECT_EQ(held(), wrong);
  }
}

TEST_F(Counter, ReadsTheFirstValueOnlyAndKeepsTheRest) {
  store::DynamicArray record;
  record.set(store::compteur::DernierOrgChg, 1, "041");
  record.set(store::compteur::DernierOrgChg, 2, "007");
  record.set(store::compteur::InterfaceComptable, "O");
  memory.put("COMPTEUR", "999", record);
  EXPECT_EQ(next(), "042");
  record.set(store::compteur::DernierOrgChg, 1, "042");
  EXPECT_EQ(memory.record("COMPTEUR", "999"), record);
}

TEST_F(Counter, ReadsTheRecordAgainEachTime) {
  holds("010");
  EXPECT_EQ(next(), "011");
  holds("050");
  EXPECT_EQ(next(), "051");
}

TEST_F(Counter, IsWrittenBeforeTheCodeIsGivenBack) {
  holds("010");
  next();
  EXPECT_PRED_FORMAT2(same, memory.told(),
                      (std::vector<std::string>{"OpenFile COMPTEUR", "ReadRecord COMPTEUR 999",
                                                "DBWrite COMPTEUR 999"}));
}

TEST_F(Counter, GivesNoCodeWhenItCannotBeWritten) {
  holds("010");
  memory.fail(CallKind::DBWrite);
  EXPECT_THROW(next(), store::StoreError);
  EXPECT_EQ(held(), "010");
}

TEST_F(Counter, GivesNoCodeWhenItCannotBeRead) {
  memory.fail(CallKind::ReadRecord, "COMPTEUR", store::kBusy);
  EXPECT_EQ(codeOfFailure(), store::kBusy);
}

// A write that may have been done: the code may be another's who has written the same.
TEST_F(Counter, PassesACodeOverWhenItIsNotKnownWhoHasTakenIt) {
  holds("006");
  memory.failAt(2, store::kOutcomeUnknown);
  EXPECT_EQ(next(), "007");
  EXPECT_EQ(memory.calls(CallKind::DBWrite).size(), 2U);
}

TEST_F(Counter, EndsWhenThatIsNeverKnown) {
  holds("006");
  memory.fail(CallKind::DBWrite, "COMPTEUR", store::kOutcomeUnknown);
  EXPECT_EQ(codeOfFailure(), store::kOutcomeUnknown);
  EXPECT_EQ(memory.calls(CallKind::DBWrite).size(), 4U);
  EXPECT_EQ(held(), "006");
}

}  // namespace
