#include "storetool/Transfer.h"

#include <gtest/gtest.h>

#include "storetool/Csv.h"
#include "storetool/JsonLines.h"
#include "tests/unit/localstore/LocalStore.h"

namespace {

using storetool::exportFile;
using storetool::importFiles;

void noListener(double) {}

constexpr const char* kNoUtf8 =
    "the line is no UTF-8; --encoding windows-1252 reads a file of Windows";
constexpr const char* kMarks = "a text holds U+00FD or U+00FE, which stand for the store's marks";

storetool::TextFormat spreadsheet() { return {storetool::Encoding::Windows1252, ';'}; }

class Transfer : public testing::Test {
 protected:
  // Writes a text file and imports it; the message of the error, "no error" without one.
  std::string importText(const std::string& name, std::string_view text,
                         const storetool::TextFormat& format = {}) {
    writeText(folder_ / name, text);
    return messageOfAny([&] { importFiles(*store_, {folder_ / name}, noListener, format); });
  }

  template <typename Action>
  static std::string messageOfAny(const Action& action) {
    try {
      action();
    } catch (const std::exception& error) {
      return error.what();
    }
    return "no error";
  }

  std::string record(const std::string& file, const std::string& id) {
    return store_->OpenFile(file)->ReadRecord(id)->fields().text();
  }

  TemporaryFolder folder_;
  LocalStore store_;
};

TEST_F(Transfer, JsonLinesBecomeRecordsOfTheFileTheyAreNamedAfter) {
  EXPECT_EQ(importText("NEW.jsonl",
                       "\xEF\xBB\xBF{\"id\":\"1\",\"fields\":[\"CD01\",[\"a\",\"b\"],\"\"]}\r\n"
                       "\n"
                       "{\"fields\":[],\"id\":\"2\"}\n"
                       "{\"id\":\"3\",\"fields\":[[\"only\"],[],\"\\u00e9\\n\"]}"),
            "no error");
  EXPECT_EQ(record("NEW", "1"), recordText({"CD01", "a;b", ""}));
  EXPECT_EQ(record("NEW", "2"), "");
  EXPECT_EQ(record("NEW", "3"), recordText({"only", "", "\xC3\xA9\n"}));
  EXPECT_EQ(store_->recordCount("NEW"), 3);
}

TEST_F(Transfer, ABadJsonLineIsNamedAndNothingIsImported) {
  const std::string path = folder_ / "TABLES.jsonl";
  const std::string good = "{\"id\":\"1\",\"fields\":[\"x\"]}\n";
  const auto bad = [&](const std::string& line) { return importText("TABLES.jsonl", good + line); };
  const std::string at = path + ", line 2: ";
  EXPECT_EQ(bad("{\"id\":\"2\""), at + "no JSON");
  EXPECT_EQ(bad("[1]"), at + "a record is an object with \"id\" and \"fields\"");
  EXPECT_EQ(bad("{\"id\":2,\"fields\":[]}"), at + "\"id\" is missing or no string");
  EXPECT_EQ(bad("{\"fields\":[]}"), at + "\"id\" is missing or no string");
  EXPECT_EQ(bad("{\"id\":\"\",\"fields\":[]}"), at + "\"id\" is empty");
  EXPECT_EQ(bad("{\"id\":\"2\"}"), at + "\"fields\" is missing or no array");
  EXPECT_EQ(bad("{\"id\":\"2\",\"fields\":\"x\"}"), at + "\"fields\" is missing or no array");
  EXPECT_EQ(bad("{\"id\":\"2\",\"fields\":[1]}"),
            at + "a field is a string or an array of strings");
  EXPECT_EQ(bad("{\"id\":\"2\",\"fields\":[[\"a\",null]]}"), at + "a value is a string");
  EXPECT_EQ(bad("{\"id\":\"2\",\"fields\":[],\"feilds\":[]}"), at + "unknown member \"feilds\"");
  EXPECT_EQ(bad("{\"id\":\"2\",\"fields\":[\"\xFE\"]}"), at + kNoUtf8);
  EXPECT_EQ(bad("{\"id\":\"2\",\"fields\":[\"a\"],\"id\":\"3\"}"),
            at + "the member \"id\" is given twice");
  EXPECT_EQ(bad("{\"fields\":[],\"id\":\"2\",\"fields\":[]}"),
            at + "the member \"fields\" is given twice");
  EXPECT_EQ(bad("{\"id\":\"2\",\"fields\":[]} x"), at + "no JSON");
  EXPECT_EQ(store_->recordCount("TABLES"), 0);
}

// Of a line that goes on for ever, no more than its beginning is looked at.
TEST_F(Transfer, ALineBeyond64MiBIsRefusedBeforeItIsHeld) {
  const std::map<std::string, std::string> beginnings{
      {"TABLES.jsonl", "{\"id\":\"1\",\"fields\":[]}\n"}, {"TABLES.csv", "id,1\n"}};
  for (const auto& file : beginnings) {
    const std::string path = folder_ / file.first;
    writeText(path, file.second);
    std::filesystem::resize_file(fromUtf8(path), std::uintmax_t{3} << 30);
    EXPECT_EQ(messageOfAny([&] { importFiles(*store_, {path}, noListener); }),
              path + ", line 2: the line is longer than 64 MiB");
    std::filesystem::remove(fromUtf8(path));
  }
  std::string row = "id,1\n1,\"";
  for (int i = 0; i < 66; ++i) row += std::string(1 << 20, 'x') + "\n";
  EXPECT_EQ(importText("TABLES.csv", row + "\"\n"),
            (folder_ / "TABLES.csv") + ", line 2: the row is longer than 64 MiB");
  EXPECT_EQ(store_->recordCount("TABLES"), 0);
}

TEST_F(Transfer, CsvCellsHoldAnything) {
  EXPECT_EQ(importText("NEW.csv",
                       "\xEF\xBB\xBFid,1,2,3\r\n"
                       "1,CD01,a;b,\r\n"
                       "2\n"
                       "\"3,x\",\"a \"\"quoted\"\"\r\nline\",\"\\;\\\\\",;\n"
                       "\n"
                       "4,x"),
            "no error");
  EXPECT_EQ(record("NEW", "1"), recordText({"CD01", "a;b", ""}));
  EXPECT_EQ(record("NEW", "2"), "");
  EXPECT_EQ(record("NEW", "3,x"),
            "a \"quoted\"\r\nline\xFE"
            ";\\\xFE\xFD");
  EXPECT_EQ(record("NEW", "4"), "x");
}

TEST_F(Transfer, ABadCsvRowIsNamedByTheLineItStartsOn) {
  const std::string path = folder_ / "TABLES.csv";
  const auto bad = [&](const std::string& text) { return importText("TABLES.csv", text); };
  const std::string good = "id,1,2\n1,\"two\nlines\",x\n";
  const std::string at = path + ", line 4: ";
  EXPECT_EQ(bad(good + "2,a,b,c\n"), at + "more cells than the header has");
  EXPECT_EQ(bad(good + ",a\n"), at + "the id is empty or holds a mark");
  EXPECT_EQ(bad(good + "2,\"a\n"), at + "the cell's closing double quote is missing");
  EXPECT_EQ(bad(good + "2,\"a\"b\n"), at + "a comma is expected after the closing quote");
  EXPECT_EQ(bad(good + "2,a\"b\n"), at + "a double quote inside a cell without quotes");
  EXPECT_EQ(bad(good + "2,a\\b\n"), at + "a backslash is followed by neither \";\" nor \"\\\"");
  EXPECT_EQ(bad(good + "2,a\\"), at + "a backslash is followed by neither \";\" nor \"\\\"");
  EXPECT_EQ(bad(good + "2,a\xFD"
                       "b\n"),
            at + kNoUtf8);
  EXPECT_EQ(bad("1,x\n"), path + ", line 1: the header is not id,1,2,...");
  EXPECT_EQ(bad("id,1,3\n"), path + ", line 1: the header is not id,1,2,...");
  EXPECT_EQ(bad(""), path + ", line 1: the header is missing");
  EXPECT_EQ(store_->recordCount("TABLES"), 0);
}

TEST_F(Transfer, AFolderIsImportedWholeOrNotAtAll) {
  std::filesystem::create_directory(fromUtf8(folder_ / "in"));
  writeText(folder_ / "in/ORGPRISECHARGE.jsonl", "{\"id\":\"1\",\"fields\":[\"A\"]}");
  writeText(folder_ / "in/TABLES.csv", "id,1\nT,x\n");
  writeText(folder_ / "in/notes.txt", "not for the store");
  writeText(folder_ / "in/ZZZ.jsonl", "nonsense");
  const auto run = [&] { importFiles(*store_, {folder_ / "in"}, noListener); };
  EXPECT_NE(messageOfAny(run), "no error");
  EXPECT_EQ(store_->recordCount("ORGPRISECHARGE"), 0);
  EXPECT_EQ(errorOf([&] { store_->OpenFile("ZZZ"); }), store::kUnknownFile);
  std::filesystem::remove(fromUtf8(folder_ / "in/ZZZ.jsonl"));
  EXPECT_EQ(importFiles(*store_, {folder_ / "in"}, noListener).records, 2);
  EXPECT_EQ(store_.select("SSELECT ORGPRISECHARGE AVEC 1 = \"A\""), "1");
}

TEST_F(Transfer, WhatCannotBeReadOrWrittenIsAnError) {
  EXPECT_EQ(errorOf([&] { importFiles(*store_, {folder_ / "none.jsonl"}, noListener); }),
            store::kIoFailure);
  std::filesystem::create_directory(fromUtf8(folder_ / "empty"));
  EXPECT_EQ(errorOf([&] { importFiles(*store_, {folder_ / "empty"}, noListener); }),
            store::kIoFailure);
  EXPECT_EQ(errorOf([&] { exportFile(*store_, "TABLES", folder_ / "no/T.csv", noListener); }),
            store::kIoFailure);
  EXPECT_EQ(errorOf([&] { exportFile(*store_, "NOWHERE", folder_ / "T.csv", noListener); }),
            store::kUnknownFile);
  EXPECT_EQ(importText("TABLES.txt", ""), (folder_ / "TABLES.txt") + ": neither .jsonl nor .csv");
  EXPECT_EQ(importText("BAD NAME.jsonl", "{\"id\":\"1\",\"fields\":[]}"),
            "no name for a file: \"BAD NAME\"");
}

TEST_F(Transfer, ExportAndImportGiveEveryRecordBack) {
  const std::string records[] = {"",
                                 "A",
                                 recordText({"A", ""}),
                                 recordText({"", "", "x;y;;z", "", ""}),
                                 recordText({";", "back\\slash", "semi"}) + "; \\;",
                                 "comma, \"quote\"\r\nline",
                                 std::string("zero\0byte", 9),
                                 "\xC3\xA9t\xC3\xA9"};
  int number = 0;
  for (const std::string& text : records) {
    store_->write("TABLES", "id, \"" + std::to_string(number++) + "\"", text);
  }
  for (const char* const extension : {".csv", ".jsonl"}) {
    const std::string path = folder_ / (std::string("TABLES") + extension);
    EXPECT_EQ(exportFile(*store_, "TABLES", path, noListener), std::ssize(records));
    LocalStore other;
    EXPECT_EQ(importFiles(*other, {path}, noListener).records, std::ssize(records));
    for (number = 0; const std::string& text : records) {
      const auto record =
          other->OpenFile("TABLES")->ReadRecord("id, \"" + std::to_string(number++) + "\"");
      EXPECT_TRUE(record->found());
      EXPECT_EQ(record->fields().text(), text) << extension;
    }
  }
}

TEST_F(Transfer, BytesThatAreNoTextGoThroughCsvAlone) {
  store_->write("TABLES", "1", "\x80\xFF");
  EXPECT_EQ(
      messageOfAny([&] { exportFile(*store_, "TABLES", folder_ / "TABLES.jsonl", noListener); }),
      "record \"1\" is no UTF-8, which JSON cannot hold; CSV can");
  EXPECT_FALSE(std::filesystem::exists(fromUtf8(folder_ / "TABLES.jsonl")));
  exportFile(*store_, "TABLES", folder_ / "TABLES.csv", noListener);
  EXPECT_EQ(readText(folder_ / "TABLES.csv"), "id,1\n1,\x80\xFF\n");
}

TEST_F(Transfer, TextsThatCouldNotBeToldFromMarksAreRefused) {
  const std::string json = folder_ / "TABLES.jsonl";
  const std::string csv = folder_ / "TABLES.csv";
  for (const std::string text : {"\xC3\xBD", "a\xC3\xBE", "\\u00fd", "\\u00FEb"}) {
    EXPECT_EQ(
        importText("TABLES.jsonl",
                   "{\"id\":\"1\",\"fields\":[]}\n{\"id\":\"2\",\"fields\":[\"" + text + "\"]}\n"),
        json + ", line 2: " + kMarks);
    EXPECT_EQ(importText("TABLES.jsonl", "{\"id\":\"" + text + "\",\"fields\":[]}\n"),
              json + ", line 1: " + kMarks);
  }
  EXPECT_EQ(importText("TABLES.csv", "id,1\n1,x\n2,\xC3\xBE\n"), csv + ", line 3: " + kMarks);
  EXPECT_EQ(importText("TABLES.csv", "id;1\n1;\xFD\n", spreadsheet()), csv + ", line 2: " + kMarks);
  EXPECT_EQ(store_->recordCount("TABLES"), 0);
}

TEST_F(Transfer, AFileThatIsNoUtf8IsRefusedUnlessItsEncodingIsSaid) {
  const std::string path = folder_ / "TABLES.csv";
  for (const std::string text :
       {"\xE9", "\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80"}) {
    EXPECT_EQ(importText("TABLES.csv", "id,1\n1,\xC3\xA9\n2," + text + "\n"),
              path + ", line 3: " + kNoUtf8);
  }
  EXPECT_EQ(store_->recordCount("TABLES"), 0);
  const storetool::TextFormat windows{storetool::Encoding::Windows1252, ','};
  EXPECT_EQ(importText("TABLES.csv", "id,1\n1,\xE9t\xE9 \x80 \x9Cuvre \xFF\n", windows),
            "no error");
  EXPECT_EQ(record("TABLES", "1"), "été € œuvre ÿ");
  EXPECT_EQ(importText("TABLES.jsonl", "{\"id\":\"2\",\"fields\":[\"\xC9\"]}\n", windows),
            "no error");
  EXPECT_EQ(record("TABLES", "2"), "É");
}

// As a French spreadsheet saves it: semicolons, Windows-1252, quotes where they are needed.
TEST_F(Transfer, AFileOfAFrenchSpreadsheetGoesInAndOutAgain) {
  const std::string text =
      "id;1;2;3\n"
      "001;CD01;\"\xC9lys\xE9"
      "e; \"\"Nord\"\"\";a|b, c\n"
      "002;x\\|y;;12,50 \x80\n";
  std::string windowsLines = text;
  for (std::size_t at = 0; (at = windowsLines.find('\n', at)) != std::string::npos; at += 2) {
    windowsLines.insert(at, 1, '\r');
  }
  ASSERT_EQ(importText("TABLES.csv", windowsLines, spreadsheet()), "no error");
  EXPECT_EQ(record("TABLES", "001"),
            "CD01\xFEÉlysée; \"Nord\"\xFE"
            "a\xFD"
            "b, c");
  EXPECT_EQ(record("TABLES", "002"),
            "x|y\xFE\xFE"
            "12,50 €");
  EXPECT_EQ(exportFile(*store_, "TABLES", folder_ / "OUT.csv", noListener, spreadsheet()), 2);
  EXPECT_EQ(readText(folder_ / "OUT.csv"), text);
  EXPECT_EQ(importText("TABLES.csv", "id,1\n1,x\n", spreadsheet()),
            (folder_ / "TABLES.csv") + ", line 1: the header is not id;1;2;...");
  EXPECT_EQ(importText("TABLES.csv", "id;1\n1;\"a\"b\n", spreadsheet()),
            (folder_ / "TABLES.csv") + ", line 2: a semicolon is expected after the closing quote");
}

TEST_F(Transfer, WhatAnEncodingHasNotIsNotWrittenInIt) {
  store_->write("TABLES", "1", "\xE9\xAD\x9A");
  writeText(folder_ / "TABLES.csv", "before");
  EXPECT_EQ(messageOfAny([&] {
              exportFile(*store_, "TABLES", folder_ / "TABLES.csv", noListener, spreadsheet());
            }),
            "record \"1\" holds a character that windows-1252 has not");
  EXPECT_EQ(readText(folder_ / "TABLES.csv"), "before");
}

TEST_F(Transfer, ExtensionsInCapitalsAreTakenAndNewFilesAreTold) {
  std::filesystem::create_directory(fromUtf8(folder_ / "in"));
  writeText(folder_ / "in/NEWS.CSV", "id,1\n1,x\n");
  writeText(folder_ / "in/MORE.JSONL", "{\"id\":\"1\",\"fields\":[\"y\"]}");
  writeText(folder_ / "in/NEWS.jsonl", "{\"id\":\"2\",\"fields\":[\"z\"]}");
  writeText(folder_ / "in/TABLES.Csv", "id,1\nT,x\n");
  const storetool::Imported imported = importFiles(*store_, {folder_ / "in"}, noListener);
  EXPECT_EQ(imported.records, 4);
  EXPECT_EQ(imported.newFiles, (std::vector<std::string>{"MORE", "NEWS"}));
  EXPECT_EQ(store_->recordCount("NEWS"), 2);
  EXPECT_TRUE(importFiles(*store_, {folder_ / "in"}, noListener).newFiles.empty());
}

// --- Not more than some records in memory

TEST_F(Transfer, AnExportIsOnItsWayToTheDiskFromTheFirstRecordsOn) {
  {
    const auto transaction = store_->begin();
    for (int i = 0; i < 20000; ++i) {
      store_->write("TABLES", std::to_string(100000 + i), std::string(200, 'x'));
    }
    transaction->commit();
  }
  for (const std::string name : {"TABLES.csv", "TABLES.jsonl"}) {
    writeText(folder_ / name, "before");
    std::uintmax_t most = 0;
    exportFile(*store_, "TABLES", folder_ / name, [&](double done) {
      const std::uintmax_t size = std::filesystem::file_size(fromUtf8(folder_ / (name + ".part")));
      most = std::max(most, size);
      EXPECT_GT(static_cast<double>(size) + 100000, done * 20000 * 200) << name;
      EXPECT_EQ(readText(folder_ / name), "before");
    });
    EXPECT_GT(most, 3000000U);
    EXPECT_GT(std::filesystem::file_size(fromUtf8(folder_ / name)), 4000000U);
    EXPECT_FALSE(std::filesystem::exists(fromUtf8(folder_ / (name + ".part"))));
    EXPECT_FALSE(std::filesystem::exists(fromUtf8(folder_ / (name + ".whole"))));
  }
}

TEST_F(Transfer, TheListenerIsToldHowFarTheWorkIs) {
  std::string text;
  for (int i = 0; i < 5000; ++i) text += storetool::jsonLine(std::to_string(i), "x") + "\n";
  writeText(folder_ / "TABLES.jsonl", text);
  std::vector<double> told;
  importFiles(*store_, {folder_ / "TABLES.jsonl"}, [&](double done) { told.push_back(done); });
  EXPECT_GE(told.size(), 4U);
  EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
  EXPECT_GT(told.front(), 0);
  EXPECT_LE(told.back(), 1);
}

}  // namespace
