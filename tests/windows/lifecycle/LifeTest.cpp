// The control's life in its container: orders of calls, activation again and again, closing.
#include <olectl.h>

#include <algorithm>

#include "tests/support/Thorough.h"
#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {
namespace {

using container::Container;
using container::HostWindow;
using container::Profile;

class Life : public testing::TestWithParam<Profile> {
 protected:
  HostWindow window_;
  Container host_{GetParam(), window_, library()};
};

INSTANTIATE_TEST_SUITE_P(In, Life, testing::ValuesIn(container::allProfiles()),
                         [](const auto& given) { return given.param.name; });

TEST_P(Life, OpensAndCloses) {
  ASSERT_TRUE(SUCCEEDED(host_.open()));
  EXPECT_NE(host_.controlWindow(), nullptr);
  EXPECT_TRUE(host_.rules().uiActive());
  EXPECT_EQ(host_.finish(), "");
}

TEST_P(Life, IsReleasedWithoutEverHavingASite) { EXPECT_EQ(host_.finish(), ""); }

TEST_P(Life, IsReleasedWithoutEverBeingActive) {
  host_.load();
  EXPECT_EQ(host_.finish(), "");
}

// Two hundred times where most hosts are, and often enough in the others.
TEST_P(Life, ActivatesAgainAndAgain) {
  const int many = testing_support::thorough() ? 200 : 40;
  const int times = GetParam().name == "form" ? many : 10;
  host_.load();
  for (int i = 0; i < times; ++i) {
    ASSERT_TRUE(SUCCEEDED(host_.activate())) << i;
    ASSERT_TRUE(SUCCEEDED(host_.uiActivate())) << i;
    ASSERT_TRUE(host_.rules().uiActive()) << i;
    if (i % 2 == 0) {
      ASSERT_TRUE(SUCCEEDED(host_.uiDeactivate())) << i;
    }
    ASSERT_TRUE(SUCCEEDED(host_.deactivate())) << i;
    ASSERT_FALSE(host_.rules().inPlaceActive()) << i;
    ASSERT_EQ(host_.controlWindow(), nullptr) << i;
  }
  EXPECT_EQ(host_.finish(), "");
}

TEST_P(Life, ClosesTwice) {
  host_.open();
  EXPECT_TRUE(SUCCEEDED(host_.close()));
  EXPECT_TRUE(SUCCEEDED(host_.close()));
  EXPECT_LE(host_.advises().closes(), 1);
  EXPECT_EQ(host_.controlWindow(), nullptr);
  EXPECT_EQ(host_.finish(), "");
}

// It may refuse or work, with its site given anew: it must not crash or break a rule.
TEST_P(Life, SurvivesActivationAfterClose) {
  host_.open();
  host_.close();
  EXPECT_TRUE(SUCCEEDED(host_.setSite(true)));
  if (SUCCEEDED(host_.uiActivate())) {
    EXPECT_TRUE(host_.rules().uiActive());
    EXPECT_NE(host_.controlWindow(), nullptr);
  }
  EXPECT_EQ(host_.finish(), "");
}

TEST_P(Life, RefusesActivationWithoutASite) {
  host_.initialise();
  EXPECT_TRUE(FAILED(host_.uiActivate()));
  EXPECT_EQ(host_.controlWindow(), nullptr);
  EXPECT_EQ(host_.finish(), "");
}

TEST_P(Life, TakesItsPlaceBeforeItsWindowExists) {
  host_.load();
  const RECT place = {10, 40, 610, 440};
  EXPECT_TRUE(SUCCEEDED(host_.setRects(place)));
  ASSERT_TRUE(SUCCEEDED(host_.activate()));
  RECT got = {};
  GetWindowRect(host_.controlWindow(), &got);
  MapWindowPoints(nullptr, window_.handle(), reinterpret_cast<POINT*>(&got), 2);
  EXPECT_TRUE(EqualRect(&got, &place))
      << got.left << " " << got.top << " " << got.right << " " << got.bottom;
  EXPECT_EQ(host_.finish(), "");
}

TEST_P(Life, FollowsItsPlace) {
  host_.open();
  const RECT place = {30, 50, 530, 350};
  host_.setRects(place);
  RECT got = {};
  GetWindowRect(host_.controlWindow(), &got);
  MapWindowPoints(nullptr, window_.handle(), reinterpret_cast<POINT*>(&got), 2);
  EXPECT_TRUE(EqualRect(&got, &place));
  EXPECT_EQ(host_.finish(), "");
}

TEST_P(Life, IsSavedAndLoadedIntoAnother) {
  host_.open();
  EXPECT_TRUE(SUCCEEDED(host_.saveAndLoadAnother()));
  EXPECT_EQ(host_.finish(), "");
}

TEST_P(Life, ClosesWithItsHostsWindowGone) {
  host_.open();
  window_.destroy();
  container::pump();
  EXPECT_EQ(host_.finish(), "");
}

TEST_P(Life, ClosesFromTheDestructionOfItsHostsWindow) {
  host_.open();
  window_.onDestroy = [this] { host_.abandon(); };
  window_.destroy();
  container::pump();
  EXPECT_EQ(host_.finish(), "");
}

TEST_P(Life, LosesItsSiteWhileActive) {
  host_.open();
  EXPECT_TRUE(SUCCEEDED(host_.setSite(false)));
  EXPECT_EQ(host_.controlWindow(), nullptr);
  EXPECT_EQ(host_.finish(), "");
}

// There is no window to make one's own in: the site has heard of an activation, and hears of its
// end.
TEST_P(Life, UndoesAnActivationThatCannotBeFinished) {
  host_.load();
  window_.destroy();
  EXPECT_TRUE(FAILED(host_.activate()));
  const std::vector<std::string>& calls = host_.rules().calls();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "OnInPlaceActivate"), 1);
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "OnInPlaceDeactivate"), 1);
  EXPECT_FALSE(host_.rules().inPlaceActive());
  EXPECT_EQ(host_.finish(), "");
}

// A host without a frame gives none; everything else works.
TEST(LifeWithoutFrame, Activates) {
  Profile profile = container::minimalProfile();
  profile.frame = false;
  HostWindow window;
  Container host(profile, window, library());
  EXPECT_TRUE(SUCCEEDED(host.open()));
  EXPECT_NE(host.controlWindow(), nullptr);
  EXPECT_EQ(host.finish(), "");
}

class Verbs : public testing::Test {
 protected:
  void SetUp() override { host_.load(); }
  void TearDown() override { EXPECT_EQ(host_.finish(), ""); }
  HostWindow window_;
  Container host_{container::formProfile(), window_, library()};
};

TEST_F(Verbs, AreAnsweredAsTheGuidelinesSay) {
  EXPECT_EQ(host_.doVerb(OLEIVERB_PROPERTIES), E_NOTIMPL);
  EXPECT_TRUE(SUCCEEDED(host_.doVerb(OLEIVERB_PRIMARY)));
  EXPECT_TRUE(host_.rules().uiActive());
  EXPECT_EQ(host_.doVerb(7), OLEOBJ_S_INVALIDVERB);
  EXPECT_TRUE(SUCCEEDED(host_.doVerb(OLEIVERB_SHOW)));
  EXPECT_TRUE(SUCCEEDED(host_.doVerb(OLEIVERB_OPEN)));
  EXPECT_TRUE(SUCCEEDED(host_.doVerb(OLEIVERB_HIDE)));
  EXPECT_FALSE(host_.rules().uiActive());
  Microsoft::WRL::ComPtr<IOleObject> object;
  host_.control()->QueryInterface(IID_IOleObject, reinterpret_cast<void**>(object.GetAddressOf()));
  Microsoft::WRL::ComPtr<IEnumOLEVERB> verbs;
  EXPECT_EQ(object->EnumVerbs(&verbs), OLEOBJ_E_NOVERBS);
  DWORD status = 0;
  EXPECT_EQ(object->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
  EXPECT_EQ(status, 131473u);
}

class Ambients : public ControlTest {};

TEST_F(Ambients, BreakModeTakesNoInput) {
  control().host.site().ambients().uiDead = true;
  control().host.ambientChanged(DISPID_AMBIENT_UIDEAD);
  user().type(L"001");
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"");
  user().click(L"Cmd_Ajouter");
  EXPECT_TRUE(user().visible(L"Cbo_SigleOrgChg"));
  user().click(L"Cmd_Sortir");
  EXPECT_FALSE(control().wSortir());
  control().host.site().ambients().uiDead = false;
  control().host.ambientChanged(DISPID_AMBIENT_UIDEAD);
  user().fill(L"Txt_CodOrgChg", L"001");
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"Caisse d'allocations familiales");
}

}  // namespace
}  // namespace lifecycle
