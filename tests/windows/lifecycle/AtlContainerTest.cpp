// The control in a container that is not ours: the ATL library's window class. It places, shows and
// closes; it forwards no keys and has no ambients.
#include "tests/windows/lifecycle/AtlHost.h"
#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {
namespace {

using container::HostWindow;
using container::Value;
using Lines = std::vector<std::wstring>;

class AtlContainer : public testing::Test {
 protected:
  void SetUp() override {
    container::fillWithThreeBodies(store_);
    container::put(control(), L"TheClient", Value(store_.client().Get()));
    container::put(control(), L"TheDatabase", Value(store_.database().Get()));
    container::put(control(), L"DroitsUtilisateur", Value(store_.rights().Get()));
    container::call(control(), L"Init");
    boxes_.setOwner(window_.handle());
    container::pump();
  }

  void TearDown() override {
    host_.release();
    window_.destroy();
    container::pump();
    EXPECT_EQ(boxes_.report(), "");
    EXPECT_EQ(store_.state().alive, 0);
    EXPECT_EQ(library().canUnloadNow(), S_OK);
  }

  const Microsoft::WRL::ComPtr<IDispatch>& control() const { return host_.control(); }

  HostWindow window_;
  container::BoxWatcher boxes_;
  container::FakeStore store_;
  AtlHost host_{window_};
  container::Typist user_{
      {window_, [] { container::pump(); }, [this] { return host_.controlWindow(); }}};
};

TEST_F(AtlContainer, FillsItsPlace) {
  RECT outer = {};
  RECT got = {};
  GetWindowRect(host_.holder(), &outer);
  GetWindowRect(host_.controlWindow(), &got);
  EXPECT_TRUE(EqualRect(&outer, &got))
      << got.left - outer.left << " " << got.top - outer.top << " " << got.right - outer.right
      << " " << got.bottom - outer.bottom;
}

TEST_F(AtlContainer, FindsChangesAndRefuses) {
  user_.click(L"Cbo_SigleOrgChg");
  user_.type(L"ca");
  user_.key(VK_RETURN);
  EXPECT_EQ(user_.lines(L"Cbo_SigleOrgChg"), (Lines{L"CAF", L"CARSAT"}));
  user_.key(VK_DOWN);
  user_.key(VK_RETURN);
  EXPECT_EQ(user_.text(L"Txt_CodOrgChg"), L"001");
  user_.fill(L"Txt_RaisonOrgChg", L"");
  boxes_.expect(kNoName, kExclamation, L"OK", IDOK);
  user_.click(L"Cmd_OK");
  EXPECT_EQ(user_.focused(), L"Txt_RaisonOrgChg");
  user_.type(L"Caisse nouvelle");
  user_.click(L"Cmd_OK");
  EXPECT_EQ(store_.state().attribute(L"ORGPRISECHARGE", L"001", attribut::RaisonOrgChg),
            L"Caisse nouvelle");
  EXPECT_EQ(store_.state().attribute(L"ORGPRISECHARGE", L"001", attribut::DesFacture),
            L"Prise en charge");
}

TEST_F(AtlContainer, CreatesABody) {
  user_.click(L"Cmd_Ajouter");
  user_.type(L"cpam");
  user_.key(VK_TAB);
  user_.fill(L"Txt_RaisonOrgChg", L"Caisse primaire");
  completeCreation(user_);
  user_.alt(L'o');
  EXPECT_EQ(store_.state().attribute(L"ORGPRISECHARGE", L"004", attribut::SigleOrgChg), L"CPAM");
  EXPECT_EQ(store_.state().attribute(L"COMPTEUR", L"999", store::compteur::DernierOrgChg), L"004");
}

TEST_F(AtlContainer, RefusesAndMakesDeletions) {
  user_.click(L"Txt_CodOrgChg");
  user_.type(L"002");
  boxes_.expect(kDelete, kQuestion, L"YESNO", IDYES);
  boxes_.expect(kHasAgreements, kExclamation, L"OK", IDOK);
  user_.click(L"Cmd_Supprimer");
  EXPECT_EQ(store_.state().count("DeleteRecord"), 0);
  user_.fill(L"Txt_CodOrgChg", L"001");
  boxes_.expect(kDelete, kQuestion, L"YESNO", IDYES);
  user_.click(L"Cmd_Supprimer");
  EXPECT_EQ(store_.state().files[L"ORGPRISECHARGE"].count(L"001"), 0u);
}

TEST_F(AtlContainer, Leaves) {
  user_.click(L"Txt_CodOrgChg");
  user_.type(L"001");
  user_.fill(L"Txt_RaisonOrgChg", L"Caisse nouvelle");
  boxes_.expect(kSaveChanges, kQuestion, L"YESNOCANCEL", IDYES);
  user_.click(L"Cmd_Sortir");
  EXPECT_TRUE(container::get(control(), L"W_Sortir").truth());
  EXPECT_EQ(store_.state().attribute(L"ORGPRISECHARGE", L"001", attribut::RaisonOrgChg),
            L"Caisse nouvelle");
}

TEST_F(AtlContainer, ClosesWithABoxOpen) {
  user_.click(L"Txt_CodOrgChg");
  user_.type(L"001");
  boxes_.setOwner(nullptr);
  boxes_.expect(kDelete, kQuestion, L"YESNO", [this](HWND) { window_.destroy(); });
  user_.click(L"Cmd_Supprimer");
  EXPECT_EQ(window_.handle(), nullptr);
  EXPECT_EQ(store_.state().count("DeleteRecord"), 0);
}

}  // namespace
}  // namespace lifecycle
