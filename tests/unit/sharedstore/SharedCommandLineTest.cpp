// tessaline-store on a store of a server.
#include <gtest/gtest.h>

#include <filesystem>

#include "CommandLineRun.h"
#include "SharedStoreUnderTest.h"
#include "localstore/LocalDatabase.h"
#include "tests/support/TemporaryFolder.h"

namespace {

class SharedCommandLine : public testing::Test {
 protected:
  const SharedStoreUnderTest store_;
  const std::string address_ = "odbc:" + store_.connection();
  const TemporaryFolder folder_;
};

TEST_F(SharedCommandLine, ImportQueryShowExportAndCheck) {
  const std::string text = "{\"id\":\"001\",\"fields\":[\"CD01\",[\"é\",\"y\"]]}\n";
  writeText(folder_ / "ORGPRISECHARGE.jsonl", text);
  EXPECT_EQ(runStoreTool({"import", address_, folder_ / "ORGPRISECHARGE.jsonl"}).out,
            "1 records imported\n");
  const Outcome query = runStoreTool(
      {"query", address_, "SSELECT ORGPRISECHARGE AVEC 1 = \"CD]\"", "--columns", "0 2"});
  EXPECT_EQ(query.out, "001\té\n");
  EXPECT_EQ(runStoreTool({"show", address_, "ORGPRISECHARGE", "001"}).out,
            "1 SigleOrgChg: CD01\n2.1 RaisonOrgChg: é\n2.2 RaisonOrgChg: y\n");
  EXPECT_EQ(runStoreTool({"show", address_, "ORGPRISECHARGE", "002"}).code, 1);
  const std::string out = folder_ / "out.jsonl";
  EXPECT_EQ(runStoreTool({"export", address_, "ORGPRISECHARGE", "-o", out, "--read-only"}).code, 0);
  EXPECT_EQ(readText(out), text);
  const Outcome check = runStoreTool({"check", address_});
  EXPECT_EQ(check.code, 0);
  EXPECT_EQ(check.out, "1 records, no fault\n");
  store_.administrator().execute("DELETE FROM \"index_ORGPRISECHARGE_1\"");
  EXPECT_EQ(runStoreTool({"check", address_}).code, 7);
}

TEST_F(SharedCommandLine, CreateMakesAStoreOnce) {
  const Outcome again = runStoreTool({"create", address_});
  EXPECT_EQ(again.code, 6);
  EXPECT_EQ(again.err, "tessaline-store: the database holds a store already\n");
}

TEST_F(SharedCommandLine, TheSampleIsTheSameAfterTwoCopies) {
  const std::string first = folder_ / "first.store";
  const std::string second = folder_ / "second.store";
  runStoreTool({"create", first});
  const Outcome imported = runStoreTool({"import", first, TESSALINE_SAMPLE});
  ASSERT_EQ(imported.code, 0) << imported.err;
  const Outcome there = runStoreTool({"copy", first, address_});
  EXPECT_EQ(there.code, 0) << there.err;
  EXPECT_TRUE(there.out.ends_with(" records copied\n")) << there.out;
  EXPECT_EQ(runStoreTool({"copy", address_, second, "--read-only"}).out, there.out);
  int compared = 0;
  const auto files = localstore::openLocalDatabase(first)->fileNames();
  EXPECT_EQ(localstore::openLocalDatabase(second)->fileNames(), files);
  for (const std::string& file : files) {
    const std::string text = folder_ / "text.csv";
    const std::string copied = folder_ / "copied.csv";
    std::filesystem::remove(text);
    ASSERT_EQ(runStoreTool({"export", first, file, "-o", text}).code, 0);
    ASSERT_EQ(runStoreTool({"export", second, file, "-o", copied}).code, 0);
    EXPECT_EQ(readText(copied), readText(text)) << file;
    compared += !readText(text).empty();
  }
  EXPECT_GT(compared, 8);
}

TEST_F(SharedCommandLine, CopiesAreMadeByTheServersOwnTools) {
  for (const auto& arguments : {std::vector<std::string>{"backup", address_, folder_ / "copy"},
                                std::vector<std::string>{"restore", folder_ / "copy", address_}}) {
    const Outcome outcome = runStoreTool(arguments);
    EXPECT_EQ(outcome.code, 4);
    EXPECT_NE(outcome.err.find("pg_dump and pg_restore"), std::string::npos) << outcome.err;
  }
}

TEST_F(SharedCommandLine, AnErrorTellsNoPassword) {
  const Outcome outcome = runStoreTool(
      {"check", "odbc:Driver=PostgreSQL Unicode;Servername=/none;Database=x;UID=me;PWD=none"});
  EXPECT_EQ(outcome.code, 6);
  EXPECT_EQ(outcome.err.find("none"), std::string::npos) << outcome.err;
}

}  // namespace
