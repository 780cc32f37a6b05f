// The control in a design tool: a picture in a window, and nothing else.
#include <olectl.h>

#include <set>

#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {
namespace {

using container::Container;
using container::HostWindow;
using Microsoft::WRL::ComPtr;

class Design : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(host_.open(), S_OK); }
  void TearDown() override { EXPECT_EQ(host_.finish(), ""); }

  // The colours within the control's window, as its tool would print it.
  std::set<COLORREF> coloursShown() {
    RECT area{};
    GetClientRect(host_.controlWindow(), &area);
    const HDC screen = GetDC(host_.controlWindow());
    std::set<COLORREF> colours;
    for (int y = 2; y < area.bottom; y += 3) {
      for (int x = 2; x < area.right; x += 3) colours.insert(GetPixel(screen, x, y));
    }
    ReleaseDC(host_.controlWindow(), screen);
    return colours;
  }
  void setUserMode(bool user) {
    host_.site().ambients().userMode = user;
    host_.ambientChanged(DISPID_AMBIENT_USERMODE);
  }

  HostWindow window_;
  Container host_{container::designProfile(), window_, library()};
};

TEST_F(Design, GivesAWindowWithoutChildren) {
  ASSERT_NE(host_.controlWindow(), nullptr);
  EXPECT_TRUE(IsWindowVisible(host_.controlWindow()));
  EXPECT_EQ(GetWindow(host_.controlWindow(), GW_CHILD), nullptr);
  EXPECT_TRUE(host_.rules().inPlaceActive());
  EXPECT_FALSE(host_.rules().uiActive());
}

TEST_F(Design, PaintsThePicture) {
  UpdateWindow(host_.controlWindow());
  container::pump();
  EXPECT_GT(coloursShown().size(), 3U);
}

TEST_F(Design, FollowsItsPlace) {
  const RECT place{20, 30, 420, 330};
  host_.setRects(place);
  RECT got{};
  GetWindowRect(host_.controlWindow(), &got);
  MapWindowPoints(nullptr, window_.handle(), reinterpret_cast<POINT*>(&got), 2);
  EXPECT_TRUE(EqualRect(&got, &place));
}

TEST_F(Design, TakesNeitherMouseNorKeyboard) {
  const HWND own = host_.controlWindow();
  EXPECT_EQ(SendMessageW(own, WM_NCHITTEST, 0, 0), HTTRANSPARENT);
  EXPECT_EQ(SendMessageW(own, WM_MOUSEACTIVATE, 0, 0), MA_NOACTIVATE);
  SetFocus(window_.handle());
  EXPECT_TRUE(SUCCEEDED(host_.uiActivate()));
  EXPECT_EQ(GetFocus(), window_.handle());
  MSG key{};
  key.hwnd = own;
  key.message = WM_KEYDOWN;
  key.wParam = VK_RETURN;
  ComPtr<IOleInPlaceActiveObject> active;
  host_.control()->QueryInterface(IID_PPV_ARGS(&active));
  EXPECT_NE(active->TranslateAccelerator(&key), S_OK);
  EXPECT_FALSE(host_.rules().uiActive());
}

TEST_F(Design, IsHiddenAndShown) {
  EXPECT_TRUE(SUCCEEDED(host_.doVerb(OLEIVERB_HIDE)));
  EXPECT_FALSE(IsWindowVisible(host_.controlWindow()));
  EXPECT_TRUE(SUCCEEDED(host_.doVerb(OLEIVERB_SHOW)));
  EXPECT_TRUE(IsWindowVisible(host_.controlWindow()));
}

TEST_F(Design, BecomesUseAndDesignAgainInItsPlace) {
  RECT before{};
  GetWindowRect(host_.controlWindow(), &before);
  setUserMode(true);
  ASSERT_NE(host_.controlWindow(), nullptr);
  EXPECT_NE(GetWindow(host_.controlWindow(), GW_CHILD), nullptr);
  RECT after{};
  GetWindowRect(host_.controlWindow(), &after);
  EXPECT_TRUE(EqualRect(&before, &after));
  EXPECT_TRUE(SUCCEEDED(host_.uiActivate()));
  EXPECT_TRUE(host_.rules().uiActive());
  setUserMode(false);
  ASSERT_NE(host_.controlWindow(), nullptr);
  EXPECT_EQ(GetWindow(host_.controlWindow(), GW_CHILD), nullptr);
  EXPECT_FALSE(host_.rules().uiActive());
  EXPECT_TRUE(host_.rules().inPlaceActive());
}

TEST_F(Design, SurvivesTheDestructionOfItsWindow) {
  DestroyWindow(host_.controlWindow());
  EXPECT_EQ(host_.controlWindow(), nullptr);
  EXPECT_TRUE(SUCCEEDED(host_.activate()));
  EXPECT_NE(host_.controlWindow(), nullptr);
}

}  // namespace
}  // namespace lifecycle
