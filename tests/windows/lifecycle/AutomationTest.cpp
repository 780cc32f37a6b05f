// The control's automation: what the host gives, in which order it is let go, what answers what.
#include <algorithm>

#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {
namespace {

using container::AutomationError;
using container::Value;

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

TEST_F(Automation, MembersOfLaterPagesAreNotImplementedYet) {
  for (const wchar_t* member :
       {L"Affiche_Bareme", L"AfficherZonesTaux", L"Tri2", L"Verif_Ong3", L"Recup_Accord"}) {
    try {
      control().call(member);
      ADD_FAILURE() << container::narrow(member);
    } catch (const AutomationError& error) {
      EXPECT_EQ(error.code(), E_NOTIMPL) << container::narrow(member);
    }
  }
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
  EXPECT_EQ(result, E_NOTIMPL);
  EXPECT_EQ(variable.vt, VT_I4);
  EXPECT_EQ(variable.lVal, 3);
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
