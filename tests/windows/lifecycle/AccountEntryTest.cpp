// An account of the chart, entered by number or looked for by label, as a user types it.
#include "tests/windows/lifecycle/PagesTest.h"

namespace lifecycle {
namespace {

constexpr const wchar_t* kNoSuchAccounts = L"Le compte comptable n'existe pas.";
constexpr const wchar_t* kNoSuchAccount = L"Ce compte n'existe pas.";
constexpr const wchar_t* kDebitWithoutEntity =
    L"Vous devez d'abord sélectionner une entité juridique dans l'onglet Activités couvertes afin "
    L"de savoir à quel plan comptable associer le compte à débiter.";
constexpr const wchar_t* kCreditWithoutEntity =
    L"Vous devez d'abord sélectionner une entité juridique dans l'onglet \"Activités Couvertes\" "
    L"afin de savoir à quel plan comptable associer le compte à créditer";

class AccountEntry : public PagesTest {
 protected:
  void SetUp() override {
    PagesTest::SetUp();
    show(L"001", kRegles);
  }
  bool dropped(const wchar_t* combo) {
    return SendMessageW(user().find(combo), CB_GETDROPPEDSTATE, 0, 0) != 0;
  }
};

INSTANTIATE_TEST_SUITE_P(In, AccountEntry, everywhere(), nameOfParam);

TEST_P(AccountEntry, IsSearchedByItsFirstDigitsAndChosenWithTheKeyboard) {
  user().fill(L"Txt_DebitOrgChg", L"41");
  EXPECT_EQ(user().text(L"Cbo_DebitOrgChg"), L"");
  user().key(VK_RETURN);
  EXPECT_EQ(user().lines(L"Cbo_DebitOrgChg"), (Lines{L"ADHERENTS", L"CAISSES", L"USAGERS"}));
  EXPECT_EQ(user().text(L"Txt_DebitOrgChg"), L"41");
  EXPECT_EQ(user().text(L"Cbo_DebitOrgChg"), L"");
  EXPECT_EQ(user().focused(), L"Cbo_DebitOrgChg");
  EXPECT_TRUE(dropped(L"Cbo_DebitOrgChg"));
  user().key(VK_DOWN);
  user().key(VK_DOWN);
  user().key(VK_RETURN);
  EXPECT_FALSE(dropped(L"Cbo_DebitOrgChg"));
  EXPECT_EQ(user().text(L"Cbo_DebitOrgChg"), L"CAISSES");
  EXPECT_EQ(user().text(L"Txt_DebitOrgChg"), L"4130000000");
  user().click(L"Cmd_OK");
  EXPECT_EQ(stored(L"001", attribut::DebitOrgChg), L"4130000000");
}

TEST_P(AccountEntry, IsSearchedWhenTheFieldIsLeft) {
  user().fill(L"Txt_DebitOrgChg", L"41");
  user().key(VK_TAB);
  EXPECT_EQ(user().focused(), L"Cbo_DebitOrgChg");
  EXPECT_EQ(user().lines(L"Cbo_DebitOrgChg").size(), 3U);
  EXPECT_TRUE(dropped(L"Cbo_DebitOrgChg"));
  user().clickOpenLine(L"Cbo_DebitOrgChg", 2);
  EXPECT_EQ(user().text(L"Cbo_DebitOrgChg"), L"USAGERS");
  EXPECT_EQ(user().text(L"Txt_DebitOrgChg"), L"4110000000");
}

// What was typed stands for another search, and for one alone the user is held.
TEST_P(AccountEntry, OfSeveralIsSearchedAgainByEnterAndLeftAtTheSecondTry) {
  user().fill(L"Txt_DebitOrgChg", L"41");
  user().click(L"Cmd_Annuler");
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"001");
  EXPECT_EQ(user().focused(), L"Cbo_DebitOrgChg");
  EXPECT_TRUE(dropped(L"Cbo_DebitOrgChg"));
  const int before = state().count("ExecuteSentence");
  user().key(VK_RETURN);
  EXPECT_EQ(state().count("ExecuteSentence"), before + 1);
  EXPECT_EQ(user().text(L"Txt_DebitOrgChg"), L"41");
  EXPECT_TRUE(dropped(L"Cbo_DebitOrgChg"));
  user().key(VK_TAB);
  EXPECT_EQ(user().focused(), L"Cbo_DebitOrgChg");
  user().key(VK_TAB);
  EXPECT_EQ(user().focused(), L"Txt_CreditOrgChg");
  EXPECT_EQ(user().text(L"Txt_DebitOrgChg"), L"");
}

TEST_P(AccountEntry, ThatIsTheOnlyMatchIsChosenAtOnce) {
  user().fill(L"Txt_CreditOrgChg", L"708");
  user().key(VK_RETURN);
  EXPECT_EQ(user().text(L"Txt_CreditOrgChg"), L"7080000000");
  EXPECT_EQ(user().text(L"Cbo_CreditOrgChg"), L"PRODUITS ANNEXES");
  EXPECT_EQ(user().focused(), L"Txt_CreditOrgChg");
}

TEST_P(AccountEntry, OfTenDigitsShowsItsLabelAtTheTenth) {
  user().fill(L"Txt_DebitOrgChg", L"412000000");
  EXPECT_EQ(user().text(L"Cbo_DebitOrgChg"), L"");
  user().type(L"0");
  EXPECT_EQ(user().text(L"Cbo_DebitOrgChg"), L"ADHERENTS");
}

TEST_P(AccountEntry, ThatIsUnknownIsRefusedWithTheFocusBack) {
  expectWarning(kNoSuchAccount);
  user().fill(L"Txt_DebitOrgChg", L"4199999999");
  EXPECT_EQ(user().text(L"Txt_DebitOrgChg"), L"");
  EXPECT_EQ(user().focused(), L"Txt_DebitOrgChg");
  user().type(L"5");
  EXPECT_EQ(user().text(L"Txt_DebitOrgChg"), L"5");
}

TEST_P(AccountEntry, TakesDigitsAlone) {
  user().fill(L"Txt_DebitOrgChg", L"a4 -1é");
  EXPECT_EQ(user().text(L"Txt_DebitOrgChg"), L"41");
  user().key(VK_BACK);
  EXPECT_EQ(user().text(L"Txt_DebitOrgChg"), L"4");
}

// The search that leaving the field starts finds nothing: the field has the focus again, and what
// caused the leave is dropped.
TEST_P(AccountEntry, WithoutMatchKeepsTheUserInTheField) {
  for (const auto& leave : std::vector<std::function<void()>>{
           [this] { user().key(VK_TAB); }, [this] { user().clickTab(kCoordonnees); },
           [this] { user().click(L"Cmd_OK"); }, [this] { user().click(L"Cac_LettresInfo"); }}) {
    user().fill(L"Txt_DebitOrgChg", L"99");
    expectWarning(kNoSuchAccounts);
    leave();
    EXPECT_EQ(boxes().report(), "");
    EXPECT_EQ(user().focused(), L"Txt_DebitOrgChg");
    EXPECT_EQ(user().text(L"Txt_DebitOrgChg"), L"");
    EXPECT_EQ(user().tab(), kRegles);
    EXPECT_FALSE(user().checked(L"Cac_LettresInfo"));
    EXPECT_EQ(state().count("DBWrite"), 0);
  }
}

TEST_P(AccountEntry, OfAidProductsIsOfClassSeven) {
  expectWarning(L"Vous devez saisir un compte de classe 7.");
  user().fill(L"Txt_CpteProdAide", L"6");
  EXPECT_EQ(user().text(L"Txt_CpteProdAide"), L"");
  EXPECT_EQ(user().focused(), L"Txt_CpteProdAide");
  user().type(L"7060000000");
  EXPECT_EQ(user().text(L"Cbo_CpteProdAide"), L"PRESTATIONS");
}

TEST_P(AccountEntry, IsLookedForByLabelWhateverTheCase) {
  user().fill(L"Cbo_CreditOrgChg", L"pr");
  user().key(VK_RETURN);
  EXPECT_EQ(user().lines(L"Cbo_CreditOrgChg"), (Lines{L"PRESTATIONS", L"PRODUITS ANNEXES"}));
  EXPECT_EQ(user().text(L"Cbo_CreditOrgChg"), L"pr");
  EXPECT_TRUE(dropped(L"Cbo_CreditOrgChg"));
  user().key(VK_DOWN);
  user().key(VK_DOWN);
  user().key(VK_RETURN);
  EXPECT_EQ(user().text(L"Txt_CreditOrgChg"), L"7080000000");
  expectWarning(L"Aucune ventilation comptable commençant par zz");
  user().fill(L"Cbo_CreditOrgChg", L"zz");
  user().key(VK_RETURN);
  EXPECT_EQ(user().text(L"Cbo_CreditOrgChg"), L"");
  expectWarning(kNoLowerAccents);
  user().type(L"é");
  EXPECT_EQ(user().text(L"Cbo_CreditOrgChg"), L"");
}

TEST_P(AccountEntry, IsEmptiedAndClosedWithoutAccounting) {
  user().click(L"Cac_IncidCompta");
  for (const wchar_t* field : {L"Txt_DebitOrgChg", L"Cbo_DebitOrgChg", L"Txt_CreditOrgChg",
                               L"Cbo_CreditOrgChg", L"Txt_CpteProdAide", L"Cbo_CpteProdAide"}) {
    EXPECT_FALSE(user().enabled(field)) << container::narrow(field);
    EXPECT_EQ(user().text(field), L"") << container::narrow(field);
  }
  user().click(L"Cac_IncidCompta");
  EXPECT_TRUE(user().enabled(L"Txt_DebitOrgChg"));
  EXPECT_TRUE(user().enabled(L"Cbo_CpteProdAide"));
}

class AccountWithoutEntity : public PagesTest {
 protected:
  void SetUp() override {
    PagesTest::SetUp();
    user().click(L"Cmd_Ajouter");
    user().clickTab(kRegles);
  }
  void expectSentToTheEntity() {
    EXPECT_EQ(user().tab(), kActivites);
    EXPECT_EQ(user().focused(), L"Txt_Entite");
  }
};

INSTANTIATE_TEST_SUITE_P(In, AccountWithoutEntity, everywhere(), nameOfParam);

TEST_P(AccountWithoutEntity, SendsTheUserThereWhenClicked) {
  expectWarning(kDebitWithoutEntity);
  user().click(L"Txt_DebitOrgChg");
  expectSentToTheEntity();
  user().type(L"100");
  EXPECT_EQ(user().text(L"Cbo_Entite"), L"ASSOCIATION DE TEST");
  user().clickTab(kRegles);
  user().click(L"Txt_DebitOrgChg");
  EXPECT_EQ(user().focused(), L"Txt_DebitOrgChg");
}

TEST_P(AccountWithoutEntity, SendsTheUserThereWhenReachedByTab) {
  user().click(L"Cac_IncidCompta");
  user().click(L"Cac_IncidCompta");
  ASSERT_EQ(user().focused(), L"Cac_IncidCompta");
  expectWarning(kDebitWithoutEntity);
  user().key(VK_TAB);
  expectSentToTheEntity();
}

TEST_P(AccountWithoutEntity, SendsTheUserThereWhenReachedByMnemonic) {
  expectWarning(kDebitWithoutEntity);
  user().alt(L'd');
  expectSentToTheEntity();
}

TEST_P(AccountWithoutEntity, SaysSoInEachFieldsWords) {
  expectWarning(kCreditWithoutEntity);
  user().click(L"Txt_CreditOrgChg");
  expectSentToTheEntity();
  user().clickTab(kRegles);
  boxes().expect(std::wstring(kCreditWithoutEntity) + L".", kExclamation, L"OK", IDOK);
  user().click(L"Cbo_CreditOrgChg");
  expectSentToTheEntity();
}

}  // namespace
}  // namespace lifecycle
