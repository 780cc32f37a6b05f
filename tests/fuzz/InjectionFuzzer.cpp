// Texts of any kind as keys, values, file names, sentences, columns and addresses of a store on a
// server: what was written is read byte for byte, what is asked is answered as a store in a file
// answers it, and nothing else on the server is touched. An input is a letter and parts, each after
// a line end: what it is tried as, tests/fuzz/corpus/injection shows.
#include <algorithm>
#include <map>
#include <optional>
#include <vector>

#include "localstore/LocalDatabase.h"
#include "multivalue/Sentence.h"
#include "sharedstore/Address.h"
#include "sharedstore/SharedDatabase.h"
#include "store/StoreError.h"
#include "tests/fuzz/Fuzz.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/unit/sharedstore/SharedStoreUnderTest.h"

namespace fuzz {
namespace {

constexpr const char* kBodies = "ORGPRISECHARGE";

// Attributes between ";", values between "|".
std::string recordOf(std::string text) {
  std::replace(text.begin(), text.end(), ';', store::kAttributeMark);
  std::replace(text.begin(), text.end(), '|', store::kValueMark);
  return text;
}

const std::map<std::string, std::string>& bodies() {
  static const std::map<std::string, std::string> kAll{
      {"001", recordOf("CD01;Name|x")}, {"002", recordOf("' OR ''=';--")},
      {"003", recordOf("\\x41;\\")},    {"004", recordOf("?;$1|{fn now()}")},
      {"005", recordOf(";12|3")},       {"006", recordOf("CD01|CD02;7")},
      {"a'b", recordOf("\xC3\x89;%_")}, {"\"", recordOf("\"; DROP TABLE canary")},
      {"\\", recordOf("A \"B\" C;0")},  {"id", recordOf("record;first")},
      {"zero", std::string("a\0b", 3)}};
  return kAll;
}

void fill(multivalue::Database& database) {
  const auto transaction = database.begin();
  for (const auto& [id, text] : bodies()) database.write(kBodies, id, text);
  transaction->commit();
}

// What an action is refused with; nothing when it is done.
struct Refusal {
  unsigned code = 0;
  std::string message;
  bool operator==(const Refusal&) const = default;
};
template <typename Action>
std::optional<Refusal> refusalOf(const Action& action) {
  try {
    action();
  } catch (const store::StoreError& error) {
    return Refusal{error.code(), error.what()};
  }
  return std::nullopt;
}

class Stores {
 public:
  Stores() {
    fill(*shared_);
    fill(*local_);
    sharedstore::Connection& server = store_.administrator();
    server.execute("CREATE TABLE canary (song text)");
    server.execute("INSERT INTO canary VALUES ('tweet')");
    before_ = state();
  }

  multivalue::Database& shared() { return *shared_; }
  multivalue::Database& other() { return *other_; }
  multivalue::Database& local() { return *local_; }
  std::string connection() const { return store_.connection(); }

  void expectUntouched(const char* rule) { expectSame(rule, state(), before_); }

 private:
  // Every table there is, every role, the canary, every record and every entry.
  std::string state() {
    const std::string schema = "n.nspname = '" + store_.schema() + "'";
    const auto all = [](const std::string& columns, const std::string& table) {
      return "(SELECT string_agg(" + columns + ", ' ' ORDER BY 1) FROM " + table + ")";
    };
    sharedstore::Statement found(
        store_.administrator(),
        sharedstore::Sql(
            "SELECT concat_ws('/', " +
            all("c.relname::text",
                "pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace WHERE " + schema +
                    " AND c.relkind = 'r'") +
            ", (SELECT count(*) FROM pg_roles), " + all("song", "canary") + ", " +
            all("encode(id || '=' || record, 'hex')", "\"record_ORGPRISECHARGE\"") + ", " +
            all("encode(id || '=' || value, 'hex')", "\"index_ORGPRISECHARGE_1\"") + ")"));
    found.next();
    return found.text(0);
  }

  const SharedStoreUnderTest store_;
  const TemporaryFolder folder_;
  const std::shared_ptr<multivalue::Database> shared_ = store_.connect({});
  const std::shared_ptr<multivalue::Database> other_ = store_.connect({});
  const std::shared_ptr<multivalue::Database> local_ =
      localstore::createLocalDatabase(folder_ / "fuzz.store");
  std::string before_;
};

// --- What a text is tried as.

// In both stores, read by another client, found by its attribute, and deleted again.
void tryRecord(Stores& stores, const std::string& id, const std::string& text) {
  if (bodies().contains(id)) return;
  const auto write = [&](multivalue::Database& database) {
    return refusalOf([&] {
      const auto file = database.OpenFile(kBodies);
      const auto record = file->ReadRecord(id);
      record->fields().setText(text);
      record->DBWrite();
    });
  };
  const auto refused = write(stores.shared());
  expect(refused == write(stores.local()), "a record is refused as a store in a file refuses it",
         refused ? refused->message : std::string());
  if (refused) {
    expect(refused->code == store::kBadValue, "a record is refused for its texts alone");
    return;
  }
  const auto read = stores.other().OpenFile(kBodies)->ReadRecord(id);
  expect(read->found(), "what was written is there");
  expectSame("what was written is read byte for byte", read->fields().text(), text);
  const std::string request = "SSELECT ORGPRISECHARGE AVEC 1 = \"" +
                              std::string(store::DynamicArray(text).get(1, 1)) + "\"";
  expectSame("what was written is found", stores.other().ExecuteSentence(request).text(),
             stores.local().ExecuteSentence(request).text());
  for (multivalue::Database* each : {&stores.shared(), &stores.local()}) {
    expect(each->OpenFile(kBodies)->DeleteRecord(id) == 0, "what was written is deleted");
  }
}

void tryFileName(Stores& stores, const std::string& name) {
  const auto undone = stores.shared().begin();
  const auto refused = refusalOf([&] {
    stores.shared().createFile(name);
    stores.shared().write(name, "1", "x");
    expectSame("a new file holds what was written",
               stores.shared().OpenFile(name)->ReadRecord("1")->fields().text(), "x");
  });
  expect(!refused || refused->code == store::kBadValue, "a name that is none is refused as such",
         refused ? refused->message : std::string());
}

void tryRequest(Stores& stores, const std::string& request) {
  std::string answers[2];
  const auto run = [&](multivalue::Database& database, std::string& answer) {
    const auto undone = database.begin();
    return refusalOf([&] { answer = database.ExecuteSentence(request).text(); });
  };
  const auto refused = run(stores.shared(), answers[0]);
  expect(refused == run(stores.local(), answers[1]), "a request is refused as a file refuses it",
         refused ? refused->message : std::string());
  expectSame("a request is answered as a file answers it", answers[0], answers[1]);
}

std::string inBraces(const std::string& text) {
  std::string braced = "{";
  for (const char c : text) braced += c == '}' ? std::string("}}") : std::string(1, c);
  return braced + "}";
}

// As a setting of the address, and as a password, which no text shows.
void tryAddress(Stores& stores, const std::string& setting, const std::string& text) {
  constexpr std::string_view kHidden = "failed: ***!";
  if (kHidden.find(text) == std::string_view::npos) {
    const std::string shown =
        sharedstore::withoutPasswords("failed: " + text + "!", "DSN=x;PWD=" + inBraces(text));
    expect(shown.find(text) == std::string::npos, "a password is in no text", shown);
  }
  const std::string address = stores.connection() + ";" + setting + "=" + inBraces(text);
  refusalOf([&] { sharedstore::openSharedDatabase(address); });
}

}  // namespace

void check(std::string_view input) {
  static Stores stores;
  const std::string_view kind = upTo('\n', input);
  const std::string first(upTo('\n', input));
  const std::string second(input);
  if (kind == "record") {
    tryRecord(stores, first, second);
  } else if (kind == "file") {
    tryFileName(stores, first);
  } else if (kind == "columns") {
    tryRequest(stores, first + store::kAttributeMark + store::kAttributeMark + second);
  } else if (kind == "value") {
    std::string request = "SSELECT ORGPRISECHARGE AVEC 2 = \"" + first + "\"";
    if (!second.empty()) request += " AND AVEC 1 = \"" + second + "\"";
    tryRequest(stores, request);
  } else if (kind == "user") {
    tryAddress(stores, "UID", first);
  } else if (kind == "database") {
    tryAddress(stores, "Database", first);
  } else {
    tryRequest(stores, std::string(kind));
  }
  stores.expectUntouched("nothing else on the server is touched");
}

}  // namespace fuzz
