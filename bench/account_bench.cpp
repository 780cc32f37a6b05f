// An account searched by two digits that 100 000 accounts begin with, from Enter to the filled
// combo box: against the bare store call and the bare filling of the same lines, in time and in the
// memory that stands at its highest.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/Heap.h"
#include "bench/Hosted.h"
#include "store/Layouts.h"
#include "store/Request.h"
#include "toolkit/ComboBox.h"
#include "toolkit/SSTab.h"
#include "toolkit/TextBox.h"

namespace {

constexpr int kFound = 100'000;
constexpr double kLimit = 1.5;
constexpr double kMemoryLimit = 1.5;
constexpr const char* kEntity = "010";
constexpr const char* kTyped = "41";
constexpr const char* kSentence = "SSELECT PLANCOMPTABLE AVEC @ID = \"01041]\" PAR 1";

std::string digits(int number, std::size_t width) {
  const std::string text = std::to_string(number);
  return std::string(width - text.size(), '0') + text;
}

void writeAccounts(localstore::LocalDatabase& database, std::string_view prefix, int count) {
  for (int i = 0; i < count; ++i) {
    // Labels come in another order than numbers.
    const std::string label = "CLIENTS VENTES DE PRESTATIONS " + digits(i * 7919 % kFound, 6);
    const std::string number = std::string(prefix) + digits(i, 10 - prefix.size());
    database.write(store::plancomptable::kFile, kEntity + number, label);
  }
}

void writeStore(localstore::LocalDatabase& database) {
  writeAccounts(database, kTyped, kFound);
  writeAccounts(database, "70", kFound);
  database.write(store::association::kFile, kEntity, "ASSOCIATION DU VAL");
  store::DynamicArray body;
  body.set(store::orgprisecharge::SigleOrgChg, "ORG");
  body.set(store::orgprisecharge::Entite, kEntity);
  database.write(store::orgprisecharge::kFile, "001", body.text());
  store::DynamicArray counter;
  counter.set(store::compteur::DernierOrgChg, "001");
  counter.set(store::compteur::InterfaceComptable, "1");
  database.write(store::compteur::kFile, "999", counter.text());
}

std::shared_ptr<localstore::LocalDatabase> database() {
  static const bench::TemporaryStore store(writeStore);
  return store.database();
}

store::DynamicArray answer() {
  return store::select(*database(), kSentence, store::plancomptable::kFile, "0 1");
}

std::vector<toolkit::ListItem> linesOf(const store::DynamicArray& found) {
  std::vector<toolkit::ListItem> lines;
  lines.reserve(static_cast<std::size_t>(found.DCount()));
  for (int i = 1; i <= found.DCount(); ++i) lines.push_back({std::string(found.get(i, 2)), 0});
  return lines;
}

void search(benchmark::State& state) {
  bench::Hosted hosted(database());
  hosted.control.Init();  // the only body is shown
  hosted.child<toolkit::SSTab>("Ong_OrgPriseChg").setTab(1);
  auto& number = hosted.child<toolkit::TextBox>("Txt_DebitOrgChg");
  auto& labels = hosted.child<toolkit::ComboBox>("Cbo_DebitOrgChg");
  hosted.control.surface().moveFocus(&number);
  for (auto _ : state) {
    state.PauseTiming();
    number.userEdit(kTyped);
    state.ResumeTiming();
    number.userKeyPress(13);
    if (labels.listCount() != kFound) state.SkipWithError("the accounts were not found");
  }
  state.counters["limit"] = kLimit;
  state.counters["memory_limit"] = kMemoryLimit;
}
BENCHMARK(search)->Name("AccountSearch")->Unit(benchmark::kMillisecond);

void searchBare(benchmark::State& state) {
  toolkit::Surface surface("bench");
  toolkit::ComboBox combo(&surface, "Cbo_DebitOrgChg");
  for (auto _ : state) {
    state.PauseTiming();
    combo.clear();
    state.ResumeTiming();
    const store::DynamicArray found = answer();
    combo.setItems(linesOf(found));
    if (combo.listCount() != kFound) state.SkipWithError("the accounts were not found");
  }
}
BENCHMARK(searchBare)->Name("AccountSearch/baseline")->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  bench::HeapManager memory;
  benchmark::Initialize(&argc, argv);
  benchmark::RegisterMemoryManager(&memory);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::RegisterMemoryManager(nullptr);
  return 0;
}
