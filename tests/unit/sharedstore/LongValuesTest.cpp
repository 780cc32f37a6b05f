// Values that are longer than an entry of the server's indexes.
#include <gtest/gtest.h>

#include "TemporaryStore.h"
#include "sharedstore/CutEntries.h"
#include "tests/support/Seed.h"

namespace {

using sharedstore::kLongestEntry;
using sharedstore::kLongestKey;

constexpr const char* kFile = "ORGPRISECHARGE";  // an index of attribute 1

std::string longText(std::size_t size, const std::string& end = "") {
  return std::string(size - end.size(), 'x') + end;
}

TEST(LongValues, AreFoundAtTheEdgeOfAnEntry) {
  const TemporaryStore store;
  for (const std::size_t size : {kLongestEntry - 1, kLongestEntry, kLongestEntry + 1}) {
    store.put(kFile, std::to_string(size), {longText(size)});
  }
  const auto select = [&](const std::string& value) {
    return store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"" + value + "\"");
  };
  EXPECT_EQ(select(longText(kLongestEntry - 1)), "1023");
  EXPECT_EQ(select(longText(kLongestEntry)), "1024");
  EXPECT_EQ(select(longText(kLongestEntry + 1)), "1025");
  EXPECT_EQ(select(longText(kLongestEntry + 2)), "");
  EXPECT_EQ(select(longText(kLongestEntry - 1) + "]"), "1023|1024|1025");
  EXPECT_EQ(select(longText(kLongestEntry) + "]"), "1024|1025");
  EXPECT_EQ(select(longText(kLongestEntry + 1) + "]"), "1025");
  EXPECT_EQ(select(longText(kLongestEntry + 2) + "]"), "");
  EXPECT_EQ(store.underTest().fault(), "");
}

TEST(LongValues, ThatBeginAlikeAreToldApart) {
  const TemporaryStore store;
  const std::string a = longText(3000, "A");
  const std::string b = longText(3000, "B");
  store.put(kFile, "1", {a});
  store.put(kFile, "2", {b});
  store.put(kFile, "3", {"short;" + a + ";" + b});
  const auto select = [&](const std::string& value, std::string_view columns = "0") {
    return store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"" + value + "\"", columns);
  };
  EXPECT_EQ(select(a), "1|3");
  EXPECT_EQ(select(b), "2|3");
  EXPECT_EQ(select(b, "0 1"), "2," + b + "|3,short");
  store.put(kFile, "3", {b + ";" + a});
  EXPECT_EQ(select(a, "0 1"), "1," + a + "|3," + b);
  store.put(kFile, "3", {"short"});
  EXPECT_EQ(select(a), "1");
  store->OpenFile(kFile)->DeleteRecord("1");
  EXPECT_EQ(select(a), "");
  EXPECT_EQ(store.underTest().fault(), "");
}

// Nothing that the server could press together.
TEST(LongValues, NeedNotBeAlikeToFit) {
  const TemporaryStore store;
  testing_support::Random random(3);
  std::string value;
  while (value.size() < 20000) value += static_cast<char>('a' + random() % 26);
  const std::string key = value.substr(0, kLongestKey);
  store.put(kFile, key, {value});
  EXPECT_EQ(store.select("SSELECT ORGPRISECHARGE AVEC 1 = \"" + value + "\""), key);
  EXPECT_EQ(store->OpenFile(kFile)->ReadRecord(key)->fields().text(), value);
}

TEST(LongValues, AKeyHasABound) {
  const TemporaryStore store;
  store.put("TABLES", longText(kLongestKey), {"x"});
  EXPECT_EQ(errorOf([&] { store->write("TABLES", longText(kLongestKey + 1), "x"); }),
            store::kBadValue);
  EXPECT_FALSE(store->OpenFile("TABLES")->ReadRecord(longText(kLongestKey + 1))->found());
  EXPECT_EQ(store->recordCount("TABLES"), 1);
}

TEST(LongValues, AFilesNameHasABoundToo) {
  const TemporaryStore store;
  EXPECT_EQ(errorOf([&] { store->createFile(std::string(53, 'F')); }), store::kBadValue);
  store->createFile(std::string(52, 'F'));
  store.put(std::string(52, 'F'), "1", {"x"});
  EXPECT_EQ(store.select("SSELECT " + std::string(52, 'F'), "0 1"), "1,x");
}

}  // namespace
