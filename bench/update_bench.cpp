// The agreements' update of the local store against the bare reads and writes that it cannot do
// without, in one transaction; and with ten times the agreements against ten updates of a tenth.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "localstore/LocalDatabase.h"
#include "store/DynamicArray.h"
#include "store/Layouts.h"

namespace {

constexpr double kLimit = 1.6;
constexpr double kGrowthLimit = 1.5;
constexpr int kTenth = 10;
constexpr int kSizes[] = {1'000, 10'000, 100'000};  // agreements of a body

std::string digits(int number, std::size_t width) {
  std::string text = std::to_string(number);
  return std::string(width - std::min(width, text.size()), '0') + text;
}

std::string codeOf(int agreements) {
  return agreements == kSizes[0] ? "001" : agreements == kSizes[1] ? "002" : "003";
}

// Beneficiaries of a body begin at a number of their own; each has two agreements.
int firstNumber(int agreements) {
  return agreements == kSizes[0] ? 0 : agreements == kSizes[1] ? 1'000 : 10'000;
}

std::string keyOf(int agreements, int i) {
  return digits(firstNumber(agreements) + i / 2, 5) + digits(1 + i % 2, 3);
}

std::string bodyText() {
  using namespace store::orgprisecharge;
  store::DynamicArray body;
  for (int row = 1; row <= 8; ++row) {
    body.set(DateRembOrgChg, row, std::to_string(21'186 - 365 * (row - 1)));
    body.set(TxRembOrgChg, row, std::to_string(2'480 - 15 * row));
    for (const int shift : {0, 2}) {
      body.set(DebRevSeulOrgChg + shift, row, std::to_string(20'000 * (row - 1)));
      body.set(FinRevSeulOrgChg + shift, row, std::to_string(20'000 * row));
    }
    body.set(BaremCoursOrgChg, row, std::to_string(150 * row));
  }
  return body.text();
}

std::string agreementText(const std::string& code, const std::string& key) {
  using namespace store::accord;
  store::DynamicArray agreement;
  agreement.set(OrgChgAcc, code);
  agreement.set(NumAideAcc, key.substr(0, 5));
  agreement.set(HeuresAcc, "7850");
  agreement.set(DateDebAcc, "20821");
  agreement.set(DateFinAcc, "21915");
  agreement.set(CodActAcc, "010P01");
  for (int period = 1; period <= 2; ++period) {
    agreement.set(TxRembAcc, period, "2465");
    agreement.set(DatePartAcc, period, std::to_string(21'551 - 365 * period));
    agreement.set(TrancheAcc, period, "3");
    agreement.set(PartBenefAcc, period, "450");
  }
  return agreement.text();
}

std::string elementsText(int number) {
  using namespace store::eltsfactaide;
  store::DynamicArray elements;
  elements.set(PartBenefElt, 1, "450");
  elements.set(PartBenefElt, 2, "450");
  // One in ten has none on file.
  if (number % 10 != 0) elements.set(RevenuElt, std::to_string(number * 7'919LL % 160'000));
  elements.set(FoyerElt, number % 3 == 0 ? "M" : "S");
  return elements.text();
}

using Records = std::vector<std::pair<std::string, std::string>>;

// The store of all updates, removed at the end, with statements written by hand on the same file.
class UpdateStore {
 public:
  UpdateStore() {
    const std::string name = "tessaline-bench-" + std::to_string(std::random_device()());
    folder_ = std::filesystem::temp_directory_path() / name;
    std::filesystem::create_directories(folder_);
    const std::string path = (folder_ / "bench.store").string();
    database_ = localstore::createLocalDatabase(path);
    fill();
    check(sqlite3_open_v2(path.c_str(), &hand_, SQLITE_OPEN_READWRITE, nullptr));
    run("PRAGMA cache_size = -65536");
    run("PRAGMA synchronous = FULL");
  }
  UpdateStore(const UpdateStore&) = delete;
  UpdateStore& operator=(const UpdateStore&) = delete;
  ~UpdateStore() {
    sqlite3_close(hand_);
    database_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  // All agreements of the body as they were before any update.
  void restore(int agreements) {
    const std::string code = codeOf(agreements);
    const auto transaction = database_->begin();
    for (int i = 0; i < agreements; ++i) {
      const std::string key = keyOf(agreements, i);
      database_->write(store::accord::kFile, key, agreementText(code, key));
    }
    transaction->commit();
  }

  void update(int agreements) {
    database_->ExecuteSentence("MAJTXACCGENE |01/02/2026|" + codeOf(agreements));
  }

  // What an update has left of a body: its agreements changed, and the two lists.
  Records written(int agreements) {
    Records found;
    const auto lists = database_->OpenFile(store::tempo::kFile);
    const auto keys = lists->ReadRecord("ACCORDSMODIFIES" + codeOf(agreements));
    const auto file = database_->OpenFile(store::accord::kFile);
    for (int i = 1; i <= keys->fields().DCount(); ++i) {
      const std::string key(keys->fields().get(i));
      found.emplace_back(key, file->ReadRecord(key)->fields().text());
    }
    return found;
  }

  // Reads what an update must read and writes these records and as many list keys.
  void bare(int agreements, const Records& records) {
    run("BEGIN IMMEDIATE");
    Statement keys(hand_, "SELECT id FROM index_ACCORD_1 WHERE value = ?1 ORDER BY id");
    Statement agreement(hand_, "SELECT record FROM record_ACCORD WHERE id = ?1");
    Statement elements(hand_, "SELECT record FROM record_ELTSFACTAIDE WHERE id = ?1");
    Statement change(hand_, "UPDATE record_ACCORD SET record = ?2 WHERE id = ?1");
    Statement list(hand_, "REPLACE INTO record_TEMPO VALUES(?1, ?2)");
    std::string changed, left, number;
    auto next = records.begin();
    const std::string code = codeOf(agreements);
    for (keys.bind(code); keys.step();) {
      const std::string key = keys.text();
      benchmark::DoNotOptimize(agreement.read(key));
      if (key.compare(0, 5, number) != 0) {
        number = key.substr(0, 5);
        benchmark::DoNotOptimize(elements.read(number));
      }
      const bool isNext = next != records.end() && next->first == key;
      std::string& keysOfList = isNext ? changed : left;
      if (!keysOfList.empty()) keysOfList += store::kAttributeMark;
      keysOfList += key;
      if (isNext) change.write(key, (next++)->second);
    }
    list.write("ACCORDSMODIFIES" + code, changed);
    list.write("ACCORDSLIMITE" + code, left);
    run("COMMIT");
    if (next != records.end()) throw std::runtime_error("not all records were written");
  }

 private:
  class Statement {
   public:
    Statement(sqlite3* database, const char* sql) {
      check(sqlite3_prepare_v2(database, sql, -1, &handle_, nullptr));
    }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    ~Statement() { sqlite3_finalize(handle_); }

    void bind(const std::string& id) {
      sqlite3_reset(handle_);
      check(sqlite3_bind_text(handle_, 1, id.data(), static_cast<int>(id.size()), SQLITE_STATIC));
    }
    bool step() { return sqlite3_step(handle_) == SQLITE_ROW; }
    std::string text() {
      const auto* bytes = static_cast<const char*>(sqlite3_column_blob(handle_, 0));
      return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(handle_, 0))};
    }
    std::string read(const std::string& id) {
      bind(id);
      return step() ? text() : std::string();
    }
    void write(const std::string& id, const std::string& record) {
      bind(id);
      check(sqlite3_bind_blob(handle_, 2, record.data(), static_cast<int>(record.size()),
                              SQLITE_STATIC));
      if (sqlite3_step(handle_) != SQLITE_DONE) throw std::runtime_error("not written");
    }

   private:
    sqlite3_stmt* handle_ = nullptr;
  };

  static void check(int result) {
    if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errstr(result));
  }
  void run(const char* sql) { check(sqlite3_exec(hand_, sql, nullptr, nullptr, nullptr)); }

  void fill() {
    std::fprintf(stderr, "making 111 000 agreements\n");
    const std::string body = bodyText();
    for (const int agreements : kSizes) {
      restore(agreements);
      const auto transaction = database_->begin();
      database_->write(store::orgprisecharge::kFile, codeOf(agreements), body);
      for (int i = 0; i < agreements; i += 2) {
        const int number = firstNumber(agreements) + i / 2;
        database_->write(store::eltsfactaide::kFile, digits(number, 5), elementsText(number));
      }
      transaction->commit();
    }
  }

  std::filesystem::path folder_;
  std::shared_ptr<localstore::LocalDatabase> database_;
  sqlite3* hand_ = nullptr;
};

UpdateStore& updateStore() {
  static UpdateStore store;
  return store;
}

int sizeOf(const benchmark::State& state) { return static_cast<int>(state.range(0)); }

// What an update of so many writes; each side must leave the same.
const Records& recordsOf(int agreements) {
  static std::map<int, Records> found;
  Records& records = found[agreements];
  if (records.empty()) {
    updateStore().restore(agreements);
    updateStore().update(agreements);
    records = updateStore().written(agreements);
  }
  return records;
}

double seconds(const std::function<void()>& work) {
  const auto from = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - from).count();
}

// One right after the other, and each first as often: what slows the machine down for a second
// slows both.
void besideBare(benchmark::State& state) {
  static bool bareFirst = false;
  const int agreements = sizeOf(state);
  const Records& records = recordsOf(agreements);
  double bare = 0;
  const auto takeBare = [&] {
    updateStore().restore(agreements);
    bare += seconds([&] { updateStore().bare(agreements, records); });
    if (updateStore().written(agreements) != records) state.SkipWithError("the two sides differ");
  };
  for (auto _ : state) {
    bareFirst = !bareFirst;
    if (bareFirst) takeBare();
    updateStore().restore(agreements);
    state.SetIterationTime(seconds([&] { updateStore().update(agreements); }));
    if (!bareFirst) takeBare();
  }
  state.counters["baseline_seconds"] = bare / static_cast<double>(state.iterations());
  state.counters["limit"] = kLimit;
}

void grown(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    updateStore().restore(sizeOf(state));
    state.ResumeTiming();
    updateStore().update(sizeOf(state));
  }
  state.counters["limit"] = kGrowthLimit;
}

void tenths(benchmark::State& state) {
  for (auto _ : state) {
    for (int i = 0; i < kTenth; ++i) {
      state.PauseTiming();
      updateStore().restore(sizeOf(state) / kTenth);
      state.ResumeTiming();
      updateStore().update(sizeOf(state) / kTenth);
    }
  }
}

// So many that each side takes about as long. The disk's own pauses are left to the medians of the
// repetitions.
constexpr int kOfTheLargest = 1;
constexpr int kOfTheMiddle = 5;

void timed(benchmark::internal::Benchmark* given, int agreements) {
  given->Arg(agreements)
      ->Unit(benchmark::kMillisecond)
      ->Iterations(agreements == kSizes[2] ? kOfTheLargest : kOfTheMiddle)
      ->UseRealTime();
}
void middle(benchmark::internal::Benchmark* given) { timed(given, kSizes[1]); }
void largest(benchmark::internal::Benchmark* given) { timed(given, kSizes[2]); }

BENCHMARK(besideBare)
    ->Name("UpdateAgreements")
    ->Arg(kSizes[2])
    ->Unit(benchmark::kMillisecond)
    ->Iterations(kOfTheLargest)
    ->UseManualTime();
BENCHMARK(tenths)->Name("UpdateGrowth/baseline")->Apply(middle);
BENCHMARK(grown)->Name("UpdateGrowth")->Apply(middle);
BENCHMARK(tenths)->Name("UpdateGrowth/baseline")->Apply(largest);
BENCHMARK(grown)->Name("UpdateGrowth")->Apply(largest);

}  // namespace

BENCHMARK_MAIN();
