// The agreements' update killed at random points: all agreements and both lists, or nothing.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string>
#include <thread>

#include "AgreementStore.h"
#include "store/Conversions.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/Seed.h"

namespace {

constexpr int kAgreements = 400;
constexpr long kFirstDay = 21217;
constexpr long kFirstPeriod = 20821;

// Every other agreement is of the beneficiary that has an income. Each ends a day later than the
// one before, so that both lists are others on each day.
bool isModified(int agreement) { return agreement % 2 == 0; }
long lastDayOf(int agreement) { return kFirstDay + agreement; }
std::string keyOf(int agreement) {
  return (isModified(agreement) ? "00001" : "00002") + std::to_string(100 + agreement);
}

void fill(const AgreementStore& store) {
  store.putBody();
  store.putElements("00001", "90000");
  const auto transaction = store->begin();
  for (int i = 0; i < kAgreements; ++i) {
    store.putAgreement(keyOf(i), {{accord::DateFinAcc, std::to_string(lastDayOf(i))}});
  }
  transaction->commit();
}

// The days from which the periods of an agreement apply, after an update on each day up to `day`.
std::string daysOf(int agreement, long day) {
  std::string days;
  if (isModified(agreement)) {
    for (long each = std::min(day, lastDayOf(agreement)); each >= kFirstDay; --each) {
      days += std::to_string(each) + ";";
    }
  }
  return days + std::to_string(kFirstPeriod);
}

Content listsOf(long day) {
  Content lists;
  for (const bool modified : {true, false}) {
    std::string keys;
    for (int i = 0; i < kAgreements; ++i) {
      if (isModified(i) != modified || lastDayOf(i) < day) continue;
      keys += (keys.empty() ? "" : "|") + keyOf(i);
    }
    if (!keys.empty()) lists[modified ? "ACCORDSMODIFIES125" : "ACCORDSLIMITE125"] = keys;
  }
  return lists;
}

// Looks at all agreements and both lists; gives the day of the last update that they show.
long checkAll(multivalue::Database& database) {
  const auto file = database.OpenFile("ACCORD");
  const auto newest = file->ReadRecord(keyOf(kAgreements - 2));
  const long day = store::wholeNumber(newest->fields().get(accord::DatePartAcc, 1));
  for (int i = 0; i < kAgreements; ++i) {
    const auto record = file->ReadRecord(keyOf(i));
    const store::DynamicArray& fields = record->fields();
    EXPECT_EQ(withMarksShown(std::string(fields.get(accord::DatePartAcc))), daysOf(i, day))
        << keyOf(i);
    for (const int attribute : {accord::TxRembAcc, accord::TrancheAcc, accord::PartBenefAcc}) {
      EXPECT_EQ(fields.DCount(attribute), fields.DCount(accord::DatePartAcc)) << keyOf(i);
    }
  }
  EXPECT_EQ(contentOf(database, "TEMPO"), listsOf(day));
  return day;
}

void updateForever(const AgreementStore& store, long from, int pipe) {
  Connecting how;
  how.littleMemory = true;
  const auto database = store.connect(how);
  for (long day = from;; ++day) {
    database->ExecuteSentence(updateRequest(store::textOfDay(day), "125"));
    send(pipe, static_cast<unsigned>(day));
  }
}

TEST(KilledUpdate, LeavesAllAgreementsOldOrAllNewAndTheListsWithThem) {
  const AgreementStore store;
  fill(store);
  const auto start = std::chrono::steady_clock::now();
  store.update(store::textOfDay(kFirstDay));
  const auto one = std::chrono::duration_cast<std::chrono::microseconds>(
      std::chrono::steady_clock::now() - start);
  // Up to three updates, and the time to connect.
  const auto longest = static_cast<std::uint32_t>(60000 + 3 * one.count());
  testing_support::Random random(5);
  long day = kFirstDay;
  int unfinished = 0;
  for (int round = 0;
       round < 60 && day < lastDayOf(kAgreements - 50) && !testing::Test::HasFailure(); ++round) {
    Child child([&](int pipe) { updateForever(store, day + 1, pipe); });
    std::this_thread::sleep_for(std::chrono::microseconds(random() % longest));
    child.killNow();
    child.finish();
    unsigned confirmed = static_cast<unsigned>(day);
    while (child.receive(confirmed)) {
    }
    const auto database = store.connect();
    const long found = checkAll(*database);
    EXPECT_EQ(store.underTest().fault(), "");
    EXPECT_GE(found, static_cast<long>(confirmed)) << "lost";
    EXPECT_LE(found, static_cast<long>(confirmed) + 1);
    unfinished += found == static_cast<long>(confirmed);
    day = found;
  }
  EXPECT_GT(day, kFirstDay);
  EXPECT_GT(unfinished, 20);
}

}  // namespace
