// What the management rules page asks for before a body is saved, and its members as a host calls
// them.
#include <functional>

#include "tests/behaviour/RulesPage.h"

namespace behaviour {
namespace {

constexpr const char* kPeriod = "La période de facturation est obligatoire.";
constexpr const char* kRenewal = "Le déclenchement du renouvellement est obligatoire.";
constexpr const char* kDebit = "Le compte comptable DEBIT est obligatoire.";
constexpr const char* kCredit = "Le compte comptable CREDIT est obligatoire.";

class RulesCheck : public RulesPageWithAccounts {
 protected:
  RulesCheck() { start(); }

  void saveFromAnotherTab(Caller at = Caller::here()) {
    const auto trace = called("saveFromAnotherTab", at);
    ASSERT_TRUE(user_->click(tabs(), 5));
    ASSERT_TRUE(press("Cmd_OK"));
  }
  // Refused with this box, the page in front and the field ready for the user; nothing else has
  // happened.
  void expectRefused(std::string_view message, std::string_view field, Caller at = Caller::here()) {
    const auto trace = called("expectRefused", at);
    expectBox(message, Icon::Exclamation);
    EXPECT_EQ(tabs().tab(), kRulesTab);
    EXPECT_PRED_FORMAT1(hasFocus, *control_->surface().find(field)) << field;
    EXPECT_TRUE(control_->surface().find(field)->usable()) << field;
    expectNothingWritten();
    EXPECT_EQ(state(), kExisting);
    EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
    EXPECT_FALSE(control_->W_Sortir());
  }
};

TEST_F(RulesCheck, EachObligationHasItsMessageItsFieldAndItsWayOut) {
  struct Row {
    int attribute;
    const char* message;
    const char* field;
    const char* typed;
    const char* stored;
  };
  for (const Row& row :
       {Row{attribut::PeriodFactOrgChg, kPeriod, "Cbo_PeriodFactOrgChg", "Trimestrielle", "T"},
        Row{attribut::RenouvOrgChg, kRenewal, "Cbo_RenouvOrgChg", "Renouvellement à - 2 mois", "2"},
        Row{attribut::DebitOrgChg, kDebit, "Txt_DebitOrgChg", "4110000001", "4110000001"},
        Row{attribut::CreditOrgChg, kCredit, "Txt_CreditOrgChg", "4670000002", "4670000002"}}) {
    SCOPED_TRACE(row.message);
    show("001", {{row.attribute, row.attribute == 20 ? "7" : ""}});
    store_.forgetCalls();
    saveFromAnotherTab();
    expectRefused(row.message, row.field);
    ASSERT_TRUE(user_->type(row.typed));
    expectSaved("001", {{row.attribute, row.stored}});
  }
}

TEST_F(RulesCheck, TheObligationsComeOneByOneInTheirOrder) {
  show("001", {{attribut::PeriodFactOrgChg, ""},
               {attribut::RenouvOrgChg, "9"},
               {attribut::DebitOrgChg, ""},
               {attribut::CreditOrgChg, ""},
               {attribut::CpteProdAide, ""}});
  store_.forgetCalls();
  saveFromAnotherTab();
  expectRefused(kPeriod, "Cbo_PeriodFactOrgChg");
  user_->type("Mensuelle");
  saveFromAnotherTab();
  expectRefused(kRenewal, "Cbo_RenouvOrgChg");
  user_->type("Pas de gestion renouvellement");
  saveFromAnotherTab();
  expectRefused(kDebit, "Txt_DebitOrgChg");
  user_->type("4110000001");
  saveFromAnotherTab();
  expectRefused(kCredit, "Txt_CreditOrgChg");
  user_->type("4670000002");
  expectSaved("001", {{attribut::PeriodFactOrgChg, "M"},
                      {attribut::RenouvOrgChg, "0"},
                      {attribut::DebitOrgChg, "4110000001"},
                      {attribut::CreditOrgChg, "4670000002"}});
}

TEST_F(RulesCheck, AFieldThatTheUserHasEmptiedIsAskedForToo) {
  show("001");
  ASSERT_TRUE(user_->fill(renewal(), ""));
  press("Cmd_OK");
  expectRefused(kRenewal, "Cbo_RenouvOrgChg");
  user_->choose(renewal(), 3);
  ASSERT_TRUE(user_->fill(box("Txt_CreditOrgChg"), ""));
  press("Cmd_OK");
  expectRefused(kCredit, "Txt_CreditOrgChg");
}

TEST_F(RulesCheck, ARefusedPageChangesNothingInTheRecordInHand) {
  show("001", {{attribut::RenouvOrgChg, "3"}, {attribut::LettresInfo, "1"}});
  choose("Opt_TypeComplOrgChg");
  tick("Cac_LettresInfo");
  ASSERT_TRUE(user_->fill(period(), ""));
  press("Cmd_OK");
  expectRefused(kPeriod, "Cbo_PeriodFactOrgChg");
  control_->Afficher_Ong2();
  EXPECT_TRUE(option("Opt_TypePrincipalOrgChg").value());
  EXPECT_TRUE(check("Cac_LettresInfo").value());
}

TEST_F(RulesCheck, TheAidProductAccountIsNeverRequired) {
  show("001");
  ASSERT_TRUE(user_->fill(box("Txt_CpteProdAide"), ""));
  expectSaved("001", {{attribut::CpteProdAide, ""}});
}

TEST_F(RulesCheck, WithoutAccountingConsequenceNoAccountIsRequired) {
  show("001", {{attribut::TypeOrgChg, "C"},
               {attribut::DebitOrgChg, ""},
               {attribut::CreditOrgChg, ""},
               {attribut::CpteProdAide, ""}});
  tick("Cac_IncidCompta");
  expectSaved("001", {{attribut::IncidCompta, "1"}});
}

TEST_F(RulesCheck, AccountsAreRequiredAgainWhenTheBoxIsCleared) {
  show("001", {{attribut::TypeOrgChg, "C"},
               {attribut::DebitOrgChg, ""},
               {attribut::CreditOrgChg, ""},
               {attribut::IncidCompta, "1"}});
  tick("Cac_IncidCompta");
  press("Cmd_OK");
  expectRefused(kDebit, "Txt_DebitOrgChg");
}

// The account that is asked for cannot be entered yet: its chart is that of the legal entity.
TEST_F(RulesCheck, ARequiredAccountLeadsOnToTheMissingEntity) {
  show("001", {{attribut::DebitOrgChg, ""}, {attribut::Entite, ""}});
  store_.forgetCalls();
  press("Cmd_OK");
  const auto boxes = desktop_.takeBoxes();
  ASSERT_PRED_FORMAT2(boxCount, boxes, 2U);
  EXPECT_EQ(boxes[0].text, kDebit);
  EXPECT_EQ(boxes[1].text,
            "Vous devez d'abord sélectionner une entité juridique dans l'onglet Activités "
            "couvertes afin de savoir à quel plan comptable associer le compte à débiter.");
  EXPECT_EQ(tabs().tab(), 5);
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_Entite"));
  expectNothingWritten();
}

TEST_F(RulesCheck, ACreationIsAskedForTheSame) {
  beginCreation();
  store_.forgetCalls();
  press("Cmd_OK");
  expectBox(kDebit, Icon::Exclamation);
  EXPECT_EQ(tabs().tab(), kRulesTab);
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_DebitOrgChg"));
  EXPECT_EQ(state(), kCreating);
  expectNothingWritten();
  ASSERT_TRUE(user_->type("4110000001"));
  ASSERT_TRUE(user_->fill(box("Txt_CreditOrgChg"), "4670000002"));
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("004", attribut::DebitOrgChg), "4110000001");
  EXPECT_EQ(attribute("004", attribut::CreditOrgChg), "4670000002");
}

TEST_F(RulesCheck, LeavingAsksForNothing) {
  show("001", {{attribut::PeriodFactOrgChg, ""},
               {attribut::RenouvOrgChg, "9"},
               {attribut::DebitOrgChg, ""},
               {attribut::CreditOrgChg, ""}});
  press("Cmd_Sortir");
  expectNoBox();
  EXPECT_TRUE(control_->W_Sortir());
}

TEST_F(RulesCheck, SavingWhileLeavingAsksForThemAndStays) {
  show("001", {{attribut::DebitOrgChg, ""}});
  tick("Cac_LettresInfo");
  store_.forgetCalls();
  desktop_.answer(Answer::Yes);
  press("Cmd_Sortir");
  const auto boxes = desktop_.takeBoxes();
  ASSERT_PRED_FORMAT2(boxCount, boxes, 2U);
  EXPECT_EQ(boxes[1].text, kDebit);
  EXPECT_EQ(tabs().tab(), kRulesTab);
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_DebitOrgChg"));
  EXPECT_FALSE(control_->W_Sortir());
  expectNothingWritten();
}

class RulesWithoutAccounts : public RulesPage {
 protected:
  RulesWithoutAccounts() { start(); }
};

TEST_F(RulesWithoutAccounts, NeitherShowWriteNorRequireThem) {
  show("001", {{attribut::DebitOrgChg, "4110000001"},
               {attribut::CreditOrgChg, "4670000002"},
               {attribut::CpteProdAide, "7060000003"}});
  for (const char* name : {"Txt_DebitOrgChg", "Txt_CreditOrgChg", "Txt_CpteProdAide"}) {
    EXPECT_EQ(box(name).text(), "") << name;
    EXPECT_FALSE(box(name).enabled()) << name;
  }
  for (const char* name : {"Cbo_DebitOrgChg", "Cbo_CreditOrgChg", "Cbo_CpteProdAide"}) {
    EXPECT_EQ(combo(name).text(), "") << name;
    EXPECT_FALSE(combo(name).enabled()) << name;
  }
  expectSaved("001", {});
}

TEST_F(RulesWithoutAccounts, StillRequirePeriodAndRenewal) {
  show("001", {{attribut::PeriodFactOrgChg, ""}, {attribut::RenouvOrgChg, "9"}});
  press("Cmd_OK");
  expectBox(kPeriod, Icon::Exclamation);
  user_->choose(period(), 0);
  press("Cmd_OK");
  expectBox(kRenewal, Icon::Exclamation);
  EXPECT_PRED_FORMAT1(hasFocus, renewal());
}

class RulesHost : public RulesPage {
 protected:
  RulesHost() { start(); }
};

TEST_F(RulesHost, CheckTellsItsResult) {
  show("001");
  EXPECT_TRUE(control_->Verif_Ong2());
  expectNoBox();
  user_->fill(period(), "");
  user_->click(tabs(), 4);
  EXPECT_FALSE(control_->Verif_Ong2());
  expectBox(kPeriod, Icon::Exclamation);
  EXPECT_EQ(tabs().tab(), kRulesTab);
  EXPECT_PRED_FORMAT1(hasFocus, period());
  user_->choose(period(), 0);
  EXPECT_TRUE(control_->Verif_Ong2());
}

TEST_F(RulesHost, ARefusedCheckKeepsNobodyFromWritingOrSaving) {
  show("001");
  user_->fill(period(), "");
  tick("Cac_LettresInfo");
  EXPECT_FALSE(control_->Verif_Ong2());
  control_->Ecrire_Ong2();
  control_->Afficher_Ong2();
  EXPECT_TRUE(check("Cac_LettresInfo").value());
  desktop_.takeBoxes();
  EXPECT_EQ(period().text(), "Mensuelle");
  expectSaved("001", {{attribut::LettresInfo, "1"}});
}

TEST_F(RulesHost, WritingRunsNoCheck) {
  show("001", {{attribut::PeriodFactOrgChg, ""}, {attribut::RenouvOrgChg, "9"}});
  tick("Cac_LettresInfo");
  control_->Ecrire_Ong2();
  expectNoBox();
  control_->Afficher_Ong2();
  EXPECT_TRUE(check("Cac_LettresInfo").value());
  EXPECT_EQ(renewal().text(), "");
  expectNothingWritten();
}

TEST_F(RulesHost, ShowingBringsTheRecordBack) {
  show("001");
  choose("Opt_TypeComplOrgChg");
  user_->choose(renewal(), 4);
  control_->Afficher_Ong2();
  EXPECT_TRUE(option("Opt_TypePrincipalOrgChg").value());
  EXPECT_EQ(renewal().text(), "Pas de gestion renouvellement");
}

TEST_F(RulesHost, ShowingAloneAgreesWithTheHoursOnTheirPage) {
  show("001");
  choose("Opt_TypeComplOrgChg");
  option("Opt_GestPartPourc").setValue(true);
  control_->Afficher_Ong2();
  EXPECT_TRUE(frame("Cdr_GestionExclu").enabled());
  // It is no choice of the user's: the scale's page keeps its own.
  EXPECT_TRUE(option("Opt_GestPartPourc").value());
  show("002", {{attribut::TypeOrgChg, "C"}});
  choose("Opt_TypePrincipalOrgChg");
  user_->click(tabs(), 5);
  choose("Opt_DimJF");
  control_->Afficher_Ong2();
  EXPECT_FALSE(frame("Cdr_GestionExclu").enabled());
  EXPECT_TRUE(option("Opt_Totalite").value());
  show("003", {{attribut::TypeOrgChg, ""}});
  EXPECT_FALSE(frame("Cdr_GestionExclu").enabled());
}

TEST_F(RulesHost, ShowingAloneKeepsWeekDaysFromAgencyActivities) {
  store_.put("ACTIVITES", "010M01",
             {"Garde", "010", "", "", "", "", "", "", "", "", "", "M", "SAAD"});
  show("001", {{attribut::CodActSelect, "010M01"}});
  choose("Opt_TypeComplOrgChg");
  EXPECT_TRUE(option("Opt_Semaine").enabled());
  control_->Afficher_Ong2();
  EXPECT_FALSE(option("Opt_Semaine").enabled());
}

TEST_F(RulesHost, ShowingWithoutARecordLeavesThePageClear) {
  control_->Afficher_Ong2();
  EXPECT_EQ(renewal().text(), "");
  EXPECT_EQ(period().text(), "");
  EXPECT_FALSE(option("Opt_TypePrincipalOrgChg").value());
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(RulesHost, WritingNeedsARecordInHand) {
  EXPECT_THROW(control_->Ecrire_Ong2(), control::NotReady);
}

TEST_F(RulesHost, EveryMemberNeedsAStartedControl) {
  control::Ctr_OrgPriseCharge fresh(desktop_);
  const std::vector<std::function<void()>> members = {
      [&] { fresh.Afficher_Ong2(); },      [&] { fresh.Ecrire_Ong2(); },
      [&] { (void)fresh.Verif_Ong2(); },   [&] { fresh.RechercheAccord(); },
      [&] { fresh.Remplir_PiecesPoss(); }, [&] { fresh.Remplir_StatOrgChg(); }};
  for (const auto& member : members) EXPECT_THROW(member(), control::NotReady);
}

TEST_F(RulesHost, AMemberCalledWhileABoxIsOpenIsBusy) {
  show("001");
  user_->fill(period(), "");
  int refused = 0;
  desktop_.onBox = [&](const toolkit::headless::Entry&) {
    try {
      control_->Ecrire_Ong2();
    } catch (const control::Busy&) {
      ++refused;
    }
  };
  press("Cmd_OK");
  EXPECT_EQ(refused, 1);
}

TEST_F(RulesHost, RefillingTheDocumentsRepeatsNoneAndKeepsTheChosen) {
  show("001", {{attribut::PieceRenouOrgChg, "RI"}});
  control_->Remplir_PiecesPoss();
  control_->Remplir_PiecesPoss();
  EXPECT_PRED_FORMAT2(same, linesOf(list("Lst_PiecePossibleOrgChg")),
                      (std::vector<std::string>{"Avis d'imposition", "Relevé d'identité"}));
  EXPECT_PRED_FORMAT2(same, linesOf(list("Lst_PieceRenouOrgChg")),
                      (std::vector<std::string>{"Relevé d'identité"}));
  expectSaved("001", {});
}

TEST_F(RulesHost, RefillingTheCategoriesRepeatsNoneAndKeepsTheOneShown) {
  show("001", {{attribut::StatsOrgChg, "MU"}});
  control_->Remplir_StatOrgChg();
  control_->Remplir_StatOrgChg();
  EXPECT_PRED_FORMAT2(same, linesOf(statistics()),
                      (std::vector<std::string>{"Conseil départemental", "Mutuelle"}));
  EXPECT_EQ(statistics().text(), "Mutuelle");
  expectSaved("001", {});
}

TEST_F(RulesHost, AStoreWithoutCodeTablesHasEmptyLists) {
  store_.erase("TABLES", "PIECESRENOUV");
  store_.erase("TABLES", "STATORGCHG");
  control_->Init();
  EXPECT_EQ(list("Lst_PiecePossibleOrgChg").listCount(), 0);
  EXPECT_EQ(statistics().listCount(), 0);
  show("001", {{attribut::PieceRenouOrgChg, ""}, {attribut::StatsOrgChg, "CD"}});
  expectSaved("001", {});
}

class RulesConsulted : public RulesPage {
 protected:
  RulesConsulted() {
    level_->value = 1;
    start();
  }
};

TEST_F(RulesConsulted, AreShownAndNeverWritten) {
  store_.put("ACCORD", "A1", {"001", "", "", "", "", "99999"});
  show("001", {{attribut::RenouvOrgChg, "4"}});
  EXPECT_EQ(renewal().text(), "Renouvellement à - 4 mois");
  choose("Opt_TypeComplOrgChg");
  tick("Cac_LettresInfo");
  store_.forgetCalls();
  EXPECT_THROW(control_->Ecrire_Ong2(), control::AccessDenied);
  EXPECT_TRUE(control_->Verif_Ong2());
  EXPECT_FALSE(press("Cmd_OK"));
  EXPECT_TRUE(store_.calls().empty());
  press("Cmd_Sortir");
  expectNoBox();
  EXPECT_TRUE(control_->W_Sortir());
  expectNothingWritten();
}

TEST_F(RulesConsulted, MembersThatOnlyShowAndFillWork) {
  show("001", {{attribut::RenouvOrgChg, "4"}, {attribut::StatsOrgChg, "CD"}});
  control_->Remplir_PiecesPoss();
  control_->Remplir_StatOrgChg();
  control_->RechercheAccord();
  user_->choose(renewal(), 0);
  control_->Afficher_Ong2();
  EXPECT_EQ(renewal().text(), "Renouvellement à - 4 mois");
  EXPECT_EQ(statistics().text(), "Conseil départemental");
  expectNoBox();
  expectNothingWritten();
}

}  // namespace
}  // namespace behaviour
