// What the four pairs have to do with one another and with the rest of the control.
#include "tests/behaviour/AccountTest.h"

#include <functional>

namespace behaviour {
namespace {

using toolkit::Pointer;

constexpr const char* kDebitSansEntite =
    "Vous devez d'abord sélectionner une entité juridique dans l'onglet Activités couvertes afin "
    "de savoir à quel plan comptable associer le compte à débiter.";
constexpr const char* kCreditSansEntite =
    "Vous devez d'abord sélectionner une entité juridique dans l'onglet \"Activités Couvertes\" "
    "afin de savoir à quel plan comptable associer le compte à créditer";
constexpr const char* kCreditSansEntitePoint =
    "Vous devez d'abord sélectionner une entité juridique dans l'onglet \"Activités Couvertes\" "
    "afin de savoir à quel plan comptable associer le compte à créditer.";
constexpr const char* kProduitSansEntite =
    "Vous devez d'abord sélectionner une entité juridique dans l'onglet Activités couvertes afin "
    "de savoir à quel plan comptable associer le compte.";
constexpr const char* kClasse7 = "Vous devez saisir un compte de classe 7.";

class WatchedDatabase : public store::Database {
 public:
  WatchedDatabase(std::unique_ptr<store::Database> store, std::function<void()> onSentence)
      : store_(std::move(store)), onSentence_(std::move(onSentence)) {}
  std::unique_ptr<store::File> OpenFile(std::string_view name) override {
    return store_->OpenFile(name);
  }
  store::DynamicArray ExecuteSentence(std::string_view request) override {
    onSentence_();
    return store_->ExecuteSentence(request);
  }

 private:
  std::unique_ptr<store::Database> store_;
  std::function<void()> onSentence_;
};

}  // namespace

AccountTest::AccountTest() {
  fillThreeBodies(store_);
  store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, "X");
  store_.put("ASSOCIATION", "020", {"SECOURS DU VAL"});
  store_.put("PLANCOMPTABLE", "0107060000000", {"PRESTATIONS DE SERVICES"});
  store_.put("PLANCOMPTABLE", "0107061000000", {"AIDE A DOMICILE"});
  store_.put("PLANCOMPTABLE", "0107062000000", {"AIDE A DOMICILE"});
  store_.put("PLANCOMPTABLE", "0107080000000", {"REMISES \"SOCIALES\""});
  store_.put("PLANCOMPTABLE", "0107410000000", {"SUBVENTIONS"});
  store_.put("PLANCOMPTABLE", "0104110000000", {"CLIENTS"});
  store_.put("PLANCOMPTABLE", "0104120000000", {"CLIENTS DOUTEUX"});
  store_.put("PLANCOMPTABLE", "0106060000000", {"ACHATS"});
  store_.put("PLANCOMPTABLE", "0207060000000", {"VENTES"});
  store_.put("PLANCOMPTABLE", "0207490000000", {"DONS"});
}

void AccountTest::begin() {
  connect();
  control_->setTheDatabase(std::make_shared<WatchedDatabase>(store_.connect(), [this] {
    meanwhile_.push_back({desktop_.pointer(), control_->surface().enabled()});
  }));
  control_->Init();
  forget();
}

void AccountTest::show(std::string_view body, Caller at) {
  const auto trace = called("show", at);
  lookUp(body);
  expectNoBox();
  forget();
}

void AccountTest::forget() {
  store_.forgetCalls();
  desktop_.clearJournal();
  meanwhile_.clear();
}

void AccountTest::goTo(const Champs& champs, toolkit::Control& field, Caller at) {
  const auto trace = called("goTo", at);
  ASSERT_TRUE(tabs().tab() == champs.tab || user_->click(tabs(), champs.tab));
  ASSERT_TRUE(user_->go(field));
}

void AccountTest::typeNumber(const Champs& champs, std::string_view keys, Caller at) {
  const auto trace = called("typeNumber", at);
  goTo(champs, numero(champs));
  ASSERT_TRUE(user_->fill(numero(champs), keys));
}

void AccountTest::typeLabel(const Champs& champs, std::string_view keys, Caller at) {
  const auto trace = called("typeLabel", at);
  goTo(champs, libelle(champs));
  ASSERT_TRUE(user_->fill(libelle(champs), keys));
}

void AccountTest::down(const Champs& champs, Caller at) {
  const auto trace = called("down", at);
  ASSERT_TRUE(libelle(champs).userChoose(libelle(champs).listIndex() + 1));
}

std::vector<std::string> AccountTest::lines(const Champs& champs) {
  return linesOf(libelle(champs));
}

void AccountTest::expectSearch(std::string_view sentence, Caller at) {
  const auto trace = called("expectSearch", at);
  const auto requests = store_.calls(CallKind::ExecuteSentence);
  ASSERT_EQ(requests.size(), 1U);
  const store::DynamicArray request(requests[0].text);
  EXPECT_EQ(request.DCount(), 3);
  EXPECT_EQ(request.get(1), sentence);
  EXPECT_EQ(request.get(2), "PLANCOMPTABLE");
  EXPECT_EQ(request.get(3), "0 1");
  ASSERT_EQ(meanwhile_.size(), 1U);
  EXPECT_EQ(meanwhile_[0].pointer, Pointer::Hourglass);
  EXPECT_FALSE(meanwhile_[0].enabled);
  expectAtRest();
}

void AccountTest::expectNoSearch(Caller at) {
  const auto trace = called("expectNoSearch", at);
  for (const auto& call : store_.calls(CallKind::ExecuteSentence)) {
    EXPECT_NE(call.file, "PLANCOMPTABLE");
  }
}

void AccountTest::expectAtRest(Caller at) {
  const auto trace = called("expectAtRest", at);
  EXPECT_EQ(desktop_.pointer(), Pointer::Normal);
  EXPECT_TRUE(control_->surface().enabled());
}

std::vector<std::string> AccountTest::chartReads() {
  std::vector<std::string> ids;
  for (const auto& call : store_.calls(CallKind::ReadRecord)) {
    if (call.file == "PLANCOMPTABLE") ids.push_back(call.id);
  }
  return ids;
}

namespace {

// --- Before an entity has been chosen

struct Garde {
  const char* champ;
  int tab;
  const char* message;
};

class AccountGuard : public AccountTest, public testing::WithParamInterface<Garde> {
 protected:
  toolkit::Control& field() { return child<toolkit::Control>(GetParam().champ); }
  void expectSentToTheEntity(Caller at = Caller::here()) {
    const auto trace = called("expectSentToTheEntity", at);
    expectBox(GetParam().message, Icon::Exclamation);
    EXPECT_EQ(tabs().tab(), 5);
    EXPECT_PRED_FORMAT1(hasFocus, box("Txt_Entite"));
  }
};

INSTANTIATE_TEST_SUITE_P(
    On, AccountGuard,
    testing::Values(Garde{"Txt_DebitOrgChg", 1, kDebitSansEntite},
                    Garde{"Cbo_DebitOrgChg", 1, kDebitSansEntite},
                    Garde{"Txt_CreditOrgChg", 1, kCreditSansEntite},
                    Garde{"Cbo_CreditOrgChg", 1, kCreditSansEntitePoint},
                    Garde{"Txt_CpteProdAide", 1, kProduitSansEntite},
                    Garde{"Cbo_CpteProdAide", 1, kProduitSansEntite},
                    Garde{"Txt_CodeCptPrestationService", 2, kCreditSansEntitePoint},
                    Garde{"Cbo_CptPrestationService", 2, kCreditSansEntitePoint}),
    [](const auto& tested) { return std::string(tested.param.champ); });

TEST_P(AccountGuard, SendsToTheEntityOfABodyThatHasNone) {
  store_.set("ORGPRISECHARGE", "001", attribut::Entite, "");
  open();
  user_->click(tabs(), GetParam().tab);
  EXPECT_FALSE(user_->go(field()));
  expectSentToTheEntity();
  expectNoSearch();
}

TEST_P(AccountGuard, SendsToTheEntityOfANewBody) {
  begin();
  press("Cmd_Ajouter");
  user_->click(tabs(), GetParam().tab);
  user_->go(field());
  expectSentToTheEntity();
}

TEST_P(AccountGuard, SendsToAnEntityThatWasRefused) {
  open();
  user_->click(tabs(), 5);
  user_->fill(box("Txt_Entite"), "01");
  EXPECT_FALSE(user_->click(tabs(), GetParam().tab));
  expectBox("Cette entité juridique n'existe pas.", Icon::Exclamation);
  user_->click(tabs(), GetParam().tab);
  user_->go(field());
  expectSentToTheEntity();
  EXPECT_EQ(box("Txt_Entite").text(), "");
}

TEST_P(AccountGuard, LetsPassOnceTheEntityIsChosen) {
  store_.set("ORGPRISECHARGE", "001", attribut::Entite, "");
  open();
  user_->click(tabs(), GetParam().tab);
  user_->go(field());
  expectSentToTheEntity();
  user_->type("010");
  user_->click(tabs(), GetParam().tab);
  EXPECT_TRUE(user_->go(field()));
  expectNoBox();
  EXPECT_PRED_FORMAT1(hasFocus, field());
  EXPECT_EQ(tabs().tab(), GetParam().tab);
}

// --- One pair beside another

class Accounts : public AccountTest {
 protected:
  toolkit::CheckBox& sansIncidence() { return child<CheckBox>("Cac_IncidCompta"); }
  void toggle(Caller at = Caller::here()) {
    const auto trace = called("toggle", at);
    user_->click(tabs(), 1);
    ASSERT_TRUE(user_->click(sansIncidence()));
  }
  // Which of the accounting interface's own controls are enabled.
  void expectEnabled(bool enabled, Caller at = Caller::here()) {
    const auto trace = called("expectEnabled", at);
    for (const char* name :
         {"Etq_DebitOrgChg", "Txt_DebitOrgChg", "Cbo_DebitOrgChg", "Etq_CreditOrgChg",
          "Txt_CreditOrgChg", "Cbo_CreditOrgChg", "Txt_CpteProdAide", "Cbo_CpteProdAide"}) {
      EXPECT_EQ(child<toolkit::Control>(name).enabled(), enabled) << name;
    }
    EXPECT_TRUE(numero(kPrestation).enabled());
    EXPECT_TRUE(libelle(kPrestation).enabled());
  }
  void storeAccounts() {
    for (const Champs& champs : kPaires) {
      store_.set("ORGPRISECHARGE", "001", champs.attribute, "7060000000");
    }
  }
  void expectShown(const std::string& text, Caller at = Caller::here()) {
    const auto trace = called("expectShown", at);
    for (const Champs& champs : {kDebit, kCredit, kProduitAide}) {
      EXPECT_EQ(shown(champs), text) << champs.test;
    }
  }
  void withoutFlag() { store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, ""); }
};

TEST_F(Accounts, AChoiceIsOfTheSearchOfItsOwnPair) {
  open();
  typeNumber(kDebit, "41\r");
  user_->choose(libelle(kDebit), 0);
  typeNumber(kCredit, "70\r");
  user_->choose(libelle(kCredit), 1);
  user_->choose(libelle(kDebit), 1);
  EXPECT_EQ(shown(kDebit), "4120000000|CLIENTS DOUTEUX");
  user_->choose(libelle(kCredit), 0);
  EXPECT_EQ(shown(kCredit), "7061000000|AIDE A DOMICILE");
  typeLabel(kPrestation, "achats\r");
  goTo(kCredit, libelle(kCredit));
  down(kCredit);
  EXPECT_EQ(shown(kCredit), "7062000000|AIDE A DOMICILE");
  goTo(kDebit, libelle(kDebit));
  user_->choose(libelle(kDebit), 0);
  EXPECT_EQ(shown(kDebit), "4110000000|CLIENTS");
  goTo(kPrestation, libelle(kPrestation));
  user_->choose(libelle(kPrestation), 0);
  EXPECT_EQ(shown(kPrestation), "6060000000|ACHATS");
  expectNoBox();
}

TEST_F(Accounts, AFailedSearchLeavesTheAccountsOfTheOthers) {
  open();
  typeNumber(kDebit, "4110000000");
  typeNumber(kCredit, "7419999999");
  expectBox(kInconnu, Icon::Exclamation);
  EXPECT_EQ(shown(kDebit), "4110000000|CLIENTS");
  EXPECT_EQ(shown(kCredit), "|");
}

// --- Class 7

TEST_F(Accounts, TheAidProductIsOfClass7) {
  open();
  typeNumber(kProduitAide, "6");
  expectBox(kClasse7, Icon::Exclamation);
  EXPECT_EQ(shown(kProduitAide), "|");
  EXPECT_PRED_FORMAT1(hasFocus, numero(kProduitAide));
  EXPECT_EQ(tabs().tab(), 1);
  user_->type("7");
  EXPECT_EQ(numero(kProduitAide).text(), "7");
  expectNoBox();
}

TEST_F(Accounts, EveryOtherFirstDigitOfTheAidProductIsRefused) {
  open();
  goTo(kProduitAide, numero(kProduitAide));
  for (const char* digit : {"0", "1", "2", "3", "4", "5", "6", "8", "9"}) {
    user_->type(digit);
    expectBox(kClasse7, Icon::Exclamation);
    EXPECT_EQ(numero(kProduitAide).text(), "");
  }
  expectNoSearch();
  EXPECT_TRUE(chartReads().empty());
}

TEST_F(Accounts, ADigitPutBeforeTheAidProductIsRefused) {
  open();
  typeNumber(kProduitAide, "74");
  numero(kProduitAide).userSelect(0, 0);
  user_->type("6");
  expectBox(kClasse7, Icon::Exclamation);
  EXPECT_EQ(shown(kProduitAide), "|");
}

TEST_F(Accounts, APastedAidProductOfAnotherClassIsRefused) {
  open();
  goTo(kProduitAide, numero(kProduitAide));
  user_->paste("6060000000");
  expectBox(kClasse7, Icon::Exclamation);
  EXPECT_EQ(shown(kProduitAide), "|");
  EXPECT_TRUE(chartReads().empty());
}

TEST_F(Accounts, AnAidProductOfAnotherClassCannotBeChosenByItsLabel) {
  open();
  typeLabel(kProduitAide, "achats\r");
  user_->choose(libelle(kProduitAide), 0);
  expectBox(kClasse7, Icon::Exclamation);
  EXPECT_EQ(shown(kProduitAide), "|");
  EXPECT_PRED_FORMAT1(hasFocus, numero(kProduitAide));
}

TEST_F(Accounts, TheOtherAccountsAreOfAnyClass) {
  open();
  for (const Champs& champs : {kDebit, kCredit, kPrestation}) {
    typeNumber(champs, "6060000000");
    EXPECT_EQ(shown(champs), "6060000000|ACHATS") << champs.test;
  }
  expectNoBox();
}

TEST_F(Accounts, AStoredAidProductOfAnotherClassIsShownWithoutABox) {
  store_.set("ORGPRISECHARGE", "001", attribut::CpteProdAide, "6060000000");
  begin();
  lookUp("001");
  EXPECT_EQ(shown(kProduitAide), "6060000000|ACHATS");
  expectNoBox();
}

// --- Without accounting effect, and without an accounting interface

TEST_F(Accounts, AreEnabledForABodyWithTheInterface) {
  begin();
  lookUp("001");
  expectEnabled(true);
}

TEST_F(Accounts, AreEnabledForANewBodyWithTheInterface) {
  begin();
  press("Cmd_Ajouter");
  expectEnabled(true);
}

TEST_F(Accounts, WithoutAccountingEffectAreDisabledAndEmpty) {
  storeAccounts();
  open();
  expectShown("7060000000|PRESTATIONS DE SERVICES");
  toggle();
  expectEnabled(false);
  expectShown("|");
  EXPECT_EQ(shown(kPrestation), "7060000000|PRESTATIONS DE SERVICES");
  expectNoBox();
}

TEST_F(Accounts, WithTheirEffectAgainAreEnabledAndStayEmpty) {
  storeAccounts();
  open();
  toggle();
  toggle();
  expectEnabled(true);
  expectShown("|");
  expectNoBox();
}

TEST_F(Accounts, WithoutAccountingEffectForgetTheirSearch) {
  open();
  typeNumber(kDebit, "41\r");
  toggle();
  toggle();
  EXPECT_TRUE(lines(kDebit).empty());
}

TEST_F(Accounts, OfABodyWithoutAccountingEffectAreShownDisabled) {
  storeAccounts();
  store_.set("ORGPRISECHARGE", "001", attribut::IncidCompta, "1");
  begin();
  lookUp("001");
  EXPECT_TRUE(sansIncidence().value());
  expectEnabled(false);
  expectShown("7060000000|PRESTATIONS DE SERVICES");
  EXPECT_EQ(shown(kPrestation), "7060000000|PRESTATIONS DE SERVICES");
  lookUp("002");
  expectEnabled(true);
  expectNoBox();
}

TEST_F(Accounts, OfABodyWithoutAccountingEffectAreEmptiedInTheStoreButForTheAidProduct) {
  storeAccounts();
  store_.set("ACTIVITES", "010P01", 12, "M");
  store_.set("ORGPRISECHARGE", "001", 50, "1");
  open();
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(state(), kEmpty);
  for (const int number : {22, 23}) EXPECT_EQ(attribute("001", number), "") << number;
  for (const int number : {54, 56}) EXPECT_EQ(attribute("001", number), "7060000000") << number;
}

TEST_F(Accounts, OfABodyWithoutAccountingEffectAreNoChangeToAskAboutOnLeaving) {
  storeAccounts();
  store_.set("ORGPRISECHARGE", "001", 50, "1");
  open();
  press("Cmd_Sortir");
  expectNoBox();
  EXPECT_TRUE(control_->W_Sortir());
  expectNothingWritten();
}

TEST_F(Accounts, OfABodyThatGetsItsAccountingEffectBackAreThere) {
  storeAccounts();
  store_.set("ORGPRISECHARGE", "001", 50, "1");
  open();
  toggle();
  expectEnabled(true);
  expectShown("7060000000|PRESTATIONS DE SERVICES");
  press("Cmd_OK");
  expectNoBox();
  for (const int number : {22, 23, 54, 56}) EXPECT_EQ(attribute("001", number), "7060000000");
}

TEST_F(Accounts, WithoutTheInterfaceAreNeitherShownNorWrittenOfABodyWithoutAccountingEffect) {
  storeAccounts();
  store_.set("ACTIVITES", "010P01", 12, "M");
  store_.set("ORGPRISECHARGE", "001", 50, "1");
  withoutFlag();
  open();
  EXPECT_TRUE(sansIncidence().value());
  expectEnabled(false);
  expectShown("|");
  press("Cmd_OK");
  expectNoBox();
  for (const int number : {22, 23, 54, 56}) EXPECT_EQ(attribute("001", number), "7060000000");
}

// --- Another entity, another chart

TEST_F(Accounts, AreLookedUpSilentlyInTheChartOfAnotherEntity) {
  storeAccounts();
  store_.set("ORGPRISECHARGE", "001", 23, "7410000000");
  store_.set("ORGPRISECHARGE", "001", 56, "74");
  open();
  user_->click(tabs(), 5);
  user_->fill(box("Txt_Entite"), "020");
  expectNoBox();
  EXPECT_EQ(shown(kDebit), "7060000000|VENTES");
  EXPECT_EQ(shown(kCredit), "7410000000|");
  EXPECT_EQ(shown(kProduitAide), "74|");
  EXPECT_EQ(shown(kPrestation), "7060000000|VENTES");
  EXPECT_PRED_FORMAT2(
      same, chartReads(),
      (std::vector<std::string>{"0207060000000", "0207410000000", "0207060000000"}));
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_Entite"));
}

TEST_F(Accounts, AreNotLookedUpAgainInTheSameChart) {
  storeAccounts();
  open();
  user_->click(tabs(), 5);
  user_->fill(box("Txt_Entite"), "010");
  EXPECT_TRUE(chartReads().empty());
  expectShown("7060000000|PRESTATIONS DE SERVICES");
}

TEST_F(Accounts, WhoseOtherChartCannotBeReadStandWithoutALabel) {
  storeAccounts();
  open();
  user_->click(tabs(), 5);
  store_.fail(CallKind::ReadRecord, "PLANCOMPTABLE");
  user_->fill(box("Txt_Entite"), "020");
  expectShown("7060000000|");
  EXPECT_EQ(shown(kPrestation), "7060000000|");
  EXPECT_EQ(child<ComboBox>("Cbo_Entite").text(), "SECOURS DU VAL");
  expectNoBox();
}

TEST_F(Accounts, FoundInTheChartBeforeAreListedNoMore) {
  open();
  typeNumber(kDebit, "41\r");
  user_->choose(libelle(kDebit), 1);
  user_->click(tabs(), 5);
  user_->fill(box("Txt_Entite"), "020");
  EXPECT_TRUE(lines(kDebit).empty());
  EXPECT_EQ(shown(kDebit), "4120000000|");
}

TEST_F(Accounts, WithoutTheInterfaceAreDisabledAndEmptyWhateverTheBox) {
  storeAccounts();
  withoutFlag();
  open();
  expectEnabled(false);
  expectShown("|");
  EXPECT_EQ(shown(kPrestation), "7060000000|PRESTATIONS DE SERVICES");
  toggle();
  expectEnabled(false);
  toggle();
  expectEnabled(false);
  expectShown("|");
  press("Cmd_Annuler");
  press("Cmd_Ajouter");
  expectEnabled(false);
}

TEST_F(Accounts, WithoutTheInterfaceStayInTheStoreAsTheyWere) {
  storeAccounts();
  store_.set("ACTIVITES", "010P01", store::activites::TypeActivite, "M");
  withoutFlag();
  open();
  toggle();
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("001", attribut::IncidCompta), "1");
  for (const int number : {attribut::DebitOrgChg, attribut::CreditOrgChg,
                           attribut::CptPrestationService, attribut::CpteProdAide})
    EXPECT_EQ(attribute("001", number), "7060000000");
}

TEST_F(Accounts, WithoutAccountingEffectAreNotRequiredAndEmptiedInTheStore) {
  storeAccounts();
  store_.set("ACTIVITES", "010P01", store::activites::TypeActivite, "M");
  open();
  toggle();
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("001", attribut::IncidCompta), "1");
  for (const int number : {attribut::DebitOrgChg, attribut::CreditOrgChg, attribut::CpteProdAide})
    EXPECT_EQ(attribute("001", number), "");
  EXPECT_EQ(attribute("001", attribut::CptPrestationService), "7060000000");
}

TEST_F(Accounts, AMissingAccountOfANewBodyWithoutAnEntityLeadsToTheEntity) {
  begin();
  press("Cmd_Ajouter");
  user_->type("NEUF");
  user_->fill(box("Txt_RaisonOrgChg"), "Organisme neuf");
  press("Cmd_OK");
  const auto boxes = desktop_.takeBoxes();
  ASSERT_PRED_FORMAT2(boxCount, boxes, 2U);
  EXPECT_EQ(boxes[0].text, "Le compte comptable DEBIT est obligatoire.");
  EXPECT_EQ(boxes[1].text, kDebitSansEntite);
  EXPECT_EQ(tabs().tab(), 5);
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_Entite"));
  expectNothingWritten();
}

TEST_F(Accounts, ANumberLeftInPartBySavingIsSearchedFirst) {
  storeAccounts();
  open();
  typeNumber(kDebit, "74");
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("001", attribut::DebitOrgChg), "7410000000");
}

TEST_F(Accounts, ANumberOfSeveralHoldsTheSaveOnceAndIsRequiredThen) {
  storeAccounts();
  open();
  typeNumber(kDebit, "70");
  EXPECT_FALSE(press("Cmd_OK"));
  expectNoBox();
  EXPECT_PRED_FORMAT1(hasFocus, libelle(kDebit));
  EXPECT_TRUE(libelle(kDebit).opened());
  EXPECT_PRED_FORMAT2(same, lines(kDebit), kSoixanteDix);
  EXPECT_TRUE(press("Cmd_OK"));
  expectBox("Le compte comptable DEBIT est obligatoire.", Icon::Exclamation);
  EXPECT_EQ(tabs().tab(), 1);
  EXPECT_PRED_FORMAT1(hasFocus, numero(kDebit));
  EXPECT_EQ(shown(kDebit), "|");
  expectNothingWritten();
}

}  // namespace
}  // namespace behaviour
