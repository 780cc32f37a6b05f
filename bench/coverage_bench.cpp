// The coverage page shown and written, with so many rates against ten times a tenth of them: where
// the ratio stays near 1, the time grows with the rates and no faster.
#include <benchmark/benchmark.h>

#include <string>

#include "bench/Hosted.h"
#include "store/Layouts.h"
#include "toolkit/ListBox.h"
#include "toolkit/TextBox.h"

namespace {

namespace attribut = store::orgprisecharge;

constexpr double kLimit = 1.5;
constexpr int kTenth = 10;

std::string codeOf(int rates) { return rates == 10 ? "001" : rates == 100 ? "002" : "003"; }

void writeStore(localstore::LocalDatabase& database) {
  for (const int rates : {10, 100, 1000}) {
    store::DynamicArray body;
    body.set(attribut::SigleOrgChg, "ORG" + codeOf(rates));
    body.set(attribut::TypeOrgChg, "P");
    body.set(attribut::AttribOrgChg, "H");
    for (int i = 0; i < rates; ++i) {
      body.set(attribut::DateRembOrgChg, i + 1, std::to_string(21186 - 7 * i));
      body.set(attribut::TxRembOrgChg, i + 1, std::to_string(5000 - i));
      body.set(attribut::TxRembMajOrgChg, i + 1, std::to_string(6000 - i));
      body.set(attribut::PrestServOrgChg, i + 1, std::to_string(4000 - i));
    }
    database.write(store::orgprisecharge::kFile, codeOf(rates), body.text());
  }
}

std::shared_ptr<localstore::LocalDatabase> database() {
  static const bench::TemporaryStore store(writeStore);
  return store.database();
}

// Runs a member of the page so many times an iteration, on a body with these rates.
void run(benchmark::State& state, void (control::Ctr_OrgPriseCharge::*member)(), int rates,
         int times) {
  bench::Hosted hosted(database());
  hosted.control.Init();
  hosted.child<toolkit::TextBox>("Txt_CodOrgChg").userEdit(codeOf(rates));
  const auto& dates = hosted.child<toolkit::ListBox>("Lst_DateRembOrgChg");
  for (auto _ : state) {
    for (int i = 0; i < times; ++i) (hosted.control.*member)();
  }
  if (dates.listCount() != rates) state.SkipWithError("the rates are not shown");
  state.counters["limit"] = kLimit;
}

void show(benchmark::State& state) {
  run(state, &control::Ctr_OrgPriseCharge::Afficher_Ong3, static_cast<int>(state.range(0)), 1);
}
BENCHMARK(show)->Name("ShowCoverage")->Unit(benchmark::kMicrosecond)->Arg(100)->Arg(1000);

void showTenth(benchmark::State& state) {
  run(state, &control::Ctr_OrgPriseCharge::Afficher_Ong3, static_cast<int>(state.range(0)) / kTenth,
      kTenth);
}
BENCHMARK(showTenth)
    ->Name("ShowCoverage/baseline")
    ->Unit(benchmark::kMicrosecond)
    ->Arg(100)
    ->Arg(1000);

void write(benchmark::State& state) {
  run(state, &control::Ctr_OrgPriseCharge::Ecrire_Ong3, static_cast<int>(state.range(0)), 1);
}
BENCHMARK(write)->Name("WriteCoverage")->Unit(benchmark::kMicrosecond)->Arg(100)->Arg(1000);

void writeTenth(benchmark::State& state) {
  run(state, &control::Ctr_OrgPriseCharge::Ecrire_Ong3, static_cast<int>(state.range(0)) / kTenth,
      kTenth);
}
BENCHMARK(writeTenth)
    ->Name("WriteCoverage/baseline")
    ->Unit(benchmark::kMicrosecond)
    ->Arg(100)
    ->Arg(1000);

}  // namespace

BENCHMARK_MAIN();
