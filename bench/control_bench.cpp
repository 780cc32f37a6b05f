// The control over a real store on disk, against the bare store calls that it makes.
#include <benchmark/benchmark.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/Hosted.h"
#include "store/Layouts.h"
#include "toolkit/TextBox.h"

namespace {

constexpr int kBodies = 999;
constexpr double kLimit = 2.0;

std::string codeOf(int number) {
  std::string digits = std::to_string(number);
  return std::string(3 - digits.size(), '0') + digits;
}

void writeBodies(localstore::LocalDatabase& database) {
  for (int i = 1; i <= kBodies; ++i) {
    store::DynamicArray body;
    body.set(store::orgprisecharge::SigleOrgChg, "ORG" + codeOf(i));
    body.set(store::orgprisecharge::RaisonOrgChg, "ORGANISME DE PRISE EN CHARGE " + codeOf(i));
    for (int a = store::adresse::Premier; a <= store::adresse::Premier + 9; ++a) {
      body.set(a, "adresse " + std::to_string(a));
    }
    body.set(store::orgprisecharge::InterlocDossOrgChg, "Mme Dossier");
    body.set(store::orgprisecharge::InterlocFactOrgChg, "M. Facture");
    body.set(store::orgprisecharge::TypeOrgChg, "P");
    database.write(store::orgprisecharge::kFile, codeOf(i), body.text());
  }
}

void writeTables(localstore::LocalDatabase& database) {
  store::DynamicArray table;
  for (int i = 1; i <= 20; ++i) {
    table.set(2, i, "P" + std::to_string(i));
    table.set(3, i, "Pièce " + std::to_string(i));
  }
  database.write(store::tables::kFile, store::tables::kPiecesRenouv, table.text());
  database.write(store::tables::kFile, store::tables::kStatOrgChg, table.text());
  store::DynamicArray counter;
  counter.set(10, "999");
  counter.set(15, "1");
  database.write(store::compteur::kFile, "999", counter.text());
}

std::shared_ptr<localstore::LocalDatabase> database() {
  static const bench::TemporaryStore store([](localstore::LocalDatabase& database) {
    writeBodies(database);
    writeTables(database);
  });
  return store.database();
}

// Notes each call that passes through it, so that it can be made again without the control.
using Calls = std::vector<std::function<void(store::Database&)>>;

class NotedFile : public store::File {
 public:
  NotedFile(std::string name, std::unique_ptr<store::File> file, Calls& calls)
      : name_(std::move(name)), file_(std::move(file)), calls_(calls) {}
  std::unique_ptr<store::Record> ReadRecord(std::string_view id) override {
    calls_.emplace_back([name = name_, key = std::string(id)](store::Database& bare) {
      benchmark::DoNotOptimize(bare.OpenFile(name)->ReadRecord(key)->fields().text());
    });
    return file_->ReadRecord(id);
  }
  int DeleteRecord(std::string_view id) override { return file_->DeleteRecord(id); }

 private:
  std::string name_;
  std::unique_ptr<store::File> file_;
  Calls& calls_;
};

class NotedDatabase : public store::Database {
 public:
  NotedDatabase(std::shared_ptr<store::Database> bare, Calls& calls)
      : bare_(std::move(bare)), calls_(calls) {}
  std::unique_ptr<store::File> OpenFile(std::string_view name) override {
    return std::make_unique<NotedFile>(std::string(name), bare_->OpenFile(name), calls_);
  }
  store::DynamicArray ExecuteSentence(std::string_view request) override {
    calls_.emplace_back([text = std::string(request)](store::Database& bare) {
      benchmark::DoNotOptimize(bare.ExecuteSentence(text).DCount());
    });
    return bare_->ExecuteSentence(request);
  }

 private:
  std::shared_ptr<store::Database> bare_;
  Calls& calls_;
};

void replay(const Calls& calls) {
  for (const auto& call : calls) call(*database());
}

// Start-up: the control made and Init run, with the list of 999 acronyms filled.
void init(benchmark::State& state) {
  for (auto _ : state) {
    bench::Hosted hosted(database());
    hosted.control.Init();
  }
  state.counters["limit"] = kLimit;
}
BENCHMARK(init)->Name("Init")->Unit(benchmark::kMicrosecond);

void initBare(benchmark::State& state) {
  Calls calls;
  {
    bench::Hosted hosted(std::make_shared<NotedDatabase>(database(), calls));
    hosted.control.Init();
  }
  for (auto _ : state) replay(calls);
}
BENCHMARK(initBare)->Name("Init/baseline")->Unit(benchmark::kMicrosecond);

// A code typed, up to the record shown.
void lookUp(benchmark::State& state) {
  bench::Hosted hosted(database());
  hosted.control.Init();
  auto& code = hosted.child<toolkit::TextBox>("Txt_CodOrgChg");
  auto& name = hosted.child<toolkit::TextBox>("Txt_RaisonOrgChg");
  int i = 0;
  for (auto _ : state) {
    code.userEdit(codeOf(i++ % kBodies + 1));
    if (name.text().empty()) state.SkipWithError("nothing was shown");
  }
  state.counters["limit"] = kLimit;
}
BENCHMARK(lookUp)->Name("LookUp")->Unit(benchmark::kMicrosecond);

void lookUpBare(benchmark::State& state) {
  const auto bodies = database()->OpenFile(store::orgprisecharge::kFile);
  int i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(bodies->ReadRecord(codeOf(i++ % kBodies + 1))->fields().text());
  }
}
BENCHMARK(lookUpBare)->Name("LookUp/baseline")->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
