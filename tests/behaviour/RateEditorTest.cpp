#include <algorithm>

#include "pages/Columns.h"
#include "store/Conversions.h"
#include "store/Layouts.h"
#include "tests/behaviour/EditMode.h"
#include "tests/support/Seed.h"

namespace behaviour {
namespace {

using toolkit::Buttons;

constexpr const char* kMajore = "Le taux majoré doit être supérieur au taux normal.";
constexpr const char* kPrestation =
    "Le taux prestation de service doit être inférieur au taux normal.";
constexpr const char* kTauxObligatoire = "Le taux de remboursement est obligatoire.";
constexpr const char* kMajoreObligatoire = "Taux majoré obligatoire, veuillez le saisir.";
constexpr const char* kPrestationObligatoire =
    "Taux prestation de service obligatoire, veuillez le saisir.";

const Rows kTwo{{"01/01/2026", "20,00", "25,00", "15,00"},
                {"01/01/2025", "18,00", "22,00", "12,00"}};

class Rates : public Coverage {
 protected:
  TextBox& date() { return box("Txt_DateRembOrgChg"); }
  TextBox& normal() { return box("Txt_TxRembOrgChg"); }
  TextBox& increased() { return box("Txt_TxRembMajOrgChg"); }
  TextBox& service() { return box("Txt_PrestServOrgChg"); }
  // The check refuses what the zones hold: its box, its focus, edit mode and entries kept.
  void expectRefusal(std::string_view message, TextBox& focus, Caller at = Caller::here()) {
    const auto trace = called("expectRefusal", at);
    ASSERT_TRUE(user_->go(button("Cmd_OKTaux")));
    const Row before{date().text(), normal().text(), increased().text(), service().text()};
    const Rows shown = rates();
    ASSERT_TRUE(press("Cmd_OKTaux"));
    expectBox(message, Icon::Exclamation);
    EXPECT_PRED_FORMAT1(hasFocus, focus) << message;
    EXPECT_TRUE(rateOpen());
    EXPECT_PRED_FORMAT2(
        same, (Row{date().text(), normal().text(), increased().text(), service().text()}), before);
    EXPECT_PRED_FORMAT2(same, rates(), shown);
  }
  void begin(const Row& row, Caller at = Caller::here()) {
    const auto trace = called("begin", at);
    ASSERT_TRUE(press("Cmd_AjoutTaux"));
    fillRate(row);
  }
  void expectAccepted(Caller at = Caller::here()) {
    const auto trace = called("expectAccepted", at);
    ASSERT_TRUE(press("Cmd_OKTaux"));
    expectNoBox();
    EXPECT_FALSE(rateOpen());
  }
  // `count` rates, most recent first, on the first days of 2026.
  static Rows many(int count) {
    Rows rows;
    for (int i = count; i >= 1; --i) {
      rows.push_back({store::textOfDay(21185L + i), store::twoDecimals(1000 + i),
                      store::twoDecimals(2000 + i), store::twoDecimals(500 + i)});
    }
    return rows;
  }
};

// Showing -----------------------------------------------------------------------------------------

TEST_F(Rates, AreShownMostRecentFirstWithNoneSelected) {
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
  for (const char* name :
       {"Lst_DateRembOrgChg", "Lst_TxRembOrgChg", "Lst_TxRembMajOrgChg", "Lst_PrestServOrgChg"}) {
    EXPECT_EQ(list(name).listIndex(), -1) << name;
  }
}

TEST_F(Rates, ShowABlankRowForABlankAndForAnEmptyValue) {
  const std::string mark(1, store::kValueMark);
  store_.set("ORGPRISECHARGE", "001", attribut::TxRembMajOrgChg, " " + mark);
  store_.set("ORGPRISECHARGE", "001", attribut::PrestServOrgChg, mark + " ");
  show();
  EXPECT_PRED_FORMAT2(same, rates(),
                      (Rows{{"01/01/2026", "20,00", "", ""}, {"01/01/2025", "18,00", "", ""}}));
  save();
  EXPECT_EQ(attribute("001", attribut::TxRembMajOrgChg), mark);
  EXPECT_EQ(attribute("001", attribut::PrestServOrgChg), mark);
}

// Edit mode ---------------------------------------------------------------------------------------

class RatesEditMode : public EditMode<Rates> {
 protected:
  RatesEditMode()
      : EditMode(2, {{"Lst_DateRembOrgChg", true, false, false},
                     {"Lst_TxRembOrgChg", true, false, false},
                     {"Lst_TxRembMajOrgChg", true, false, false},
                     {"Lst_PrestServOrgChg", true, false, false},
                     {"Cmd_AjoutTaux", true, false, false},
                     {"Cmd_AjoutAbat", true, false, false},
                     {"Cdr_AttribOrgChg", true, false, false},
                     {"Cdr_AbatOrgChg", true, false, false},
                     {"Txt_CodeCptPrestationService", true, false, false},
                     {"Cbo_CptPrestationService", true, false, false},
                     {"Cdr_TauxOrgChg", true, true, true},
                     {"Bdv_TauxOrgChg", true, true, true},
                     {"Txt_DateRembOrgChg", false, true, true},
                     {"Txt_TxRembOrgChg", false, true, true},
                     {"Txt_TxRembMajOrgChg", false, true, true},
                     {"Txt_PrestServOrgChg", false, true, true},
                     {"Cmd_OKTaux", false, true, true},
                     {"Cmd_AnnulerTaux", false, true, true},
                     {"Cmd_SuppTaux", false, true, false}}) {}
  void expectListModeAgain(Caller at = Caller::here()) {
    expectListModeAgain(button("Cmd_AjoutTaux"), at);
  }
  void expectListModeAgain(const toolkit::Control& focus, Caller at = Caller::here()) {
    const auto trace = called("expectListModeAgain", at);
    expectLocks(&Lock::listMode);
    expectAsRemembered();
    for (TextBox* zone : {&date(), &normal(), &increased(), &service()}) {
      EXPECT_EQ(zone->text(), "") << zone->name();
    }
    EXPECT_PRED_FORMAT1(hasFocus, focus);
    EXPECT_EQ(state(), kExisting);
  }
};

TEST_F(RatesEditMode, LocksOneByOneWhileARowIsChanged) {
  expectLocks(&Lock::listMode);
  ASSERT_TRUE(openRate(0));
  expectLocks(&Lock::changing);
}

TEST_F(RatesEditMode, LocksOneByOneWhileARowIsAdded) {
  ASSERT_TRUE(press("Cmd_AjoutTaux"));
  expectLocks(&Lock::adding);
  EXPECT_PRED_FORMAT1(hasFocus, date());
  EXPECT_EQ(date().text(), "");
}

TEST_F(RatesEditMode, TheUserReachesNothingElse) {
  ASSERT_TRUE(openRate(0));
  expectTheRestOutOfReach({"Cmd_AjoutTaux", "Cmd_AjoutAbat"});
  EXPECT_FALSE(user_->click(option("Opt_MontantOrgChg")));
  EXPECT_FALSE(user_->dblClick(list("Lst_TxRembOrgChg"), 1));
  EXPECT_TRUE(rateOpen());
  EXPECT_TRUE(store_.calls().empty());
}

TEST_F(RatesEditMode, EndsByOKOfAnAddition) {
  addRate({"01022026", "21", "26", "16"});
  expectListModeAgain();
}

TEST_F(RatesEditMode, EndsByOKOfAChange) {
  ASSERT_TRUE(openRate(0));
  ASSERT_TRUE(press("Cmd_OKTaux"));
  expectListModeAgain(list("Lst_DateRembOrgChg"));
}

TEST_F(RatesEditMode, EndsByCancellingAChange) {
  ASSERT_TRUE(openRate(0));
  ASSERT_TRUE(press("Cmd_AnnulerTaux"));
  expectNoBox();
  expectListModeAgain();
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
}

TEST_F(RatesEditMode, EndsByCancellingAnAdditionWithYes) {
  begin({"01022026", "21"});
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_AnnulerTaux"));
  EXPECT_EQ(desktop_.beeps(), 1);
  expectBox(kQuitterCreation, Icon::Question, Buttons::YesNo);
  expectListModeAgain();
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
}

TEST_F(RatesEditMode, StaysWhenCancellingAnAdditionIsAnsweredNo) {
  begin({"01022026", "21"});
  desktop_.answer(Answer::No);
  ASSERT_TRUE(press("Cmd_AnnulerTaux"));
  expectBox(kQuitterCreation, Icon::Question, Buttons::YesNo);
  expectLocks(&Lock::adding);
  EXPECT_EQ(date().text(), "01/02/2026");
  EXPECT_EQ(normal().text(), "21,00");
  fillRate({"01022026", "21", "26", "16"});
  ASSERT_TRUE(press("Cmd_OKTaux"));
  EXPECT_EQ(rates().size(), 3U);
}

TEST_F(RatesEditMode, EndsByADeletion) {
  ASSERT_TRUE(openRate(0));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppTaux"));
  expectListModeAgain();
}

TEST_F(RatesEditMode, EndsByADuplicateDate) {
  addRate({"01012026", "21", "26", "16"});
  expectBox(kDateExistante, Icon::Exclamation);
  expectListModeAgain();
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
}

TEST_F(RatesEditMode, GivesACreationItsBarBackAsItWas) {
  control_->Vider_Donnees();
  ASSERT_TRUE(press("Cmd_Ajouter"));
  ASSERT_TRUE(user_->click(tabs(), 2));
  remember();
  ASSERT_FALSE(enabled("Cmd_Supprimer"));
  ASSERT_FALSE(enabled("Cmd_Sortir"));
  ASSERT_TRUE(press("Cmd_AjoutTaux"));
  EXPECT_EQ(state(), "|");
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_AnnulerTaux"));
  expectAsRemembered();
  EXPECT_FALSE(enabled("Txt_CodOrgChg"));
}

TEST_F(RatesEditMode, EndsWhenTheHostClearsOrShows) {
  for (const bool adding : {true, false}) {
    for (const int how : {0, 1, 2}) {
      show();
      remember();
      ASSERT_TRUE(adding ? press("Cmd_AjoutTaux") : openRate(0));
      user_->fill(normal(), "99");
      if (how == 0) control_->Vider_Donnees();
      if (how == 1) control_->Afficher_Donnees();
      if (how == 2) control_->Afficher_Ong3();
      if (how == 0) {
        EXPECT_EQ(state(), kEmpty);
        EXPECT_TRUE(rates().empty());
        lookUp("001");
      }
      EXPECT_EQ(state(), kExisting);
      expectAsRemembered();
      EXPECT_PRED_FORMAT2(same, rates(), kTwo);
      EXPECT_EQ(normal().text(), "");
    }
  }
}

// A list of bodies that holds one alone brings it to hand, while a row of another one is open.
TEST_F(RatesEditMode, EndsWhenTheHostsListBringsAnotherBody) {
  ASSERT_TRUE(openRate(0));
  control_->Vider_Donnees();
  store_.answer("SSELECT ORGPRISECHARGE PAR 1", {{"002", "CRAM"}});
  control_->Remplir_OrgPriseChg();
  EXPECT_EQ(code().text(), "002");
  expectAsRemembered();
}

// The checks, in their order ----------------------------------------------------------------------

TEST_F(Rates, Check1AnEmptyDate) {
  begin({"", "10", "5", "15"});
  expectRefusal(kDateIllisible, date());
}

TEST_F(Rates, Check1AnUnreadableDateThatCodeHasLeft) {
  begin({"", "10", "15", "5"});
  date().setText("31/02/2026");
  expectRefusal(kDateIllisible, date());
}

TEST_F(Rates, Check1WhileChangingKeepsTheRow) {
  ASSERT_TRUE(openRate(0));
  user_->fill(date(), "");
  expectRefusal(kDateIllisible, date());
  ASSERT_TRUE(press("Cmd_AnnulerTaux"));
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
}

TEST_F(Rates, Check2TheIncreasedRateBelowTheNormalOne) {
  begin({"01022026", "10", "9,99", "15"});
  expectRefusal(kMajore, increased());
}

TEST_F(Rates, Check3TheServiceRateAboveTheNormalOne) {
  begin({"01022026", "10", "10", "10,01"});
  expectRefusal(kPrestation, service());
}

TEST_F(Rates, Check3ComesBeforeAMissingIncreasedRate) {
  begin({"01022026", "10", "", "15"});
  expectRefusal(kPrestation, service());
}

TEST_F(Rates, Checks2And3ReadAMissingNormalRateAsZero) {
  begin({"01022026", "", "-1", "5"});
  expectRefusal(kMajore, increased());
  user_->fill(increased(), "5");
  expectRefusal(kPrestation, service());
  user_->fill(service(), "0");
  expectRefusal(kTauxObligatoire, normal());
}

TEST_F(Rates, Check5AMissingNormalRate) {
  begin({"01022026"});
  expectRefusal(kTauxObligatoire, normal());
}

TEST_F(Rates, Check5ANormalRateOfBlanks) {
  begin({"01022026", "", "10", "0"});
  ASSERT_TRUE(user_->go(normal()));
  ASSERT_TRUE(user_->paste("  "));
  expectRefusal(kTauxObligatoire, normal());
}

TEST_F(Rates, Check6AMissingIncreasedRate) {
  begin({"01022026", "10"});
  expectRefusal(kMajoreObligatoire, increased());
}

TEST_F(Rates, Check7AMissingServiceRateBeforeADuplicateDate) {
  begin({"01012026", "10", "15"});
  expectRefusal(kPrestationObligatoire, service());
}

TEST_F(Rates, ABlankIsNotEmpty) {
  begin({"01022026", "10", "15"});
  ASSERT_TRUE(user_->go(service()));
  ASSERT_TRUE(user_->paste(" "));
  expectAccepted();
  EXPECT_PRED_FORMAT2(same, rates()[0], (Row{"01/02/2026", "10,00", "15,00", ""}));
  save();
  EXPECT_EQ(store_.record("ORGPRISECHARGE", "001").get(attribut::PrestServOrgChg, 1), "");
}

TEST_F(Rates, Check8ADuplicateDateComesBeforeItsOrder) {
  addRate({"01012025", "10", "15", "5"});
  expectBox(kDateExistante, Icon::Exclamation);
  EXPECT_FALSE(rateOpen());
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
}

TEST_F(Rates, Check8DiscardsAChangeToo) {
  ASSERT_TRUE(openRate(0));
  fillRate({"01012025", "19", "24", "14"});
  ASSERT_TRUE(press("Cmd_OKTaux"));
  expectBox(kDateExistante, Icon::Exclamation);
  EXPECT_FALSE(rateOpen());
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
  EXPECT_EQ(normal().text(), "");
}

TEST_F(Rates, Check8LeavesOutTheRowBeingChanged) {
  ASSERT_TRUE(openRate(0));
  EXPECT_EQ(date().text(), "01/01/2026");
  expectAccepted();
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
}

TEST_F(Rates, Check8LeavesOutNoRowWhileAdding) {
  user_->click(list("Lst_DateRembOrgChg"), 0);
  addRate({"01012026", "10", "15", "5"});
  expectBox(kDateExistante, Icon::Exclamation);
}

TEST_F(Rates, Check8ComparesTextsSoThatADayTypedDifferentlyPasses) {
  begin({"", "10", "15", "5"});
  date().setText("1/1/2026");
  expectAccepted();
  EXPECT_PRED_FORMAT2(same, rates(),
                      (Rows{kTwo[0], {"01/01/2026", "10,00", "15,00", "5,00"}, kTwo[1]}));
}

TEST_F(Rates, Check9AnAdditionBeforeTheMostRecentRow) {
  begin({"31122025", "10", "15", "5"});
  expectRefusal(kDateAnterieure, date());
  user_->fill(date(), "02012026");
  expectAccepted();
}

TEST_F(Rates, Check9AChangeIsComparedWithTheRowBelow) {
  ASSERT_TRUE(openRate(0));
  user_->fill(date(), "31122024");
  expectRefusal(kDateAnterieure, date());
  user_->fill(date(), "02012025");
  expectAccepted();
  EXPECT_EQ(rates()[0][0], "02/01/2025");
}

TEST_F(Rates, Check9AcceptsADayEqualToTheRowBelowTypedDifferently) {
  ASSERT_TRUE(openRate(0));
  ASSERT_TRUE(user_->go(normal()));
  date().setText("1/1/2025");
  expectAccepted();
  EXPECT_PRED_FORMAT2(same, rates(), (Rows{{"01/01/2025", "20,00", "25,00", "15,00"}, kTwo[1]}));
}

TEST_F(Rates, Check9AChangeOfALowerRowIsComparedWithTheRowBelowItToo) {
  addRate({"01022026", "21", "26", "16"});
  ASSERT_TRUE(openRate(1));
  user_->fill(date(), "31122024");
  expectRefusal(kDateAnterieure, date());
  user_->fill(date(), "31122025");
  expectAccepted();
  EXPECT_EQ(rates()[1][0], "31/12/2025");
  ASSERT_TRUE(openRate(1));
  user_->fill(date(), "01032026");
  expectAccepted();
  EXPECT_EQ(rates()[0][0], "01/03/2026");
  EXPECT_EQ(rates()[1][0], "01/02/2026");
}

TEST_F(Rates, Check9LetsEveryRowThatMayBeChangedBeConfirmedAsItStands) {
  addRate({"01022026", "21", "26", "16"});
  addRate({"01032026", "22", "27", "17"});
  const Rows before = rates();
  for (const int row : {0, 1, 2}) {
    ASSERT_TRUE(openRate(row));
    expectAccepted();
    EXPECT_PRED_FORMAT2(same, rates(), before) << row;
  }
}

TEST_F(Rates, Check9LetsARowOfAnUnorderedRecordBeConfirmedAsItStands) {
  putRates({kTwo[1], kTwo[0]});
  show();
  ASSERT_TRUE(openRate(0));
  expectAccepted();
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
}

TEST_F(Rates, AnEmptyListAcceptsAnyDate) {
  putRates({});
  show();
  addRate({"01011900", "10", "15", "5"});
  expectNoBox();
  EXPECT_PRED_FORMAT2(same, rates(), (Rows{{"01/01/1900", "10,00", "15,00", "5,00"}}));
}

TEST_F(Rates, TheOnlyRowHasNoneBelow) {
  putRates({kTwo[0]});
  show();
  ASSERT_TRUE(openRate(0));
  user_->fill(date(), "01011990");
  expectAccepted();
  EXPECT_EQ(rates()[0][0], "01/01/1990");
}

TEST_F(Rates, EqualRatesAreAccepted) {
  begin({"01022026", "10", "10", "10"});
  expectAccepted();
  EXPECT_PRED_FORMAT2(same, rates()[0], (Row{"01/02/2026", "10,00", "10,00", "10,00"}));
}

TEST_F(Rates, AreComparedInSinglePrecision) {
  begin({"01022026", "16777217", "16777216", "16777217"});
  expectAccepted();
  begin({"02022026", "167772,17", "167772,15", "0"});
  expectRefusal(kMajore, increased());
}

// What is confirmed -------------------------------------------------------------------------------

TEST_F(Rates, AnAdditionIsShownFirstAndSaved) {
  addRate({"01022026", "21", "26,5", "16,25"});
  EXPECT_PRED_FORMAT2(same, rates(),
                      (Rows{{"01/02/2026", "21,00", "26,50", "16,25"}, kTwo[0], kTwo[1]}));
  EXPECT_EQ(list("Lst_DateRembOrgChg").listIndex(), -1);
  expectNothingWritten();
  save();
  const std::string mark(1, store::kValueMark);
  EXPECT_EQ(attribute("001", attribut::DateRembOrgChg), "21217" + mark + "21186" + mark + "20821");
  EXPECT_EQ(attribute("001", attribut::TxRembOrgChg), "2100" + mark + "2000" + mark + "1800");
  EXPECT_EQ(attribute("001", attribut::TxRembMajOrgChg), "2650" + mark + "2500" + mark + "2200");
  EXPECT_EQ(attribute("001", attribut::PrestServOrgChg), "1625" + mark + "1500" + mark + "1200");
}

TEST_F(Rates, AChangeReplacesTheRow) {
  for (const char* name :
       {"Lst_DateRembOrgChg", "Lst_TxRembOrgChg", "Lst_TxRembMajOrgChg", "Lst_PrestServOrgChg"}) {
    show();
    ASSERT_TRUE(openRate(0, name));
    EXPECT_EQ(date().text(), "01/01/2026");
    EXPECT_EQ(normal().text(), "20");
    EXPECT_EQ(increased().text(), "25");
    EXPECT_EQ(service().text(), "15");
    user_->fill(increased(), "30");
    expectAccepted();
    EXPECT_PRED_FORMAT2(same, rates(), (Rows{{"01/01/2026", "20,00", "30,00", "15,00"}, kTwo[1]}))
        << name;
  }
}

TEST_F(Rates, WhatWasConfirmedIsLostWithTheBody) {
  addRate({"01022026", "21", "26", "16"});
  ASSERT_TRUE(press("Cmd_Annuler"));
  lookUp("001");
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
}

TEST_F(Rates, AChangeAsksOnLeaving) {
  addRate({"01022026", "21", "26", "16"});
  desktop_.answer(Answer::No);
  ASSERT_TRUE(press("Cmd_Sortir"));
  expectBox("Voulez-vous enregistrer les modifications apportées à cet article ?", Icon::Question,
            Buttons::YesNoCancel);
}

TEST_F(Rates, WhatIsAddedAndDeletedAgainAsksNothingOnLeaving) {
  addRate({"01022026", "21", "26", "16"});
  ASSERT_TRUE(openRate(0));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppTaux"));
  desktop_.clearJournal();
  ASSERT_TRUE(press("Cmd_Sortir"));
  expectNoBox();
}

TEST_F(Rates, SavingAsksNothingAboutChangedRates) {
  ASSERT_TRUE(openRate(0));
  user_->fill(normal(), "19");
  expectAccepted();
  save();
  EXPECT_EQ(state(), kEmpty);
}

// Which rows may be changed -----------------------------------------------------------------------

TEST_F(Rates, OnlyTheMostRecentStoredRowOpens) {
  EXPECT_FALSE(openRate(1));
  expectNoBox();
  EXPECT_TRUE(openRate(0));
}

TEST_F(Rates, EachAdditionOpensOneRowMore) {
  addRate({"01022026", "21", "26", "16"});
  EXPECT_FALSE(openRate(2));
  EXPECT_TRUE(openRate(1));
  ASSERT_TRUE(press("Cmd_AnnulerTaux"));
  addRate({"01032026", "21", "26", "16"});
  EXPECT_FALSE(openRate(3));
  EXPECT_TRUE(openRate(2));
}

TEST_F(Rates, ACancelledAdditionOpensNoneMore) {
  ASSERT_TRUE(press("Cmd_AjoutTaux"));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_AnnulerTaux"));
  EXPECT_FALSE(openRate(1));
  EXPECT_TRUE(openRate(0));
}

TEST_F(Rates, AnotherBodyStartsAnew) {
  addRate({"01022026", "21", "26", "16"});
  show("002");
  show("001");
  EXPECT_FALSE(openRate(1));
}

TEST_F(Rates, ADeletionTakesTheLastRowThatOpened) {
  addRate({"01022026", "21", "26", "16"});
  ASSERT_TRUE(openRate(0));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppTaux"));
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
  EXPECT_FALSE(openRate(1));
  EXPECT_TRUE(openRate(0));
}

TEST_F(Rates, OnceTheOnlyOneIsDeletedNoneOpens) {
  ASSERT_TRUE(openRate(0));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppTaux"));
  desktop_.takeBoxes();
  EXPECT_FALSE(openRate(0));
  expectBox(kSeulTaux, Icon::Exclamation);
  addRate({"01022026", "21", "26", "16"});
  expectNoBox();
  EXPECT_FALSE(openRate(1));
  expectBox(kSeulTaux, Icon::Exclamation);
  EXPECT_TRUE(openRate(0));
  expectNoBox();
}

TEST_F(Rates, ABodyLookedUpAgainHasItsRowBack) {
  ASSERT_TRUE(openRate(0));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppTaux"));
  show();
  EXPECT_TRUE(openRate(0));
  expectNoBox();
}

// Deleting ----------------------------------------------------------------------------------------

TEST_F(Rates, ADeletionBeepsAndAsks) {
  ASSERT_TRUE(openRate(0));
  desktop_.answer(Answer::No);
  ASSERT_TRUE(press("Cmd_SuppTaux"));
  EXPECT_EQ(desktop_.beeps(), 1);
  expectBox(kSupprimerLigne, Icon::Question, Buttons::YesNo);
  EXPECT_TRUE(rateOpen());
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
  EXPECT_EQ(normal().text(), "20");
}

TEST_F(Rates, ADeletionTakesTheRowOutOfAllAttributes) {
  ASSERT_TRUE(openRate(0));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppTaux"));
  desktop_.takeBoxes();
  EXPECT_PRED_FORMAT2(same, rates(), (Rows{kTwo[1]}));
  for (const char* name :
       {"Lst_DateRembOrgChg", "Lst_TxRembOrgChg", "Lst_TxRembMajOrgChg", "Lst_PrestServOrgChg"}) {
    EXPECT_EQ(list(name).listIndex(), -1) << name;
  }
  save();
  EXPECT_EQ(attribute("001", attribut::DateRembOrgChg), "20821");
  EXPECT_EQ(attribute("001", attribut::TxRembOrgChg), "1800");
  EXPECT_EQ(attribute("001", attribut::TxRembMajOrgChg), "2200");
  EXPECT_EQ(attribute("001", attribut::PrestServOrgChg), "1200");
}

// Scroll bar and ring -----------------------------------------------------------------------------

TEST_F(Rates, TheThirteenthRowShowsTheScrollBar) {
  putRates(many(12));
  show();
  EXPECT_FALSE(bar("Bdv_TauxOrgChg").visible());
  EXPECT_EQ(bar("Bdv_TauxOrgChg").max(), 11);
  EXPECT_EQ(list("Lst_PrestServOrgChg").place().width, 975);
  addRate({"01022026", "21", "26", "16"});
  EXPECT_TRUE(bar("Bdv_TauxOrgChg").visible());
  EXPECT_EQ(bar("Bdv_TauxOrgChg").max(), 12);
  EXPECT_EQ(list("Lst_PrestServOrgChg").place().width, 1215);
  ASSERT_TRUE(openRate(0));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppTaux"));
  EXPECT_FALSE(bar("Bdv_TauxOrgChg").visible());
  EXPECT_EQ(list("Lst_PrestServOrgChg").place().width, 975);
}

TEST_F(Rates, ThirteenStoredRowsShowTheScrollBar) {
  putRates(many(13));
  show();
  EXPECT_TRUE(bar("Bdv_TauxOrgChg").visible());
  EXPECT_EQ(list("Lst_PrestServOrgChg").place().width, 1215);
  show("002");
  EXPECT_FALSE(bar("Bdv_TauxOrgChg").visible());
  EXPECT_EQ(list("Lst_PrestServOrgChg").place().width, 975);
}

TEST_F(Rates, AClickSelectsTheRowInEveryListAndMovesTheScrollBar) {
  putRates(many(14));
  show();
  int row = 0;
  for (const char* clicked :
       {"Lst_DateRembOrgChg", "Lst_TxRembOrgChg", "Lst_TxRembMajOrgChg", "Lst_PrestServOrgChg"}) {
    row += 3;
    ASSERT_TRUE(user_->click(list(clicked), row));
    for (const char* name :
         {"Lst_DateRembOrgChg", "Lst_TxRembOrgChg", "Lst_TxRembMajOrgChg", "Lst_PrestServOrgChg"}) {
      EXPECT_EQ(list(name).listIndex(), row) << clicked << " " << name;
    }
    EXPECT_EQ(bar("Bdv_TauxOrgChg").value(), row) << clicked;
  }
}

TEST_F(Rates, TheScrollBarSelectsTheRowInEveryList) {
  putRates(many(14));
  show();
  for (const int row : {13, 5, 0}) {
    ASSERT_TRUE(user_->scroll(bar("Bdv_TauxOrgChg"), row));
    for (const char* name :
         {"Lst_DateRembOrgChg", "Lst_TxRembOrgChg", "Lst_TxRembMajOrgChg", "Lst_PrestServOrgChg"}) {
      EXPECT_EQ(list(name).listIndex(), row) << name;
    }
  }
}

TEST_F(Rates, ShowingAndDeletingResetTheScrollBar) {
  putRates(many(14));
  show();
  ASSERT_TRUE(user_->scroll(bar("Bdv_TauxOrgChg"), 9));
  show();
  EXPECT_EQ(bar("Bdv_TauxOrgChg").value(), 0);
  EXPECT_EQ(list("Lst_TxRembOrgChg").listIndex(), -1);
  ASSERT_TRUE(openRate(0));
  ASSERT_TRUE(user_->scroll(bar("Bdv_TauxOrgChg"), 9));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppTaux"));
  EXPECT_EQ(bar("Bdv_TauxOrgChg").value(), 0);
  EXPECT_EQ(list("Lst_TxRembOrgChg").listIndex(), -1);
  const Rows fourteen = many(14);
  EXPECT_PRED_FORMAT2(same, rates(), Rows(fourteen.begin() + 1, fourteen.end()));
}

TEST_F(Rates, TheRowBeingChangedIsRememberedWhileTheScrollBarMoves) {
  putRates(many(14));
  show();
  ASSERT_TRUE(openRate(0));
  ASSERT_TRUE(user_->scroll(bar("Bdv_TauxOrgChg"), 7));
  EXPECT_EQ(list("Lst_DateRembOrgChg").listIndex(), 7);
  user_->fill(service(), "1,23");
  expectAccepted();
  Rows expected = many(14);
  expected[0][3] = "1,23";
  EXPECT_PRED_FORMAT2(same, rates(), expected);
}

// Typing ------------------------------------------------------------------------------------------

TEST_F(Rates, TheDateZoneTurnsAnyOtherKeyIntoASeparator) {
  ASSERT_TRUE(press("Cmd_AjoutTaux"));
  user_->type("1.2x2026");
  EXPECT_EQ(date().text(), "1/2/2026");
  user_->type("\b\b\b\b26 é");
  EXPECT_EQ(date().text(), "1/2/26//");
  EXPECT_PRED_FORMAT1(hasFocus, date());
}

TEST_F(Rates, TheDateZoneDropsEnter) {
  ASSERT_TRUE(press("Cmd_AjoutTaux"));
  user_->type("1\r2");
  EXPECT_EQ(date().text(), "12");
  EXPECT_TRUE(rateOpen());
}

TEST_F(Rates, TheDateIsCompletedWhenItsZoneIsLeft) {
  const std::vector<std::pair<const char*, const char*>> typed{
      {"1/2/26", "01/02/2026"},   {"1.2.2026", "01/02/2026"}, {"010226", "01/02/2026"},
      {"01022026", "01/02/2026"}, {"0102", "01/02/2026"},     {"1-2", "01/02/2026"},
      {"010250", "01/02/1950"}};
  ASSERT_TRUE(press("Cmd_AjoutTaux"));
  for (const auto& [keys, shown] : typed) {
    ASSERT_TRUE(user_->fill(date(), keys));
    ASSERT_TRUE(user_->tab()) << keys;
    EXPECT_EQ(date().text(), shown) << keys;
    EXPECT_PRED_FORMAT1(hasFocus, normal());
  }
  expectNoBox();
}

TEST_F(Rates, AnUnreadableDateTakesTheFocusBack) {
  ASSERT_TRUE(press("Cmd_AjoutTaux"));
  for (const char* keys : {"3", "31/02/2026", "99999999", "1/1/1", "////"}) {
    ASSERT_TRUE(user_->fill(date(), keys));
    EXPECT_FALSE(user_->go(normal())) << keys;
    expectBox(kDateIllisible, Icon::Exclamation);
    EXPECT_PRED_FORMAT1(hasFocus, date());
    EXPECT_FALSE(press("Cmd_OKTaux"));
    expectBox(kDateIllisible, Icon::Exclamation);
    EXPECT_TRUE(rateOpen());
  }
}

TEST_F(Rates, AnEmptyDateMayBeLeft) {
  ASSERT_TRUE(press("Cmd_AjoutTaux"));
  EXPECT_TRUE(user_->go(normal()));
  expectNoBox();
}

TEST_F(Rates, ARateZoneTakesDecimalKeysAndReformatsWhenLeft) {
  const std::vector<std::vector<std::string>> typed{{"12,5", "12,5", "12,50"},
                                                    {"12.5", "12,5", "12,50"},
                                                    {"1 234,50", "1234,50", "1234,50"},
                                                    {"-3", "-3", "-3,00"},
                                                    {"0,005", "0,005", "0,01"},
                                                    {".5", ",5", "0,50"},
                                                    {"1a2é3%", "123", "123,00"},
                                                    {"12\r", "12", "12,00"},
                                                    {"0", "0", "0,00"},
                                                    {"007", "007", "7,00"},
                                                    {"", "", ""},
                                                    {"0,004", "0,004", "0,00"},
                                                    {"-0,005", "-0,005", "-0,01"}};
  ASSERT_TRUE(press("Cmd_AjoutTaux"));
  for (TextBox* zone : {&normal(), &increased(), &service()}) {
    for (const auto& keys : typed) {
      if (zone == &service() && keys[0].ends_with("\r")) continue;  // in the last zone it confirms
      ASSERT_TRUE(user_->fill(*zone, keys[0]));
      EXPECT_EQ(zone->text(), keys[1]) << zone->name();
      ASSERT_TRUE(user_->go(date()));
      EXPECT_EQ(zone->text(), keys[2]) << zone->name() << " " << keys[0];
    }
  }
  expectNoBox();
}

TEST_F(Rates, WhatIsNoNumberStaysInItsZoneAndTakesTheFocusBack) {
  ASSERT_TRUE(press("Cmd_AjoutTaux"));
  for (TextBox* zone : {&normal(), &increased(), &service()}) {
    for (const std::string& typed :
         {std::string(","), std::string("-"), std::string("1,2,3"), std::string(15, '9')}) {
      ASSERT_TRUE(user_->fill(*zone, typed));
      EXPECT_FALSE(user_->go(date())) << typed;
      EXPECT_EQ(zone->text(), typed);
      EXPECT_TRUE(zone->hasFocus()) << typed;
      EXPECT_FALSE(press("Cmd_OKTaux"));
      EXPECT_TRUE(rateOpen());
    }
    ASSERT_TRUE(user_->fill(*zone, ""));
    ASSERT_TRUE(user_->paste("douze"));
    user_->tab();
    EXPECT_TRUE(zone->hasFocus());
    EXPECT_EQ(zone->text(), "douze");
    ASSERT_TRUE(user_->fill(*zone, "12"));
  }
  expectNoBox();
}

TEST_F(Rates, WhatIsNoNumberIsNotConfirmedEither) {
  begin({"01022026", "20", "25", "15"});
  ASSERT_TRUE(user_->go(button("Cmd_OKTaux")));
  increased().setText("1,2,3");
  ASSERT_TRUE(press("Cmd_OKTaux"));
  expectNoBox();
  EXPECT_TRUE(rateOpen());
  EXPECT_PRED_FORMAT1(hasFocus, increased());
  EXPECT_EQ(increased().text(), "1,2,3");
}

TEST_F(Rates, AStoredNumberThatCannotBeReadMayBeLeftAndConfirmedAsItStands) {
  store_.set("ORGPRISECHARGE", "001", attribut::TxRembOrgChg, marked("abc|1800"));
  store_.set("ORGPRISECHARGE", "001", attribut::PrestServOrgChg, marked("0|0"));
  show();
  ASSERT_TRUE(openRate(0));
  ASSERT_TRUE(user_->go(normal()));
  ASSERT_TRUE(user_->tab());
  EXPECT_EQ(normal().text(), "abc");
  expectAccepted();
  save();
  EXPECT_EQ(attribute("001", attribut::TxRembOrgChg), marked("abc|1800"));
}

TEST_F(Rates, CancelWorksWhileTheDateOrANumberCannotBeRead) {
  for (TextBox* zone : {&date(), &normal()}) {
    ASSERT_TRUE(openRate(0));
    ASSERT_TRUE(user_->fill(*zone, "1,2,3"));
    ASSERT_TRUE(press("Cmd_AnnulerTaux")) << zone->name();
    expectNoBox();
    EXPECT_FALSE(rateOpen());
    ASSERT_TRUE(press("Cmd_AjoutTaux"));
    ASSERT_TRUE(user_->fill(*zone, "1,2,3"));
    desktop_.answer(Answer::No);
    ASSERT_TRUE(press("Cmd_AnnulerTaux"));
    expectBox(kQuitterCreation, Icon::Question, Buttons::YesNo);
    EXPECT_TRUE(rateOpen());
    desktop_.answer(Answer::Yes);
    ASSERT_TRUE(press("Cmd_AnnulerTaux"));
    expectBox(kQuitterCreation, Icon::Question, Buttons::YesNo);
    EXPECT_FALSE(rateOpen());
  }
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
}

TEST_F(Rates, APastedDateSplitsAtAnyCharacterThatIsNoDigit) {
  ASSERT_TRUE(press("Cmd_AjoutTaux"));
  for (const char* pasted : {"1 2 2026", "01\u201302\u20132026", "1_2_26", "01;02;2026"}) {
    ASSERT_TRUE(user_->fill(date(), ""));
    ASSERT_TRUE(user_->paste(pasted));
    ASSERT_TRUE(user_->go(normal())) << pasted;
    EXPECT_EQ(date().text(), "01/02/2026") << pasted;
  }
  expectNoBox();
}

TEST_F(Rates, WhatIsPastedIsReformattedToo) {
  ASSERT_TRUE(press("Cmd_AjoutTaux"));
  ASSERT_TRUE(user_->go(normal()));
  ASSERT_TRUE(user_->paste("1 234,5"));
  ASSERT_TRUE(user_->tab());
  EXPECT_EQ(normal().text(), "1234,50");
}

// What each typed number comes to in the record, or the check that refuses it.
TEST_F(Rates, NumbersAsTheyAreTypedReachTheRecord) {
  const std::vector<std::pair<std::string, std::string>> typed{
      {"12,5", "1250"}, {"12.5", "1250"}, {"1 234,50", "123450"}, {"-3", "-300"}, {"0,005", "1"}};
  for (const auto& [keys, value] : typed) {
    putRates({});
    show();
    addRate({"01022026", keys, keys, keys});
    expectNoBox();
    save();
    for (const int number :
         {attribut::TxRembOrgChg, attribut::TxRembMajOrgChg, attribut::PrestServOrgChg})
      EXPECT_EQ(attribute("001", number), value) << keys;
  }
}

TEST_F(Rates, StoredNumbersWithDecimalsAreShownRoundedAndKept) {
  const std::string normals = marked("1850.5|1750,4");
  store_.set("ORGPRISECHARGE", "001", attribut::TxRembOrgChg, normals);
  show();
  EXPECT_EQ(rates()[0][1], "18,51");
  EXPECT_EQ(rates()[1][1], "17,50");
  ASSERT_TRUE(openRate(0));
  EXPECT_EQ(normal().text(), "18,51");
  for (TextBox* zone : {&normal(), &increased(), &service()}) ASSERT_TRUE(user_->go(*zone));
  expectAccepted();
  addRate({"01022026", "21", "26", "16"});
  save();
  EXPECT_EQ(attribute("001", attribut::TxRembOrgChg), "2100" + marked("|") + normals);
  show();
  ASSERT_TRUE(openRate(0));
  user_->fill(normal(), "22,5");
  expectAccepted();
  save();
  EXPECT_EQ(attribute("001", attribut::TxRembOrgChg), "2250" + marked("|") + normals);
}

TEST_F(Rates, AStoredDayWithAFractionIsKeptWithItsRow) {
  store_.set("ORGPRISECHARGE", "001", attribut::DateRembOrgChg, marked("21186.5|20821"));
  show();
  ASSERT_TRUE(openRate(0));
  user_->fill(normal(), "21");
  expectAccepted();
  save();
  EXPECT_EQ(attribute("001", attribut::DateRembOrgChg), marked("21186.5|20821"));
  EXPECT_EQ(attribute("001", attribut::TxRembOrgChg), marked("2100|1800"));
}

TEST_F(Rates, HundredthsDoNotDriftThroughShowAndChange) {
  testing_support::Random random(4101);
  std::uniform_int_distribution<int> any(0, 99999);
  for (int i = 0; i < 60; ++i) {
    const std::string shown = store::twoDecimals(i < 2 ? i * 99999 : any(random));
    putRates({{"01/01/2026", shown, shown, shown}});
    const std::string before = store_.record("ORGPRISECHARGE", "001").text();
    show();
    ASSERT_PRED_FORMAT2(same, rates()[0], (Row{"01/01/2026", shown, shown, shown}));
    ASSERT_TRUE(openRate(0));
    for (TextBox* zone : {&normal(), &increased(), &service()}) ASSERT_TRUE(user_->go(*zone));
    expectAccepted();
    save();
    ASSERT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), before) << shown;
  }
}

TEST(Hundredths, AllRoundTripBetweenValueRowAndZone) {
  for (int value = 0; value <= 99999; ++value) {
    const std::string text = std::to_string(value);
    const std::string row = pages::centiemesMontres(text);
    ASSERT_EQ(pages::centiemesEcrits(row), text);
    const std::string zone = store::editable(row);
    ASSERT_EQ(pages::centiemesEcrits(zone), text) << zone;
    ASSERT_EQ(store::reformatted(zone), row) << zone;
  }
}

// Consultation ------------------------------------------------------------------------------------

TEST_F(Rates, BelowLevelTwoADoubleClickOpensNothing) {
  for (const long level : {0L, 1L, 3L}) {
    level_->value = level;
    EXPECT_FALSE(openRate(0));
    expectNoBox();
    EXPECT_FALSE(date().enabled());
  }
  level_->value = 2;
  EXPECT_TRUE(openRate(0));
}

TEST_F(Rates, ADoubleClickEndsQuietlyWhenTheRightsCannotBeRead) {
  level_->fails = true;
  EXPECT_NO_THROW(user_->dblClick(list("Lst_DateRembOrgChg"), 0));
  EXPECT_FALSE(rateOpen());
  expectNoBox();
}

// Host --------------------------------------------------------------------------------------------

class RatesHost : public RatesEditMode {};

TEST_F(RatesHost, MembersAreDeniedBelowLevelTwo) {
  level_->value = 1;
  std::int16_t at = 0;
  EXPECT_THROW(control_->MasquerZonesTaux(), control::AccessDenied);
  EXPECT_THROW(control_->AfficherZonesTaux(), control::AccessDenied);
  EXPECT_THROW(control_->Tri2(), control::AccessDenied);
  EXPECT_THROW(control_->DoubleClickTauxRemb(), control::AccessDenied);
  EXPECT_THROW(control_->AjoutLists(at), control::AccessDenied);
  EXPECT_THROW(control_->EffaceEltLists(), control::AccessDenied);
  EXPECT_THROW(control_->Ecrire_Ong3(), control::AccessDenied);
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
  expectAsRemembered();
}

TEST_F(RatesHost, MembersNeedARecordInHand) {
  control_->Vider_Donnees();
  std::int16_t at = 0;
  EXPECT_THROW(control_->MasquerZonesTaux(), control::NotReady);
  EXPECT_THROW(control_->AfficherZonesTaux(), control::NotReady);
  EXPECT_THROW(control_->Tri2(), control::NotReady);
  EXPECT_THROW(control_->DoubleClickTauxRemb(), control::NotReady);
  EXPECT_THROW(control_->AjoutLists(at), control::NotReady);
  EXPECT_THROW(control_->EffaceEltLists(), control::NotReady);
  EXPECT_THROW(control_->Ecrire_Ong3(), control::NotReady);
}

TEST_F(RatesHost, MasquerZonesTauxOpensTheSelectedRowWithEmptyZones) {
  user_->click(list("Lst_DateRembOrgChg"), 1);
  control_->MasquerZonesTaux();
  expectLocks(&Lock::changing);
  EXPECT_EQ(date().text(), "");
  fillRate({"01062025", "19", "24", "14"});
  ASSERT_TRUE(press("Cmd_OKTaux"));
  expectNoBox();
  EXPECT_PRED_FORMAT2(same, rates(), (Rows{kTwo[0], {"01/06/2025", "19,00", "24,00", "14,00"}}));
}

TEST_F(RatesHost, MasquerZonesTauxWithoutASelectedRowIsNoAddition) {
  control_->MasquerZonesTaux();
  expectLocks(&Lock::changing);
  fillRate({"01022026", "19", "24", "14"});
  ASSERT_TRUE(press("Cmd_OKTaux"));
  expectNoBox();
  EXPECT_TRUE(rateOpen());
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
  ASSERT_TRUE(press("Cmd_SuppTaux"));
  expectNoBox();
  expectListModeAgain();
  control_->MasquerZonesTaux();
  ASSERT_TRUE(press("Cmd_AnnulerTaux"));
  expectNoBox();
  expectListModeAgain();
  EXPECT_TRUE(openRate(0));
}

TEST_F(RatesHost, AfficherZonesTauxClosesAndEmpties) {
  begin({"01022026", "21"});
  control_->AfficherZonesTaux();
  expectNoBox();
  expectListModeAgain();
  control_->AfficherZonesTaux();
  expectListModeAgain();
}

TEST_F(RatesHost, TwoEditorsAreNeverOpenAtATime) {
  putDeductions({{"0,00", "10,00", "50,00"}});
  show();
  remember();
  ASSERT_TRUE(openRate(0));
  control_->MasquerZonesAbat();
  control_->MasquerZonesTaux();
  user_->scroll(bar("Bdv_TauxOrgChg"), 1);
  control_->DoubleClickTauxRemb();
  control_->DoubleClickAbat();
  EXPECT_FALSE(box("Txt_DebAbatHOrgChg").enabled());
  EXPECT_EQ(date().text(), "01/01/2026");
  ASSERT_TRUE(press("Cmd_AnnulerTaux"));
  expectListModeAgain();
  ASSERT_TRUE(openDeduction(0));
  control_->MasquerZonesTaux();
  control_->DoubleClickTauxRemb();
  EXPECT_FALSE(date().enabled());
  ASSERT_TRUE(press("Cmd_AnnulerAbat"));
  expectAsRemembered();
}

TEST_F(RatesHost, NoRowOpensInADisabledFrame) {
  store_.set("ORGPRISECHARGE", "001", attribut::AttribOrgChg, "M");
  show();
  const auto before = enabledBelow(control_->surface());
  control_->MasquerZonesTaux();
  control_->MasquerZonesAbat();
  EXPECT_PRED_FORMAT2(same, enabledBelow(control_->surface()), before);
}

TEST_F(RatesHost, DoubleClickTauxRembOpensTheSelectedRow) {
  control_->DoubleClickTauxRemb();
  EXPECT_FALSE(rateOpen());
  user_->click(list("Lst_DateRembOrgChg"), 1);
  control_->DoubleClickTauxRemb();
  EXPECT_FALSE(rateOpen());
  user_->click(list("Lst_TxRembOrgChg"), 0);
  control_->DoubleClickTauxRemb();
  EXPECT_TRUE(rateOpen());
  EXPECT_EQ(normal().text(), "20");
}

TEST_F(RatesHost, Tri2OrdersAndShowsTheHourglass) {
  putRates({kTwo[1], kTwo[0]});
  show();
  EXPECT_PRED_FORMAT2(same, rates(), (Rows{kTwo[1], kTwo[0]}));
  control_->Tri2();
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
  std::vector<toolkit::Pointer> pointers;
  for (const auto& entry : desktop_.journal()) {
    if (entry.what == toolkit::headless::Entry::What::Pointer) pointers.push_back(entry.pointer);
  }
  EXPECT_PRED_FORMAT2(
      same, pointers,
      (std::vector<toolkit::Pointer>{toolkit::Pointer::Hourglass, toolkit::Pointer::Normal}));
}

TEST_F(RatesHost, Tri2FollowsTheRowThatIsOpen) {
  putRates({kTwo[1], kTwo[0]});
  show();
  ASSERT_TRUE(openRate(0));
  control_->Tri2();
  EXPECT_EQ(date().text(), "01/01/2025");
  user_->fill(increased(), "23");
  expectAccepted();
  EXPECT_PRED_FORMAT2(same, rates(), (Rows{kTwo[0], {"01/01/2025", "18,00", "23,00", "12,00"}}));
}

TEST_F(RatesHost, AjoutListsPutsTheZonesIntoTheLists) {
  begin({"01022026", "21", "26", "16"});
  std::int16_t at = 1;
  control_->AjoutLists(at);
  EXPECT_EQ(at, 1);
  const Row row{"01/02/2026", "21,00", "26,00", "16,00"};
  EXPECT_PRED_FORMAT2(same, rates(), (Rows{kTwo[0], row, kTwo[1]}));
  at = 3;
  control_->AjoutLists(at);
  EXPECT_PRED_FORMAT2(same, rates(), (Rows{kTwo[0], row, kTwo[1], row}));
  for (const int past : {-1, 5}) {
    at = static_cast<std::int16_t>(past);
    EXPECT_THROW(control_->AjoutLists(at), std::invalid_argument) << past;
    EXPECT_EQ(rates().size(), 4U);
  }
  EXPECT_EQ(bar("Bdv_TauxOrgChg").max(), 3);
}

TEST_F(RatesHost, AjoutListsRefusesARowWithoutADate) {
  begin({"", "21", "26", "16"});
  std::int16_t at = 1;
  EXPECT_THROW(control_->AjoutLists(at), std::invalid_argument);
  date().setText("  ");
  EXPECT_THROW(control_->AjoutLists(at), std::invalid_argument);
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
}

TEST_F(RatesHost, EffaceEltListsTakesTheSelectedRowOutOfTheLists) {
  control_->EffaceEltLists();
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
  user_->click(list("Lst_DateRembOrgChg"), 0);
  control_->EffaceEltLists();
  EXPECT_PRED_FORMAT2(same, rates(), (Rows{kTwo[1]}));
  EXPECT_EQ(list("Lst_DateRembOrgChg").listIndex(), -1);
  save();
  EXPECT_EQ(attribute("001", attribut::DateRembOrgChg), "20821");
}

TEST_F(RatesHost, ARowTakenOutOfTheListsAloneCanStillBeDeleted) {
  putRates({kTwo[0]});
  show();
  ASSERT_TRUE(openRate(0));
  control_->EffaceEltLists();
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppTaux"));
  EXPECT_TRUE(rates().empty());
  EXPECT_FALSE(rateOpen());
}

// The editor's own state --------------------------------------------------------------------------

class RatesState : public Desk {
 protected:
  RatesState() { hand(kTwo, {}); }
  screen::EtatTaux& taux() { return session_.taux; }
  void add(std::string_view date, std::string_view normal = "20", Caller at = Caller::here()) {
    const auto trace = called("add", at);
    ASSERT_TRUE(user_.click(prise_.Cmd_AjoutTaux));
    user_.fill(prise_.Txt_DateRembOrgChg, date);
    user_.fill(prise_.Txt_TxRembOrgChg, normal);
    user_.fill(prise_.Txt_TxRembMajOrgChg, "90");
    user_.fill(prise_.Txt_PrestServOrgChg, "0");
    ASSERT_TRUE(user_.click(prise_.Cmd_OKTaux));
  }
  void open(int row) { user_.dblClick(prise_.Lst_DateRembOrgChg, row); }
};

TEST_F(RatesState, W_AjoutTauxLivesFromTheAddButtonToTheEnd) {
  EXPECT_FALSE(taux().W_AjoutTaux);
  ASSERT_TRUE(user_.click(prise_.Cmd_AjoutTaux));
  EXPECT_TRUE(taux().W_AjoutTaux);
  desktop_.answer(Answer::No);
  user_.click(prise_.Cmd_AnnulerTaux);
  EXPECT_TRUE(taux().W_AjoutTaux);
  desktop_.answer(Answer::Yes);
  user_.click(prise_.Cmd_AnnulerTaux);
  EXPECT_FALSE(taux().W_AjoutTaux);
  open(0);
  EXPECT_FALSE(taux().W_AjoutTaux);
  user_.click(prise_.Cmd_AnnulerTaux);
  add("01022026");
  EXPECT_FALSE(taux().W_AjoutTaux);
  add("01022026");
  EXPECT_FALSE(taux().W_AjoutTaux);
  for (const bool byPage : {true, false}) {
    ASSERT_TRUE(user_.click(prise_.Cmd_AjoutTaux));
    ASSERT_TRUE(taux().W_AjoutTaux);
    if (byPage) {
      page_.Afficher_Ong3();
    } else {
      page_.taux().AfficherZonesTaux();
    }
    EXPECT_FALSE(taux().W_AjoutTaux);
  }
}

TEST_F(RatesState, W_DerTauxModifCountsAdditionsCancelsAndDeletions) {
  EXPECT_EQ(taux().W_DerTauxModif, 0);
  add("01022026");
  EXPECT_EQ(taux().W_DerTauxModif, 1);
  add("01032026");
  EXPECT_EQ(taux().W_DerTauxModif, 2);
  ASSERT_TRUE(user_.click(prise_.Cmd_AjoutTaux));
  EXPECT_EQ(taux().W_DerTauxModif, 3);
  desktop_.answer(Answer::No);
  user_.click(prise_.Cmd_AnnulerTaux);
  EXPECT_EQ(taux().W_DerTauxModif, 3);
  desktop_.answer(Answer::Yes);
  user_.click(prise_.Cmd_AnnulerTaux);
  EXPECT_EQ(taux().W_DerTauxModif, 2);
  open(0);
  user_.click(prise_.Cmd_AnnulerTaux);
  EXPECT_EQ(taux().W_DerTauxModif, 2);
  for (const int left : {1, 0, 0}) {
    open(0);
    desktop_.answer(Answer::No);
    user_.click(prise_.Cmd_SuppTaux);
    desktop_.answer(Answer::Yes);
    user_.click(prise_.Cmd_SuppTaux);
    EXPECT_EQ(taux().W_DerTauxModif, left);
  }
  EXPECT_PRED_FORMAT2(same, rates(), (Rows{kTwo[1]}));
}

// A duplicate date discards the entry, but not the row that the addition opened.
TEST_F(RatesState, W_DerTauxModifStaysAfterADuplicateDate) {
  add("01012026");
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
  EXPECT_EQ(taux().W_DerTauxModif, 1);
}

TEST_F(RatesState, W_TauxModifSuppIsSetByTheDeletionAtZero) {
  add("01022026");
  for (const bool set : {false, true}) {
    open(0);
    desktop_.answer(Answer::Yes);
    user_.click(prise_.Cmd_SuppTaux);
    EXPECT_EQ(taux().W_TauxModifSupp, set);
  }
  add("01022026");
  EXPECT_TRUE(taux().W_TauxModifSupp);
}

TEST_F(RatesState, W_TauxModifieIsSetByAnAddition) {
  ASSERT_TRUE(user_.click(prise_.Cmd_AjoutTaux));
  EXPECT_FALSE(taux().W_TauxModifie);
  user_.click(prise_.Cmd_OKTaux);
  EXPECT_FALSE(taux().W_TauxModifie);
  desktop_.answer(Answer::Yes);
  user_.click(prise_.Cmd_AnnulerTaux);
  EXPECT_FALSE(taux().W_TauxModifie);
  add("01012026");
  EXPECT_FALSE(taux().W_TauxModifie);
  add("01022026");
  EXPECT_TRUE(taux().W_TauxModifie);
}

TEST_F(RatesState, W_TauxModifieIsSetByAnotherDateOrNormalRateAlone) {
  struct Case {
    toolkit::TextBox* zone;
    const char* typed;
    bool set;
  };
  for (const Case& change : {Case{&prise_.Txt_DateRembOrgChg, "02012026", true},
                             Case{&prise_.Txt_DateRembOrgChg, "01012026", false},
                             Case{&prise_.Txt_TxRembOrgChg, "20,01", true},
                             Case{&prise_.Txt_TxRembOrgChg, "20,0", false},
                             Case{&prise_.Txt_TxRembMajOrgChg, "26", false},
                             Case{&prise_.Txt_PrestServOrgChg, "14", false}}) {
    hand(kTwo, {});
    open(0);
    EXPECT_EQ(taux().W_TauxAvantModif, "01/01/202620,00");
    user_.fill(*change.zone, change.typed);
    user_.click(prise_.Cmd_OKTaux);
    EXPECT_EQ(taux().W_TauxModifie, change.set) << change.zone->name() << " " << change.typed;
  }
}

TEST_F(RatesState, W_TauxModifieIsNotSetByADeletion) {
  open(0);
  desktop_.answer(Answer::Yes);
  user_.click(prise_.Cmd_SuppTaux);
  EXPECT_FALSE(taux().W_TauxModifie);
}

TEST_F(RatesState, W_TauxAvantModifIsKeptFromTheFirstChangeThatCounts) {
  open(0);
  user_.fill(prise_.Txt_TxRembMajOrgChg, "26");
  user_.click(prise_.Cmd_OKTaux);
  add("01022026", "30");
  EXPECT_EQ(taux().W_TauxAvantModif, "01/01/202620,00");
  open(0);
  EXPECT_EQ(taux().W_TauxAvantModif, "01/01/202620,00");
  hand(kTwo, {});
  EXPECT_EQ(taux().W_TauxAvantModif, "");
}

TEST_F(RatesState, W_TauxModifieStaysWhenTheChangeIsTakenBack) {
  open(0);
  user_.fill(prise_.Txt_TxRembOrgChg, "21");
  user_.click(prise_.Cmd_OKTaux);
  open(0);
  user_.fill(prise_.Txt_TxRembOrgChg, "20");
  user_.click(prise_.Cmd_OKTaux);
  EXPECT_PRED_FORMAT2(same, rates(), kTwo);
  EXPECT_TRUE(taux().W_TauxModifie);
}

TEST_F(RatesState, TheBarsButtonsAreRememberedWhileARowIsOpen) {
  screen_.bar.Cmd_Supprimer.setEnabled(true);
  screen_.bar.Cmd_Sortir.setEnabled(false);
  open(0);
  EXPECT_TRUE(session_.W_SupprimerActif);
  EXPECT_FALSE(session_.W_SortirActif);
  user_.click(prise_.Cmd_AnnulerTaux);
  EXPECT_FALSE(session_.W_SupprimerActif);
  EXPECT_TRUE(screen_.bar.Cmd_Supprimer.enabled());
  EXPECT_FALSE(screen_.bar.Cmd_Sortir.enabled());
}

TEST_F(RatesState, ABlankIsHeldAsABlankUntilThePageIsWritten) {
  ASSERT_TRUE(user_.click(prise_.Cmd_AjoutTaux));
  user_.type("01022026");
  user_.fill(prise_.Txt_TxRembOrgChg, "0");
  for (toolkit::TextBox* zone : {&prise_.Txt_TxRembMajOrgChg, &prise_.Txt_PrestServOrgChg}) {
    user_.go(*zone);
    user_.paste(" ");
  }
  user_.click(prise_.Cmd_OKTaux);
  EXPECT_EQ(record().get(attribut::TxRembMajOrgChg, 1), " ");
  EXPECT_EQ(record().get(attribut::PrestServOrgChg, 1), " ");
  EXPECT_PRED_FORMAT2(same, rates()[0], (Row{"01/02/2026", "0,00", "", ""}));
  page_.Ecrire_Ong3();
  EXPECT_EQ(record().get(attribut::TxRembMajOrgChg, 1), "");
  EXPECT_EQ(record().get(attribut::PrestServOrgChg, 1), "");
  EXPECT_EQ(record().DCount(attribut::TxRembMajOrgChg), 3);
}

// Each row is put before the first one already placed that is earlier.
TEST_F(RatesState, Tri2AgainstAPlainReference) {
  testing_support::Random random(4102);
  for (int round = 0; round < 300; ++round) {
    Rows rows(std::uniform_int_distribution<std::size_t>(0, 30)(random));
    int number = 0;
    for (Row& row : rows) {
      const long day = std::uniform_int_distribution<long>(20000, 20010)(random);
      const std::string rate = store::twoDecimals(++number);
      row = {store::textOfDay(day), rate, number % 3 == 0 ? "" : rate, number % 4 == 0 ? "" : rate};
    }
    Rows expected;
    for (const Row& row : rows) {
      const auto earlier = std::find_if(expected.begin(), expected.end(), [&](const Row& placed) {
        return store::dayOfText(placed[0]) < store::dayOfText(row[0]);
      });
      expected.insert(earlier, row);
    }
    hand(rows, {});
    page_.taux().Tri2();
    ASSERT_PRED_FORMAT2(same, rates(), expected);
    store::DynamicArray written;
    putRows(written, attribut::DateRembOrgChg, 4, expected);
    for (int attribute = attribut::DateRembOrgChg; attribute <= attribut::PrestServOrgChg;
         ++attribute) {
      ASSERT_EQ(record().get(attribute), written.get(attribute));
    }
  }
}

}  // namespace
}  // namespace behaviour
