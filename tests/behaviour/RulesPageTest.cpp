// What the management rules page shows of a record, and what it writes into it.
#include "tests/behaviour/RulesPage.h"

namespace behaviour {
namespace {

const std::string kMark(1, store::kValueMark);

class RulesShown : public RulesPage {
 protected:
  RulesShown() { start(); }
};

TEST_F(RulesShown, TheType) {
  struct Row {
    std::string stored;
    bool principal, complementary;
    const char* caption;
  };
  for (const Row& row : {Row{"P", true, false, "Participation bénéficiaire"},
                         Row{"C", false, true, "Participation organisme"},
                         Row{"", false, false, "Participation bénéficiaire"},
                         Row{"c", false, false, "Participation bénéficiaire"},
                         Row{"P" + kMark + "C", false, false, "Participation bénéficiaire"}}) {
    SCOPED_TRACE(row.stored);
    show("001", {{attribut::TypeOrgChg, row.stored}});
    EXPECT_EQ(option("Opt_TypePrincipalOrgChg").value(), row.principal);
    EXPECT_EQ(option("Opt_TypeComplOrgChg").value(), row.complementary);
    EXPECT_EQ(frame("Cdr_ParticipBenef").caption(), row.caption);
  }
  expectNoBox();
}

TEST_F(RulesShown, TheCeiling) {
  const std::vector<std::pair<std::string, std::string>> rows = {{"1", "Opt_PlafMensRepOrgChg"},
                                                                 {"2", "Opt_PlafMensOrgChg"},
                                                                 {"3", "Opt_PlafGlobalOrgChg"},
                                                                 {"", ""},
                                                                 {"4", ""},
                                                                 {"12", ""}};
  for (const auto& [stored, set] : rows) {
    SCOPED_TRACE(stored);
    show("001", {{attribut::PlafondOrg, stored}});
    for (const char* name :
         {"Opt_PlafMensRepOrgChg", "Opt_PlafMensOrgChg", "Opt_PlafGlobalOrgChg"}) {
      EXPECT_EQ(option(name).value(), name == set) << name;
    }
  }
}

TEST_F(RulesShown, TheRenewalOfEachLine) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"0", "Pas de gestion renouvellement"},
      {"1", "Renouvellement à - 1 mois"},
      {"2", "Renouvellement à - 2 mois"},
      {"3", "Renouvellement à - 3 mois"},
      {"4", "Renouvellement à - 4 mois"},
      {"5", "Renouvellement à - 5 mois"},
      {"6", "Renouvellement à - 6 mois"},
      {"", "Pas de gestion renouvellement"},
      {"06", "Renouvellement à - 6 mois"},
      {"7", ""},
      {"-1", ""},
      {"99999999999", ""}};
  for (const auto& [stored, shown] : rows) {
    SCOPED_TRACE(stored);
    show("001", {{attribut::RenouvOrgChg, stored}});
    EXPECT_EQ(renewal().text(), shown);
  }
  expectNoBox();
}

TEST_F(RulesShown, TheBillingPeriod) {
  const std::vector<std::pair<std::string, std::string>> rows = {{"M", "Mensuelle"},
                                                                 {"T", "Trimestrielle"},
                                                                 {"F", "A fin de prise en charge"},
                                                                 {"", ""},
                                                                 {"m", ""},
                                                                 {"X", ""}};
  for (const auto& [stored, shown] : rows) {
    SCOPED_TRACE(stored);
    show("001", {{attribut::PeriodFactOrgChg, stored}});
    EXPECT_EQ(period().text(), shown);
  }
}

TEST_F(RulesShown, TheStatisticsCategoryByItsLabel) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"CD", "Conseil départemental"}, {"MU", "Mutuelle"}, {"", ""}, {"XX", ""}, {"cd", ""}};
  for (const auto& [stored, shown] : rows) {
    SCOPED_TRACE(stored);
    show("001", {{attribut::StatsOrgChg, stored}});
    EXPECT_EQ(statistics().text(), shown);
  }
}

TEST_F(RulesShown, TheInformationLettersForOneAlone) {
  for (const char* stored : {"", "0", "1", "2", "O"}) {
    show("001", {{attribut::LettresInfo, stored}});
    EXPECT_EQ(check("Cac_LettresInfo").value(), std::string(stored) == "1") << stored;
  }
}

TEST_F(RulesShown, AnticipatedBillingForPrincipalBodiesWithRequests) {
  for (const char* type : {"P", "C", ""}) {
    for (const char* requests : {"0", "1", ""}) {
      for (const char* stored : {"0", "1", ""}) {
        SCOPED_TRACE(std::string(type) + "/" + requests + "/" + stored);
        show("001", {{attribut::TypeOrgChg, type},
                     {attribut::DemAccordOrgChg, requests},
                     {attribut::FactAnticip, stored}});
        const bool possible = std::string(type) == "P" && std::string(requests) == "1";
        EXPECT_EQ(check("Cac_DemAccordOrgChg").value(), std::string(requests) == "1");
        EXPECT_EQ(check("Cac_FactAnticip").enabled(), possible);
        EXPECT_EQ(check("Cac_FactAnticip").value(), possible && std::string(stored) == "1");
      }
    }
  }
}

TEST_F(RulesShown, WithoutAccountingConsequence) {
  for (const char* stored : {"", "0", "1"}) {
    show("001", {{attribut::IncidCompta, stored}});
    EXPECT_EQ(check("Cac_IncidCompta").value(), std::string(stored) == "1") << stored;
  }
}

TEST_F(RulesShown, AnEmptyFlagOfAccountingConsequenceIsZeroInTheRecord) {
  show("001", {{attribut::IncidCompta, ""}});
  expectSaved("001", {{attribut::IncidCompta, "0"}});
}

TEST_F(RulesShown, NothingOfTheBodyBefore) {
  const std::vector<int> rules = {attribut::PeriodFactOrgChg, attribut::TypeOrgChg,
                                  attribut::PlafondOrg,       attribut::RenouvOrgChg,
                                  attribut::PieceRenouOrgChg, attribut::StatsOrgChg,
                                  attribut::DemAccordOrgChg,  attribut::IncidCompta,
                                  attribut::LettresInfo,      attribut::FactAnticip};
  for (const int number : rules) store_.set("ORGPRISECHARGE", "002", number, "");
  show("001", {{attribut::PeriodFactOrgChg, "T"},
               {attribut::TypeOrgChg, "C"},
               {attribut::PlafondOrg, "2"},
               {attribut::RenouvOrgChg, "4"},
               {attribut::PieceRenouOrgChg, "AI" + kMark + "RI"},
               {attribut::StatsOrgChg, "MU"},
               {attribut::DemAccordOrgChg, "1"},
               {attribut::IncidCompta, "1"},
               {attribut::LettresInfo, "1"}});
  user_->click(list("Lst_PiecePossibleOrgChg"), 1);
  show("002");
  for (const char* name : {"Opt_TypePrincipalOrgChg", "Opt_TypeComplOrgChg",
                           "Opt_PlafMensRepOrgChg", "Opt_PlafMensOrgChg", "Opt_PlafGlobalOrgChg"}) {
    EXPECT_FALSE(option(name).value()) << name;
  }
  for (const char* name :
       {"Cac_DemAccordOrgChg", "Cac_FactAnticip", "Cac_LettresInfo", "Cac_IncidCompta"}) {
    EXPECT_FALSE(check(name).value()) << name;
  }
  EXPECT_EQ(period().text(), "");
  EXPECT_EQ(renewal().text(), "Pas de gestion renouvellement");
  EXPECT_EQ(statistics().text(), "");
  EXPECT_EQ(list("Lst_PieceRenouOrgChg").listCount(), 0);
  EXPECT_EQ(list("Lst_PiecePossibleOrgChg").selectedCount(), 0);
  EXPECT_EQ(frame("Cdr_ParticipBenef").caption(), "Participation bénéficiaire");
}

class RulesWritten : public RulesPage {
 protected:
  RulesWritten() { start(); }
};

TEST_F(RulesWritten, NothingChangesInAnUntouchedRecord) {
  show("001", {{attribut::PeriodFactOrgChg, "F"},
               {attribut::PlafondOrg, "1"},
               {attribut::RenouvOrgChg, "6"},
               {attribut::PieceRenouOrgChg, "RI" + kMark + "AI"},
               {attribut::StatsOrgChg, "MU"},
               {attribut::DemAccordOrgChg, "1"},
               {attribut::LettresInfo, "1"},
               {attribut::FactAnticip, "1"}});
  expectSaved("001", {});
}

TEST_F(RulesWritten, TheType) {
  show("001", {{attribut::TypeOrgChg, "P"}});
  choose("Opt_TypeComplOrgChg");
  expectSaved("001", {{attribut::TypeOrgChg, "C"}});
  show("001");
  choose("Opt_TypePrincipalOrgChg");
  expectSaved("001", {{attribut::TypeOrgChg, "P"}});
}

TEST_F(RulesWritten, ATypeAndACeilingThatAreNoneStayUntilOneIsChosen) {
  show("001", {{attribut::TypeOrgChg, "X"}, {attribut::PlafondOrg, "9"}});
  expectSaved("001", {});
  show("001");
  choose("Opt_TypePrincipalOrgChg");
  choose("Opt_PlafMensOrgChg");
  expectSaved("001", {{attribut::TypeOrgChg, "P"}, {attribut::PlafondOrg, "2"}});
}

TEST_F(RulesWritten, TheCeiling) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"Opt_PlafMensRepOrgChg", "1"}, {"Opt_PlafMensOrgChg", "2"}, {"Opt_PlafGlobalOrgChg", "3"}};
  for (const auto& [name, code] : rows) {
    SCOPED_TRACE(name);
    show("001");
    choose(name);
    expectSaved("001", {{attribut::PlafondOrg, code}});
  }
}

TEST_F(RulesWritten, TheRenewalByTheNumberOfItsLine) {
  for (int line = 6; line >= 0; --line) {
    SCOPED_TRACE(line);
    show("001");
    ASSERT_TRUE(user_->choose(renewal(), line));
    expectSaved("001", {{attribut::RenouvOrgChg, std::to_string(line)}});
  }
}

TEST_F(RulesWritten, ARenewalThatIsTypedAsItsLineIs) {
  show("001");
  ASSERT_TRUE(user_->fill(renewal(), "Renouvellement à - 5 mois"));
  expectSaved("001", {{attribut::RenouvOrgChg, "5"}});
}

TEST_F(RulesWritten, TheBillingPeriod) {
  const std::vector<std::string> codes = {"M", "T", "F"};
  for (int line = 2; line >= 0; --line) {
    SCOPED_TRACE(line);
    show("001");
    ASSERT_TRUE(user_->choose(period(), line));
    expectSaved("001", {{attribut::PeriodFactOrgChg, codes[static_cast<std::size_t>(line)]}});
  }
}

TEST_F(RulesWritten, TheOptions) {
  show("001");
  tick("Cac_DemAccordOrgChg");
  tick("Cac_FactAnticip");
  tick("Cac_LettresInfo");
  expectSaved("001", {{attribut::DemAccordOrgChg, "1"},
                      {attribut::FactAnticip, "1"},
                      {attribut::LettresInfo, "1"}});
  show("001");
  tick("Cac_FactAnticip");
  tick("Cac_LettresInfo");
  tick("Cac_DemAccordOrgChg");
  expectSaved("001", {{attribut::DemAccordOrgChg, "0"},
                      {attribut::FactAnticip, "0"},
                      {attribut::LettresInfo, ""}});
}

TEST_F(RulesWritten, AnyOtherMarkOfInformationLettersGoesAtTheNextSave) {
  show("001", {{attribut::LettresInfo, "O"}});
  expectSaved("001", {{attribut::LettresInfo, ""}});
}

TEST_F(RulesWritten, EmptyFlagsBecomeZero) {
  show("001",
       {{attribut::DemAccordOrgChg, ""}, {attribut::IncidCompta, ""}, {attribut::FactAnticip, ""}});
  expectSaved("001", {{attribut::DemAccordOrgChg, "0"},
                      {attribut::IncidCompta, "0"},
                      {attribut::FactAnticip, "0"}});
}

TEST_F(RulesWritten, WithoutAccountingConsequence) {
  show("001", {{attribut::TypeOrgChg, "C"}});
  tick("Cac_IncidCompta");
  expectSaved("001", {{attribut::IncidCompta, "1"}});
  show("001");
  tick("Cac_IncidCompta");
  expectSaved("001", {{attribut::IncidCompta, "0"}});
}

TEST_F(RulesWritten, TheStatisticsCategoryByItsCode) {
  show("001");
  ASSERT_TRUE(user_->choose(statistics(), 1));
  expectSaved("001", {{attribut::StatsOrgChg, "MU"}});
  show("001");
  ASSERT_TRUE(user_->fill(statistics(), "Conseil départemental"));
  expectSaved("001", {{attribut::StatsOrgChg, "CD"}});
  show("001");
  ASSERT_TRUE(user_->fill(statistics(), ""));
  expectSaved("001", {{attribut::StatsOrgChg, ""}});
}

TEST_F(RulesWritten, AStatisticsCodeThatIsGoneStaysUntilAnotherIsChosen) {
  show("001", {{attribut::StatsOrgChg, "ANC"}});
  EXPECT_EQ(statistics().text(), "");
  expectSaved("001", {});
  show("001");
  ASSERT_TRUE(user_->fill(statistics(), "Muts"));
  ASSERT_FALSE(user_->go(period()));
  expectSaved("001", {});
  show("001");
  ASSERT_TRUE(user_->choose(statistics(), 0));
  expectSaved("001", {{attribut::StatsOrgChg, "CD"}});
}

// The page shows these three; the slip's page writes them.
TEST_F(RulesWritten, PeriodStatisticsAndRequestsAreWrittenByTheSlipsPage) {
  show("001", {{attribut::PeriodFactOrgChg, "M"},
               {attribut::StatsOrgChg, "CD"},
               {attribut::DemAccordOrgChg, "0"}});
  const auto change = [this] {
    ASSERT_TRUE(user_->choose(period(), 1));
    ASSERT_TRUE(user_->choose(statistics(), 1));
    tick("Cac_DemAccordOrgChg");
  };
  change();
  control_->Ecrire_Ong2();
  control_->Afficher_Ong2();
  EXPECT_EQ(period().text(), "Mensuelle");
  EXPECT_EQ(statistics().text(), "Conseil départemental");
  EXPECT_FALSE(check("Cac_DemAccordOrgChg").value());
  change();
  control_->Ecrire_Ong5();
  control_->Afficher_Ong2();
  EXPECT_EQ(period().text(), "Trimestrielle");
  EXPECT_EQ(statistics().text(), "Mutuelle");
  EXPECT_TRUE(check("Cac_DemAccordOrgChg").value());
  expectNothingWritten();
}

TEST_F(RulesWritten, ABodyMayTakeAnyTypeAndCeilingAtItsCreation) {
  int number = 3;
  for (const auto& [type, kind] :
       {std::pair{"Opt_TypePrincipalOrgChg", "P"}, std::pair{"Opt_TypeComplOrgChg", "C"}}) {
    for (const auto& [ceiling, level] :
         {std::pair{"Opt_PlafMensRepOrgChg", "1"}, std::pair{"Opt_PlafMensOrgChg", "2"},
          std::pair{"Opt_PlafGlobalOrgChg", "3"}}) {
      const std::string body = "00" + std::to_string(++number);
      SCOPED_TRACE(body);
      // An agreement that was there first does not matter.
      store_.put("ACCORD", "A" + body, {body, "", "", "", "", "99999"});
      beginCreation();
      ASSERT_TRUE(user_->click(tabs(), kRulesTab));
      choose(type);
      choose(ceiling);
      press("Cmd_OK");
      expectNoBox();
      EXPECT_EQ(attribute(body, attribut::TypeOrgChg), kind);
      EXPECT_EQ(attribute(body, attribut::PlafondOrg), level);
    }
  }
}

class NewBody : public RulesPage {
 protected:
  NewBody() { start(); }
};

TEST_F(NewBody, StartsWithTheFirstLinesAndNothingElse) {
  show("001", {{attribut::PeriodFactOrgChg, "F"},
               {attribut::TypeOrgChg, "P"},
               {attribut::PlafondOrg, "1"},
               {attribut::RenouvOrgChg, "5"},
               {attribut::PieceRenouOrgChg, "AI"},
               {attribut::StatsOrgChg, "MU"},
               {attribut::DemAccordOrgChg, "1"},
               {attribut::IncidCompta, "1"},
               {attribut::LettresInfo, "1"},
               {attribut::FactAnticip, "1"}});
  press("Cmd_Annuler");
  press("Cmd_Ajouter");
  EXPECT_EQ(tabs().tab(), 0);
  EXPECT_EQ(period().text(), "Mensuelle");
  EXPECT_EQ(renewal().text(), "Pas de gestion renouvellement");
  EXPECT_EQ(statistics().text(), "");
  EXPECT_TRUE(option("Opt_Totalite").value());
  for (const char* name : {"Opt_TypePrincipalOrgChg", "Opt_TypeComplOrgChg",
                           "Opt_PlafMensRepOrgChg", "Opt_PlafMensOrgChg", "Opt_PlafGlobalOrgChg"}) {
    EXPECT_FALSE(option(name).value()) << name;
  }
  for (const char* name :
       {"Cac_DemAccordOrgChg", "Cac_FactAnticip", "Cac_LettresInfo", "Cac_IncidCompta"}) {
    EXPECT_FALSE(check(name).value()) << name;
  }
  EXPECT_FALSE(check("Cac_FactAnticip").enabled());
  EXPECT_EQ(list("Lst_PieceRenouOrgChg").listCount(), 0);
  EXPECT_PRED_FORMAT2(same, linesOf(list("Lst_PiecePossibleOrgChg")),
                      (std::vector<std::string>{"Avis d'imposition", "Relevé d'identité"}));
  for (const char* name : {"Cdr_AttribOrgChg", "Cdr_PlafondOrg", "Cdr_GestionExclu"}) {
    EXPECT_TRUE(frame(name).enabled()) << name;
  }
  EXPECT_TRUE(button("Cmd_AjoutPart").enabled());
  EXPECT_TRUE(button("Cmd_NouveauBareme").enabled());
  EXPECT_FALSE(box("Txt_DatBaremCours").enabled());
}

TEST_F(NewBody, IsStoredWithItsDefaults) {
  beginCreation();
  press("Cmd_OK");
  expectNoBox();
  const std::vector<std::pair<int, std::string>> stored = {
      {attribut::PeriodFactOrgChg, "M"}, {attribut::TypeOrgChg, ""},
      {attribut::PlafondOrg, ""},        {attribut::RenouvOrgChg, "0"},
      {attribut::PieceRenouOrgChg, ""},  {attribut::DebitOrgChg, ""},
      {attribut::CreditOrgChg, ""},      {attribut::StatsOrgChg, ""},
      {attribut::DemAccordOrgChg, "0"},  {attribut::IncidCompta, "0"},
      {attribut::LettresInfo, ""},       {attribut::CpteProdAide, ""},
      {attribut::FactAnticip, "0"}};
  for (const auto& [number, text] : stored)
    EXPECT_EQ(attribute("004", number), text) << bodyAttribute(number);
}

}  // namespace
}  // namespace behaviour
