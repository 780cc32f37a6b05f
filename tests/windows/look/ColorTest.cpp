// Everything can be read, in whatever colours hosts and users have.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "tests/windows/look/Page.h"
#include "toolkit/Contrast.h"
#include "toolkit/win32/ChoicePeer.h"
#include "toolkit/win32/Palette.h"

// After windows.h.
#include <commctrl.h>

namespace look {
namespace {

using toolkit::Control;
using toolkit::Kind;
using toolkit::win32::Ambience;
using toolkit::win32::colorOf;

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);

// The system's colours while it lives.
class SystemColors {
 public:
  explicit SystemColors(const std::map<int, COLORREF>& colors) {
    for (const auto& [index, color] : colors) {
      indexes_.push_back(index);
      before_.push_back(GetSysColor(index));
    }
    for (const auto& [index, color] : colors) SetSysColors(1, &index, &color);
  }
  SystemColors(const SystemColors&) = delete;
  SystemColors& operator=(const SystemColors&) = delete;
  ~SystemColors() {
    SetSysColors(static_cast<int>(indexes_.size()), indexes_.data(), before_.data());
  }

 private:
  std::vector<int> indexes_;
  std::vector<COLORREF> before_;
};

std::map<int, COLORREF> highContrast(COLORREF ground, COLORREF text, COLORREF gray) {
  std::map<int, COLORREF> colors;
  for (const int index : {COLOR_BTNFACE, COLOR_WINDOW, COLOR_SCROLLBAR, COLOR_MENU, COLOR_BTNSHADOW,
                          COLOR_INACTIVEBORDER, COLOR_3DLIGHT}) {
    colors[index] = ground;
  }
  for (const int index : {COLOR_BTNTEXT, COLOR_WINDOWTEXT, COLOR_MENUTEXT, COLOR_WINDOWFRAME,
                          COLOR_BTNHIGHLIGHT, COLOR_3DDKSHADOW}) {
    colors[index] = text;
  }
  colors[COLOR_GRAYTEXT] = gray;
  return colors;
}

std::map<int, COLORREF> highContrastBlack() {
  return highContrast(kBlack, kWhite, RGB(0x3F, 0xF2, 0x3F));
}
std::map<int, COLORREF> highContrastWhite() {
  return highContrast(kWhite, kBlack, RGB(0x60, 0, 0));
}

// Where a control's text is, in pixels of its window.
RECT textAreaOf(HWND window, Kind kind) {
  RECT area{};
  GetClientRect(window, &area);
  if (kind == Kind::OptionButton || kind == Kind::CheckBox) {
    area.left += toolkit::win32::captionLeft(96);
  }
  if (kind == Kind::Frame) {
    area = {10, 2, std::min<LONG>(area.right, 40), 12};
  }
  return area;
}

// What is there most is the ground; the text is what differs most from it.
double contrastIn(const Picture& picture, const RECT& area) {
  std::map<COLORREF, int> counts;
  for (LONG y = area.top; y < area.bottom; ++y) {
    for (LONG x = area.left; x < area.right; ++x) ++counts[picture.at(x, y)];
  }
  const auto ground =
      std::max_element(counts.begin(), counts.end(),
                       [](const auto& a, const auto& b) { return a.second < b.second; });
  double most = 1;
  for (const auto& [color, count] : counts) {
    most = std::max(most, toolkit::contrast(colorOf(color), colorOf(ground->first)));
  }
  return most;
}

// The ground of the surface, of its pages and of what is on them is one.
void expectOneGround(Page& page, const Ambience& ambience) {
  const COLORREF ground = toolkit::win32::Palette(ambience).back();
  const Picture surface(page.windows().handle());
  EXPECT_EQ(surface.at(1, 1), ground);
  EXPECT_EQ(surface.at(surface.width() - 2, surface.height() - 2), ground);
  const Picture tab(page.windowOf(page.screen().Ong_OrgPriseChg.page(0)));
  EXPECT_EQ(tab.at(1, 1), ground);
  EXPECT_EQ(Picture(page.windowOf(page.screen().bar.Etq_CodOrgChg)).at(0, 0), ground);
}

void expectTabsReadable(Page& page) {
  toolkit::SSTab& tabs = page.screen().Ong_OrgPriseChg;
  HWND window = page.windowOf(tabs);
  const Picture picture(window);
  for (int tab = 0; tab < tabs.tabs(); ++tab) {
    RECT item{};
    SendMessageW(window, TCM_GETITEMRECT, static_cast<WPARAM>(tab),
                 reinterpret_cast<LPARAM>(&item));
    InflateRect(&item, -3, -3);
    const double least = tabs.tabEnabled(tab) ? toolkit::kReadable : toolkit::kDiscernible;
    EXPECT_GE(contrastIn(picture, item), least) << tabs.page(tab).caption();
  }
}

void expectAllReadable(Page& page) {
  int seen = 0;
  page.each([&](Control& control) {
    const Kind kind = control.kind();
    const bool text = kind == Kind::Label || kind == Kind::Frame || kind == Kind::OptionButton ||
                      kind == Kind::CheckBox;
    if (!text || control.caption().empty() || !control.shown()) return;
    HWND window = page.windowOf(control);
    const double least = control.reachable() ? toolkit::kReadable : toolkit::kDiscernible;
    EXPECT_GE(contrastIn(Picture(window), textAreaOf(window, kind)), least) << control.name();
    ++seen;
  });
  EXPECT_GT(seen, 60);
  expectTabsReadable(page);
}

// Every other control is disabled, and a tab.
void disableSome(Page& page) {
  bool disable = false;
  page.each([&](Control& control) {
    if (control.kind() == Kind::SSTab) return;
    disable = !disable;
    if (disable) control.setEnabled(false);
  });
  page.screen().Ong_OrgPriseChg.setTabEnabled(screen::kActivites, false);
}

void expectReadableLiveAndDisabled(const Ambience& ambience) {
  Page page(ambience);
  expectOneGround(page, ambience);
  expectAllReadable(page);
  disableSome(page);
  expectAllReadable(page);
}

// Of a combo, its field alone.
HWND writtenIn(HWND window) {
  HWND field = FindWindowExW(window, nullptr, L"Edit", nullptr);
  return field ? field : window;
}

// In all fields, options and checks there is something to read, and nothing to change.
void expectReadOnlyReadable(const Ambience& ambience) {
  Page page(ambience);
  const COLORREF ground = toolkit::win32::Palette(ambience).back();
  int seen = 0;
  page.each([&](Control& control) {
    if (auto* box = dynamic_cast<toolkit::TextBox*>(&control)) box->setText("0123456789 MONTAUBAN");
    if (auto* combo = dynamic_cast<toolkit::ComboBox*>(&control)) combo->setText("MONTAUBAN");
    if (auto* option = dynamic_cast<toolkit::OptionButton*>(&control)) option->setValue(true);
    control.setReadOnly(true);
    page.pump();
    const bool field = control.kind() == Kind::TextBox || control.kind() == Kind::ComboBox;
    const bool onPage = control.parent()->kind() != Kind::Surface;  // the bar's are never so
    if (!field || !onPage || !control.shown()) return;
    const Picture picture(writtenIn(page.windowOf(control)));
    const RECT area{0, 0, picture.width(), picture.height()};
    EXPECT_GE(contrastIn(picture, area), toolkit::kReadable) << control.name();
    EXPECT_EQ(picture.at(picture.width() - 1, 0), ground) << control.name();
    ++seen;
  });
  EXPECT_GT(seen, 40);
  expectAllReadable(page);
}

TEST(Colors, WhatIsReadOnlyIsReadable) {
  expectReadOnlyReadable(ambienceOf(8, 96));
  Ambience dark = ambienceOf(8, 96);
  dark.backColor = RGB(0x20, 0x20, 0x20);
  expectReadOnlyReadable(dark);
}

TEST(Colors, WhatIsReadOnlyIsReadableUnderHighContrast) {
  {
    const SystemColors scheme(highContrastBlack());
    expectReadOnlyReadable(ambienceOf(8, 96));
  }
  const SystemColors scheme(highContrastWhite());
  expectReadOnlyReadable(ambienceOf(8, 96));
}

void expectSame(const Picture& one, const Picture& other) {
  ASSERT_EQ(one.width(), other.width());
  ASSERT_EQ(one.height(), other.height());
  int different = 0;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) different += one.at(x, y) == other.at(x, y) ? 0 : 1;
  }
  EXPECT_EQ(different, 0);
}

TEST(Colors, APaleButtonIsPaintedAsADisabledOneAndClickedAsALiveOne) {
  Page page(ambienceOf(8, 96));
  toolkit::CommandButton& button = page.screen().bar.Cmd_Ajouter;
  int clicks = 0;
  button.onClick = [&clicks] { ++clicks; };
  HWND window = page.windowOf(button);
  button.setPale(true);
  page.pump();
  const Picture pale(window);
  EXPECT_NE(IsWindowEnabled(window), FALSE);
  SendMessageW(window, BM_CLICK, 0, 0);
  page.pump();
  EXPECT_EQ(clicks, 1);
  button.setPale(false);
  button.setEnabled(false);
  page.pump();
  expectSame(pale, Picture(window));
}

TEST(Colors, APaleFieldStandsOnTheGroundOfTheForm) {
  for (const COLORREF back : {RGB(0xF0, 0xF0, 0xF0), RGB(0x20, 0x20, 0x20)}) {
    Ambience ambience = ambienceOf(8, 96);
    ambience.backColor = back;
    Page page(ambience);
    screen::CommandBar& bar = page.screen().bar;
    bar.Txt_CodOrgChg.setText("010");
    bar.Cbo_SigleOrgChg.setText("CAF");
    for (Control* field :
         std::initializer_list<Control*>{&bar.Txt_CodOrgChg, &bar.Cbo_SigleOrgChg}) {
      HWND window = writtenIn(page.windowOf(*field));
      page.pump();
      const Picture live(window);
      field->setPale(true);
      page.pump();
      const Picture picture(window);
      EXPECT_EQ(picture.at(picture.width() - 1, 0), back) << field->name();
      EXPECT_GE(contrastIn(picture, {0, 0, picture.width(), picture.height()}),
                toolkit::kDiscernible)
          << field->name();
      field->setPale(false);
      page.pump();
      expectSame(live, Picture(window));
    }
  }
}

TEST(Colors, TheSystemsOwnAreReadable) { expectReadableLiveAndDisabled(ambienceOf(8, 96)); }

TEST(Colors, HighContrastBlackIsReadable) {
  const SystemColors scheme(highContrastBlack());
  expectReadableLiveAndDisabled(ambienceOf(8, 96));
}

TEST(Colors, HighContrastWhiteIsReadable) {
  const SystemColors scheme(highContrastWhite());
  expectReadableLiveAndDisabled(ambienceOf(8, 96));
}

TEST(Colors, ADarkFormIsReadableWithAndWithoutATextColourOfItsOwn) {
  Ambience ambience = ambienceOf(8, 96);
  ambience.backColor = RGB(0x20, 0x20, 0x20);
  expectReadableLiveAndDisabled(ambience);
  ambience.foreColor = RGB(0xE0, 0xE0, 0xE0);
  expectReadableLiveAndDisabled(ambience);
}

TEST(Colors, AHostsLightFormIsReadableUnderHighContrastBlack) {
  const SystemColors scheme(highContrastBlack());
  Ambience ambience = ambienceOf(8, 96);
  ambience.backColor = RGB(0xF0, 0xF0, 0xF0);
  expectReadableLiveAndDisabled(ambience);
}

TEST(Colors, AreThoseOfTheMomentWhenTheSystemsChange) {
  Page page(ambienceOf(8, 96));
  expectAllReadable(page);
  HWND label = page.windowOf(page.screen().bar.Etq_CodOrgChg);
  {
    const SystemColors scheme(highContrastBlack());
    page.pump();
    expectAllReadable(page);
    EXPECT_EQ(Picture(label).at(0, 0), kBlack);
  }
  const SystemColors scheme(highContrastWhite());
  page.pump();
  expectAllReadable(page);
  EXPECT_EQ(Picture(label).at(0, 0), kWhite);
}

// Of a host that tells its controls, and of one that does not.
TEST(Colors, AllIsPaintedAgainWhenTheSystemsOrTheThemeChange) {
  Page page(ambienceOf(8, 96));
  HWND label = page.windowOf(page.screen().bar.Etq_CodOrgChg);
  for (const UINT message : {UINT{WM_SYSCOLORCHANGE}, UINT{WM_THEMECHANGED}}) {
    UpdateWindow(label);
    ValidateRect(label, nullptr);
    ASSERT_FALSE(GetUpdateRect(label, nullptr, FALSE));
    SendMessageW(page.windows().handle(), message, 0, 0);
    EXPECT_TRUE(GetUpdateRect(label, nullptr, FALSE)) << message;
  }
}

TEST(Colors, AHostsColoursAreUsedFromTheMomentThatItGivesThem) {
  Page page(ambienceOf(8, 96));
  Ambience ambience = ambienceOf(8, 96);
  ambience.backColor = RGB(0, 0, 0x60);
  ambience.foreColor = RGB(255, 255, 0);
  page.windows().setAmbience(ambience);
  page.pump();
  const Picture label(page.windowOf(page.screen().bar.Etq_CodOrgChg));
  EXPECT_EQ(label.at(0, 0), RGB(0, 0, 0x60));
  bool yellow = false;
  for (int y = 0; y < label.height(); ++y) {
    for (int x = 0; x < label.width(); ++x) yellow |= label.at(x, y) == RGB(255, 255, 0);
  }
  EXPECT_TRUE(yellow);
  expectAllReadable(page);
}

TEST(Colors, AWarningStaysReadableAndColoured) {
  for (const COLORREF ground : {kWhite, RGB(0xF0, 0xF0, 0xF0), RGB(0x20, 0x20, 0x20), kBlack}) {
    Ambience ambience = ambienceOf(8, 96);
    ambience.backColor = ground;
    const COLORREF text = toolkit::win32::Palette(ambience).text(toolkit::kRed, true);
    EXPECT_GE(toolkit::contrast(colorOf(text), colorOf(ground)), toolkit::kReadable);
    EXPECT_GT(GetRValue(text), GetGValue(text) + 64);
  }
}

}  // namespace
}  // namespace look
