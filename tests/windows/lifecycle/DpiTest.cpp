// Sizes follow the dots per inch of the window: run once at 96 and once at 144 of them.
#include <cstdlib>

#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {
namespace {

constexpr int kTwipsPerInch = 1440;
constexpr int kHimetricPerInch = 2540;
constexpr int kWidth = 11400;  // of the control, in twips
constexpr int kHeight = 8250;

// What the run is said to be at.
int expectedDpi() {
  const char* said = std::getenv("TESSALINE_TEST_DPI");
  return said == nullptr ? 96 : std::atoi(said);
}

class Dpi : public ControlTest {
 protected:
  SIZE sizeOf(const wchar_t* name) {
    RECT place = {};
    GetWindowRect(user().find(name), &place);
    return {place.right - place.left, place.bottom - place.top};
  }
  // Where the line of an edit begins on the screen, in pixels: its client area, and what it keeps
  // above its text.
  static int lineOf(HWND edit) {
    RECT format = {};
    SendMessageW(edit, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&format));
    POINT top = {0, format.top};
    ClientToScreen(edit, &top);
    return static_cast<int>(top.y);
  }
  static int pixels(int twips) { return MulDiv(twips, expectedDpi(), kTwipsPerInch); }
};

TEST_F(Dpi, TheRunIsAtWhatItSays) {
  EXPECT_EQ(static_cast<int>(GetDpiForWindow(control().window.handle())), expectedDpi());
}

TEST_F(Dpi, ChildrenAreScaled) {
  EXPECT_NEAR(sizeOf(L"Txt_CodOrgChg").cx, pixels(600), 1);
  EXPECT_NEAR(sizeOf(L"Txt_CodOrgChg").cy, pixels(315), 1);
  EXPECT_NEAR(sizeOf(L"Cmd_Ajouter").cx, pixels(1128), 1);
  EXPECT_NEAR(sizeOf(L"Cmd_Ajouter").cy, pixels(375), 1);
  EXPECT_NEAR(sizeOf(L"Ong_OrgPriseChg").cx, pixels(kWidth - 240), 1);
}

TEST_F(Dpi, NeighboursKeepTheirDistance) {
  RECT first = {};
  RECT second = {};
  GetWindowRect(user().find(L"Cmd_Ajouter"), &first);
  GetWindowRect(user().find(L"Cmd_Supprimer"), &second);
  EXPECT_NEAR(second.left - first.left, pixels(1218), 1);
}

TEST_F(Dpi, TheControlTakesThePixelsThatItIsGiven) {
  const RECT place = {5, 35, 5 + 333, 35 + 222};
  control().host.setRects(place);
  RECT got = {};
  GetWindowRect(control().host.controlWindow(), &got);
  EXPECT_EQ(got.right - got.left, 333);
  EXPECT_EQ(got.bottom - got.top, 222);
}

TEST_F(Dpi, TheNaturalSizeIsTheSameEverywhere) {
  const Microsoft::WRL::ComPtr<IUnknown> fresh = library().create();
  Microsoft::WRL::ComPtr<IOleObject> object;
  fresh.As(&object);
  SIZEL extent = {};
  ASSERT_EQ(object->GetExtent(DVASPECT_CONTENT, &extent), S_OK);
  EXPECT_NEAR(extent.cx, MulDiv(kWidth, kHimetricPerInch, kTwipsPerInch), 1);
  EXPECT_NEAR(extent.cy, MulDiv(kHeight, kHimetricPerInch, kTwipsPerInch), 1);
}

// What is in a text box and what is in a combo box beside it stand on one line.
TEST_F(Dpi, TheTextOfAComboBoxStandsAsHighAsThatOfATextBox) {
  load(L"001");
  user().clickTab(kRegles);
  const HWND box = user().find(L"Txt_CpteProdAide");
  const HWND combo = user().find(L"Cbo_CpteProdAide");
  const HWND field = FindWindowExW(combo, nullptr, L"Edit", nullptr);
  ASSERT_NE(box, nullptr);
  ASSERT_NE(field, nullptr);
  ASSERT_EQ(sizeOf(L"Txt_CpteProdAide").cy, sizeOf(L"Cbo_CpteProdAide").cy);
  EXPECT_EQ(lineOf(field), lineOf(box));
}

TEST_F(Dpi, AFieldIsTypedIntoWhereItIsSeen) {
  user().type(L"001");
  user().fill(L"Txt_Ville", L"Évreux");
  EXPECT_EQ(user().text(L"Txt_Ville"), L"Évreux");
}

}  // namespace
}  // namespace lifecycle
