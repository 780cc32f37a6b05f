#include "toolkit/win32/SurfaceScroll.h"

#include <algorithm>

#include "toolkit/win32/Scale.h"

namespace toolkit::win32 {

namespace {

constexpr int kLine = 28;  // pixels at 96 dpi, from field to field

int lineOf(HWND window) { return MulDiv(kLine, static_cast<int>(dpiOf(window)), 96); }

// A bar with a range that is all in view is hidden by the system.
void setBar(HWND window, int bar, LONG content, LONG room, LONG position) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = content > room ? static_cast<int>(content) - 1 : 0;
  info.nPage = content > room ? static_cast<UINT>(room) : 1U;
  info.nPos = position;
  SetScrollInfo(window, bar, &info, TRUE);
}

// Of hundredths of millimetres, in which hosts are told the natural size, a pixel may get lost.
LONG forgiven(LONG content, LONG room) { return content == room + 1 ? room : content; }

// How far to go from where a stretch of the view begins.
LONG missing(LONG from, LONG to, LONG room) {
  if (from < 0 || to - from > room) return from;
  return std::max(0L, to - room);
}

}  // namespace

void SurfaceScroll::fit(HWND window, SIZE content) {
  RECT outer{};
  GetWindowRect(window, &outer);
  room_ = {outer.right - outer.left, outer.bottom - outer.top};
  content = {forgiven(content.cx, room_.cx), forgiven(content.cy, room_.cy)};
  content_ = content;
  const unsigned dpi = dpiOf(window);
  const bool across = content.cx > room_.cx;
  if (across) room_.cy -= metricOf(SM_CYHSCROLL, dpi);
  const bool down = content.cy > room_.cy;
  if (down) room_.cx -= metricOf(SM_CXVSCROLL, dpi);
  if (!across && content.cx > room_.cx) room_.cy -= metricOf(SM_CYHSCROLL, dpi);
  room_ = {std::max(1L, room_.cx), std::max(1L, room_.cy)};
  origin_ = {std::clamp(origin_.x, 0L, std::max(0L, content.cx - room_.cx)),
             std::clamp(origin_.y, 0L, std::max(0L, content.cy - room_.cy))};
  setBar(window, SB_HORZ, content.cx, room_.cx, origin_.x);
  setBar(window, SB_VERT, content.cy, room_.cy, origin_.y);
}

void SurfaceScroll::scrollTo(HWND window, POINT origin) {
  const POINT to{std::clamp(origin.x, 0L, std::max(0L, content_.cx - room_.cx)),
                 std::clamp(origin.y, 0L, std::max(0L, content_.cy - room_.cy))};
  const POINT by{origin_.x - to.x, origin_.y - to.y};
  if (by.x == 0 && by.y == 0) return;
  origin_ = to;
  setBar(window, SB_HORZ, content_.cx, room_.cx, origin_.x);
  setBar(window, SB_VERT, content_.cy, room_.cy, origin_.y);
  ScrollWindowEx(window, by.x, by.y, nullptr, nullptr, nullptr, nullptr,
                 SW_SCROLLCHILDREN | SW_INVALIDATE | SW_ERASE);
  UpdateWindow(window);
}

int SurfaceScroll::after(HWND window, int bar, WORD code, int line) const {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  GetScrollInfo(window, bar, &info);
  switch (code) {
    case SB_LINEUP:
      return info.nPos - line;
    case SB_LINEDOWN:
      return info.nPos + line;
    case SB_PAGEUP:
      return info.nPos - static_cast<int>(info.nPage);
    case SB_PAGEDOWN:
      return info.nPos + static_cast<int>(info.nPage);
    case SB_TOP:
      return info.nMin;
    case SB_BOTTOM:
      return info.nMax;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      return info.nTrackPos;
    default:
      return info.nPos;
  }
}

std::optional<LRESULT> SurfaceScroll::message(HWND window, UINT message, WPARAM wParam,
                                              LPARAM lParam) {
  if (!active()) return std::nullopt;
  if (message == WM_HSCROLL && lParam == 0) {
    scrollTo(window, {after(window, SB_HORZ, LOWORD(wParam), lineOf(window)), origin_.y});
    return 0;
  }
  if (message == WM_VSCROLL && lParam == 0) {
    scrollTo(window, {origin_.x, after(window, SB_VERT, LOWORD(wParam), lineOf(window))});
    return 0;
  }
  if (message != WM_MOUSEWHEEL || content_.cy <= room_.cy) return std::nullopt;
  constexpr int kLinesANotch = 3;
  wheel_ += static_cast<short>(HIWORD(wParam)) * kLinesANotch;
  const int lines = wheel_ / WHEEL_DELTA;
  wheel_ -= lines * WHEEL_DELTA;
  scrollTo(window, {origin_.x, origin_.y - lines * lineOf(window)});
  return 0;
}

void SurfaceScroll::reveal(HWND window, HWND inside) {
  if (!active() || inside == window) return;
  RECT area{};
  GetWindowRect(inside, &area);
  MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&area), 2);
  scrollTo(window, {origin_.x + missing(area.left, area.right, room_.cx),
                    origin_.y + missing(area.top, area.bottom, room_.cy)});
}

}  // namespace toolkit::win32
