// Numbers stand under each other: in the columns of the tables, and in the zones below them.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <tuple>

#include "tests/windows/look/Page.h"

namespace look {
namespace {

using toolkit::ListBox;

// From the first to the last column of pixels, on screen, that is not of the ground.
struct Extent {
  int left = -1;
  int right = -1;
};

Extent inkOf(HWND window, int top, int bottom) {
  const Picture picture(window);
  const int middle = std::min((top + bottom) / 2, picture.height() - 1);
  const COLORREF ground = picture.at(picture.width() / 4, middle);
  POINT origin{};
  ClientToScreen(window, &origin);
  Extent ink;
  for (int x = 0; x < picture.width(); ++x) {
    for (int y = std::max(0, top); y < std::min(bottom, picture.height()); ++y) {
      if (picture.at(x, y) == ground) continue;
      if (ink.left < 0) ink.left = x + origin.x;
      ink.right = x + origin.x;
    }
  }
  return ink;
}

Extent inkOfLine(HWND list, int line) {
  RECT area{};
  SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&area));
  return inkOf(list, area.top, area.bottom);
}

RECT insideOf(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
  return area;
}

class Numbers : public testing::TestWithParam<std::tuple<int, unsigned>> {
 protected:
  Numbers() : page(ambienceOf(std::get<0>(GetParam()), std::get<1>(GetParam()))) {
    page.bringForward(screen::kPriseEnCharge);
  }
  screen::PriseEnCharge& prise() { return page.screen().priseEnCharge; }
  void fill(ListBox& list, const std::vector<const char*>& lines) {
    for (const char* line : lines) list.addItem(line);
    page.pump();
  }

  Page page;
};

INSTANTIATE_TEST_SUITE_P(At, Numbers,
                         testing::Combine(testing::Values(8, 9),
                                          testing::Values(96U, 120U, 144U, 192U)),
                         [](const auto& given) {
                           return std::to_string(std::get<0>(given.param)) + "PointsAt" +
                                  std::to_string(std::get<1>(given.param));
                         });

TEST_P(Numbers, EndWhereThoseBelowAndInTheZoneEnd) {
  fill(prise().Lst_TxRembOrgChg, {"2,22", "122,22"});
  prise().Txt_TxRembOrgChg.setText("22,22");
  page.pump();
  HWND list = page.windowOf(prise().Lst_TxRembOrgChg);
  const Extent first = inkOfLine(list, 0);
  const Extent second = inkOfLine(list, 1);
  EXPECT_EQ(first.right, second.right);
  EXPECT_GT(first.left, second.left);
  EXPECT_GT(first.left, (insideOf(list).left + insideOf(list).right) / 2);
  HWND zone = page.windowOf(prise().Txt_TxRembOrgChg);
  const Picture whole(zone);
  const Extent typed = inkOf(zone, 2, whole.height() - 2);
  EXPECT_NEAR(typed.right, first.right, 3);
}

TEST_P(Numbers, StandInLinesAsHighAsTheDatesBeside) {
  HWND dates = page.windowOf(prise().Lst_DateRembOrgChg);
  HWND rates = page.windowOf(prise().Lst_TxRembOrgChg);
  EXPECT_EQ(SendMessageW(dates, LB_GETITEMHEIGHT, 0, 0),
            SendMessageW(rates, LB_GETITEMHEIGHT, 0, 0));
  EXPECT_EQ(prise().Lst_DateRembOrgChg.linesInView(), prise().Lst_TxRembOrgChg.linesInView());
  EXPECT_EQ(SendMessageW(dates, WM_GETFONT, 0, 0), SendMessageW(rates, WM_GETFONT, 0, 0));
  EXPECT_EQ(SendMessageW(page.windowOf(prise().Txt_TxRembOrgChg), WM_GETFONT, 0, 0),
            SendMessageW(rates, WM_GETFONT, 0, 0));
}

TEST_P(Numbers, KeepTheirStringsInTheWindow) {
  fill(prise().Lst_TxRembOrgChg, {"2,22", ""});
  HWND list = page.windowOf(prise().Lst_TxRembOrgChg);
  wchar_t text[16] = L"?";
  EXPECT_EQ(SendMessageW(list, LB_GETTEXT, 0, reinterpret_cast<LPARAM>(text)), 4);
  EXPECT_STREQ(text, L"2,22");
  EXPECT_EQ(SendMessageW(list, LB_GETTEXTLEN, 1, 0), 0);
}

TEST_P(Numbers, StayLeftOfTheBarThatStandsOverTheirList) {
  fill(prise().Lst_PrestServOrgChg, std::vector<const char*>(14, "2,22"));
  toolkit::Place wide = prise().Lst_PrestServOrgChg.place();
  HWND list = page.windowOf(prise().Lst_PrestServOrgChg);
  const Extent before = inkOfLine(list, 3);
  wide.width = 1215;
  prise().Lst_PrestServOrgChg.setPlace(wide);
  prise().Bdv_TauxOrgChg.setRange(0, 13);
  prise().Bdv_TauxOrgChg.setVisible(true);
  page.pump();
  POINT bar{};
  ClientToScreen(page.windowOf(prise().Bdv_TauxOrgChg), &bar);
  const Picture shown(list);
  RECT line{};
  SendMessageW(list, LB_GETITEMRECT, 3, reinterpret_cast<LPARAM>(&line));
  POINT origin{};
  ClientToScreen(list, &origin);
  Extent ink;
  const COLORREF ground = shown.at(2, line.top + 1);
  for (int x = 0; x + origin.x < bar.x; ++x) {
    for (int y = line.top; y < line.bottom; ++y) {
      if (shown.at(x, y) == ground) continue;
      if (ink.left < 0) ink.left = x + origin.x;
      ink.right = x + origin.x;
    }
  }
  EXPECT_LT(ink.right, bar.x - 1);
  const int apart = 3 * static_cast<int>(std::get<1>(GetParam())) / 96;
  EXPECT_LE(std::abs(ink.left - before.left), apart);
  EXPECT_LE(std::abs(ink.right - before.right), apart);
}

TEST_P(Numbers, OneThatHasNoRoomIsSeenToBeCut) {
  fill(prise().Lst_PrestServOrgChg, {"11111111111111111111111", "1"});
  HWND list = page.windowOf(prise().Lst_PrestServOrgChg);
  const RECT inside = insideOf(list);
  const Extent cut = inkOfLine(list, 0);
  EXPECT_LT(cut.left, inside.left + 12 * static_cast<int>(std::get<1>(GetParam())) / 96);
  EXPECT_LT(cut.right, inside.right);
  EXPECT_GT(inkOfLine(list, 1).left, (inside.left + inside.right) / 2);
}

TEST_P(Numbers, OfTheSelectedRowStandOnTheSystemsHighlight) {
  fill(prise().Lst_DateRembOrgChg, {"01/01/2026", "01/01/2025"});
  fill(prise().Lst_TxRembOrgChg, {"2,22", "3,33"});
  for (ListBox* list : {&prise().Lst_DateRembOrgChg, &prise().Lst_TxRembOrgChg}) {
    list->setListIndex(1);
    page.pump();
    const Picture shown(page.windowOf(*list));
    RECT line{};
    SendMessageW(page.windowOf(*list), LB_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&line));
    EXPECT_EQ(shown.at(line.right - 2, line.bottom - 2), GetSysColor(COLOR_HIGHLIGHT))
        << list->name();
    EXPECT_EQ(shown.at(line.right - 2, line.top - 2), GetSysColor(COLOR_WINDOW)) << list->name();
  }
}

TEST_P(Numbers, OfADisabledListAreGray) {
  fill(prise().Lst_TxRembOrgChg, {"2,22"});
  const auto has = [&](COLORREF color) {
    const Picture shown(page.windowOf(prise().Lst_TxRembOrgChg));
    for (int y = 0; y < shown.height(); ++y) {
      for (int x = 0; x < shown.width(); ++x) {
        if (shown.at(x, y) == color) return true;
      }
    }
    return false;
  };
  EXPECT_TRUE(has(GetSysColor(COLOR_WINDOWTEXT)));
  prise().Cdr_TauxOrgChg.setEnabled(false);
  page.pump();
  EXPECT_TRUE(has(GetSysColor(COLOR_GRAYTEXT)));
  EXPECT_FALSE(has(GetSysColor(COLOR_WINDOWTEXT)));
}

}  // namespace
}  // namespace look
