// The control's automation: what the host gives, in which order it is let go, what answers what.
#include <algorithm>

#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {
namespace {

using container::AutomationError;
using container::Value;
using Lines = std::vector<std::wstring>;

TEST(Terminate, ReleasesInTheFixedOrder) {
  Running running(container::formProfile());
  container::fillWithThreeBodies(running.store);
  running.store.put(
      L"COMPTEUR", L"999",
      {L"", L"", L"", L"", L"", L"", L"", L"", L"", L"003", L"", L"", L"", L"", L"O"});
  running.open();
  running.init();
  running.user.type(L"001");
  running.state().releases.clear();
  EXPECT_EQ(running.finish(), "");
  const std::vector<std::string> expected = {"client",
                                             "file ACCORD",
                                             "record TABLES PIECESRENOUV",
                                             "record TABLES STATORGCHG",
                                             "record ORGPRISECHARGE 001",
                                             "record COMPTEUR 999",
                                             "file COMPTEUR",
                                             "file TABLES",
                                             "file PARAMBORDORGCHG",
                                             "file ORGPRISECHARGE",
                                             "file ASSOCIATION",
                                             "file ACTIVITES",
                                             "file PLANCOMPTABLE",
                                             "file PERIODESPAIE",
                                             "database",
                                             "entry",
                                             "rights"};
  EXPECT_EQ(running.state().releases, expected);
}

class Automation : public ControlTest {};

TEST_F(Automation, OpensTheFilesInTheirOrder) {
  std::vector<std::string> opened;
  for (const std::string& call : control().state().calls)
    if (call.starts_with("OpenFile")) opened.push_back(call.substr(9));
  EXPECT_EQ(opened, (std::vector<std::string>{"ORGPRISECHARGE", "PARAMBORDORGCHG", "COMPTEUR",
                                              "TABLES", "ACTIVITES", "ASSOCIATION", "PLANCOMPTABLE",
                                              "PERIODESPAIE", "ACCORD"}));
}

TEST_F(Automation, AsksForOneRight) {
  EXPECT_EQ(control().state().count("Right "), 1);
  EXPECT_EQ(control().state().count("Right CONSULTATIONORGCHARGE"), 1);
}

TEST_F(Automation, WSortirIsPutAndTold) {
  control().put(L"W_Sortir", Value(true));
  EXPECT_TRUE(control().wSortir());
  EXPECT_TRUE(control().host.pumpUntil([&] { return control().host.properties().changes() == 1; }));
  control().put(L"W_Sortir", Value(true));
  control().host.pump();
  EXPECT_EQ(control().host.properties().changes(), 1);
}

TEST_F(Automation, WithoutABodyNoAgreementIsPrintedOrChanged) {
  const int sentences = control().state().count("ExecuteSentence");
  for (const wchar_t* member : {L"Impression_ModifAccord", L"Recup_Accord"}) {
    try {
      control().call(member);
      ADD_FAILURE() << container::narrow(member);
    } catch (const AutomationError& error) {
      EXPECT_EQ(error.code(), E_UNEXPECTED) << container::narrow(member);
    }
  }
  control().call(L"Recup_AccordTauxRemb");
  EXPECT_EQ(control().state().count("ExecuteSentence"), sentences);
  EXPECT_EQ(control().state().count("DBWrite"), 0);
}

// A variant by reference that holds a number: what a script gives for a variable.
TEST_F(Automation, AjoutListsTakesAScriptsVariable) {
  const auto automation = control().host.automation();
  const DISPID id = container::idOf(automation, L"AjoutLists");
  VARIANT variable;
  VariantInit(&variable);
  variable.vt = VT_I4;
  variable.lVal = 3;
  VARIANT reference;
  VariantInit(&reference);
  reference.vt = VT_VARIANT | VT_BYREF;
  reference.pvarVal = &variable;
  DISPPARAMS arguments = {&reference, nullptr, 1, 0};
  EXCEPINFO exception = {};
  HRESULT result = automation->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                      &arguments, nullptr, &exception, nullptr);
  if (result == DISP_E_EXCEPTION) result = exception.scode;
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrSource);
  EXPECT_EQ(result, E_UNEXPECTED);
  EXPECT_EQ(variable.vt, VT_I4);
  EXPECT_EQ(variable.lVal, 3);
}

TEST_F(Automation, RemplirEntiteListsTheEntitiesAndKeepsTheText) {
  control().store.put(L"ASSOCIATION", L"200", {L"ENTRAIDE"});
  load(L"001");
  control().call(L"Remplir_Entite");
  EXPECT_EQ(user().lines(L"Cbo_Entite"), (Lines{L"ASSOCIATION DE TEST", L"ENTRAIDE"}));
  EXPECT_EQ(user().text(L"Cbo_Entite"), L"ASSOCIATION DE TEST");
}

TEST_F(Automation, ActivitiesAreListedAnewAndMoved) {
  control().store.put(L"ACTIVITES", L"100P02", container::activity(L"Garde de nuit", L"100"));
  load(L"001");
  const Lines possible = {L"Aide ménagère        Prestataire", L"Garde de nuit        Prestataire"};
  EXPECT_EQ(user().lines(L"Lst_Activite"), possible);
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), (Lines{possible[0]}));
  control().call(L"Remplir_Liste_Activite");
  EXPECT_EQ(user().lines(L"Lst_Activite"), possible);
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), Lines());
  user().clickTab(kActivites);
  user().clickLine(L"Lst_Activite", 1);
  control().call(L"Passage_A_Droite");
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), (Lines{possible[1]}));
  EXPECT_EQ(user().lines(L"Lst_TypeAct"), (Lines{L"P"}));
  user().clickLine(L"Lst_ActSelect", 0);
  control().call(L"Passage_A_Gauche");
  EXPECT_EQ(user().lines(L"Lst_ActSelect"), Lines());
  EXPECT_EQ(user().lines(L"Lst_TypeAct"), Lines());
}

TEST_F(Automation, SortParametersAreMoved) {
  load(L"001");
  user().clickTab(kBordereau);
  user().clickLine(L"Lst_ParamTriPos", 4);
  control().call(L"Passage_A_Droite_Tri");
  EXPECT_EQ(user().lines(L"Lst_ParamTriSelect"), (Lines{L"Période"}));
  user().clickLine(L"Lst_ParamTriSelect", 0);
  control().call(L"Passage_A_Gauche_Tri");
  EXPECT_EQ(user().lines(L"Lst_ParamTriSelect"), Lines());
}

TEST_F(Automation, RechercheAccordAsksForTheBodyInHand) {
  load(L"001");
  control().call(L"RechercheAccord");
  EXPECT_EQ(control().state().count("ExecuteSentence SSELECT ACCORD AVEC OrgChgAcc = \"001\""), 1);
}

TEST_F(Automation, AFailingCheckAnswersFalseWithItsBox) {
  load(L"001");
  EXPECT_TRUE(control().call(L"Verif_Ong2").truth());
  EXPECT_TRUE(control().call(L"Verif_Ong5").truth());
  EXPECT_TRUE(control().call(L"Verif_Ong6").truth());
  user().clickTab(kRegles);
  user().fill(L"Cbo_PeriodFactOrgChg", L"");
  user().clickTab(kCoordonnees);
  boxes().expect(L"La période de facturation est obligatoire.", kExclamation, L"OK", IDOK);
  EXPECT_FALSE(control().call(L"Verif_Ong2").truth());
  EXPECT_EQ(user().tab(), kRegles);
  EXPECT_EQ(user().focused(), L"Cbo_PeriodFactOrgChg");
  EXPECT_EQ(control().state().count("DBWrite"), 0);
}

TEST_F(Automation, PagesAreWrittenToTheRecordInHandAndShownFromIt) {
  load(L"001");
  user().clickTab(kBordereau);
  user().fill(L"Txt_CodeThesaurus", L"TH1");
  control().call(L"Ecrire_Ong5");
  user().fill(L"Txt_CodeThesaurus", L"TH2");
  control().call(L"Afficher_Ong5");
  EXPECT_EQ(user().text(L"Txt_CodeThesaurus"), L"TH1");
  user().clickTab(kActivites);
  user().click(L"Opt_DimJF");
  control().call(L"Ecrire_Ong6");
  user().click(L"Opt_Semaine");
  control().call(L"Afficher_Ong6");
  EXPECT_TRUE(user().checked(L"Opt_DimJF"));
  user().clickTab(kRegles);
  user().click(L"Cac_LettresInfo");
  control().call(L"Afficher_Ong2");
  EXPECT_FALSE(user().checked(L"Cac_LettresInfo"));
  EXPECT_EQ(control().state().count("DBWrite"), 0);
}

TEST_F(Automation, PagesWithoutARecordAreClearedAndNotWritten) {
  for (const wchar_t* member : {L"Afficher_Ong2", L"Afficher_Ong5", L"Afficher_Ong6"}) {
    control().call(member);
  }
  for (const wchar_t* member : {L"Ecrire_Ong2", L"Ecrire_Ong5", L"Ecrire_Ong6"}) {
    try {
      control().call(member);
      ADD_FAILURE() << container::narrow(member);
    } catch (const AutomationError& error) {
      EXPECT_EQ(error.code(), E_UNEXPECTED) << container::narrow(member);
    }
  }
}

TEST_F(Automation, DispidsStandInTheirPublishedOrder) {
  const auto automation = control().host.automation();
  EXPECT_EQ(container::idOf(automation, L"W_Sortir"), 1);
  EXPECT_EQ(container::idOf(automation, L"DroitsUtilisateur"), 2);
  EXPECT_EQ(container::idOf(automation, L"Init"), 9);
  EXPECT_EQ(container::idOf(automation, L"TheDatabase"), 32);
  EXPECT_EQ(container::idOf(automation, L"Verif_Ong6"), 39);
  EXPECT_EQ(container::idOf(automation, L"AjoutLists"), 51);
  EXPECT_EQ(container::idOf(automation, L"RechercheAccord"), 55);
}

TEST_F(Automation, TheSameDatabaseAssignedAgainChangesNothing) {
  const auto database = control().store.database();
  control().put(L"TheDatabase", Value(database.Get()));
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"");
  control().call(L"Init");
  control().host.pump();
  load(L"001");
  user().fill(L"Txt_RaisonOrgChg", L"Autre nom");
  const auto calls = control().state().calls.size();
  for (const WORD how : {WORD{DISPATCH_PROPERTYPUT}, WORD{DISPATCH_PROPERTYPUTREF}}) {
    control().put(L"TheDatabase", Value(database.Get()), how);
    EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"Autre nom");
  }
  EXPECT_EQ(control().state().calls.size(), calls);
  user().click(L"Cmd_OK");
  EXPECT_EQ(control().stored(L"001", 2), L"Autre nom");
}

TEST_F(Automation, TheOneBodyOfAStoreIsLoadedByInit) {
  control().state().files[L"ORGPRISECHARGE"].erase(L"002");
  control().state().files[L"ORGPRISECHARGE"].erase(L"003");
  control().call(L"Init");
  control().host.pump();
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"001");
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"Caisse d'allocations familiales");
}

TEST(InitTooEarly, IsAnErrorAndNotACrash) {
  Running running(container::formProfile());
  running.open();
  EXPECT_THROW(running.call(L"Init"), AutomationError);
  EXPECT_EQ(running.finish(), "");
}

// Without a container: no site, no window.
TEST(WithoutContainer, InitLoadsTheOnlyBodyAndEverythingIsLetGo) {
  container::FakeStore store;
  container::fillWithOneBody(store);
  {
    Microsoft::WRL::ComPtr<IDispatch> control;
    library().create()->QueryInterface(IID_IDispatch,
                                       reinterpret_cast<void**>(control.GetAddressOf()));
    container::put(control, L"TheClient", Value(store.client().Get()));
    container::put(control, L"TheDatabase", Value(store.database().Get()));
    container::put(control, L"DroitsUtilisateur", Value(store.rights().Get()));
    container::call(control, L"Init");
    EXPECT_EQ(store.state().count("ReadRecord ORGPRISECHARGE 001"), 1);
    EXPECT_FALSE(container::get(control, L"W_Sortir").truth());
    EXPECT_TRUE(container::call(control, L"Verif_Ong1").truth());
    container::call(control, L"Ecrire_Donnees");
    EXPECT_EQ(store.state().count("DBWrite ORGPRISECHARGE 001"), 1);
  }
  EXPECT_EQ(store.state().alive, 0);
  EXPECT_EQ(library().canUnloadNow(), S_OK);
}

}  // namespace
}  // namespace lifecycle
