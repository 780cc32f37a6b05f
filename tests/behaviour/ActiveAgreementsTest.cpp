// Agreements that are active, and the changes of rules that they forbid.
#include "tests/behaviour/RulesPage.h"

namespace behaviour {
namespace {

constexpr const char* kType =
    "La modification du type d'organisme n'est pas possible car il existe des accords actifs pour "
    "cet organisme.\r\nMerci de contacter VALDRIS si votre volonté est de changer le mode de "
    "gestion de cet organisme.";
constexpr const char* kCeiling =
    "La modification de la gestion du plafond des droits à consommer n'est pas possible car il "
    "existe des accords actifs pour cet organisme.\r\nMerci de contacter VALDRIS si votre volonté "
    "est de changer le mode de gestion de cet organisme.";

// 01/01/2026.
constexpr const char* kFirstDay = "21186";

class ActiveAgreements : public RulesPage {
 protected:
  ActiveAgreements() {
    store_.put("PERIODESPAIE", "1", {"202601"});
    start();
  }
  void agreement(std::string_view id, std::string_view body, std::string_view end,
                 std::string_view closed = "") {
    store_.put("ACCORD", id, {body, "", "", "", "20000", end});
    store_.set("ACCORD", id, store::accord::ClotureAcc, closed);
  }
  void activeAgreement() { agreement("A1", "001", "21500"); }

  // The sentences sent to the store since the last call.
  std::vector<std::string> sentences() {
    std::vector<std::string> all;
    for (const auto& call : store_.calls(CallKind::ExecuteSentence)) {
      all.emplace_back(store::DynamicArray(call.text).get(1));
    }
    store_.forgetCalls();
    return all;
  }
  static std::string sentence(const std::string& day, const std::string& body = "001") {
    return "SSELECT ACCORD AVEC OrgChgAcc = \"" + body + "\" AND AVEC 18 = \"\" AND AVEC 6 >= \"" +
           day + "\"";
  }
};

TEST_F(ActiveAgreements, AreAskedForInOneSentenceFromTheFirstDayOfThePayPeriod) {
  show("001");
  store_.forgetCalls();
  control_->RechercheAccord();
  ASSERT_EQ(store_.calls().size(), 2U);
  EXPECT_EQ(store_.calls()[0].told(), "ReadRecord PERIODESPAIE 1");
  const store::DynamicArray request(store_.calls()[1].text);
  EXPECT_EQ(request.get(1), sentence(kFirstDay));
  EXPECT_EQ(request.get(2), "ACCORD");
  EXPECT_EQ(request.get(3), "0");
  EXPECT_EQ(request.DCount(), 3);
}

TEST_F(ActiveAgreements, AreThoseOfTheBodyInHandWhateverIsTypedAsCode) {
  show("002");
  user_->fill(code(), "0");
  store_.forgetCalls();
  control_->RechercheAccord();
  EXPECT_PRED_FORMAT2(same, sentences(), std::vector<std::string>{sentence(kFirstDay, "002")});
}

TEST_F(ActiveAgreements, FollowThePayPeriod) {
  const std::vector<std::pair<const char*, const char*>> rows = {{"202512", "21155"},
                                                                 {"202602", "21217"},
                                                                 {"202403", "20515"},
                                                                 {"196801", "1"},
                                                                 {"20260199", "21186"}};
  show("001");
  for (const auto& [pay, day] : rows) {
    store_.put("PERIODESPAIE", "1", {pay});
    store_.forgetCalls();
    control_->RechercheAccord();
    EXPECT_PRED_FORMAT2(same, sentences(), std::vector<std::string>{sentence(day)}) << pay;
  }
}

TEST_F(ActiveAgreements, AreAllThatAreNotClosedWithoutAReadablePeriod) {
  show("001");
  for (const char* pay :
       {"", "2026", "202613", "202600", "janvier", "01/2026", "20 601", "000001"}) {
    store_.put("PERIODESPAIE", "1", {pay});
    store_.forgetCalls();
    control_->RechercheAccord();
    EXPECT_PRED_FORMAT2(same, sentences(), std::vector<std::string>{sentence("0")}) << pay;
  }
  store_.erase("PERIODESPAIE", "1");
  control_->RechercheAccord();
  EXPECT_PRED_FORMAT2(same, sentences(), std::vector<std::string>{sentence("0")});
  // One that ended long ago counts now.
  agreement("A1", "001", "1");
  choose("Opt_TypeComplOrgChg");
  press("Cmd_OK");
  expectBox(kType, Icon::Information);
  expectNothingWritten();
}

TEST_F(ActiveAgreements, ThatCannotBeSearchedEndTheHostsCall) {
  show("001");
  for (const CallKind kind : {CallKind::ReadRecord, CallKind::ExecuteSentence}) {
    store_.fail(kind, kind == CallKind::ReadRecord ? "PERIODESPAIE" : "ACCORD");
    EXPECT_THROW(control_->RechercheAccord(), store::StoreError);
    store_.stopFailing();
  }
  expectNoBox();
}

// What agreements forbid, on both rules.
struct Guard {
  const char* name;
  const char* choice;
  int attribute;
  const char* before;
  const char* after;
  const char* message;
};

class Guarded : public ActiveAgreements, public testing::WithParamInterface<Guard> {
 protected:
  void change(Caller at = Caller::here()) {
    const auto trace = called("change", at);
    choose(GetParam().choice);
  }
  // The box alone has been shown: page, focus and screen are as the user left them.
  void expectRefused(const char* focus, Caller at = Caller::here()) {
    const auto trace = called("expectRefused", at);
    expectBox(GetParam().message, Icon::Information);
    expectNothingWritten();
    EXPECT_EQ(attribute("001", GetParam().attribute), GetParam().before);
    EXPECT_EQ(tabs().tab(), 5);
    EXPECT_PRED_FORMAT1(hasFocus, *control_->surface().find(focus));
    EXPECT_EQ(state(), kExisting);
    EXPECT_TRUE(option(GetParam().choice).value());
    EXPECT_FALSE(control_->W_Sortir());
    EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
  }
};

TEST_P(Guarded, ASaveIsRefusedWhileAnAgreementIsActive) {
  activeAgreement();
  show("001");
  change();
  user_->click(tabs(), 5);
  store_.forgetCalls();
  press("Cmd_OK");
  expectRefused("Cmd_OK");
  EXPECT_PRED_FORMAT2(same, sentences(), std::vector<std::string>{sentence(kFirstDay)});
}

TEST_P(Guarded, WhichAgreementsCount) {
  struct Row {
    const char* body;
    const char* end;
    const char* closed;
    bool counts;
  };
  for (const Row& row : {Row{"001", "21186", "", true}, Row{"001", "21185", "", false},
                         Row{"001", "21500", "", true}, Row{"001", "21500", "O", false},
                         Row{"001", "21500", "N", false}, Row{"002", "21500", "", false},
                         Row{"001", "9", "", false}}) {
    SCOPED_TRACE(std::string(row.body) + "/" + row.end + "/" + row.closed);
    store_.set("ORGPRISECHARGE", "001", GetParam().attribute, GetParam().before);
    agreement("A1", row.body, row.end, row.closed);
    show("001");
    change();
    press("Cmd_OK");
    if (row.counts) {
      expectBox(GetParam().message, Icon::Information);
    } else {
      expectNoBox();
    }
    EXPECT_EQ(attribute("001", GetParam().attribute),
              row.counts ? GetParam().before : GetParam().after);
    if (row.counts) press("Cmd_Annuler");
  }
}

TEST_P(Guarded, OneActiveAmongManyIsEnough) {
  for (int i = 0; i < 5; ++i) agreement("X" + std::to_string(i), "001", "21000");
  agreement("Y", "002", "21500");
  agreement("Z", "001", "21500", "O");
  agreement("A", "001", "21300");
  show("001");
  change();
  press("Cmd_OK");
  expectBox(GetParam().message, Icon::Information);
  expectNothingWritten();
}

TEST_P(Guarded, TheUserTakesItBackAndSaves) {
  activeAgreement();
  show("001");
  change();
  press("Cmd_OK");
  expectBox(GetParam().message, Icon::Information);
  choose(GetParam().attribute == attribut::TypeOrgChg ? "Opt_TypePrincipalOrgChg"
                                                      : "Opt_PlafGlobalOrgChg");
  tick("Cac_LettresInfo");
  expectSaved("001", {{attribut::LettresInfo, "1"}});
}

TEST_P(Guarded, ASecondAttemptIsRefusedAgain) {
  activeAgreement();
  show("001");
  change();
  for (int attempt = 0; attempt < 3; ++attempt) {
    press("Cmd_OK");
    expectBox(GetParam().message, Icon::Information);
  }
  expectNothingWritten();
  store_.erase("ACCORD", "A1");
  expectSaved("001", {{GetParam().attribute, GetParam().after}});
}

TEST_P(Guarded, LeavingIsRefusedWithoutAnyQuestion) {
  activeAgreement();
  show("001");
  change();
  user_->click(tabs(), 5);
  store_.forgetCalls();
  press("Cmd_Sortir");
  expectRefused("Cmd_Sortir");
  press("Cmd_Annuler");
  press("Cmd_Sortir");
  EXPECT_TRUE(control_->W_Sortir());
}

TEST_P(Guarded, TheHostsWriteIsRefusedWithTheBoxAlone) {
  activeAgreement();
  show("001");
  change();
  ASSERT_TRUE(user_->click(tabs(), 5));
  ASSERT_TRUE(user_->go(box("Txt_Entite")));
  store_.forgetCalls();
  control_->Ecrire_Ong2();
  expectRefused("Txt_Entite");
  user_->click(tabs(), kRulesTab);
  choose(GetParam().attribute == attribut::TypeOrgChg ? "Opt_TypePrincipalOrgChg"
                                                      : "Opt_PlafGlobalOrgChg");
  expectSaved("001", {});
}

TEST_P(Guarded, NothingPastTheRuleIsWrittenInMemory) {
  activeAgreement();
  show("001",
       {{attribut::RenouvOrgChg, "1"}, {attribut::LettresInfo, ""}, {attribut::FactAnticip, "0"}});
  change();
  user_->choose(renewal(), 5);
  tick("Cac_LettresInfo");
  user_->dblClick(list("Lst_PiecePossibleOrgChg"), 0);
  control_->Ecrire_Ong2();
  desktop_.takeBoxes();
  control_->Afficher_Ong2();
  // The rule itself stays changed.
  EXPECT_TRUE(option(GetParam().choice).value());
  EXPECT_EQ(renewal().text(), "Renouvellement à - 1 mois");
  EXPECT_FALSE(check("Cac_LettresInfo").value());
  EXPECT_EQ(list("Lst_PieceRenouOrgChg").listCount(), 0);
}

TEST_P(Guarded, ASaveStaysChangedInMemoryToo) {
  activeAgreement();
  show("001");
  change();
  press("Cmd_OK");
  desktop_.takeBoxes();
  control_->Afficher_Ong2();
  EXPECT_TRUE(option(GetParam().choice).value());
  show("001");
  EXPECT_FALSE(option(GetParam().choice).value());
}

TEST_P(Guarded, AnEmptyRuleMayTakeAnyValue) {
  activeAgreement();
  show("001", {{GetParam().attribute, ""}});
  change();
  store_.forgetCalls();
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("001", GetParam().attribute), GetParam().after);
  for (const std::string& sent : sentences()) EXPECT_NE(sent, sentence(kFirstDay));
}

TEST_P(Guarded, AnUnchangedRuleIsNotSearchedFor) {
  activeAgreement();
  show("001");
  change();
  choose(GetParam().attribute == attribut::TypeOrgChg ? "Opt_TypePrincipalOrgChg"
                                                      : "Opt_PlafGlobalOrgChg");
  tick("Cac_LettresInfo");
  store_.forgetCalls();
  expectSaved("001", {{attribut::LettresInfo, "1"}});
  for (const std::string& sent : sentences()) EXPECT_NE(sent, sentence(kFirstDay));
}

TEST_P(Guarded, ARuleThatIsNoneIsGuardedAsWell) {
  activeAgreement();
  show("001", {{GetParam().attribute, "X"}});
  change();
  press("Cmd_OK");
  expectBox(GetParam().message, Icon::Information);
  EXPECT_EQ(attribute("001", GetParam().attribute), "X");
}

TEST_P(Guarded, ASearchThatFailsSavesNothing) {
  show("001");
  change();
  for (const CallKind kind : {CallKind::ReadRecord, CallKind::ExecuteSentence}) {
    store_.fail(kind, kind == CallKind::ReadRecord ? "PERIODESPAIE" : "ACCORD");
    press("Cmd_OK");
    expectNoBox();
    expectNothingWritten();
    EXPECT_EQ(state(), kExisting);
    EXPECT_THROW(press("Cmd_Sortir"), store::StoreError);
    EXPECT_FALSE(control_->W_Sortir());
    EXPECT_THROW(control_->Ecrire_Ong2(), store::StoreError);
    store_.stopFailing();
  }
  expectSaved("001", {{GetParam().attribute, GetParam().after}});
}

TEST_P(Guarded, TheChecksComeFirst) {
  activeAgreement();
  show("001");
  change();
  user_->fill(period(), "");
  press("Cmd_OK");
  expectBox("La période de facturation est obligatoire.", Icon::Exclamation);
}

INSTANTIATE_TEST_SUITE_P(BodiesInUse, Guarded,
                         testing::Values(Guard{"Type", "Opt_TypeComplOrgChg", attribut::TypeOrgChg,
                                               "P", "C", kType},
                                         Guard{"Ceiling", "Opt_PlafMensOrgChg",
                                               attribut::PlafondOrg, "3", "2", kCeiling}),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(ActiveAgreements, OfTwoForbiddenChangesTheTypeIsToldAlone) {
  activeAgreement();
  show("001");
  choose("Opt_TypeComplOrgChg");
  choose("Opt_PlafMensRepOrgChg");
  press("Cmd_OK");
  expectBox(kType, Icon::Information);
  control_->Afficher_Ong2();
  EXPECT_TRUE(option("Opt_TypeComplOrgChg").value());
  EXPECT_TRUE(option("Opt_PlafGlobalOrgChg").value());
}

TEST_F(ActiveAgreements, WithoutAnyBothMayChange) {
  show("001");
  choose("Opt_TypeComplOrgChg");
  choose("Opt_PlafMensRepOrgChg");
  expectSaved("001", {{attribut::TypeOrgChg, "C"}, {attribut::PlafondOrg, "1"}});
}

TEST_F(ActiveAgreements, OtherRulesMayChangeAllTheSame) {
  activeAgreement();
  show("001");
  user_->choose(renewal(), 2);
  user_->choose(period(), 1);
  expectSaved("001", {{attribut::PeriodFactOrgChg, "T"}, {attribut::RenouvOrgChg, "2"}});
}

TEST_F(ActiveAgreements, AreNeverSearchedForAtACreation) {
  activeAgreement();
  beginCreation();
  user_->click(tabs(), kRulesTab);
  choose("Opt_TypePrincipalOrgChg");
  choose("Opt_PlafMensOrgChg");
  choose("Opt_TypeComplOrgChg");
  control_->Ecrire_Ong2();
  choose("Opt_PlafGlobalOrgChg");
  control_->Ecrire_Ong2();
  store_.forgetCalls();
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("004", attribut::TypeOrgChg), "C");
  EXPECT_EQ(attribute("004", attribut::PlafondOrg), "3");
  for (const std::string& sent : sentences()) EXPECT_EQ(sent.find("SSELECT ACCORD"), sent.npos);
}

TEST_F(ActiveAgreements, AreNotSearchedForWhileRecordsAreShown) {
  activeAgreement();
  for (const char* body : {"001", "002", "003", "001"}) show(body);
  for (const std::string& sent : sentences()) EXPECT_EQ(sent.find("SSELECT ACCORD"), sent.npos);
  expectNoBox();
}

}  // namespace
}  // namespace behaviour
