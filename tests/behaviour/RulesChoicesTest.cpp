// What the choices on the management rules page do to each other and to the other pages.
#include "tests/behaviour/RulesPage.h"

namespace behaviour {
namespace {

class TypeOptions : public RulesPage {
 protected:
  TypeOptions() {
    for (const char* type : {"P", "M", "I", "S"}) {
      store_.put("ACTIVITES", std::string("010") + type + "09",
                 {"Activité", "010", "", "", "", "", "", "", "", "", "", type, "SAAD"});
    }
    start();
  }
  // A body of that type that covers one activity of that kind, or none for "".
  void showBody(const std::string& type, const std::string& activity, Caller at = Caller::here()) {
    const auto trace = called("showBody", at);
    show("001", {{attribut::TypeOrgChg, type},
                 {attribut::CodActSelect, activity.empty() ? "" : "010" + activity + "09"}});
  }
};

TEST_F(TypeOptions, PrincipalOpensTheFramesThatComplementaryLeavesAlone) {
  showBody("", "P");
  for (const bool open : {true, false}) {
    for (const char* name : {"Cdr_AttribOrgChg", "Cdr_PlafondOrg"}) frame(name).setEnabled(open);
    choose("Opt_TypeComplOrgChg");
    EXPECT_EQ(frame("Cdr_AttribOrgChg").enabled(), open);
    EXPECT_EQ(frame("Cdr_PlafondOrg").enabled(), open);
    choose("Opt_TypePrincipalOrgChg");
    EXPECT_TRUE(frame("Cdr_AttribOrgChg").enabled());
    EXPECT_TRUE(frame("Cdr_PlafondOrg").enabled());
  }
}

TEST_F(TypeOptions, NameWhoTakesPart) {
  showBody("P", "P");
  choose("Opt_TypeComplOrgChg");
  EXPECT_EQ(frame("Cdr_ParticipBenef").caption(), "Participation organisme");
  choose("Opt_TypePrincipalOrgChg");
  EXPECT_EQ(frame("Cdr_ParticipBenef").caption(), "Participation bénéficiaire");
}

TEST_F(TypeOptions, PrincipalManagesTheParticipationInAmount) {
  showBody("P", "P");
  option("Opt_GestPartPourc").setValue(true);
  choose("Opt_TypeComplOrgChg");
  EXPECT_TRUE(option("Opt_GestPartPourc").value());
  choose("Opt_TypePrincipalOrgChg");
  EXPECT_TRUE(option("Opt_GestPartMont").value());
  EXPECT_FALSE(option("Opt_GestPartPourc").value());
}

TEST_F(TypeOptions, ComplementaryTakesAllHours) {
  showBody("P", "P");
  user_->click(tabs(), 5);
  choose("Opt_Semaine");
  user_->click(tabs(), kRulesTab);
  choose("Opt_TypeComplOrgChg");
  EXPECT_FALSE(frame("Cdr_GestionExclu").enabled());
  EXPECT_TRUE(option("Opt_Totalite").value());
  choose("Opt_TypePrincipalOrgChg");
  EXPECT_TRUE(frame("Cdr_GestionExclu").enabled());
  EXPECT_TRUE(option("Opt_Totalite").value());
  expectSaved("001", {});
}

TEST_F(TypeOptions, WeekDaysAloneAreRefusedToPrincipalBodiesOfAgencyActivities) {
  for (const char* activity : {"P", "M", "I", "S", ""}) {
    SCOPED_TRACE(activity);
    const bool agency = std::string(activity) == "M";
    showBody("C", activity);
    EXPECT_TRUE(option("Opt_Semaine").enabled());
    choose("Opt_TypePrincipalOrgChg");
    EXPECT_EQ(option("Opt_Semaine").enabled(), !agency);
    choose("Opt_TypeComplOrgChg");
    EXPECT_TRUE(option("Opt_Semaine").enabled());
    showBody("P", activity);
    EXPECT_EQ(option("Opt_Semaine").enabled(), !agency);
  }
}

TEST_F(TypeOptions, AnticipatedBillingGoesWithPrincipalAndDoesNotComeBack) {
  show("001", {{attribut::DemAccordOrgChg, "1"}, {attribut::FactAnticip, "1"}});
  EXPECT_TRUE(check("Cac_FactAnticip").value());
  choose("Opt_TypeComplOrgChg");
  EXPECT_FALSE(check("Cac_FactAnticip").value());
  EXPECT_FALSE(check("Cac_FactAnticip").enabled());
  EXPECT_TRUE(check("Cac_DemAccordOrgChg").value());
  choose("Opt_TypePrincipalOrgChg");
  EXPECT_FALSE(check("Cac_FactAnticip").value());
  EXPECT_TRUE(check("Cac_FactAnticip").enabled());
  expectSaved("001", {{attribut::FactAnticip, "0"}});
}

TEST_F(TypeOptions, PrincipalAllowsAnticipatedBillingOnlyWithRequests) {
  show("001", {{attribut::TypeOrgChg, "C"}, {attribut::DemAccordOrgChg, "0"}});
  choose("Opt_TypePrincipalOrgChg");
  EXPECT_FALSE(check("Cac_FactAnticip").enabled());
  choose("Opt_TypeComplOrgChg");
  tick("Cac_DemAccordOrgChg");
  EXPECT_FALSE(check("Cac_FactAnticip").enabled());
  choose("Opt_TypePrincipalOrgChg");
  EXPECT_TRUE(check("Cac_FactAnticip").enabled());
  EXPECT_FALSE(check("Cac_FactAnticip").value());
}

TEST_F(TypeOptions, PrincipalLeavesTheValueOfAnticipatedBilling) {
  showBody("", "P");
  check("Cac_FactAnticip").setValue(true);
  choose("Opt_TypePrincipalOrgChg");
  EXPECT_TRUE(check("Cac_FactAnticip").value());
  EXPECT_FALSE(check("Cac_FactAnticip").enabled());
}

TEST_F(TypeOptions, AreChosenByTheArrowsToo) {
  show("001", {{attribut::DemAccordOrgChg, "1"}, {attribut::FactAnticip, "1"}});
  ASSERT_TRUE(user_->go(option("Opt_TypePrincipalOrgChg")));
  user_->press(toolkit::Key::Down);
  EXPECT_TRUE(option("Opt_TypeComplOrgChg").value());
  EXPECT_PRED_FORMAT1(hasFocus, option("Opt_TypeComplOrgChg"));
  EXPECT_FALSE(check("Cac_FactAnticip").value());
  EXPECT_EQ(frame("Cdr_ParticipBenef").caption(), "Participation organisme");
  user_->press(toolkit::Key::Up);
  EXPECT_TRUE(option("Opt_TypePrincipalOrgChg").value());
  EXPECT_TRUE(check("Cac_FactAnticip").enabled());
}

TEST_F(TypeOptions, ShowingARecordChoosesNothingForTheUser) {
  option("Opt_GestPartPourc").setValue(true);
  showBody("C", "P");
  showBody("P", "P");
  expectSaved("001", {});
}

class Requests : public RulesPage {
 protected:
  Requests() { start(); }
};

TEST_F(Requests, AllowAnticipatedBillingToPrincipalBodiesAlone) {
  for (const char* type : {"P", "C", ""}) {
    SCOPED_TRACE(type);
    show("001", {{attribut::TypeOrgChg, type}});
    tick("Cac_DemAccordOrgChg");
    EXPECT_EQ(check("Cac_FactAnticip").enabled(), std::string(type) == "P");
    EXPECT_FALSE(check("Cac_FactAnticip").value());
    tick("Cac_DemAccordOrgChg");
    EXPECT_FALSE(check("Cac_FactAnticip").enabled());
  }
}

TEST_F(Requests, TakeAnticipatedBillingWithThem) {
  show("001", {{attribut::DemAccordOrgChg, "1"}, {attribut::FactAnticip, "1"}});
  tick("Cac_DemAccordOrgChg");
  EXPECT_FALSE(check("Cac_FactAnticip").value());
  EXPECT_FALSE(check("Cac_FactAnticip").enabled());
  tick("Cac_DemAccordOrgChg");
  EXPECT_FALSE(check("Cac_FactAnticip").value());
  EXPECT_TRUE(check("Cac_FactAnticip").enabled());
  expectSaved("001", {{attribut::FactAnticip, "0"}});
}

TEST_F(Requests, ClearAnticipatedBillingOfABodyThatIsNotPrincipal) {
  show("001", {{attribut::TypeOrgChg, "C"}});
  check("Cac_FactAnticip").setValue(true);
  tick("Cac_DemAccordOrgChg");
  EXPECT_FALSE(check("Cac_FactAnticip").value());
  EXPECT_FALSE(check("Cac_FactAnticip").enabled());
}

TEST_F(Requests, AreTickedByTheSpaceBar) {
  show("001");
  ASSERT_TRUE(user_->go(check("Cac_DemAccordOrgChg")));
  user_->press(toolkit::Key::Space);
  EXPECT_TRUE(check("Cac_DemAccordOrgChg").value());
  EXPECT_TRUE(check("Cac_FactAnticip").enabled());
}

class AccountsOf : public RulesPageWithAccounts {
 protected:
  AccountsOf() { start(); }

  static const std::vector<const char*>& labels() {
    static const std::vector<const char*> names = {"Etq_DebitOrgChg", "Etq_CreditOrgChg"};
    return names;
  }
  static const std::vector<const char*>& numbers() {
    static const std::vector<const char*> names = {"Txt_DebitOrgChg", "Txt_CreditOrgChg",
                                                   "Txt_CpteProdAide"};
    return names;
  }
  static const std::vector<const char*>& names() {
    static const std::vector<const char*> names = {"Cbo_DebitOrgChg", "Cbo_CreditOrgChg",
                                                   "Cbo_CpteProdAide"};
    return names;
  }
  void expectOpen(bool open, Caller at = Caller::here()) {
    const auto trace = called("expectOpen", at);
    for (const auto& group : {labels(), numbers(), names()}) {
      for (const char* name : group) {
        EXPECT_EQ(control_->surface().find(name)->enabled(), open) << name;
      }
    }
  }
  void expectEmpty(Caller at = Caller::here()) {
    const auto trace = called("expectEmpty", at);
    for (const char* name : numbers()) EXPECT_EQ(box(name).text(), "") << name;
    for (const char* name : names()) {
      EXPECT_EQ(combo(name).text(), "") << name;
      EXPECT_EQ(combo(name).listCount(), 0) << name;
    }
  }
};

TEST_F(AccountsOf, AnyBodyAreShownWithTheirLabels) {
  show("001");
  EXPECT_EQ(box("Txt_DebitOrgChg").text(), "4110000001");
  EXPECT_EQ(combo("Cbo_DebitOrgChg").text(), "AIDE A DOMICILE");
  EXPECT_EQ(box("Txt_CreditOrgChg").text(), "4670000002");
  EXPECT_EQ(combo("Cbo_CreditOrgChg").text(), "CREDITEURS");
  EXPECT_EQ(box("Txt_CpteProdAide").text(), "7060000003");
  EXPECT_EQ(combo("Cbo_CpteProdAide").text(), "PRODUITS");
  expectOpen(true);
  expectSaved("001", {});
}

TEST_F(AccountsOf, ABodyAreWrittenAsTheyStand) {
  store_.put("PLANCOMPTABLE", "0107060000004", {"AUTRES PRODUITS"});
  show("001");
  ASSERT_TRUE(user_->fill(box("Txt_DebitOrgChg"), "4670000002"));
  ASSERT_TRUE(user_->fill(box("Txt_CreditOrgChg"), "4110000001"));
  ASSERT_TRUE(user_->fill(box("Txt_CpteProdAide"), "7060000004"));
  expectSaved("001", {{attribut::DebitOrgChg, "4670000002"},
                      {attribut::CreditOrgChg, "4110000001"},
                      {attribut::CpteProdAide, "7060000004"}});
}

TEST_F(AccountsOf, ANewBodyAreOpenAndEmpty) {
  show("001");
  press("Cmd_Annuler");
  press("Cmd_Ajouter");
  expectOpen(true);
  expectEmpty();
}

TEST_F(AccountsOf, ABodyWithoutAccountingConsequenceAreEmptiedAndClosed) {
  show("001", {{attribut::TypeOrgChg, "C"}});
  tick("Cac_IncidCompta");
  expectOpen(false);
  expectEmpty();
  expectNoBox();
  expectSaved("001", {{attribut::DebitOrgChg, ""},
                      {attribut::CreditOrgChg, ""},
                      {attribut::IncidCompta, "1"},
                      {attribut::CpteProdAide, ""}});
}

TEST_F(AccountsOf, ABodyOpenAgainEmptyWhenTheBoxIsCleared) {
  show("001");
  tick("Cac_IncidCompta");
  tick("Cac_IncidCompta");
  expectOpen(true);
  expectEmpty();
}

TEST_F(AccountsOf, ABodyThatHasNoAccountingConsequenceAreShownClosed) {
  show("001", {{attribut::TypeOrgChg, "C"}, {attribut::IncidCompta, "1"}});
  EXPECT_TRUE(check("Cac_IncidCompta").value());
  expectOpen(false);
  EXPECT_EQ(box("Txt_DebitOrgChg").text(), "4110000001");
  EXPECT_EQ(combo("Cbo_CreditOrgChg").text(), "CREDITEURS");
  EXPECT_EQ(box("Txt_CpteProdAide").text(), "7060000003");
  expectNoBox();
  show("002");
  expectOpen(true);
  EXPECT_EQ(box("Txt_DebitOrgChg").text(), "4110000001");
  show("001");
  expectSaved("001", {{attribut::DebitOrgChg, ""}, {attribut::CreditOrgChg, ""}});
}

class AccountsNotManaged : public RulesPage {
 protected:
  AccountsNotManaged() { start(); }

  void expectClosed(Caller at = Caller::here()) {
    const auto trace = called("expectClosed", at);
    for (const char* name :
         {"Etq_DebitOrgChg", "Txt_DebitOrgChg", "Cbo_DebitOrgChg", "Etq_CreditOrgChg",
          "Txt_CreditOrgChg", "Cbo_CreditOrgChg", "Txt_CpteProdAide", "Cbo_CpteProdAide"}) {
      EXPECT_FALSE(control_->surface().find(name)->enabled()) << name;
    }
  }
};

TEST_F(AccountsNotManaged, StayClosedWhateverTheBoxSays) {
  expectClosed();
  show("001", {{attribut::TypeOrgChg, "C"},
               {attribut::DebitOrgChg, "4110000001"},
               {attribut::CreditOrgChg, "4670000002"},
               {attribut::CpteProdAide, "7060000003"}});
  expectClosed();
  tick("Cac_IncidCompta");
  expectClosed();
  tick("Cac_IncidCompta");
  expectClosed();
  tick("Cac_IncidCompta");
  expectSaved("001", {{attribut::IncidCompta, "1"}});
  press("Cmd_Ajouter");
  expectClosed();
}

TEST_F(AccountsNotManaged, AnyTextInTheCounterManagesThem) {
  for (const char* mark : {"O", "0", " "}) {
    store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, mark);
    control_->Init();
    show("001");
    EXPECT_TRUE(box("Txt_DebitOrgChg").enabled()) << mark;
  }
  store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, "");
  control_->Init();
  show("001");
  expectClosed();
}

}  // namespace
}  // namespace behaviour
