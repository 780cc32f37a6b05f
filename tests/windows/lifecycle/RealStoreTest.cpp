// The whole on a store on disk: both libraries, a user, and what stands in the file afterwards.
#include "tests/windows/lifecycle/ControlTest.h"
#include "tests/windows/lifecycle/LocalStore.h"

namespace lifecycle {
namespace {

using container::Container;
using container::HostWindow;
using container::Value;

class RealStore : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(SUCCEEDED(host_.open()));
    const auto control = host_.automation();
    container::put(control, L"TheClient", Value(store_.client().Get()));
    container::put(control, L"TheDatabase", Value(store_.database().Get()));
    container::put(control, L"DroitsUtilisateur", Value(store_.rights().Get()));
  }

  // An entity with an activity, a slip parameter: what a body needs before it can be saved.
  void fillTables() {
    store_.put(L"ASSOCIATION", L"100", L"ENTRAIDE");
    store_.put(L"ACTIVITES", L"100P01",
               L"Aide ménagère\u00FE"
               L"100\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE\u00FEP\u00FESAAD");
    store_.put(L"PARAMBORDORGCHG", L"1",
               L"Nom\u00FE"
               L"30");
  }

  void init() {
    fillTables();
    container::call(host_.automation(), L"Init");
    host_.pump();
  }

  void TearDown() override {
    EXPECT_EQ(host_.finish(), "");
    EXPECT_EQ(boxes_.report(), "");
    EXPECT_EQ(store_.release(), S_OK);
  }

  std::wstring stored(const wchar_t* file, const wchar_t* id, long attribute) {
    return store_.stored(file, id, attribute);
  }

  LocalStore store_;
  HostWindow window_;
  container::BoxWatcher boxes_;
  Container host_{container::formProfile(), window_, library()};
  container::Typist user_{
      {window_, [this] { host_.pump(); }, [this] { return host_.controlWindow(); }}};
};

TEST_F(RealStore, CreatesTheFirstBodyFindsItAgainAndChangesIt) {
  init();
  user_.click(L"Cmd_Ajouter");
  user_.type(L"caf");
  user_.fill(L"Txt_RaisonOrgChg", L"Caisse d'allocations familiales de l'Eure");
  user_.fill(L"Txt_Ville", L"Évreux");
  completeCreation(user_);
  user_.click(L"Cmd_OK");
  EXPECT_EQ(stored(L"ORGPRISECHARGE", L"001", attribut::SigleOrgChg), L"CAF");
  EXPECT_EQ(stored(L"COMPTEUR", L"999", store::compteur::DernierOrgChg), L"001");
  // The only body of its store is loaded by itself.
  EXPECT_EQ(user_.text(L"Txt_CodOrgChg"), L"001");
  EXPECT_EQ(user_.text(L"Txt_Ville"), L"Évreux");
  user_.fill(L"Txt_RaisonOrgChg", L"Caisse nouvelle");
  user_.click(L"Cmd_OK");
  EXPECT_EQ(stored(L"ORGPRISECHARGE", L"001", attribut::RaisonOrgChg), L"Caisse nouvelle");
}

TEST_F(RealStore, SearchesRefusesADeletionAndMakesAnother) {
  store_.put(L"COMPTEUR", L"999",
             L"\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE"
             L"002");
  store_.put(L"ORGPRISECHARGE", L"001",
             L"CAF\u00FE"
             L"Caisse");
  store_.put(L"ORGPRISECHARGE", L"002",
             L"CARSAT\u00FE"
             L"Retraite");
  store_.put(L"ACCORD", L"7001", L"002");
  init();
  user_.click(L"Cbo_SigleOrgChg");
  user_.type(L"car");
  user_.key(VK_RETURN);
  EXPECT_EQ(user_.lines(L"Cbo_SigleOrgChg"), (std::vector<std::wstring>{L"CARSAT"}));
  user_.key(VK_DOWN);
  EXPECT_EQ(user_.text(L"Txt_RaisonOrgChg"), L"Retraite");
  boxes_.expect(kDelete, kQuestion, L"YESNO", IDYES);
  boxes_.expect(kHasAgreements, kExclamation, L"OK", IDOK);
  user_.click(L"Cmd_Supprimer");
  EXPECT_EQ(stored(L"ORGPRISECHARGE", L"002", attribut::SigleOrgChg), L"CARSAT");
  user_.fill(L"Txt_CodOrgChg", L"001");
  boxes_.expect(kDelete, kQuestion, L"YESNO", IDYES);
  user_.click(L"Cmd_Supprimer");
  EXPECT_EQ(stored(L"ORGPRISECHARGE", L"001", attribut::SigleOrgChg), L"");
}

}  // namespace
}  // namespace lifecycle
