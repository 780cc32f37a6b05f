// What the control takes from a foreign container: font, room, and its turn.
#include <olectl.h>

#include "tests/windows/lifecycle/AtlHost.h"
#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {
namespace {

using Microsoft::WRL::ComPtr;

constexpr int kNaturalWidth = 11400;  // twips, at 8 points
constexpr int kNaturalHeight = 8250;

LONG himetric(int twips) { return MulDiv(twips, 2540, 1440); }

class HostLook : public ControlTest {
 protected:
  SIZEL extent() {
    ComPtr<IOleObject> object;
    control().host.control()->QueryInterface(IID_PPV_ARGS(&object));
    SIZEL size{};
    EXPECT_EQ(object->GetExtent(DVASPECT_CONTENT, &size), S_OK);
    return size;
  }
  LONG fontHeight(const wchar_t* name) {
    LOGFONTW face{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(user().find(name), WM_GETFONT, 0, 0)),
               sizeof face, &face);
    return -face.lfHeight;
  }
  void giveFont(int points) {
    control().host.site().ambients().fontSize = points;
    EXPECT_EQ(control().host.ambientChanged(DISPID_AMBIENT_FONT), S_OK);
    control().host.pump();
  }
};

TEST_F(HostLook, TheHostsFontIsUsedAtItsSize) {
  const int dpi = static_cast<int>(GetDpiForWindow(control().host.controlWindow()));
  EXPECT_EQ(fontHeight(L"Txt_CodOrgChg"), MulDiv(8, dpi, 72));
  giveFont(12);
  EXPECT_EQ(fontHeight(L"Txt_CodOrgChg"), MulDiv(12, dpi, 72));
  EXPECT_EQ(fontHeight(L"Lst_DateRembOrgChg"), MulDiv(27, dpi, 2 * 72));
}

TEST_F(HostLook, ALargerFontNeedsMoreRoomAndGetsBars) {
  HWND window = control().host.controlWindow();
  const LONG bars = WS_HSCROLL | WS_VSCROLL;
  EXPECT_EQ(GetWindowLongW(window, GWL_STYLE) & bars, 0);
  giveFont(12);
  EXPECT_EQ(GetWindowLongW(window, GWL_STYLE) & bars, bars);
  giveFont(8);
  EXPECT_EQ(GetWindowLongW(window, GWL_STYLE) & bars, 0);
}

TEST_F(HostLook, AClickOnAPagesGroundGivesTheControlItsTurn) {
  load(L"001");
  SetFocus(control().window.before());
  control().host.pump();
  EXPECT_TRUE(SUCCEEDED(control().host.uiDeactivate()));
  ASSERT_FALSE(control().host.rules().uiActive());
  RECT tabs = {};
  HWND window = user().find(L"Ong_OrgPriseChg");
  GetClientRect(window, &tabs);
  user().click(window, 12, tabs.bottom - 12);
  EXPECT_TRUE(control().host.rules().uiActive());
  EXPECT_NE(user().focused(), L"");
}

TEST_F(HostLook, AFocusThatTheHostGivesToAFieldIsHonoured) {
  load(L"001");
  SetFocus(control().window.before());
  control().host.pump();
  SetFocus(user().find(L"Txt_Ville"));
  control().host.pump();
  EXPECT_EQ(user().focused(), L"Txt_Ville");
  EXPECT_TRUE(control().host.rules().uiActive());
  user().type(L"x");
  EXPECT_NE(user().text(L"Txt_Ville").find(L'x'), std::wstring::npos);
}

class NaturalSize : public testing::Test {
 protected:
  static SIZEL sizeAt(const container::Profile& profile, int points) {
    container::HostWindow window;
    container::Container host(profile, window, library());
    host.site().ambients().fontSize = points;
    host.load();
    SIZEL size{};
    {
      ComPtr<IOleObject> object;
      host.control()->QueryInterface(IID_PPV_ARGS(&object));
      object->GetExtent(DVASPECT_CONTENT, &size);
    }
    EXPECT_EQ(host.finish(), "");
    return size;
  }
};

TEST_F(NaturalSize, GrowsWithTheHostsFont) {
  for (const int points : {8, 9, 11, 12}) {
    const SIZEL size = sizeAt(container::formProfile(), points);
    EXPECT_NEAR(size.cx, MulDiv(himetric(kNaturalWidth), points, 8), 1) << points;
    EXPECT_NEAR(size.cy, MulDiv(himetric(kNaturalHeight), points, 8), 1) << points;
  }
}

// The window class of the ATL library knows nothing of natural sizes.
TEST(ForeignRoom, SevenHundredPixelsAreScrolledToTheButtonThatLeaves) {
  container::FakeStore store;
  container::fillWithThreeBodies(store);
  container::HostWindow window;
  AtlHost host(window);
  container::put(host.control(), L"TheClient", container::Value(store.client().Get()));
  container::put(host.control(), L"TheDatabase", container::Value(store.database().Get()));
  container::put(host.control(), L"DroitsUtilisateur", container::Value(store.rights().Get()));
  container::call(host.control(), L"Init");
  container::Typist user{
      {window, [] { container::pump(); }, [&host] { return host.controlWindow(); }}};
  const int dpi = static_cast<int>(GetDpiForWindow(window.handle()));
  SetWindowPos(host.holder(), nullptr, 0, 0, MulDiv(700, dpi, 96), MulDiv(590, dpi, 96),
               SWP_NOMOVE | SWP_NOZORDER);
  container::pump();
  HWND control = host.controlWindow();
  ASSERT_NE(GetWindowLongW(control, GWL_STYLE) & WS_HSCROLL, 0);
  SendMessageW(control, WM_HSCROLL, SB_BOTTOM, 0);
  user.click(L"Cmd_Sortir");
  EXPECT_TRUE(container::get(host.control(), L"W_Sortir").truth());
  host.release();
}

}  // namespace
}  // namespace lifecycle
