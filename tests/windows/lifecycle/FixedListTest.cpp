// Combo boxes that take nothing but their lines, left in each of the ways that a user has.
#include "tests/windows/lifecycle/PagesTest.h"

namespace lifecycle {
namespace {

constexpr const wchar_t* kNoSuchPeriod =
    L"La période de facturation saisie n'existe pas, veuillez la ressaisir.";
constexpr const wchar_t* kNoSuchRenewal =
    L"Le déclenchement du renouvellement saisi n'existe pas, veuillez le ressaisir.";

class FixedList : public PagesTest {
 protected:
  void SetUp() override {
    PagesTest::SetUp();
    show(L"001", kRegles);
  }

  // Leaving with a text that is no line is refused, whatever would have followed.
  template <class Leave>
  void expectRefused(Leave leave) {
    user().fill(L"Cbo_PeriodFactOrgChg", L"Hebdomadaire");
    expectWarning(kNoSuchPeriod);
    leave();
    EXPECT_EQ(boxes().report(), "");
    EXPECT_EQ(user().focused(), L"Cbo_PeriodFactOrgChg");
    EXPECT_EQ(user().text(L"Cbo_PeriodFactOrgChg"), L"");
    EXPECT_EQ(user().tab(), kRegles);
    EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"001");
    EXPECT_EQ(state().count("DBWrite"), 0);
  }
};

INSTANTIATE_TEST_SUITE_P(In, FixedList, everywhere(), nameOfParam);

TEST_P(FixedList, RefusesAnotherTextWhenLeftByTab) {
  expectRefused([this] { user().key(VK_TAB); });
  expectRefused([this] { user().key(VK_TAB, true); });
}

TEST_P(FixedList, RefusesItWhenLeftByAMnemonic) {
  expectRefused([this] { user().alt(L'h'); });
}

TEST_P(FixedList, RefusesItWhenLeftForAFieldAndDropsTheClick) {
  expectRefused([this] { user().click(L"Cbo_RenouvOrgChg"); });
  expectRefused([this] { user().click(L"Cac_LettresInfo"); });
  EXPECT_FALSE(user().checked(L"Cac_LettresInfo"));
}

TEST_P(FixedList, RefusesItWhenLeftForAButtonAndDropsTheClick) {
  expectRefused([this] { user().click(L"Cmd_OK"); });
  expectRefused([this] { user().click(L"Cmd_Annuler"); });
}

TEST_P(FixedList, RefusesItWhenLeftForATabAndDropsTheClick) {
  expectRefused([this] { user().clickTab(kActivites); });
}

TEST_P(FixedList, TakesItsLinesTypedOrChosen) {
  user().fill(L"Cbo_PeriodFactOrgChg", L"Trimestrielle");
  user().key(VK_TAB);
  EXPECT_NE(user().focused(), L"Cbo_PeriodFactOrgChg");
  EXPECT_EQ(user().text(L"Cbo_PeriodFactOrgChg"), L"Trimestrielle");
  user().clickArrow(L"Cbo_RenouvOrgChg");
  user().clickOpenLine(L"Cbo_RenouvOrgChg", 3);
  user().click(L"Cbo_StatsOrgChg");
  user().key(VK_DOWN);
  user().key(VK_DOWN);
  EXPECT_EQ(user().text(L"Cbo_StatsOrgChg"), L"Autres");
  user().click(L"Cmd_OK");
  EXPECT_EQ(stored(L"001", attribut::PeriodFactOrgChg), L"T");
  EXPECT_EQ(stored(L"001", attribut::RenouvOrgChg), L"3");
  EXPECT_EQ(stored(L"001", attribut::StatsOrgChg), L"02");
}

TEST_P(FixedList, HasWordsOfItsOwnForTheRenewal) {
  user().fill(L"Cbo_RenouvOrgChg", L"renouvellement à - 1 mois");
  expectWarning(kNoSuchRenewal);
  user().key(VK_TAB);
  EXPECT_EQ(user().focused(), L"Cbo_RenouvOrgChg");
}

TEST_P(FixedList, OfTheStatisticsIsEmptiedWithoutAWord) {
  user().fill(L"Cbo_StatsOrgChg", L"Divers");
  user().key(VK_TAB);
  EXPECT_EQ(user().text(L"Cbo_StatsOrgChg"), L"");
  EXPECT_EQ(user().focused(), L"Cbo_StatsOrgChg");
  user().key(VK_TAB);
  EXPECT_EQ(user().focused(), L"Cbo_PeriodFactOrgChg");
}

TEST_P(FixedList, LeftEmptyIsToldBySavingAlone) {
  user().fill(L"Cbo_PeriodFactOrgChg", L"");
  user().clickTab(kCoordonnees);
  EXPECT_EQ(user().tab(), kCoordonnees);
  expectWarning(L"La période de facturation est obligatoire.");
  user().click(L"Cmd_OK");
  EXPECT_EQ(user().tab(), kRegles);
  EXPECT_EQ(user().focused(), L"Cbo_PeriodFactOrgChg");
  EXPECT_EQ(state().count("DBWrite"), 0);
}

}  // namespace
}  // namespace lifecycle
