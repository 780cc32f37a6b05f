// The built program, run as a process.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>

#include "localstore/LocalDatabase.h"
#include "localstore/Sqlite.h"
#include "tests/support/TemporaryFolder.h"

namespace {

struct Outcome {
  int code = -1;
  std::string out;
  std::string err;
};

class CommandLine : public testing::Test {
 protected:
  // Arguments as for a shell.
  Outcome run(const std::string& arguments) {
    const std::string out = folder_ / "out.txt";
    const std::string err = folder_ / "err.txt";
    const std::string command = "cd '" + (folder_ / ".") + "' && '" TESSALINE_STORE_COMMAND "' " +
                                arguments + " >'" + out + "' 2>'" + err + "'";
    const int status = std::system(command.c_str());
    return {WEXITSTATUS(status), readText(out), readText(err)};
  }

  TemporaryFolder folder_;
};

TEST_F(CommandLine, HelpTellsTheCommandsAndTheExitCodes) {
  const Outcome help = run("--help");
  EXPECT_EQ(help.code, 0);
  for (const char* const word : {"create", "import", "export", "query", "show", "check", "copy",
                                 "backup", "restore", "Exit codes"}) {
    EXPECT_NE(help.out.find(word), std::string::npos) << word;
  }
  EXPECT_EQ(run("query --help").code, 0);
}

TEST_F(CommandLine, AWrongCommandLineIsRefused) {
  for (const char* const arguments :
       {"", "destroy a.store", "create", "import a.store", "export a.store TABLES", "query a.store",
        "show a.store TABLES", "create a.store --nonsense", "backup a.store", "restore a.store",
        "check", "copy a.store"}) {
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.code, 2) << arguments;
    EXPECT_FALSE(outcome.err.empty()) << arguments;
  }
  EXPECT_FALSE(std::filesystem::exists(fromUtf8(folder_ / "a.store")));
}

TEST_F(CommandLine, CreateMakesAStoreOnce) {
  EXPECT_EQ(run("create a.store").code, 0);
  EXPECT_EQ(run("query a.store 'SSELECT ORGPRISECHARGE'").code, 0);
  const Outcome again = run("create a.store");
  EXPECT_EQ(again.code, 6);
  EXPECT_EQ(again.err, "tessaline-store: a.store: there is such a file already\n");
}

TEST_F(CommandLine, CopyFillsANewStoreAndNoOther) {
  run("create a.store");
  writeText(folder_ / "OWN.jsonl", "{\"id\":\"1\",\"fields\":[\"x\"]}\n");
  run("import a.store OWN.jsonl");
  const Outcome copied = run("copy a.store b.store");
  EXPECT_EQ(copied.code, 0);
  EXPECT_EQ(copied.out, "1 records copied\n");
  EXPECT_EQ(run("query b.store 'SSELECT OWN' --columns '0 1'").out, "1\tx\n");
  const Outcome again = run("copy a.store b.store");
  EXPECT_EQ(again.code, 4);
  EXPECT_EQ(again.err, "tessaline-store: the store to copy to has records already, in OWN\n");
  EXPECT_EQ(run("copy none.store c.store").code, 6);
  EXPECT_FALSE(std::filesystem::exists(fromUtf8(folder_ / "c.store")));
}

TEST_F(CommandLine, ImportQueryShowAndExport) {
  run("create a.store");
  writeText(folder_ / "ORGPRISECHARGE.jsonl",
            "{\"id\":\"002\",\"fields\":[\"CD02\",\"Aisne\"]}\n"
            "{\"id\":\"001\",\"fields\":[\"CD01\",\"Ain\",[\"x\",\"y\"]]}\n");
  const Outcome imported = run("import a.store ORGPRISECHARGE.jsonl");
  EXPECT_EQ(imported.code, 0);
  EXPECT_EQ(imported.out, "2 records imported\n");
  EXPECT_EQ(imported.err, "");

  const Outcome query =
      run("query a.store 'SSELECT ORGPRISECHARGE AVEC SigleOrgChg = \"CD]\" PAR 1' "
          "--columns '0 1 3'");
  EXPECT_EQ(query.code, 0);
  EXPECT_EQ(query.out, "001\tCD01\tx\n002\tCD02\t\n");
  EXPECT_EQ(run("query a.store 'SSELECT ORGPRISECHARGE'").out, "001\n002\n");
  const Outcome command = run("query a.store DATE.FORMAT");
  EXPECT_EQ(command.code, 4);
  EXPECT_EQ(command.err,
            "tessaline-store: character 1: a selection is expected: SSELECT or SELECT\n");

  const Outcome show = run("show a.store ORGPRISECHARGE 001");
  EXPECT_EQ(show.code, 0);
  EXPECT_EQ(show.out,
            "1 SigleOrgChg: CD01\n2 RaisonOrgChg: Ain\n3.1 AdrComplement: x\n"
            "3.2 AdrComplement: y\n");

  const Outcome exported = run("export a.store ORGPRISECHARGE -o out.csv");
  EXPECT_EQ(exported.code, 0);
  EXPECT_EQ(exported.out, "2 records exported\n");
  EXPECT_EQ(readText(folder_ / "out.csv"), "id,1,2,3\n001,CD01,Ain,x;y\n002,CD02,Aisne\n");
  EXPECT_EQ(run("export a.store ORGPRISECHARGE --output out.jsonl").code, 0);
  EXPECT_EQ(readText(folder_ / "out.jsonl"),
            "{\"id\":\"001\",\"fields\":[\"CD01\",\"Ain\",[\"x\",\"y\"]]}\n"
            "{\"id\":\"002\",\"fields\":[\"CD02\",\"Aisne\"]}\n");
}

TEST_F(CommandLine, ASpreadsheetsFileGoesInAndOut) {
  run("create a.store");
  const std::string text = "id;1;2\n001;\xC9t\xE9;a|b\n";
  writeText(folder_ / "NEW.CSV", text);
  EXPECT_EQ(run("import a.store NEW.CSV").code, 3);
  const Outcome imported = run("import a.store NEW.CSV --encoding windows-1252 --separator ';'");
  EXPECT_EQ(imported.code, 0);
  EXPECT_EQ(imported.out, "new file NEW\n1 records imported\n");
  EXPECT_EQ(run("show a.store NEW 001").out, "1: Été\n2.1: a\n2.2: b\n");
  EXPECT_EQ(run("export a.store NEW -o out.csv --encoding windows-1252 --separator ';'").code, 0);
  EXPECT_EQ(readText(folder_ / "out.csv"), text);
  for (const char* const option : {"--encoding latin", "--separator '|'", "--separator ''"}) {
    EXPECT_EQ(run(std::string("import a.store NEW.CSV ") + option).code, 2) << option;
  }
}

TEST_F(CommandLine, AnExportNeverTouchesTheStoreNorAFileThatItCannotReplaceWhole) {
  run("create a.csv");
  writeText(folder_ / "TABLES.jsonl",
            "{\"id\":\"1\",\"fields\":[\"" + std::string(200000, 'x') + "\"]}\n");
  run("import a.csv TABLES.jsonl");
  const std::string before = readText(folder_ / "a.csv");
  std::filesystem::create_symlink("a.csv", fromUtf8(folder_ / "link.csv"));
  for (const char* const output : {"a.csv", "./a.csv", "link.csv"}) {
    const Outcome refused = run(std::string("export a.csv TABLES -o ") + output);
    EXPECT_EQ(refused.code, 6) << output;
    EXPECT_EQ(refused.err,
              "tessaline-store: " + std::string(output) + ": this is the store itself\n");
  }
  EXPECT_EQ(readText(folder_ / "a.csv"), before);
  for (const std::string name : {"out.csv", "out.jsonl"}) {
    writeText(folder_ / name, "before");
    // No file may grow beyond 100 blocks of 512 or 1024 bytes: as on a full disk.
    const Outcome full =
        run("create b.store; (trap '' XFSZ; ulimit -f 100; '" TESSALINE_STORE_COMMAND
            "' export a.csv TABLES --read-only -o " +
            name + ")");
    EXPECT_EQ(full.code, 6) << name;
    EXPECT_EQ(readText(folder_ / name), "before");
    EXPECT_FALSE(std::filesystem::exists(fromUtf8(folder_ / (name + ".part"))));
  }
}

TEST_F(CommandLine, WhatCannotBeWrittenOutFails) {
  run("create a.store");
  writeText(folder_ / "TABLES.jsonl", "{\"id\":\"1\",\"fields\":[\"x\"]}\n");
  run("import a.store TABLES.jsonl");
  for (const char* const command : {"query a.store 'SSELECT TABLES'", "show a.store TABLES 1"}) {
    const Outcome outcome =
        run("create b.store; '" TESSALINE_STORE_COMMAND "' " + std::string(command) +
            " >/dev/full; code=$?; rm b.store; exit $code; #");
    EXPECT_EQ(outcome.code, 6) << command;
  }
}

TEST_F(CommandLine, AStoreThatCannotBeMadeLeavesNothing) {
  for (const char* const name : {"''", ":memory:"}) {
    EXPECT_EQ(run(std::string("create ") + name).code, 6) << name;
  }
  const Outcome full =
      run("create missing/a.store; (trap '' XFSZ; ulimit -f 10; '" TESSALINE_STORE_COMMAND
          "' create a.store)");
  EXPECT_EQ(full.code, 6);
  for (const char* const left : {"a.store", "a.store-wal", "a.store-shm", ":memory:"}) {
    EXPECT_FALSE(std::filesystem::exists(fromUtf8(folder_ / left))) << left;
  }
}

TEST_F(CommandLine, ABadLineIsNamedAndNothingIsImported) {
  run("create a.store");
  writeText(folder_ / "TABLES.jsonl", "{\"id\":\"1\",\"fields\":[]}\nnonsense\n");
  const Outcome outcome = run("import a.store TABLES.jsonl");
  EXPECT_EQ(outcome.code, 3);
  EXPECT_EQ(outcome.err, "tessaline-store: TABLES.jsonl, line 2: no JSON\n");
  EXPECT_EQ(run("query a.store 'SSELECT TABLES'").out, "");
  EXPECT_EQ(run("import a.store TABLES.txt").code, 3);
}

TEST_F(CommandLine, RefusalsHaveTheirCodes) {
  run("create a.store");
  const Outcome sentence = run("query a.store 'SSELECT TABLES AVEC 1'");
  EXPECT_EQ(sentence.code, 4);
  EXPECT_EQ(sentence.err,
            "tessaline-store: character 22: an operator is expected: = # < <= > >=\n");
  EXPECT_EQ(run("query a.store 'SSELECT NOWHERE'").code, 4);
  EXPECT_EQ(run("query a.store 'SSELECT TABLES' --columns x").code, 4);
  EXPECT_EQ(run("show a.store NOWHERE 1").code, 4);
  EXPECT_EQ(run("export a.store NOWHERE -o out.csv").code, 4);
  const Outcome missing = run("show a.store TABLES 1");
  EXPECT_EQ(missing.code, 1);
  EXPECT_EQ(missing.err, "tessaline-store: no record 1 in TABLES\n");
}

TEST_F(CommandLine, AStoreThatCannotBeUsedHasItsCode) {
  writeText(folder_ / "text.store", "no store");
  for (const char* const command :
       {"query none.store 'SSELECT TABLES'", "query text.store 'SSELECT TABLES'", "show . TABLES 1",
        "import none.store x.jsonl", "export none.store TABLES -o x.csv",
        "create missing/a.store"}) {
    const Outcome outcome = run(command);
    EXPECT_EQ(outcome.code, 6) << command;
    EXPECT_TRUE(outcome.err.starts_with("tessaline-store: ")) << command;
  }
  EXPECT_FALSE(std::filesystem::exists(fromUtf8(folder_ / "none.store")));
}

TEST_F(CommandLine, BackupRestoreAndCheck) {
  run("create a.store");
  writeText(folder_ / "TABLES.jsonl", "{\"id\":\"1\",\"fields\":[\"x\"]}\n");
  run("import a.store TABLES.jsonl");
  EXPECT_EQ(run("backup a.store copy.store").code, 0);
  EXPECT_EQ(run("backup a.store copy.store").code, 6);
  const Outcome checked = run("check copy.store");
  EXPECT_EQ(checked.code, 0);
  EXPECT_EQ(checked.out, "1 records, no fault\n");
  {
    const auto open = localstore::openLocalDatabase(folder_ / "a.store");
    const Outcome refused = run("restore copy.store a.store");
    EXPECT_EQ(refused.code, 5);
    EXPECT_EQ(refused.err, "tessaline-store: a.store: the store is open elsewhere\n");
  }
  EXPECT_EQ(run("restore copy.store a.store").code, 0);
  EXPECT_EQ(run("show a.store TABLES 1").out, "1 Intitule: x\n");
}

TEST_F(CommandLine, AStoreThatIsNotWholeHasALineAFault) {
  run("create a.store");
  localstore::Connection(folder_ / "a.store", localstore::Connection::Mode::Open)
      .execute("INSERT INTO index_ACCORD_1 VALUES('x', '1', 1), ('x', '2', 1)");
  const Outcome checked = run("check a.store");
  EXPECT_EQ(checked.code, 7);
  EXPECT_EQ(checked.out,
            "ACCORD, index of attribute 1: a wrong entry for record \"1\"\n"
            "ACCORD, index of attribute 1: a wrong entry for record \"2\"\n");
  EXPECT_EQ(run("backup a.store copy.store").code, 6);
  writeText(folder_ / "TABLES.jsonl", "{\"id\":\"1\",\"fields\":[\"x\"]}\n");
  const Outcome imported = run("import a.store TABLES.jsonl");
  EXPECT_EQ(imported.code, 7);
  EXPECT_TRUE(imported.out.starts_with("1 records imported\nACCORD, index")) << imported.out;
}

TEST_F(CommandLine, AStoreInAFormatThatIsNotKnownIsLeftAlone) {
  run("create a.store");
  {
    localstore::Connection store(folder_ / "a.store", localstore::Connection::Mode::Open);
    store.execute("PRAGMA user_version = 4711");
  }
  const std::string before = readText(folder_ / "a.store");
  for (const char* const command : {"query a.store 'SSELECT TABLES'", "show a.store TABLES 1",
                                    "import a.store .", "export a.store TABLES -o x.csv"}) {
    const Outcome outcome = run(command);
    EXPECT_EQ(outcome.code, 6) << command;
    EXPECT_EQ(outcome.err,
              "tessaline-store: a.store: the store has a format that is not known here\n");
  }
  EXPECT_EQ(readText(folder_ / "a.store"), before);
}

TEST_F(CommandLine, AStoreThatAnotherProcessKeepsIsBusy) {
  run("create a.store");
  writeText(folder_ / "TABLES.jsonl", "{\"id\":\"1\",\"fields\":[\"x\"]}\n");
  const auto other = localstore::openLocalDatabase(folder_ / "a.store");
  {
    const auto kept = other->begin();
    other->write("TABLES", "2", "y");
    const Outcome outcome = run("import a.store TABLES.jsonl");
    EXPECT_EQ(outcome.code, 5);
    EXPECT_EQ(outcome.err, "tessaline-store: a.store: another process kept the store too long\n");
    EXPECT_EQ(run("query a.store 'SSELECT TABLES'").code, 0);
  }
  EXPECT_EQ(run("import a.store TABLES.jsonl").code, 0);
  EXPECT_EQ(run("query a.store 'SSELECT TABLES'").out, "1\n");
}

}  // namespace
