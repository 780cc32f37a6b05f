// The control over a real store on disk, against the bare store calls that it makes.
#include <benchmark/benchmark.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/Heap.h"
#include "bench/Hosted.h"
#include "store/Layouts.h"
#include "toolkit/Buttons.h"
#include "toolkit/TextBox.h"

namespace {

constexpr int kBodies = 999;
constexpr double kInitLimit = 2.5;
constexpr double kLookUpLimit = 2.3;
constexpr double kSaveLimit = 2.0;
constexpr double kHeapLimit = 1.05;
constexpr int kRates = 12;
constexpr int kDeductions = 3;
constexpr int kBrackets = 8;

std::string codeOf(int number) {
  std::string digits = std::to_string(number);
  return std::string(3 - digits.size(), '0') + digits;
}

constexpr const char* kEntity = "010";
constexpr const char* kDebit = "4110000000";
constexpr const char* kCredit = "7060000000";

// What the pages after the first show of a principal body in hours.
void writeRules(store::DynamicArray& body) {
  namespace attribut = store::orgprisecharge;
  body.set(attribut::PeriodFactOrgChg, "M");
  body.set(attribut::TypeOrgChg, "P");
  body.set(attribut::PlafondOrg, "3");
  body.set(attribut::RenouvOrgChg, "1");
  for (int i = 1; i <= 4; ++i) body.set(attribut::PieceRenouOrgChg, i, "P" + std::to_string(i));
  body.set(attribut::DebitOrgChg, kDebit);
  body.set(attribut::CreditOrgChg, kCredit);
  body.set(attribut::AttribOrgChg, "H");
  body.set(attribut::StatsOrgChg, "P7");
  body.set(attribut::DemAccordOrgChg, "1");
  body.set(attribut::TypeBordOrgChg, "I");
  body.set(attribut::Entite, kEntity);
  for (int i = 1; i <= 5; ++i) body.set(attribut::CodActSelect, i, "010P" + std::to_string(i));
  body.set(attribut::CptPrestationService, kCredit);
  for (int i = 1; i <= 8; ++i) body.set(attribut::ParamSelecOrgChg, i, std::to_string(i));
}

void writeCoverage(store::DynamicArray& body) {
  namespace attribut = store::orgprisecharge;
  for (int i = 0; i < kRates; ++i) {
    body.set(attribut::DateRembOrgChg, i + 1, std::to_string(21186 - 30 * i));
    body.set(attribut::TxRembOrgChg, i + 1, std::to_string(2000 - 10 * i));
    body.set(attribut::TxRembMajOrgChg, i + 1, std::to_string(2500 - 10 * i));
    body.set(attribut::PrestServOrgChg, i + 1, std::to_string(1500 - 10 * i));
  }
  for (int i = 0; i < kDeductions; ++i) {
    body.set(attribut::DebAbatHOrgChg, i + 1, std::to_string(1000 * i));
    body.set(attribut::FinAbatHOrgChg, i + 1, std::to_string(1000 * (i + 1)));
    body.set(attribut::PourcentAbatOrgChg, i + 1, std::to_string(500 * (i + 1)));
  }
  body.set(attribut::AjusTarif, "1");
  body.set(attribut::CoutGlobal, "0");
  body.set(attribut::DesFacture, "Prise en charge des heures");
}

void writeScale(store::DynamicArray& body) {
  namespace attribut = store::orgprisecharge;
  for (int i = 0; i < kBrackets; ++i) {
    body.set(attribut::DebRevSeulOrgChg, i + 1, std::to_string(10000 * i));
    body.set(attribut::FinRevSeulOrgChg, i + 1, std::to_string(10000 * (i + 1)));
    body.set(attribut::DebRevMenOrgChg, i + 1, std::to_string(15000 * i));
    body.set(attribut::FinRevMenOrgChg, i + 1, std::to_string(15000 * (i + 1)));
    body.set(attribut::BaremPrecOrgChg, i + 1, std::to_string(300 + 10 * i));
    body.set(attribut::BaremCoursOrgChg, i + 1, std::to_string(400 + 10 * i));
  }
  body.set(attribut::DatBaremPrec, "20821");
  body.set(attribut::DatBaremCours, "21186");
  body.set(attribut::Bareme, "R");
  body.set(attribut::GestPartBenef, "M");
  body.set(attribut::Abonnement, "1");
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
    writeRules(body);
    writeCoverage(body);
    writeScale(body);
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
  for (int i = 1; i <= 20; ++i) {
    store::DynamicArray activity;
    activity.set(store::activites::Libelle, "Activité " + std::to_string(i));
    activity.set(store::activites::CodAssoActivite, kEntity);
    activity.set(store::activites::TypeActivite, "P");
    activity.set(store::activites::Service, "SAAD");
    database.write(store::activites::kFile, "010P" + std::to_string(i), activity.text());
    database.write(store::parambordorgchg::kFile, std::to_string(i),
                   store::DynamicArray("Colonne " + std::to_string(i) +
                                       "\xFE"
                                       "10")
                       .text());
  }
  database.write(store::association::kFile, kEntity, "AIDE A DOMICILE");
  for (const char* account : {kDebit, kCredit}) {
    database.write(store::plancomptable::kFile, std::string(kEntity) + account, "COMPTE");
  }
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

class NotedRecord : public store::Record {
 public:
  NotedRecord(const std::shared_ptr<store::File>& file, std::string_view id, Calls& calls)
      : NotedRecord(file, file->ReadRecord(id), calls) {}
  void DBWrite() override {
    record_->fields() = fields();
    record_->DBWrite();
    calls_.emplace_back([file = file_, record = record_](store::Database&) { record->DBWrite(); });
  }

 private:
  NotedRecord(std::shared_ptr<store::File> file, std::shared_ptr<store::Record> record,
              Calls& calls)
      : Record(record->fields(), record->found()),
        file_(std::move(file)),
        record_(std::move(record)),
        calls_(calls) {}

  std::shared_ptr<store::File> file_;  // outlives its record
  std::shared_ptr<store::Record> record_;
  Calls& calls_;
};

class NotedFile : public store::File {
 public:
  NotedFile(std::string name, std::shared_ptr<store::File> file, Calls& calls)
      : name_(std::move(name)), file_(std::move(file)), calls_(calls) {}
  std::unique_ptr<store::Record> ReadRecord(std::string_view id) override {
    calls_.emplace_back([name = name_, key = std::string(id)](store::Database& bare) {
      benchmark::DoNotOptimize(bare.OpenFile(name)->ReadRecord(key)->fields().text());
    });
    return std::make_unique<NotedRecord>(file_, id, calls_);
  }
  int DeleteRecord(std::string_view id) override { return file_->DeleteRecord(id); }

 private:
  std::string name_;
  std::shared_ptr<store::File> file_;
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
  state.counters["limit"] = kInitLimit;
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
  state.counters["limit"] = kLookUpLimit;
}
BENCHMARK(lookUp)->Name("LookUp")->Unit(benchmark::kMicrosecond);

void lookUpBare(benchmark::State& state) {
  Calls noted;
  bench::Hosted hosted(std::make_shared<NotedDatabase>(database(), noted));
  hosted.control.Init();
  auto& code = hosted.child<toolkit::TextBox>("Txt_CodOrgChg");
  std::vector<Calls> ofBody;
  for (int i = 1; i <= kBodies; ++i) {
    noted.clear();
    code.userEdit(codeOf(i));
    ofBody.push_back(noted);
  }
  std::size_t i = 0;
  for (auto _ : state) replay(ofBody[i++ % ofBody.size()]);
}
BENCHMARK(lookUpBare)->Name("LookUp/baseline")->Unit(benchmark::kMicrosecond);

// A complete body saved, from the button to the empty screen and the acronyms filled again.
constexpr int kSaved = 50;

void save(benchmark::State& state) {
  bench::Hosted hosted(database());
  hosted.control.Init();
  auto& code = hosted.child<toolkit::TextBox>("Txt_CodOrgChg");
  auto& name = hosted.child<toolkit::TextBox>("Txt_RaisonOrgChg");
  auto& ok = hosted.child<toolkit::CommandButton>("Cmd_OK");
  int i = 0;
  for (auto _ : state) {
    state.PauseTiming();
    code.userEdit(codeOf(i++ % kSaved + 1));
    if (name.text().empty()) state.SkipWithError("nothing was shown");
    state.ResumeTiming();
    ok.userClick();
    if (!name.text().empty()) state.SkipWithError("the body was not saved");
  }
  state.counters["limit"] = kSaveLimit;
}
BENCHMARK(save)->Name("Save")->Unit(benchmark::kMicrosecond)->UseRealTime();

void saveBare(benchmark::State& state) {
  Calls noted;
  bench::Hosted hosted(std::make_shared<NotedDatabase>(database(), noted));
  hosted.control.Init();
  auto& code = hosted.child<toolkit::TextBox>("Txt_CodOrgChg");
  auto& ok = hosted.child<toolkit::CommandButton>("Cmd_OK");
  std::vector<Calls> ofBody;
  for (int i = 1; i <= kSaved; ++i) {
    code.userEdit(codeOf(i));
    noted.clear();
    ok.userClick();
    ofBody.push_back(noted);
  }
  std::size_t i = 0;
  for (auto _ : state) replay(ofBody[i++ % ofBody.size()]);
}
BENCHMARK(saveBare)->Name("Save/baseline")->Unit(benchmark::kMicrosecond)->UseRealTime();

// What the control holds after many look-ups, against what it holds after a few.
void heapOfLookUps(benchmark::State& state) {
  const auto store = database();
  bench::HeapManager::count();
  bench::Hosted hosted(store);
  hosted.control.Init();
  auto& code = hosted.child<toolkit::TextBox>("Txt_CodOrgChg");
  int i = 0;
  for (auto _ : state) code.userEdit(codeOf(i++ % kBodies + 1));
  state.counters["heap"] = static_cast<double>(bench::HeapManager::inUse());
  state.counters["heap_limit"] = kHeapLimit;
}
BENCHMARK(heapOfLookUps)->Name("LookUps")->Unit(benchmark::kMicrosecond)->Iterations(10'000);
BENCHMARK(heapOfLookUps)->Name("LookUps/baseline")->Unit(benchmark::kMicrosecond)->Iterations(100);

}  // namespace

BENCHMARK_MAIN();
