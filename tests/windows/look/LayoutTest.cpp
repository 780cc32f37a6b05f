// No text is cut and nothing covers anything, in every font and at every dots per inch that hosts
// have; what has no room is scrolled to.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <tuple>

#include "tests/windows/look/Page.h"
#include "toolkit/win32/ChoicePeer.h"
#include "toolkit/win32/Scale.h"
#include "toolkit/win32/WideText.h"

// After windows.h.
#include <commctrl.h>

namespace look {
namespace {

using toolkit::Control;
using toolkit::Kind;
using toolkit::win32::wide;

// A text as a window's own font draws it.
class Measure {
 public:
  explicit Measure(HWND window) : window_(window), context_(GetDC(window)) {
    before_ =
        SelectObject(context_, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
  }
  Measure(const Measure&) = delete;
  Measure& operator=(const Measure&) = delete;
  ~Measure() {
    SelectObject(context_, before_);
    ReleaseDC(window_, context_);
  }
  // Broken into lines where `width` is not 0.
  SIZE of(const std::string& text, int width = 0) const {
    RECT area{0, 0, width, 0};
    DrawTextW(context_, wide(text).c_str(), -1, &area,
              DT_CALCRECT | (width > 0 ? DT_WORDBREAK : DT_SINGLELINE));
    return {area.right, area.bottom};
  }

 private:
  HWND window_;
  HDC context_;
  HGDIOBJ before_;
};

void expectFits(SIZE needed, SIZE room, const std::string& what) {
  EXPECT_LE(needed.cx, room.cx) << what << " is too narrow";
  EXPECT_LE(needed.cy, room.cy) << what << " is too low";
}

// The caption in what the control has for it.
void expectCaptionFits(HWND window, const Control& control, const std::string& caption, int dpi) {
  const Measure measure(window);
  RECT client{};
  GetClientRect(window, &client);
  SIZE room{client.right, client.bottom};
  const std::string what = control.name() + " \"" + caption + "\"";
  switch (control.kind()) {
    case Kind::Label:
      expectFits(measure.of(caption, room.cx), room, what);
      break;
    case Kind::OptionButton:
    case Kind::CheckBox:
      room.cx -= toolkit::win32::captionLeft(dpi) + 1;
      expectFits(measure.of(caption), room, what);
      break;
    case Kind::CommandButton:
      room.cx -= 2 * MulDiv(4, dpi, 96);
      room.cy -= 2 * MulDiv(2, dpi, 96);
      expectFits(measure.of(caption), room, what);
      break;
    case Kind::Frame:
      room.cx -= 2 * 12;
      expectFits(measure.of(caption), room, what);
      break;
    default:
      break;
  }
}

// Fields as high as their line, and those of a fixed length as wide as it.
void expectLineFits(HWND window, const Control& control) {
  const Measure measure(window);
  RECT client{};
  GetClientRect(window, &client);
  const SIZE line = measure.of("Ég");
  EXPECT_LE(line.cy, client.bottom) << control.name();
  if (control.kind() != Kind::TextBox) return;
  const int length = static_cast<const toolkit::TextBox&>(control).maxLength();
  constexpr int kFixed = 10;
  if (length == 0 || length > kFixed) return;
  EXPECT_LE(measure.of(std::string(static_cast<std::size_t>(length), '0')).cx, client.right)
      << control.name();
}

void expectNoTextCut(Page& page, int dpi) {
  int seen = 0;
  page.each([&](Control& control) {
    HWND window = page.windowOf(control);
    ASSERT_NE(window, nullptr) << control.name();
    if (!control.caption().empty()) expectCaptionFits(window, control, control.caption(), dpi);
    const bool field = control.kind() == Kind::TextBox || control.kind() == Kind::ComboBox;
    if (field) expectLineFits(window, control);
    ++seen;
  });
  EXPECT_GT(seen, 150);
  screen::Participation& part = page.screen().participation;
  expectCaptionFits(page.windowOf(part.Cmd_NouveauBareme), part.Cmd_NouveauBareme,
                    screen::kAnnulerBareme, dpi);
  expectCaptionFits(page.windowOf(part.Etq_Montant), part.Etq_Montant, "% au", dpi);
}

void expectTabsInOneLine(Page& page) {
  toolkit::SSTab& tabs = page.screen().Ong_OrgPriseChg;
  HWND window = page.windowOf(tabs);
  const Measure measure(window);
  EXPECT_EQ(SendMessageW(window, TCM_GETROWCOUNT, 0, 0), 1);
  RECT client{};
  GetClientRect(window, &client);
  for (int tab = 0; tab < tabs.tabs(); ++tab) {
    RECT item{};
    SendMessageW(window, TCM_GETITEMRECT, static_cast<WPARAM>(tab),
                 reinterpret_cast<LPARAM>(&item));
    const SIZE text = measure.of(tabs.page(tab).caption());
    EXPECT_LE(text.cx, item.right - item.left) << tabs.page(tab).caption();
    EXPECT_LE(text.cy, item.bottom - item.top) << tabs.page(tab).caption();
    EXPECT_LT(item.bottom - item.top, 2 * text.cy) << tabs.page(tab).caption();
    EXPECT_LE(item.right, client.right) << tabs.page(tab).caption();
  }
}

// Look-up and entry of the acronym share a place; an editor's bar stands on its last list.
bool mayOverlap(const Control& one, const Control& other) {
  return one.place() == other.place() || one.kind() == Kind::ScrollBar ||
         other.kind() == Kind::ScrollBar;
}

void expectNothingCovered(Page& page) {
  int compared = 0;
  page.each([&](Control& control) {
    for (const Control* sibling : control.parent()->children()) {
      if (sibling == &control) break;
      if (!control.visible() || !sibling->visible() || mayOverlap(control, *sibling)) continue;
      const RECT one = page.placeOf(control);
      const RECT other = page.placeOf(*sibling);
      RECT both{};
      EXPECT_FALSE(IntersectRect(&both, &one, &other)) << control.name() << " " << sibling->name();
      ++compared;
    }
  });
  EXPECT_GT(compared, 500);
}

void expectNothingOutside(Page& page) {
  page.each([&](Control& control) {
    if (!control.visible() || control.kind() == Kind::TabPage) return;
    const RECT inner = page.placeOf(control);
    RECT outer{};
    if (control.parent()->kind() == Kind::Surface) {
      GetClientRect(page.windows().handle(), &outer);
    } else {
      outer = page.placeOf(*control.parent());
    }
    RECT both{};
    IntersectRect(&both, &inner, &outer);
    EXPECT_TRUE(EqualRect(&both, &inner)) << control.name();
  });
}

// In fixed pitch, 34 characters.
void expectAnActivitysLineSeenWhole(Page& page) {
  page.bringForward(screen::kActivites);
  HWND window = page.windowOf(page.screen().activites.Lst_Activite);
  const Measure measure(window);
  RECT client{};
  GetClientRect(window, &client);
  EXPECT_LE(measure.of(std::string(34, 'M')).cx, client.right);
}

// Hosts differ in these.
class Layout : public testing::TestWithParam<std::tuple<int, unsigned>> {
 protected:
  static int points() { return std::get<0>(GetParam()); }
  static unsigned dpi() { return std::get<1>(GetParam()); }
};

TEST_P(Layout, NoTextIsCutNothingIsCoveredAndTheTabsAreOneLine) {
  Page page(ambienceOf(points(), dpi()));
  expectNoTextCut(page, static_cast<int>(dpi()));
  expectTabsInOneLine(page);
  expectNothingCovered(page);
  expectNothingOutside(page);
  expectAnActivitysLineSeenWhole(page);
}

TEST_P(Layout, TheNaturalSizeGrowsWithTheFont) {
  const toolkit::win32::Growth growth = toolkit::win32::growthOf(ambienceOf(points(), dpi()));
  EXPECT_EQ(growth.across, 1000 * points() / 8);
  EXPECT_EQ(growth.down, 1000 * points() / 8);
}

INSTANTIATE_TEST_SUITE_P(At, Layout,
                         testing::Combine(testing::Values(8, 9, 10, 11, 12),
                                          testing::Values(96U, 120U, 144U, 192U)),
                         [](const auto& given) {
                           return std::to_string(std::get<0>(given.param)) + "PointsAt" +
                                  std::to_string(std::get<1>(given.param));
                         });

// A face as wide as hosts of our day have it.
TEST(OtherFaces, NoTextIsCutInAWiderFace) {
  toolkit::win32::Ambience ambience = ambienceOf(9, 96);
  ambience.fontName = L"Liberation Sans";
  ambience.fontBold = true;
  Page page(ambience);
  page.each([&](Control& control) {
    if (control.kind() != Kind::Label || control.caption().empty()) return;
    HWND window = page.windowOf(control);
    const Measure measure(window);
    RECT client{};
    GetClientRect(window, &client);
    const SIZE needed = measure.of(control.caption(), client.right);
    EXPECT_LE(needed.cx, client.right) << control.name();
    EXPECT_LE(needed.cy, client.bottom) << control.name();
  });
}

// Room -------------------------------------------------------------------------------------------

bool has(HWND window, LONG bar) { return (GetWindowLongW(window, GWL_STYLE) & bar) != 0; }

TEST(Room, AllThatIsNeededTakesNoBars) {
  Page page(ambienceOf(8, 96));
  EXPECT_FALSE(has(page.windows().handle(), WS_HSCROLL));
  EXPECT_FALSE(has(page.windows().handle(), WS_VSCROLL));
}

TEST(Room, ATooNarrowContainerIsScrolledToTheButtonThatLeaves) {
  Page page(ambienceOf(8, 96), {700, 600});
  HWND window = page.windows().handle();
  EXPECT_TRUE(has(window, WS_HSCROLL));
  EXPECT_FALSE(has(window, WS_VSCROLL));
  RECT client{};
  GetClientRect(window, &client);
  EXPECT_GT(page.placeOf(page.screen().bar.Cmd_Sortir).right, client.right);
  SendMessageW(window, WM_HSCROLL, SB_BOTTOM, 0);
  EXPECT_LE(page.placeOf(page.screen().bar.Cmd_Sortir).right, client.right);
  SendMessageW(window, WM_HSCROLL, SB_TOP, 0);
  EXPECT_EQ(page.placeOf(page.screen().bar.Etq_CodOrgChg).left, 8);
}

TEST(Room, ATooLowOneHasTheWheel) {
  Page page(ambienceOf(8, 96), {800, 400});
  HWND window = page.windows().handle();
  EXPECT_TRUE(has(window, WS_VSCROLL));
  EXPECT_FALSE(has(window, WS_HSCROLL));
  const LONG before = page.placeOf(page.screen().bar.Cmd_Sortir).top;
  SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
  EXPECT_LT(page.placeOf(page.screen().bar.Cmd_Sortir).top, before);
}

TEST(Room, TheFocusIsScrolledIntoView) {
  Page page(ambienceOf(8, 96), {500, 300});
  page.windows().takeFocus();
  RECT client{};
  GetClientRect(page.windows().handle(), &client);
  for (Control* control : {static_cast<Control*>(&page.screen().bar.Cmd_Sortir),
                           static_cast<Control*>(&page.screen().coordonnees.Txt_InterlocFactOrgChg),
                           static_cast<Control*>(&page.screen().bar.Txt_CodOrgChg)}) {
    ASSERT_TRUE(page.surface().moveFocus(control));
    const RECT place = page.placeOf(*control);
    EXPECT_GE(place.left, 0) << control->name();
    EXPECT_GE(place.top, 0) << control->name();
    EXPECT_LE(place.left, client.right) << control->name();
    EXPECT_LE(place.bottom, client.bottom) << control->name();
  }
}

TEST(Room, TheFocusStaysInViewWhenTheRoomShrinks) {
  Page page(ambienceOf(8, 96));
  page.windows().takeFocus();
  ASSERT_TRUE(page.surface().moveFocus(&page.screen().coordonnees.Txt_InterlocFactOrgChg));
  page.windows().setPlace({0, 0, 500, 300});
  RECT client{};
  GetClientRect(page.windows().handle(), &client);
  const RECT place = page.placeOf(page.screen().coordonnees.Txt_InterlocFactOrgChg);
  EXPECT_GE(place.top, 0);
  EXPECT_LE(place.bottom, client.bottom);
}

TEST(Room, TheBarAndTheTabsStayAtTheTopOfMoreOfIt) {
  Page page(ambienceOf(8, 96));
  const RECT leave = page.placeOf(page.screen().bar.Cmd_Sortir);
  const RECT tabs = page.placeOf(page.screen().Ong_OrgPriseChg);
  page.windows().setPlace({0, 0, 1200, 900});
  const RECT leaveAfter = page.placeOf(page.screen().bar.Cmd_Sortir);
  const RECT tabsAfter = page.placeOf(page.screen().Ong_OrgPriseChg);
  EXPECT_TRUE(EqualRect(&leave, &leaveAfter));
  EXPECT_EQ(tabsAfter.top, tabs.top);
  EXPECT_EQ(tabsAfter.bottom, tabs.bottom + 350);
  EXPECT_FALSE(has(page.windows().handle(), WS_HSCROLL));
  EXPECT_FALSE(has(page.windows().handle(), WS_VSCROLL));
}

TEST(Room, WhatIsScrolledStaysInPlaceWhenTheRoomChanges) {
  Page page(ambienceOf(8, 96), {500, 300});
  HWND window = page.windows().handle();
  SendMessageW(window, WM_HSCROLL, SB_BOTTOM, 0);
  page.windows().setPlace({0, 0, 760, 550});
  EXPECT_FALSE(has(window, WS_HSCROLL));
  EXPECT_FALSE(has(window, WS_VSCROLL));
  EXPECT_EQ(page.placeOf(page.screen().bar.Etq_CodOrgChg).left, 8);
}

TEST(Room, MoreOfItMakesTheListsLonger) {
  Page page(ambienceOf(8, 96));
  const screen::Activites& activites = page.screen().activites;
  page.bringForward(screen::kActivites);
  const RECT before = page.placeOf(activites.Lst_Activite);
  page.windows().setPlace({0, 0, 760, 550 + 150});
  const RECT after = page.placeOf(activites.Lst_Activite);
  EXPECT_EQ(after.bottom - after.top, before.bottom - before.top + 150);
  RECT client{};
  GetClientRect(page.windows().handle(), &client);
  EXPECT_LE(page.placeOf(activites.Cdr_GestionExclu).bottom, client.bottom);
  page.windows().setPlace({0, 0, 760, 550});
  const RECT again = page.placeOf(activites.Lst_Activite);
  EXPECT_TRUE(EqualRect(&again, &before));
}

TEST(Room, ALargerFontNeedsMoreOfIt) {
  Page page(ambienceOf(8, 96));
  page.windows().setAmbience(ambienceOf(12, 96));
  EXPECT_TRUE(has(page.windows().handle(), WS_HSCROLL));
  EXPECT_TRUE(has(page.windows().handle(), WS_VSCROLL));
  page.windows().setPlace({0, 0, 1140, 825});
  EXPECT_FALSE(has(page.windows().handle(), WS_HSCROLL));
  EXPECT_FALSE(has(page.windows().handle(), WS_VSCROLL));
}

}  // namespace
}  // namespace look
