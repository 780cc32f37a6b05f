// An entity of 5 000 activities: a body of it shown, and 1 000 of them moved to those covered,
// against the bare store calls and the bare filling of the same lists.
#include <benchmark/benchmark.h>

#include <numeric>
#include <string>
#include <vector>

#include "bench/Hosted.h"
#include "store/Layouts.h"
#include "store/Request.h"
#include "toolkit/Buttons.h"
#include "toolkit/ListBox.h"
#include "toolkit/SSTab.h"
#include "toolkit/TextBox.h"

namespace {

constexpr int kActivities = 5000;
constexpr int kCovered = 200;
constexpr int kMoved = 1000;
constexpr int kActivitiesTab = 5;
constexpr double kLimit = 2.0;
constexpr const char* kEntity = "010";
constexpr const char* kSentence = "SSELECT ACTIVITES AVEC CodAssoActivite = \"010\" PAR 1 ";

std::string activityOf(int number) {
  const std::string digits = std::to_string(number);
  return kEntity + std::string("P") + std::string(4 - digits.size(), '0') + digits;
}

void writeStore(localstore::LocalDatabase& database) {
  for (int i = 0; i < kActivities; ++i) {
    store::DynamicArray activity;
    // Labels come in another order than codes.
    activity.set(store::activites::Libelle,
                 "Activité à domicile " + activityOf(i * 7919 % kActivities));
    activity.set(store::activites::CodAssoActivite, kEntity);
    activity.set(store::activites::TypeActivite, "P");
    activity.set(store::activites::Service, "SAAD");
    database.write(store::activites::kFile, activityOf(i), activity.text());
  }
  database.write(store::association::kFile, kEntity, "ASSOCIATION DU VAL");
  for (const char* code : {"001", "002"}) {
    store::DynamicArray body;
    body.set(store::orgprisecharge::SigleOrgChg, code);
    body.set(store::orgprisecharge::TypeOrgChg, "P");
    body.set(store::orgprisecharge::Entite, kEntity);
    for (int i = 0; i < kCovered; ++i) {
      body.set(store::orgprisecharge::CodActSelect, i + 1,
               activityOf(i * (kActivities / kCovered)));
    }
    database.write(store::orgprisecharge::kFile, code, body.text());
  }
}

std::shared_ptr<localstore::LocalDatabase> database() {
  static const bench::TemporaryStore store(writeStore);
  return store.database();
}

store::DynamicArray answer() {
  return store::select(*database(), kSentence, store::activites::kFile, "0 1 12");
}

std::vector<toolkit::ListItem> linesOf(const store::DynamicArray& found) {
  std::vector<toolkit::ListItem> lines;
  lines.reserve(static_cast<std::size_t>(found.DCount()));
  for (int i = 1; i <= found.DCount(); ++i) {
    lines.push_back({std::string(found.get(i, 2)) + " Prestataire", 0});
  }
  return lines;
}

// The lists of the page, without the page.
struct BareLists {
  toolkit::Surface surface{"bench"};
  toolkit::ListBox possible{&surface, "Lst_Activite", toolkit::ListBox::Selection::Extended};
  toolkit::ListBox covered{&surface, "Lst_ActSelect", toolkit::ListBox::Selection::Extended};
  toolkit::ListBox codes{&surface, "Lst_CodActSelect"};
  toolkit::ListBox types{&surface, "Lst_TypeAct"};
};

std::vector<int> linesToMove() {
  std::vector<int> lines;
  lines.reserve(kMoved);
  for (int i = 0; i < kMoved; ++i) lines.push_back(i * (kActivities / kMoved));
  return lines;
}

std::vector<int> allOf(const toolkit::ListBox& list) {
  std::vector<int> lines(static_cast<std::size_t>(list.listCount()));
  std::iota(lines.begin(), lines.end(), 0);
  return lines;
}

const char* codeOfTurn(int turn) { return turn % 2 == 0 ? "001" : "002"; }

// A code typed, up to the record shown on every page.
void show(benchmark::State& state) {
  bench::Hosted hosted(database());
  hosted.control.Init();
  auto& code = hosted.child<toolkit::TextBox>("Txt_CodOrgChg");
  auto& possible = hosted.child<toolkit::ListBox>("Lst_Activite");
  auto& covered = hosted.child<toolkit::ListBox>("Lst_ActSelect");
  int turn = 0;
  for (auto _ : state) {
    code.userEdit(codeOfTurn(turn++));
    if (possible.listCount() != kActivities || covered.listCount() != kCovered) {
      state.SkipWithError("the activities were not shown");
    }
  }
  state.counters["limit"] = kLimit;
}
BENCHMARK(show)->Name("ShowActivities")->Unit(benchmark::kMillisecond);

void showBare(benchmark::State& state) {
  const auto bodies = database()->OpenFile(store::orgprisecharge::kFile);
  const auto entities = database()->OpenFile(store::association::kFile);
  BareLists lists;
  int turn = 0;
  for (auto _ : state) {
    const auto body = bodies->ReadRecord(codeOfTurn(turn++));
    benchmark::DoNotOptimize(entities->ReadRecord(kEntity)->fields().text());
    const std::vector<toolkit::ListItem> lines = linesOf(answer());
    std::vector<toolkit::ListItem> coveredLines(lines.begin(), lines.begin() + kCovered);
    std::vector<toolkit::ListItem> codes;
    for (int i = 1; i <= kCovered; ++i) {
      codes.push_back({std::string(body->fields().get(store::orgprisecharge::CodActSelect, i)), 0});
    }
    lists.possible.setItems(lines);
    lists.covered.setItems(std::move(coveredLines));
    lists.codes.setItems(std::move(codes));
    lists.types.setItems(std::vector<toolkit::ListItem>(kCovered, {"P", 0}));
  }
}
BENCHMARK(showBare)->Name("ShowActivities/baseline")->Unit(benchmark::kMillisecond);

// 1 000 selected lines moved by the button.
void moveRight(benchmark::State& state) {
  bench::Hosted hosted(database());
  hosted.control.Init();
  hosted.child<toolkit::TextBox>("Txt_CodOrgChg").userEdit("001");
  hosted.child<toolkit::SSTab>("Ong_OrgPriseChg").setTab(kActivitiesTab);
  auto& possible = hosted.child<toolkit::ListBox>("Lst_Activite");
  auto& covered = hosted.child<toolkit::ListBox>("Lst_ActSelect");
  auto& right = hosted.child<toolkit::CommandButton>("Cmd_PasseDroit");
  auto& left = hosted.child<toolkit::CommandButton>("Cmd_PasseGauche");
  const std::vector<int> lines = linesToMove();
  for (auto _ : state) {
    state.PauseTiming();
    covered.userSelect(0, allOf(covered));
    left.userClick();
    possible.userSelect(0, lines);
    state.ResumeTiming();
    right.userClick();
    if (covered.listCount() != kMoved) state.SkipWithError("the activities were not moved");
  }
  state.counters["limit"] = kLimit;
}
BENCHMARK(moveRight)->Name("MoveActivities")->Unit(benchmark::kMicrosecond);

void moveRightBare(benchmark::State& state) {
  BareLists lists;
  const store::DynamicArray found = answer();
  const std::vector<int> lines = linesToMove();
  lists.possible.setItems(linesOf(found));
  for (auto _ : state) {
    state.PauseTiming();
    for (toolkit::ListBox* list : {&lists.covered, &lists.codes, &lists.types}) list->clear();
    lists.possible.userSelect(0, lines);
    state.ResumeTiming();
    for (int line = 0; line < lists.possible.listCount(); ++line) {
      if (!lists.possible.selected(line)) continue;
      lists.codes.addItem(found.get(line + 1, 1));
      lists.types.addItem(found.get(line + 1, 3));
      lists.covered.addItem(lists.possible.list(line));
      lists.possible.setSelected(line, false);
    }
    if (lists.covered.listCount() != kMoved) state.SkipWithError("the activities were not moved");
  }
}
BENCHMARK(moveRightBare)->Name("MoveActivities/baseline")->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
