// The accounts of a record: shown, kept, written. On each of the four pairs.
#include "tests/behaviour/AccountTest.h"

namespace behaviour {
namespace {

class AccountShown : public AccountPair {};

INSTANTIATE_TEST_SUITE_P(Of, AccountShown, testing::ValuesIn(kPaires),
                         [](const auto& tested) { return std::string(tested.param.test); });

TEST_P(AccountShown, ABodysAccountIsShownWithItsLabel) {
  store_.set("ORGPRISECHARGE", "001", GetParam().attribute, "7410000000");
  begin();
  lookUp("001");
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
  EXPECT_TRUE(lines().empty());
  expectNoSearch();
  expectNoBox();
}

TEST_P(AccountShown, ABodysAccountIsOfItsOwnEntity) {
  store_.set("ORGPRISECHARGE", "001", GetParam().attribute, "7060000000");
  store_.set("ORGPRISECHARGE", "002", GetParam().attribute, "7060000000");
  store_.set("ORGPRISECHARGE", "002", attribut::Entite, "020");
  begin();
  lookUp("001");
  EXPECT_EQ(libelle().text(), "PRESTATIONS DE SERVICES");
  lookUp("002");
  EXPECT_EQ(libelle().text(), "VENTES");
  lookUp("001");
  EXPECT_EQ(libelle().text(), "PRESTATIONS DE SERVICES");
}

TEST_P(AccountShown, AnUnknownAccountIsShownWithoutABox) {
  begin();
  for (const char* account : {"7419999999", "74", "ancien", "74100000001234"}) {
    store_.set("ORGPRISECHARGE", "001", GetParam().attribute, account);
    lookUp("002");
    lookUp("001");
    EXPECT_EQ(shown(), std::string(account) + "|");
  }
  expectNoBox();
}

TEST_P(AccountShown, AnAccountOfABodyWithoutAnEntityIsShownWithoutALabel) {
  store_.set("ORGPRISECHARGE", "001", attribut::Entite, "");
  store_.put("PLANCOMPTABLE", "7410000000", {"AUCUNE ENTITE"});
  showAccount("7410000000");
  EXPECT_EQ(shown(), "7410000000|");
}

TEST_P(AccountShown, AnAccountWhoseChartCannotBeReadIsShownWithoutALabel) {
  store_.set("ORGPRISECHARGE", "001", GetParam().attribute, "7410000000");
  begin();
  store_.fail(CallKind::ReadRecord, "PLANCOMPTABLE");
  lookUp("001");
  EXPECT_EQ(shown(), "7410000000|");
  EXPECT_EQ(state(), kExisting);
  expectNoBox();
}

TEST_P(AccountShown, NothingIsLeftOfTheBodyBefore) {
  showAccount("7410000000");
  typeNumber("70\r");
  user_->choose(libelle(), 0);
  lookUp("002");
  EXPECT_EQ(shown(), "|");
  EXPECT_TRUE(lines().empty());
  lookUp("001");
  EXPECT_EQ(shown(), "7410000000|SUBVENTIONS");
  press("Cmd_Annuler");
  EXPECT_EQ(shown(), "|");
  EXPECT_TRUE(lines().empty());
}

class AccountSave : public AccountPair {
 protected:
  // Every account of the body, so that it can be saved.
  AccountSave() {
    for (const Champs& champs : kPaires) {
      store_.set("ORGPRISECHARGE", "001", champs.attribute, "7060000000");
    }
  }
  std::string stored() { return attribute("001", GetParam().attribute); }
  void expectTheOthersAsTheyWere(Caller at = Caller::here()) {
    const auto trace = called("expectTheOthersAsTheyWere", at);
    for (const Champs& champs : kPaires) {
      if (champs.attribute == GetParam().attribute) continue;
      EXPECT_EQ(attribute("001", champs.attribute), "7060000000") << champs.test;
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Of, AccountSave, testing::ValuesIn(kPaires),
                         [](const auto& tested) { return std::string(tested.param.test); });

TEST_P(AccountSave, AChosenAccountIsWrittenByItsNumber) {
  open();
  typeNumber("74\r");
  EXPECT_TRUE(press("Cmd_OK"));
  expectNoBox();
  EXPECT_EQ(stored(), "7410000000");
  expectTheOthersAsTheyWere();
}

TEST_P(AccountSave, AnAccountChosenByItsLabelIsWritten) {
  open();
  typeLabel("aide\r");
  user_->choose(libelle(), 1);
  EXPECT_TRUE(press("Cmd_OK"));
  expectNoBox();
  EXPECT_EQ(stored(), "7062000000");
  expectTheOthersAsTheyWere();
}

TEST_P(AccountSave, AnUntouchedAccountIsKeptWithItsMarks) {
  const std::string odd = std::string("7410000000") + store::kValueMark + "x" + store::kValueMark;
  showAccount(odd);
  const std::string before = store_.record("ORGPRISECHARGE", "001").text();
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(stored(), odd);
  EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), before);
}

TEST_P(AccountSave, AnAccountTypedOverOddMarksReplacesThem) {
  showAccount(std::string("7410000000") + store::kValueMark + "x");
  typeNumber("7080000000");
  press("Cmd_OK");
  EXPECT_EQ(stored(), "7080000000");
}

TEST_P(AccountSave, AnAccountOfTheChartNoLongerIsKept) {
  showAccount("7419999999");
  user_->click(tabs(), 0);
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(stored(), "7419999999");
}

TEST_P(AccountSave, ANewBodyIsSavedWithItsAccounts) {
  begin();
  beginCreation();
  user_->click(tabs(), 1);
  user_->click(child<toolkit::OptionButton>("Opt_TypePrincipalOrgChg"));
  user_->click(tabs(), 2);
  user_->click(child<toolkit::OptionButton>("Opt_HeureOrgChg"));
  for (const Champs& champs : kPaires) {
    AccountTest::typeNumber(champs,
                            champs.attribute == GetParam().attribute ? "74\r" : "7060000000");
  }
  press("Cmd_OK");
  expectNoBox();
  for (const Champs& champs : kPaires) {
    const bool own = champs.attribute == GetParam().attribute;
    EXPECT_EQ(attribute("004", champs.attribute), own ? "7410000000" : "7060000000");
  }
}

}  // namespace
}  // namespace behaviour
