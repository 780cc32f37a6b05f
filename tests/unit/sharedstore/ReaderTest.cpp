// Who may only read: a role with SELECT on the tables and nothing else.
#include <gtest/gtest.h>

#include "AgreementStore.h"
#include "CommandLineRun.h"
#include "SharedStoreUnderTest.h"
#include "control/Ctr_OrgPriseCharge.h"
#include "sharedstore/SharedDatabase.h"
#include "store/Counter.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestDesktop.h"
#include "toolkit/Frame.h"

namespace {

// What a store holds, file by file.
std::map<std::string, Content> wholeContent(multivalue::Database& database) {
  std::map<std::string, Content> files;
  for (const std::string& file : database.fileNames()) files[file] = contentOf(database, file);
  return files;
}

class Reader : public testing::Test {
 protected:
  Reader() {
    // What the control reads of a body; the agreements are many.
    std::vector<std::string> import{"import", "odbc:" + store_.connection()};
    for (const char* const file :
         {"ORGPRISECHARGE", "PARAMBORDORGCHG", "COMPTEUR", "TABLES", "ACTIVITES", "ASSOCIATION",
          "PERIODESPAIE", "NATUREVOIE", "PLANCOMPTABLE"}) {
      import.push_back(std::string(TESSALINE_SAMPLE) + "/" + file + ".jsonl");
    }
    EXPECT_EQ(runStoreTool(import).code, 0);
    execute("CREATE ROLE " + role_ + " LOGIN");
    execute("GRANT USAGE ON SCHEMA " + store_.schema() + " TO " + role_);
    execute("GRANT SELECT ON ALL TABLES IN SCHEMA " + store_.schema() + " TO " + role_);
  }
  ~Reader() override {
    execute("DROP OWNED BY " + role_);
    execute("DROP ROLE " + role_);
  }

  void execute(const std::string& sql) const { store_.administrator().execute(sql); }
  std::map<std::string, Content> content() const { return wholeContent(*store_.connect({})); }

  const SharedStoreUnderTest store_;
  const std::string role_ = "reader_" + store_.schema();
  const std::string connection_ = store_.connection() + ";UID=" + role_;
  const TemporaryFolder folder_;
};

TEST_F(Reader, ReadsAll) {
  const auto reader = sharedstore::openSharedDatabase(connection_);
  EXPECT_EQ(wholeContent(*reader), content());
  EXPECT_EQ(reader->ExecuteSentence("SSELECT ORGPRISECHARGE AVEC @ID = \"001\"").text(), "001");
  EXPECT_TRUE(sharedstore::checkSharedDatabase(connection_).faults.empty());
}

TEST_F(Reader, IsServedByTheCommandLine) {
  const std::string address = "odbc:" + connection_;
  EXPECT_EQ(runStoreTool({"query", address, "SSELECT ORGPRISECHARGE AVEC @ID = \"001\""}).out,
            "001\n");
  EXPECT_EQ(runStoreTool({"show", address, "ORGPRISECHARGE", "001"}).code, 0);
  EXPECT_EQ(runStoreTool({"export", address, "ORGPRISECHARGE", "-o", folder_ / "out.csv"}).code, 0);
  EXPECT_EQ(runStoreTool({"check", address}).code, 0);
  EXPECT_EQ(runStoreTool({"copy", address, folder_ / "copy.store"}).code, 0);
}

TEST_F(Reader, WritesNothingByTheCommandLine) {
  const std::string address = "odbc:" + connection_;
  const auto before = content();
  writeText(folder_ / "ORGPRISECHARGE.jsonl", "{\"id\":\"001\",\"fields\":[\"X\"]}\n");
  writeText(folder_ / "NOUVEAU.jsonl", "{\"id\":\"1\",\"fields\":[\"X\"]}\n");
  for (const char* const file : {"ORGPRISECHARGE.jsonl", "NOUVEAU.jsonl"}) {
    const Outcome imported = runStoreTool({"import", address, folder_ / file});
    EXPECT_EQ(imported.code, 6) << file;
    EXPECT_NE(imported.err.find("permission denied"), std::string::npos) << imported.err;
  }
  EXPECT_EQ(runStoreTool({"create", address}).code, 6);
  EXPECT_EQ(content(), before);
}

TEST_F(Reader, WritesNothing) {
  const auto before = content();
  const auto reader = sharedstore::openSharedDatabase(connection_);
  const auto bodies = reader->OpenFile("ORGPRISECHARGE");
  const auto counters = reader->OpenFile("COMPTEUR");
  const auto there = bodies->ReadRecord("001");
  ASSERT_TRUE(there->found());
  there->fields().set(1, "X");
  const auto fresh = bodies->ReadRecord("998");
  fresh->fields().set(1, "X");
  EXPECT_EQ(errorOf([&] { there->DBWrite(); }), store::kIoFailure);
  EXPECT_EQ(errorOf([&] { fresh->DBWrite(); }), store::kIoFailure);
  EXPECT_EQ(errorOf([&] { bodies->DeleteRecord("001"); }), store::kIoFailure);
  EXPECT_EQ(errorOf([&] { store::nextCode(*counters); }), store::kIoFailure);
  EXPECT_EQ(errorOf([&] { reader->createFile("NEW"); }), store::kIoFailure);
  EXPECT_EQ(errorOf([&] { reader->write("TABLES", "1", "x"); }), store::kIoFailure);
  EXPECT_EQ(errorOf([&] { reader->ExecuteSentence(updateRequest(kScaleDate, "001")); }),
            store::kIoFailure);
  EXPECT_EQ(content(), before);
  EXPECT_EQ(store_.fault(), "");
}

// --- The control

class Rights : public screen::Rights {
 public:
  explicit Rights(long level) : level_(level) {}
  std::shared_ptr<screen::RightsEntry> entry(std::string_view) override {
    return std::make_shared<Entry>(level_);
  }

 private:
  class Entry : public screen::RightsEntry {
   public:
    explicit Entry(long level) : level_(level) {}
    long Level() override { return level_; }

   private:
    const long level_;
  };
  const long level_;
};

class ReadersControl : public Reader {
 protected:
  void start(long level) {
    control_.onEchec = [&](std::string_view, const store::StoreError& failure) {
      failures_.push_back(failure.code());
    };
    control_.setTheClient(std::make_shared<int>(0));
    control_.setTheDatabase(sharedstore::openSharedDatabase(connection_));
    control_.setDroitsUtilisateur(std::make_shared<Rights>(level));
    control_.Init();
    user_.fill(child<toolkit::TextBox>("Txt_CodOrgChg"), "001");
  }
  template <class T>
  T& child(std::string_view name) {
    return dynamic_cast<T&>(*control_.surface().find(name));
  }
  std::string stored(int attribute) const {
    const auto body = store_.connect({})->OpenFile("ORGPRISECHARGE")->ReadRecord("001");
    return std::string(body->fields().get(attribute));
  }

  testing_support::TestDesktop desktop_;
  control::Ctr_OrgPriseCharge control_{desktop_};
  toolkit::headless::User user_{control_.surface()};
  std::vector<unsigned> failures_;
};

TEST_F(ReadersControl, Consults) {
  start(0);
  EXPECT_TRUE(child<toolkit::Label>("Etq_Consultation").visible());
  EXPECT_EQ(child<toolkit::TextBox>("Txt_RaisonOrgChg").text(), stored(attribut::RaisonOrgChg));
  EXPECT_NE(stored(attribut::RaisonOrgChg), "");
  EXPECT_FALSE(child<toolkit::CommandButton>("Cmd_OK").visible());
  EXPECT_TRUE(user_.click(child<toolkit::CommandButton>("Cmd_Annuler")));
  EXPECT_EQ(child<toolkit::TextBox>("Txt_RaisonOrgChg").text(), "");
  EXPECT_EQ(failures_, std::vector<unsigned>{});
}

// Whom the host lets change, and the server does not.
TEST_F(ReadersControl, ASaveFailsAndWhatWasTypedStays) {
  start(2);
  const auto before = content();
  ASSERT_TRUE(user_.fill(child<toolkit::TextBox>("Txt_RaisonOrgChg"), "Autre nom"));
  user_.click(child<toolkit::CommandButton>("Cmd_OK"));
  EXPECT_EQ(failures_, std::vector<unsigned>{store::kIoFailure});
  EXPECT_EQ(child<toolkit::TextBox>("Txt_RaisonOrgChg").text(), "Autre nom");
  EXPECT_EQ(content(), before);
}

}  // namespace
