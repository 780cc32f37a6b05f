// The main job typed by a user, in every kind of container: find, create, change, delete, leave.
#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {
namespace {

using container::Profile;
using Lines = std::vector<std::wstring>;

class MainLifecycle : public ProfileTest {};

INSTANTIATE_TEST_SUITE_P(In, MainLifecycle, testing::ValuesIn(container::allProfiles()),
                         [](const auto& given) { return given.param.name; });

TEST_P(MainLifecycle, StartsEmpty) {
  EXPECT_EQ(user().lines(L"Cbo_SigleOrgChg"), (Lines{L"CAF", L"CARSAT", L"MSA"}));
  EXPECT_TRUE(user().enabled(L"Txt_CodOrgChg"));
  EXPECT_TRUE(user().enabled(L"Cmd_Ajouter"));
  EXPECT_FALSE(user().enabled(L"Cmd_Supprimer"));
  EXPECT_FALSE(user().enabled(L"Cmd_OK"));
  EXPECT_FALSE(user().enabled(L"Cmd_Annuler"));
  EXPECT_TRUE(user().enabled(L"Cmd_Sortir"));
  EXPECT_TRUE(user().visible(L"Cbo_SigleOrgChg"));
  EXPECT_FALSE(user().visible(L"Txt_SigleOrgChg"));
}

TEST_P(MainLifecycle, LooksUpByCodeAtTheThirdCharacter) {
  user().type(L"00");
  EXPECT_EQ(control().state().count("ReadRecord ORGPRISECHARGE"), 0);
  user().type(L"1");
  EXPECT_EQ(control().state().count("ReadRecord ORGPRISECHARGE 001"), 1);
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"Caisse d'allocations familiales");
  EXPECT_EQ(user().text(L"Txt_InterlocDossOrgChg"), L"Mme Durand");
  EXPECT_FALSE(user().enabled(L"Cmd_Ajouter"));
  EXPECT_TRUE(user().enabled(L"Cmd_Supprimer"));
  EXPECT_TRUE(user().enabled(L"Cmd_OK"));
  EXPECT_TRUE(user().enabled(L"Cmd_Annuler"));
}

TEST_P(MainLifecycle, TakesTheNextCodeOverTheOneFound) {
  user().type(L"001");
  user().type(L"002");
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"002");
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"Caisse d'assurance retraite");
}

TEST_P(MainLifecycle, TellsOfAnUnknownCodeAndClearsIt) {
  boxes().expect(kUnknownCode, kInformation, L"OK", IDOK);
  user().type(L"777");
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"");
  EXPECT_EQ(user().focused(), L"Txt_CodOrgChg");
}

TEST_P(MainLifecycle, SearchesByAcronymAndShowsTheChosenBody) {
  user().click(L"Cbo_SigleOrgChg");
  user().type(L"ca");
  user().key(VK_RETURN);
  EXPECT_EQ(user().lines(L"Cbo_SigleOrgChg"), (Lines{L"CAF", L"CARSAT"}));
  EXPECT_EQ(user().text(L"Cbo_SigleOrgChg"), L"ca");
  const HWND combo = user().find(L"Cbo_SigleOrgChg");
  EXPECT_TRUE(SendMessageW(combo, CB_GETDROPPEDSTATE, 0, 0));
  user().key(VK_DOWN);
  user().key(VK_DOWN);
  user().key(VK_RETURN);
  EXPECT_FALSE(SendMessageW(combo, CB_GETDROPPEDSTATE, 0, 0));
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"002");
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"Caisse d'assurance retraite");
}

TEST_P(MainLifecycle, TellsOfAnAcronymThatNobodyHas) {
  boxes().expect(L"Aucun organisme de prise en charge commençant par ZZ", kExclamation, L"OK",
                 IDOK);
  user().click(L"Cbo_SigleOrgChg");
  user().type(L"zz");
  user().key(VK_RETURN);
}

TEST_P(MainLifecycle, RefusesAccentedSmallLettersInTheSearch) {
  boxes().expect(kNoLowerAccents, kExclamation, L"OK", IDOK);
  user().click(L"Cbo_SigleOrgChg");
  user().type(L"aéb");
  EXPECT_EQ(user().text(L"Cbo_SigleOrgChg"), L"ab");
  EXPECT_EQ(user().focused(), L"Cbo_SigleOrgChg");
}

TEST_P(MainLifecycle, RefusesToSaveWithoutANameAndGoesThere) {
  load(L"001");
  user().fill(L"Txt_RaisonOrgChg", L"");
  boxes().expect(kNoName, kExclamation, L"OK", IDOK);
  user().click(L"Cmd_OK");
  EXPECT_EQ(user().focused(), L"Txt_RaisonOrgChg");
  EXPECT_EQ(control().state().count("DBWrite"), 0);
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"001");
  user().type(L"X");
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"X");
}

TEST_P(MainLifecycle, RefusesACreationWithoutAcronymFirst) {
  user().click(L"Cmd_Ajouter");
  EXPECT_EQ(user().focused(), L"Txt_SigleOrgChg");
  boxes().expect(kNoAcronym, kExclamation, L"OK", IDOK);
  user().click(L"Cmd_OK");
  EXPECT_EQ(user().focused(), L"Txt_SigleOrgChg");
  EXPECT_EQ(control().state().count("DBWrite"), 0);
  EXPECT_FALSE(user().enabled(L"Txt_CodOrgChg"));
}

TEST_P(MainLifecycle, CreatesABodyUnderTheNextCode) {
  user().click(L"Cmd_Ajouter");
  EXPECT_FALSE(user().visible(L"Cbo_SigleOrgChg"));
  user().type(L"cpam");
  EXPECT_EQ(user().text(L"Txt_SigleOrgChg"), L"CPAM");
  user().fill(L"Txt_RaisonOrgChg", L"Caisse primaire d'assurance maladie");
  user().fill(L"Txt_Ville", L"Évreux");
  user().fill(L"Txt_InterlocFactOrgChg", L"M. Léger");
  completeCreation(user());
  user().click(L"Cmd_OK");
  EXPECT_EQ(control().stored(L"004", attribut::SigleOrgChg), L"CPAM");
  EXPECT_EQ(control().stored(L"004", attribut::RaisonOrgChg),
            L"Caisse primaire d'assurance maladie");
  EXPECT_EQ(control().stored(L"004", attribut::InterlocFactOrgChg), L"M. Léger");
  EXPECT_EQ(control().state().attribute(L"COMPTEUR", L"999", store::compteur::DernierOrgChg),
            L"004");
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"");
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"");
  EXPECT_EQ(user().lines(L"Cbo_SigleOrgChg"), (Lines{L"CAF", L"CARSAT", L"CPAM", L"MSA"}));
  EXPECT_TRUE(user().enabled(L"Cmd_Ajouter"));
  EXPECT_EQ(user().focused(), L"Txt_CodOrgChg");
}

TEST_P(MainLifecycle, ChangesABodyAndLeavesTheOtherPagesAttributesAlone) {
  load(L"001");
  user().fill(L"Txt_RaisonOrgChg", L"Caisse nouvelle");
  user().click(L"Cmd_OK");
  EXPECT_EQ(control().stored(L"001", attribut::RaisonOrgChg), L"Caisse nouvelle");
  EXPECT_EQ(control().stored(L"001", attribut::TypeOrgChg), L"P");
  EXPECT_EQ(control().stored(L"001", attribut::Entite), L"100");
  EXPECT_EQ(control().stored(L"001", attribut::DesFacture), L"Prise en charge");
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"");
  EXPECT_EQ(user().focused(), L"Txt_CodOrgChg");
}

TEST_P(MainLifecycle, CancelsAChangeWithoutAsking) {
  load(L"001");
  user().fill(L"Txt_RaisonOrgChg", L"Caisse nouvelle");
  user().click(L"Cmd_Annuler");
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"");
  EXPECT_EQ(control().state().count("DBWrite"), 0);
  EXPECT_EQ(user().focused(), L"Txt_CodOrgChg");
}

TEST_P(MainLifecycle, KeepsACreationWhenTheAnswerIsNo) {
  user().click(L"Cmd_Ajouter");
  user().type(L"CPAM");
  user().fill(L"Txt_RaisonOrgChg", L"Caisse");
  boxes().expect(kLeaveCreation, kQuestion, L"YESNO", IDNO);
  user().click(L"Cmd_Annuler");
  EXPECT_EQ(user().text(L"Txt_SigleOrgChg"), L"CPAM");
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"Caisse");
  EXPECT_TRUE(user().visible(L"Txt_SigleOrgChg"));
  EXPECT_FALSE(user().enabled(L"Cmd_Sortir"));
}

TEST_P(MainLifecycle, DropsACreationWhenTheAnswerIsYes) {
  user().click(L"Cmd_Ajouter");
  user().type(L"CPAM");
  boxes().expect(kLeaveCreation, kQuestion, L"YESNO", IDYES);
  user().click(L"Cmd_Annuler");
  EXPECT_TRUE(user().visible(L"Cbo_SigleOrgChg"));
  EXPECT_EQ(user().focused(), L"Txt_CodOrgChg");
  EXPECT_EQ(control().state().count("DBWrite"), 0);
}

TEST_P(MainLifecycle, RefusesToDeleteABodyWithAgreements) {
  load(L"002");
  boxes().expect(kDelete, kQuestion, L"YESNO", IDYES);
  boxes().expect(kHasAgreements, kExclamation, L"OK", IDOK);
  user().click(L"Cmd_Supprimer");
  EXPECT_EQ(control().state().count("DeleteRecord"), 0);
  EXPECT_EQ(control().state().count("ExecuteSentence SSELECT DEMANDACC"), 0);
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"002");
}

TEST_P(MainLifecycle, RefusesToDeleteABodyWithRequests) {
  load(L"003");
  boxes().expect(kDelete, kQuestion, L"YESNO", IDYES);
  boxes().expect(kHasRequests, kExclamation, L"OK", IDOK);
  user().click(L"Cmd_Supprimer");
  EXPECT_EQ(control().state().count("DeleteRecord"), 0);
}

TEST_P(MainLifecycle, DeletesABodyThatNobodyNames) {
  load(L"001");
  boxes().expect(kDelete, kQuestion, L"YESNO", IDYES);
  user().click(L"Cmd_Supprimer");
  EXPECT_EQ(control().state().files[L"ORGPRISECHARGE"].count(L"001"), 0u);
  EXPECT_EQ(user().lines(L"Cbo_SigleOrgChg"), (Lines{L"CARSAT", L"MSA"}));
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"");
  EXPECT_TRUE(user().enabled(L"Cmd_Ajouter"));
}

TEST_P(MainLifecycle, KeepsABodyWhenTheAnswerIsNo) {
  load(L"001");
  boxes().expect(kDelete, kQuestion, L"YESNO", IDNO);
  user().click(L"Cmd_Supprimer");
  EXPECT_EQ(control().state().count("DeleteRecord"), 0);
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"001");
}

TEST_P(MainLifecycle, LeavesAtOnceWithoutABody) {
  user().click(L"Cmd_Sortir");
  EXPECT_TRUE(control().wSortir());
  EXPECT_TRUE(control().host.pumpUntil([&] { return control().host.properties().changes() == 1; }));
}

TEST_P(MainLifecycle, LeavesAtOnceWithAnUnchangedBody) {
  load(L"001");
  user().click(L"Cmd_Sortir");
  EXPECT_TRUE(control().wSortir());
  EXPECT_EQ(control().state().count("DBWrite"), 0);
}

TEST_P(MainLifecycle, SavesOnLeavingWhenTheAnswerIsYes) {
  load(L"001");
  user().fill(L"Txt_RaisonOrgChg", L"Caisse nouvelle");
  boxes().expect(kSaveChanges, kQuestion, L"YESNOCANCEL", IDYES);
  user().click(L"Cmd_Sortir");
  EXPECT_EQ(control().stored(L"001", attribut::RaisonOrgChg), L"Caisse nouvelle");
  EXPECT_TRUE(control().wSortir());
}

TEST_P(MainLifecycle, LeavesWithoutSavingWhenTheAnswerIsNo) {
  load(L"001");
  user().fill(L"Txt_RaisonOrgChg", L"Caisse nouvelle");
  boxes().expect(kSaveChanges, kQuestion, L"YESNOCANCEL", IDNO);
  user().click(L"Cmd_Sortir");
  EXPECT_EQ(control().stored(L"001", attribut::RaisonOrgChg), L"Caisse d'allocations familiales");
  EXPECT_TRUE(control().wSortir());
}

TEST_P(MainLifecycle, StaysWhenTheAnswerIsCancel) {
  load(L"001");
  user().fill(L"Txt_RaisonOrgChg", L"Caisse nouvelle");
  boxes().expect(kSaveChanges, kQuestion, L"YESNOCANCEL", IDCANCEL);
  user().click(L"Cmd_Sortir");
  EXPECT_FALSE(control().wSortir());
  EXPECT_EQ(control().state().count("DBWrite"), 0);
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"Caisse nouvelle");
}

TEST_P(MainLifecycle, StaysWhenTheSaveOnLeavingIsRefused) {
  load(L"001");
  user().fill(L"Txt_RaisonOrgChg", L"");
  boxes().expect(kSaveChanges, kQuestion, L"YESNOCANCEL", IDYES);
  boxes().expect(kNoName, kExclamation, L"OK", IDOK);
  user().click(L"Cmd_Sortir");
  EXPECT_FALSE(control().wSortir());
  EXPECT_EQ(control().state().count("DBWrite"), 0);
  EXPECT_EQ(user().focused(), L"Txt_RaisonOrgChg");
}

class Consultation : public ControlTest {
 protected:
  void SetUp() override {
    running_ = std::make_unique<Running>(profile());
    container::fillWithThreeBodies(running_->store);
    running_->state().rightsLevel = 1;
    running_->open();
    running_->init();
  }
};

TEST_F(Consultation, ShowsBodiesWithoutEditingButtons) {
  EXPECT_FALSE(user().visible(L"Cmd_Ajouter"));
  EXPECT_FALSE(user().visible(L"Cmd_OK"));
  EXPECT_FALSE(user().visible(L"Cmd_Supprimer"));
  load(L"001");
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"Caisse d'allocations familiales");
  user().alt(L'a');
  user().alt(L'o');
  user().alt(L'u');
  EXPECT_EQ(control().state().count("DBWrite"), 0);
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"001");
  user().click(L"Cmd_Sortir");
  EXPECT_TRUE(control().wSortir());
}

std::wstring copied() {
  std::wstring text;
  if (!OpenClipboard(nullptr)) return L"the clipboard stays closed";
  if (HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    text = static_cast<const wchar_t*>(GlobalLock(data));
    GlobalUnlock(data);
  }
  CloseClipboard();
  return text;
}

TEST_F(Consultation, SaysSoAndHasFieldsToReadAndToCopy) {
  load(L"001");
  EXPECT_TRUE(user().visible(L"Etq_Consultation"));
  EXPECT_EQ(user().text(L"Etq_Consultation"), L"Consultation");
  const std::wstring name = user().text(L"Txt_RaisonOrgChg");
  user().fill(L"Txt_RaisonOrgChg", L"Autre");
  user().key(VK_DELETE);
  user().key(VK_BACK);
  user().key(L'V', false, true);
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), name);
  user().key(VK_HOME);
  user().key(VK_END, true);
  user().key(L'X', false, true);
  user().key(L'C', false, true);
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), name);
  EXPECT_EQ(copied(), name);
  EXPECT_NE(GetWindowLongW(user().find(L"Txt_RaisonOrgChg"), GWL_STYLE) & ES_READONLY, 0);
}

TEST_F(Consultation, HasOptionsBoxesAndCombosThatDoNotAnswer) {
  load(L"001");
  user().clickTab(kRegles);
  const bool principal = user().checked(L"Opt_TypePrincipalOrgChg");
  user().click(L"Opt_TypeComplOrgChg");
  user().click(L"Opt_TypePrincipalOrgChg");
  user().click(L"Opt_TypeComplOrgChg");
  user().key(VK_UP);
  user().key(VK_SPACE);
  EXPECT_EQ(user().checked(L"Opt_TypePrincipalOrgChg"), principal);
  const bool letters = user().checked(L"Cac_LettresInfo");
  user().click(L"Cac_LettresInfo");
  EXPECT_EQ(user().checked(L"Cac_LettresInfo"), letters);
  EXPECT_EQ(user().focused(), L"Cac_LettresInfo");
  const std::wstring renewal = user().text(L"Cbo_RenouvOrgChg");
  user().clickArrow(L"Cbo_RenouvOrgChg");
  EXPECT_EQ(SendMessageW(user().find(L"Cbo_RenouvOrgChg"), CB_GETDROPPEDSTATE, 0, 0), FALSE);
  user().click(L"Cbo_RenouvOrgChg");
  user().key(VK_DOWN);
  user().key(VK_DOWN, false, false, true);
  user().key(VK_F4);
  user().key(VK_DELETE);
  user().type(L"R");
  user().key(L'V', false, true);
  EXPECT_EQ(SendMessageW(user().find(L"Cbo_RenouvOrgChg"), CB_GETDROPPEDSTATE, 0, 0), FALSE);
  EXPECT_EQ(user().text(L"Cbo_RenouvOrgChg"), renewal);
  EXPECT_FALSE(user().enabled(L"Cmd_DroiteRenouv"));
  EXPECT_TRUE(user().visible(L"Cmd_DroiteRenouv"));
}

TEST_F(Consultation, EndsWithTheLevel) {
  load(L"001");
  control().state().rightsLevel = 2;
  user().fill(L"Txt_RaisonOrgChg", L"Autre");
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"Autre");
  EXPECT_FALSE(user().visible(L"Etq_Consultation"));
  EXPECT_TRUE(user().visible(L"Cmd_OK"));
  user().clickTab(kRegles);
  user().click(L"Opt_TypeComplOrgChg");
  EXPECT_TRUE(user().checked(L"Opt_TypeComplOrgChg"));
  EXPECT_TRUE(user().enabled(L"Cmd_DroiteRenouv"));
  user().click(L"Cmd_Annuler");
  control().state().rightsLevel = 1;
  load(L"002");
  user().clickTab(kCoordonnees);
  const std::wstring name = user().text(L"Txt_RaisonOrgChg");
  user().fill(L"Txt_RaisonOrgChg", L"Autre");
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), name);
  EXPECT_TRUE(user().visible(L"Etq_Consultation"));
  EXPECT_FALSE(user().visible(L"Cmd_OK"));
}

TEST_F(Consultation, RefusesWhatWouldWrite) {
  load(L"001");
  for (const wchar_t* member : {L"Ecrire_Donnees", L"Creer_Donnees", L"Ecrire_Ong1", L"Ecrire_Ong2",
                                L"Ecrire_Ong5", L"Ecrire_Ong6"}) {
    try {
      control().call(member);
      ADD_FAILURE() << container::narrow(member) << " was allowed";
    } catch (const container::AutomationError& error) {
      EXPECT_EQ(error.code(), E_ACCESSDENIED) << container::narrow(member);
    }
  }
  EXPECT_EQ(control().state().count("DBWrite"), 0);
}

}  // namespace
}  // namespace lifecycle
