// The store against what a program would write by hand for the same work. Each pair X and
// X/baseline runs in one process, on the same data: what counts is their ratio, at most `limit`.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "localstore/LocalDatabase.h"
#include "store/DynamicArray.h"
#include "store/Request.h"

namespace {

// --- Dynamic arrays: 100 000 records of 3 fields, built and walked

constexpr int kRecords = 100'000;
constexpr int kFields = 3;

std::string fieldText(int record, int field) {
  return std::to_string(100'000 + record) + " field " + std::to_string(field);
}

const std::string& arrayText() {
  static const std::string text = [] {
    std::string built;
    for (int record = 1; record <= kRecords; ++record) {
      if (record > 1) built += store::kAttributeMark;
      for (int field = 1; field <= kFields; ++field) {
        if (field > 1) built += store::kValueMark;
        built += fieldText(record, field);
      }
    }
    return built;
  }();
  return text;
}

std::size_t walk(const store::DynamicArray& array) {
  std::size_t characters = 0;
  for (int record = 1; record <= kRecords; ++record) {
    for (int field = 1; field <= kFields; ++field) characters += array.get(record, field).size();
  }
  return characters;
}

// Rows of fields, each a string of its own.
std::vector<std::vector<std::string>> split(const std::string& text) {
  std::vector<std::vector<std::string>> rows(1);
  std::size_t start = 0;
  for (std::size_t at = 0; at <= text.size(); ++at) {
    const bool attribute = at == text.size() || text[at] == store::kAttributeMark;
    if (!attribute && text[at] != store::kValueMark) continue;
    rows.back().push_back(text.substr(start, at - start));
    start = at + 1;
    if (attribute && at < text.size()) rows.emplace_back();
  }
  return rows;
}

void plainSplit(benchmark::State& state) {
  const std::string& text = arrayText();
  for (auto _ : state) {
    std::size_t characters = 0;
    for (const auto& row : split(text)) {
      for (const std::string& field : row) characters += field.size();
    }
    benchmark::DoNotOptimize(characters);
  }
}

void arrayFromText(benchmark::State& state) {
  const std::string& text = arrayText();
  for (auto _ : state) benchmark::DoNotOptimize(walk(store::DynamicArray(text)));
  state.counters["limit"] = 1;
}

void arrayFromValues(benchmark::State& state) {
  const auto rows = split(arrayText());
  for (auto _ : state) {
    store::DynamicArray array;
    for (int record = 1; record <= kRecords; ++record) {
      const auto& row = rows[static_cast<std::size_t>(record - 1)];
      for (int field = 1; field <= kFields; ++field) {
        array.set(record, field, row[static_cast<std::size_t>(field - 1)]);
      }
    }
    benchmark::DoNotOptimize(walk(array));
  }
  state.counters["limit"] = 1.3;
}

BENCHMARK(plainSplit)->Name("DynamicArrayFromText/baseline")->Unit(benchmark::kMillisecond);
BENCHMARK(arrayFromText)->Name("DynamicArrayFromText")->Unit(benchmark::kMillisecond);
BENCHMARK(plainSplit)->Name("DynamicArrayFromValues/baseline")->Unit(benchmark::kMillisecond);
BENCHMARK(arrayFromValues)->Name("DynamicArrayFromValues")->Unit(benchmark::kMillisecond);

// --- Selections in 1 000 000 accounts and as many agreements

std::string digits(int number, std::size_t width) {
  std::string text = std::to_string(number);
  return std::string(width - std::min(width, text.size()), '0') + text;
}

void addAccounts(localstore::LocalDatabase& database) {
  const char* const kinds[] = {"CAPITAL SOUSCRIT APPELE VERSE", "BANQUES COMPTES EN EUROS",
                               "CLIENTS VENTES DE PRESTATIONS", "FOURNISSEURS ACHATS DE BIENS",
                               "CHARGES CONSTATEES D'AVANCE",   "PRODUITS DES ACTIVITES ANNEXES",
                               "CAISSE DU SIEGE SOCIAL",        "CREDITEURS DIVERS ET COMPTES",
                               "PERSONNEL REMUNERATIONS DUES",  "ETAT SUBVENTIONS A RECEVOIR"};
  for (int entity = 1; entity <= 100; ++entity) {
    for (int account = 0; account < 10'000; ++account) {
      // Ten digits; 100 accounts of each entity begin with 411.
      const std::string number = digits(account / 10, 3) + digits(account % 10 * 1'000'000, 7);
      const std::string label =
          std::string(kinds[account * 7 % 10]) + " " + digits(account * 7919 % 10'000, 4);
      database.write("PLANCOMPTABLE", digits(entity, 3) + number, label);
    }
  }
}

// Those of every body lie all over the file, as the years bring them; those of the body 000 one
// after the other.
void addAgreements(localstore::LocalDatabase& database) {
  constexpr int kScattered = 1'000'000;
  std::mt19937 random(1);
  for (int agreement = 0; agreement < kScattered + 1'000; ++agreement) {
    const auto body = static_cast<int>(random() % 999) + 1;
    store::DynamicArray record;
    record.set(1, digits(agreement < kScattered ? body : 0, 3));
    record.set(2, digits(static_cast<int>(random() % 50'000), 6));
    record.set(5, std::to_string(20'000 + random() % 1'000));
    record.set(6, std::to_string(20'700 + random() % 1'000));
    record.set(11, std::to_string(20'500));
    record.set(12, "1250");
    record.set(13, "340");
    record.set(18, random() % 4 == 0 ? "O" : "");
    database.write("ACCORD", digits(agreement, 7), record.text());
  }
}

// The store file of all selections, made once and removed at the end.
class BigStore {
 public:
  BigStore() {
    const auto unique = std::random_device()();
    folder_ =
        std::filesystem::temp_directory_path() / ("tessaline-bench-" + std::to_string(unique));
    std::filesystem::create_directories(folder_);
    std::fprintf(stderr, "making 1 000 000 accounts and 1 000 000 agreements\n");
    database_ = localstore::createLocalDatabase(path());
    {
      const auto transaction = database_->begin();
      addAccounts(*database_);
      addAgreements(*database_);
      transaction->commit();
    }
    // Both sides find the file as a program does that opens it: what is held of it in memory is
    // what they have read.
    database_.reset();
    database_ = localstore::openLocalDatabase(path());
  }
  BigStore(const BigStore&) = delete;
  BigStore& operator=(const BigStore&) = delete;
  ~BigStore() {
    database_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  std::string path() const { return (folder_ / "bench.store").string(); }
  store::Database& database() { return *database_; }

 private:
  std::filesystem::path folder_;
  std::shared_ptr<localstore::LocalDatabase> database_;
};

BigStore& bigStore() {
  static BigStore store;
  return store;
}

// An attribute (from 1) of a record, for SQL.
void attributeFunction(sqlite3_context* context, int, sqlite3_value** values) {
  const auto* text = static_cast<const char*>(sqlite3_value_blob(values[0]));
  const char* const end = text + sqlite3_value_bytes(values[0]);
  for (int left = sqlite3_value_int(values[1]) - 1; left > 0 && text < end; --left) {
    while (text < end && *text != store::kAttributeMark) ++text;
    if (text < end) ++text;
  }
  const char* stop = text;
  while (stop < end && *stop != store::kAttributeMark) ++stop;
  sqlite3_result_text(context, text, static_cast<int>(stop - text), SQLITE_TRANSIENT);
}

// A hand-written query on the same file, prepared once.
class HandWritten {
 public:
  HandWritten(const std::string& path, const char* sql) {
    check(sqlite3_open_v2(path.c_str(), &database_, SQLITE_OPEN_READWRITE, nullptr));
    for (const char* setting : {"PRAGMA cache_size = -65536", "PRAGMA temp_store = MEMORY"}) {
      check(sqlite3_exec(database_, setting, nullptr, nullptr, nullptr));
    }
    check(sqlite3_create_function(database_, "attribute", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC,
                                  nullptr, attributeFunction, nullptr, nullptr));
    check(sqlite3_prepare_v2(database_, sql, -1, &statement_, nullptr));
  }
  HandWritten(const HandWritten&) = delete;
  HandWritten& operator=(const HandWritten&) = delete;
  ~HandWritten() {
    sqlite3_finalize(statement_);
    sqlite3_close(database_);
  }

  std::vector<std::pair<std::string, std::string>> rows() {
    std::vector<std::pair<std::string, std::string>> found;
    while (sqlite3_step(statement_) == SQLITE_ROW) found.emplace_back(column(0), column(1));
    sqlite3_reset(statement_);
    return found;
  }

 private:
  static void check(int result) {
    if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errstr(result));
  }

  std::string column(int number) {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_, number));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, number));
    return bytes == nullptr ? std::string() : std::string(bytes, size);
  }

  sqlite3* database_ = nullptr;
  sqlite3_stmt* statement_ = nullptr;
};

struct Pair {
  const char* name;
  const char* sentence;
  const char* columns;
  const char* sql;
  double limit = 1.5;
};

// What a range of many rows may take.
constexpr double kPrefixLimit = 1.15;
constexpr double kOrderLimit = 1.3;
// Both sides only copy what SQLite hands out: a busy machine shows.
constexpr double kIndexLimit = 1.5;
// They wait for memory.
constexpr double kScatteredLimit = 1.5;
// Few rows leave the sentence itself to be seen: it is read and planned anew each time, where the
// statement written by hand has been prepared once.
constexpr double kFewLimit = 1.7;
constexpr double kOneLimit = 1.7;

constexpr Pair kPairs[] = {
    {"AccountOfANumber", "SSELECT PLANCOMPTABLE AVEC @ID = \"0014113000000]\" PAR 1", "0 1",
     "SELECT id, attribute(record, 1) AS label FROM record_PLANCOMPTABLE"
     " WHERE id >= '0014113000000' AND id < '0014113000001' ORDER BY label, id",
     kOneLimit},
    {"AccountsByNumber", "SSELECT PLANCOMPTABLE AVEC @ID = \"001411]\" PAR 1", "0 1",
     "SELECT id, attribute(record, 1) AS label FROM record_PLANCOMPTABLE"
     " WHERE id >= '001411' AND id < '001412' ORDER BY label, id",
     kFewLimit},
    {"HundredAccountsByNumber", "SSELECT PLANCOMPTABLE AVEC @ID = \"00141]\" PAR 1", "0 1",
     "SELECT id, attribute(record, 1) AS label FROM record_PLANCOMPTABLE"
     " WHERE id >= '00141' AND id < '00142' ORDER BY label, id",
     kPrefixLimit},
    {"AccountsOfAClass", "SSELECT PLANCOMPTABLE AVEC @ID = \"0014]\" PAR 1", "0 1",
     "SELECT id, attribute(record, 1) AS label FROM record_PLANCOMPTABLE"
     " WHERE id >= '0014' AND id < '0015' ORDER BY label, id",
     kPrefixLimit},
    {"AccountsByLabel",
     "SSELECT PLANCOMPTABLE AVEC 1 = \"CLIENTS VENTES DE PRESTATIONS 12]\" PAR 1", "0 1",
     "SELECT id, value FROM index_PLANCOMPTABLE_1"
     " WHERE value >= 'CLIENTS VENTES DE PRESTATIONS 12' AND value < 'CLIENTS VENTES DE "
     "PRESTATIONS 13' ORDER BY value, id",
     kIndexLimit},
    {"AccountsByLabelOfAnEntity",
     "SSELECT PLANCOMPTABLE AVEC 1 = \"CLIENTS VENTES DE PRESTATIONS 12]\" AND AVEC @ID = \"001]\" "
     "PAR 1",
     "0 1",
     "SELECT id, value FROM index_PLANCOMPTABLE_1"
     " WHERE value >= 'CLIENTS VENTES DE PRESTATIONS 12' AND value < 'CLIENTS VENTES DE "
     "PRESTATIONS 13' AND id >= '001' AND id < '002'"
     " ORDER BY value, id",
     // Whoever wrote the SQL knew which of the two ranges is the narrow one; the store finds out.
     kFewLimit},
    {"AccountsByShortLabelOfAnEntity",
     "SSELECT PLANCOMPTABLE AVEC 1 = \"CLI]\" AND AVEC @ID = \"001]\" PAR 1", "0 1",
     "SELECT id, value FROM index_PLANCOMPTABLE_1"
     " WHERE value >= 'CLI' AND value < 'CLJ' AND id >= '001' AND id < '002'"
     " ORDER BY value, id"},
    {"ActiveAgreements",
     "SSELECT ACCORD AVEC OrgChgAcc = \"042\" AND AVEC 18 = \"\" AND AVEC 6 >= \"21186\"", "0",
     "SELECT i.id, '' FROM index_ACCORD_1 i CROSS JOIN record_ACCORD r ON r.id = i.id"
     " WHERE i.value = '042' AND attribute(r.record, 18) = ''"
     " AND CAST(attribute(r.record, 6) AS INTEGER) >= 21186 ORDER BY i.id",
     kScatteredLimit},
    {"ActiveAgreementsInARow",
     "SSELECT ACCORD AVEC OrgChgAcc = \"000\" AND AVEC 18 = \"\" AND AVEC 6 >= \"21186\"", "0",
     "SELECT i.id, '' FROM index_ACCORD_1 i CROSS JOIN record_ACCORD r ON r.id = i.id"
     " WHERE i.value = '000' AND attribute(r.record, 18) = ''"
     " AND CAST(attribute(r.record, 6) AS INTEGER) >= 21186 ORDER BY i.id",
     kPrefixLimit},
    {"AllAccountsInOrder", "SSELECT PLANCOMPTABLE PAR 1", "0 1",
     "SELECT id, attribute(record, 1) AS label FROM record_PLANCOMPTABLE ORDER BY label, id",
     kOrderLimit},
    // All numbers have as many digits, so that texts are in their order too.
    {"AllAgreementsInOrder", "SSELECT ACCORD PAR 2", "0 2",
     "SELECT id, attribute(record, 2) AS number FROM record_ACCORD ORDER BY number, id",
     kOrderLimit},
};

void bySentence(benchmark::State& state, const Pair& pair) {
  store::Database& database = bigStore().database();
  int found = 0;
  for (auto _ : state) {
    found = store::select(database, pair.sentence, "", pair.columns).DCount();
    benchmark::DoNotOptimize(found);
  }
  state.counters["rows"] = found;
  state.counters["limit"] = pair.limit;
}

void bySql(benchmark::State& state, const Pair& pair) {
  HandWritten query(bigStore().path(), pair.sql);
  std::size_t found = 0;
  for (auto _ : state) {
    found = query.rows().size();
    benchmark::DoNotOptimize(found);
  }
  state.counters["rows"] = static_cast<double>(found);
}

std::string answerOf(const std::vector<std::pair<std::string, std::string>>& rows,
                     std::string_view columns) {
  std::string answer;
  for (const auto& [id, value] : rows) {
    if (!answer.empty()) answer += store::kAttributeMark;
    answer += id;
    if (columns != "0") (answer += store::kValueMark) += value;
  }
  return answer;
}

// The two sides of a pair must answer the same text before their times mean anything.
void checkAnswers() {
  for (const Pair& pair : kPairs) {
    const auto answer = store::select(bigStore().database(), pair.sentence, "", pair.columns);
    const auto rows = HandWritten(bigStore().path(), pair.sql).rows();
    if (answer.text() != answerOf(rows, pair.columns))
      throw std::runtime_error(std::string("the two sides differ: ") + pair.name);
  }
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  for (const Pair& pair : kPairs) {
    const std::string name = pair.name;
    benchmark::RegisterBenchmark((name + "/baseline").c_str(), [&pair](benchmark::State& state) {
      bySql(state, pair);
    })->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark(name.c_str(), [&pair](benchmark::State& state) {
      bySentence(state, pair);
    })->Unit(benchmark::kMicrosecond);
  }
  checkAnswers();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
