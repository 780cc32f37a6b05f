#include "tests/behaviour/CoverageTest.h"

#include <algorithm>
#include <initializer_list>

#include "store/Conversions.h"
#include "store/Layouts.h"

namespace behaviour {
namespace {

class FullRights : public screen::RightsEntry {
 public:
  long Level() override { return 2; }
};

class HandedRecord : public store::Record {
 public:
  HandedRecord() : Record(store::NewDynamicArray(), true) {}
  void DBWrite() override {}
};

}  // namespace

std::string stored(std::string_view shown) {
  if (shown.empty()) return {};
  if (const auto day = store::dayOfText(shown)) return std::to_string(*day);
  return std::to_string(store::hundredths(shown).value());
}

void putRows(store::DynamicArray& record, int first, std::size_t columns, const Rows& rows) {
  for (std::size_t column = 0; column < columns; ++column) {
    const int attribute = first + static_cast<int>(column);
    record.set(attribute, "");
    int value = 0;
    for (const Row& row : rows) record.set(attribute, ++value, stored(row[column]));
  }
}

Rows rowsOf(std::initializer_list<const ListBox*> lists) {
  Rows rows(static_cast<std::size_t>((*lists.begin())->listCount()));
  for (const ListBox* list : lists) {
    EXPECT_EQ(list->listCount(), static_cast<int>(rows.size())) << list->name();
    int line = 0;
    for (Row& row : rows) row.push_back(list->list(line++));
  }
  return rows;
}

std::vector<std::pair<std::string, bool>> enabledBelow(const toolkit::Container& container) {
  std::vector<std::pair<std::string, bool>> found;
  for (const toolkit::Control* child : container.children()) {
    found.emplace_back(child->name(), child->enabled());
    if (!child->isContainer()) continue;
    const auto below = enabledBelow(static_cast<const toolkit::Container&>(*child));
    found.insert(found.end(), below.begin(), below.end());
  }
  return found;
}

// --- The whole control

Coverage::Coverage() {
  fillThreeBodies(store_);
  putRates({{"01/01/2026", "20,00", "25,00", "15,00"}, {"01/01/2025", "18,00", "22,00", "12,00"}});
  start();
  show();
}

void Coverage::putRates(const Rows& rows, std::string_view code) {
  store::DynamicArray record = store_.record("ORGPRISECHARGE", code);
  putRows(record, attribut::DateRembOrgChg, 4, rows);
  store_.put("ORGPRISECHARGE", code, record);
}

void Coverage::putDeductions(const Rows& rows, std::string_view code) {
  store::DynamicArray record = store_.record("ORGPRISECHARGE", code);
  putRows(record, attribut::DebAbatHOrgChg, 3, rows);
  store_.put("ORGPRISECHARGE", code, record);
}

void Coverage::show(std::string_view code, Caller at) {
  const auto trace = called("show", at);
  control_->Vider_Donnees();
  lookUp(code);
  EXPECT_TRUE(user_->click(tabs(), 2));
  desktop_.clearJournal();
  store_.forgetCalls();
}

Rows Coverage::rates() {
  return rowsOf({&list("Lst_DateRembOrgChg"), &list("Lst_TxRembOrgChg"),
                 &list("Lst_TxRembMajOrgChg"), &list("Lst_PrestServOrgChg")});
}

Rows Coverage::deductions() {
  return rowsOf(
      {&list("Lst_DebAbatHOrgChg"), &list("Lst_FinAbatHOrgChg"), &list("Lst_PourcentAbatOrgChg")});
}

void Coverage::fillRate(const Row& row, Caller at) {
  const auto trace = called("fillRate", at);
  const std::vector<const char*> zones{"Txt_DateRembOrgChg", "Txt_TxRembOrgChg",
                                       "Txt_TxRembMajOrgChg", "Txt_PrestServOrgChg"};
  for (std::size_t i = 0; i < row.size(); ++i) user_->fill(box(zones[i]), row[i]);
}

void Coverage::fillDeduction(const Row& row, Caller at) {
  const auto trace = called("fillDeduction", at);
  const std::vector<const char*> zones{"Txt_DebAbatHOrgChg", "Txt_FinAbatHOrgChg",
                                       "Txt_PourcentAbatOrgChg"};
  for (std::size_t i = 0; i < row.size(); ++i) user_->fill(box(zones[i]), row[i]);
}

void Coverage::addRate(const Row& row, Caller at) {
  const auto trace = called("addRate", at);
  ASSERT_TRUE(press("Cmd_AjoutTaux"));
  fillRate(row);
  ASSERT_TRUE(press("Cmd_OKTaux"));
}

void Coverage::addDeduction(const Row& row, Caller at) {
  const auto trace = called("addDeduction", at);
  ASSERT_TRUE(press("Cmd_AjoutAbat"));
  fillDeduction(row);
  ASSERT_TRUE(press("Cmd_OKAbat"));
}

bool Coverage::openRate(int row, std::string_view name) {
  user_->dblClick(list(name), row);
  return rateOpen();
}

bool Coverage::openDeduction(int row, std::string_view name) {
  user_->dblClick(list(name), row);
  return deductionOpen();
}

void Coverage::save(Caller at) {
  const auto trace = called("save", at);
  ASSERT_TRUE(press("Cmd_OK"));
  expectNoBox();
  ASSERT_EQ(store_.calls(CallKind::DBWrite).size(), 1U);
}

// --- The desk

Desk::Desk() {
  desktop_.follow([this] { return &user_; });
  session_.pret = true;
  session_.DroitOrgChg = std::make_shared<FullRights>();
  page_.lier(screen::Handlers(session_));
  hand({}, {});
  screen_.Ong_OrgPriseChg.setTab(screen::kPriseEnCharge);
}

void Desk::hand(const Rows& rates, const Rows& deductions) {
  session_.RecOrgChg = std::make_unique<HandedRecord>();
  session_.taux = {};
  putRows(record(), attribut::DateRembOrgChg, 4, rates);
  putRows(record(), attribut::DebAbatHOrgChg, 3, deductions);
  page_.Afficher_Ong3();
}

Rows Desk::rates() const {
  return rowsOf({&prise_.Lst_DateRembOrgChg, &prise_.Lst_TxRembOrgChg, &prise_.Lst_TxRembMajOrgChg,
                 &prise_.Lst_PrestServOrgChg});
}

Rows Desk::deductions() const {
  return rowsOf(
      {&prise_.Lst_DebAbatHOrgChg, &prise_.Lst_FinAbatHOrgChg, &prise_.Lst_PourcentAbatOrgChg});
}

}  // namespace behaviour
