// Numbers of the list editors: what is typed reaches the record as stated, and no hundredth is lost
// between record and lists.
#include <algorithm>

#include "store/Conversions.h"
#include "store/Layouts.h"
#include "tests/behaviour/ScaleTest.h"

namespace behaviour {
namespace {

// What is typed, and the hundredths that it comes to.
const std::vector<std::pair<std::string, std::string>> kTyped{
    {"12,5", "1250"}, {"12.5", "1250"}, {"1 234,50", "123450"}, {"-3", "-300"}, {"0,005", "1"}};

// What is typed, and comes to no number.
const std::vector<std::string> kNone{",", std::string(15, '9')};

class DeductionNumbers : public Coverage {
 protected:
  // A body without deductions; one is being added.
  void begin(const Row& row, Caller at = Caller::here()) {
    const auto trace = called("begin", at);
    putDeductions({});
    show();
    ASSERT_TRUE(press("Cmd_AjoutAbat"));
    fillDeduction(row);
  }
  void expectSaved(int number, const std::string& value, Caller at = Caller::here()) {
    const auto trace = called("expectSaved", at);
    ASSERT_TRUE(press("Cmd_OKAbat"));
    expectNoBox();
    save();
    EXPECT_EQ(attribute("001", number), value);
  }
};

TEST_F(DeductionNumbers, ReachTheRecordAsTheyAreTyped) {
  for (const auto& [keys, value] : kTyped) {
    SCOPED_TRACE(keys);
    begin({keys, "5000", "1"});
    expectSaved(attribut::DebAbatHOrgChg, value);
    begin({"-5", keys, "1"});
    expectSaved(attribut::FinAbatHOrgChg, value);
    begin({"0", "1", keys});
    if (value != "123450") {
      expectSaved(attribut::PourcentAbatOrgChg, value);
      continue;
    }
    ASSERT_TRUE(press("Cmd_OKAbat"));
    expectBox("Le pourcentage doit être inférieur à 100.", Icon::Exclamation);
  }
}

TEST_F(DeductionNumbers, WhatIsNoneIsNotConfirmed) {
  for (const std::string& keys : kNone) {
    for (const char* name :
         {"Txt_DebAbatHOrgChg", "Txt_FinAbatHOrgChg", "Txt_PourcentAbatOrgChg"}) {
      SCOPED_TRACE(keys + " in " + name);
      begin({"0", "5", "1"});
      ASSERT_TRUE(user_->fill(box(name), keys));
      EXPECT_FALSE(press("Cmd_OKAbat"));
      expectNoBox();
      EXPECT_PRED_FORMAT1(hasFocus, box(name));
      EXPECT_EQ(box(name).text(), keys);
      EXPECT_TRUE(deductions().empty());
    }
  }
}

class ScaleNumbers : public Scale {};

TEST_F(ScaleNumbers, ReachTheRecordAsTheyAreTyped) {
  const std::vector<std::pair<int, Row>> zones{{attribut::DebRevSeulOrgChg, {"*", "9000"}},
                                               {attribut::FinRevSeulOrgChg, {"-5", "*"}},
                                               {attribut::DebRevMenOrgChg, {"0", "1", "*"}},
                                               {attribut::FinRevMenOrgChg, {"0", "1", "-5", "*"}},
                                               {attribut::BaremCoursOrgChg, {}}};
  for (const auto& [keys, value] : kTyped) {
    for (std::size_t zone = 0; zone < zones.size(); ++zone) {
      SCOPED_TRACE(keys + " in " + kScaleZones[zone]);
      Row row{"0", "9000", "0", "9000", "1"};
      std::copy(zones[zone].second.begin(), zones[zone].second.end(), row.begin());
      row[zone] = keys;
      putScale("001", {}, "", "01/01/2026");
      show();
      add(row);
      expectNoBox();
      save();
      EXPECT_EQ(attribute("001", zones[zone].first), value);
    }
  }
}

class EveryHundredth : public Desk {
 protected:
  static constexpr int kRows = 10000;
  // So many values, each the one before and `step` more.
  static std::string values(int from, int step) {
    std::string text;
    for (int row = 0; row < kRows; ++row) {
      if (row > 0) text += store::kValueMark;
      text += std::to_string(from + row * step);
    }
    return text;
  }
};

// The record is emptied between show and write: what is written comes from the lists alone.
TEST_F(EveryHundredth, OfRatesAndDeductionsIsShownAndWrittenAsItWas) {
  for (int from = 0; from < 100000; from += kRows) {
    const std::string numbers = values(from, 1);
    const std::string days = values(21186, 0);
    hand({}, {});
    record().set(attribut::DateRembOrgChg, days);
    for (int attribute = attribut::TxRembOrgChg; attribute <= attribut::PourcentAbatOrgChg;
         ++attribute) {
      record().set(attribute, numbers);
    }
    page_.Afficher_Ong3();
    std::vector<std::string> shown;
    for (int row = 0; row < kRows; ++row) shown.push_back(store::twoDecimals(from + row));
    for (const ListBox* list :
         {&prise_.Lst_TxRembOrgChg, &prise_.Lst_TxRembMajOrgChg, &prise_.Lst_PrestServOrgChg,
          &prise_.Lst_DebAbatHOrgChg, &prise_.Lst_FinAbatHOrgChg, &prise_.Lst_PourcentAbatOrgChg}) {
      ASSERT_EQ(list->listCount(), kRows);
      for (int row = 0; row < kRows; ++row) {
        ASSERT_EQ(list->list(row), shown[static_cast<std::size_t>(row)]) << list->name();
      }
    }
    for (int attribute = attribut::DateRembOrgChg; attribute <= attribut::PourcentAbatOrgChg;
         ++attribute) {
      record().set(attribute, "");
    }
    page_.Ecrire_Ong3();
    ASSERT_TRUE(record().get(attribut::DateRembOrgChg) == days);
    for (int attribute = attribut::TxRembOrgChg; attribute <= attribut::PourcentAbatOrgChg;
         ++attribute) {
      ASSERT_TRUE(record().get(attribute) == numbers) << attribute << " from " << from;
    }
  }
}

}  // namespace
}  // namespace behaviour
