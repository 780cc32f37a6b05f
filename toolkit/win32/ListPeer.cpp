#include "toolkit/win32/ListPeer.h"

#include <algorithm>
#include <utility>

#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

bool changesLines(UINT message) {
  return message == LB_ADDSTRING || message == LB_INSERTSTRING || message == LB_DELETESTRING ||
         message == LB_RESETCONTENT || message == LB_DIR || message == LB_ADDFILE ||
         message == LB_SETCOUNT;
}

constexpr int kSideMargin = 3;  // pixels at 96 dpi, as a field keeps beside its text

}  // namespace

ControlPeer::Blueprint ListPeer::blueprint() const {
  const DWORD selection = extended() ? LBS_EXTENDEDSEL : 0;
  const DWORD scroll = list_.scrollBar() ? WS_VSCROLL : 0;
  // The system writes every line on the left. With its strings kept in the window, what reads
  // windows reads them there.
  const DWORD drawing = list_.rightAligned() ? LBS_OWNERDRAWFIXED | LBS_HASSTRINGS : 0;
  return {L"LISTBOX", WS_TABSTOP | scroll | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | selection | drawing,
          WS_EX_CLIENTEDGE};
}

void ListPeer::applyPlace() {
  ControlPeer::applyPlace();
  countLines();
}

void ListPeer::applyFont() {
  ControlPeer::applyFont();
  fitLines();
  countLines();
}

// As high as in the lists beside it that the system draws.
void ListPeer::fitLines() {
  if (!list_.rightAligned()) return;
  TEXTMETRICW metrics{};
  HDC context = GetDC(window());
  {
    const Selected font(context, host().font(list_.font()));
    GetTextMetricsW(context, &metrics);
  }
  ReleaseDC(window(), context);
  if (metrics.tmHeight > 0) pass(LB_SETITEMHEIGHT, 0, metrics.tmHeight);
}

void ListPeer::countLines() {
  RECT client{};
  GetClientRect(window(), &client);
  const auto height = static_cast<LONG>(pass(LB_GETITEMHEIGHT));
  if (height > 0) list_.setLinesInView(std::max(1, static_cast<int>(client.bottom / height)));
}

bool ListPeer::holdsTheLines() { return pass(LB_GETCOUNT) == list_.listCount(); }

void ListPeer::copy(Aspect what) {
  switch (what) {
    case Aspect::Items:
      flushLater(itemsChanged_);
      break;
    case Aspect::Selection:
      flushLater(selectionChanged_);
      break;
    case Aspect::Value:
      if (itemsChanged_ || selectionChanged_) {
        topChanged_ = true;  // a line that becomes the selected one scrolls the window
      } else {
        copyTop();
      }
      break;
    default:
      break;
  }
}

// At the latest when the window paints itself.
void ListPeer::flushLater(bool& changed) {
  if (changed) return;
  changed = true;
  InvalidateRect(window(), nullptr, FALSE);
}

void ListPeer::flush() {
  if (!copying() && !holdsTheLines()) itemsChanged_ = true;
  if ((!itemsChanged_ && !selectionChanged_) || copying()) return;
  const bool refill = std::exchange(itemsChanged_, false);
  const bool scroll = std::exchange(topChanged_, false) || refill;
  selectionChanged_ = false;
  const Copying quiet(*this);
  const bool visible = (GetWindowLongW(window(), GWL_STYLE) & WS_VISIBLE) != 0;
  if (visible) pass(WM_SETREDRAW, FALSE);
  if (refill) fill();
  copySelection();
  if (scroll) copyTop();
  if (!visible) return;
  pass(WM_SETREDRAW, TRUE);
  InvalidateRect(window(), nullptr, refill ? TRUE : FALSE);
}

void ListPeer::fill() {
  pass(LB_RESETCONTENT);
  pass(LB_INITSTORAGE, static_cast<WPARAM>(list_.listCount()), LPARAM{32} * list_.listCount());
  for (const ListItem& item : list_.items().all()) {
    pass(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide(item.text).c_str()));
  }
}

std::vector<int> ListPeer::selectedLines() {
  std::vector<int> lines(static_cast<std::size_t>(std::max<LRESULT>(0, pass(LB_GETSELCOUNT))));
  if (!lines.empty()) pass(LB_GETSELITEMS, lines.size(), reinterpret_cast<LPARAM>(lines.data()));
  std::erase_if(lines, [this](int line) { return !list_.items().has(line); });
  return lines;
}

void ListPeer::selectRange(int first, int last, bool selected) {
  if (first == last) {
    pass(LB_SETSEL, selected ? 1 : 0, first);
  } else {
    // The ends the other way round deselect.
    pass(LB_SELITEMRANGEEX, static_cast<WPARAM>(selected ? first : last), selected ? last : first);
  }
}

void ListPeer::copySelection() {
  if (!extended()) {
    if (static_cast<int>(pass(LB_GETCURSEL)) != list_.listIndex()) {
      pass(LB_SETCURSEL, static_cast<WPARAM>(list_.listIndex()));
    }
    return;
  }
  std::vector<char> shown(static_cast<std::size_t>(list_.listCount()), 0);
  for (const int line : selectedLines()) shown[static_cast<std::size_t>(line)] = 1;
  const auto differs = [&](int line) {
    return (shown[static_cast<std::size_t>(line)] != 0) != list_.selected(line);
  };
  for (int line = 0; line < list_.listCount(); ++line) {
    if (!differs(line)) continue;
    const int first = line;
    const bool selected = list_.selected(first);
    while (line + 1 < list_.listCount() && list_.selected(line + 1) == selected &&
           differs(line + 1))
      ++line;
    selectRange(first, line, selected);
  }
  if (list_.listIndex() >= 0 && pass(LB_GETCARETINDEX) != list_.listIndex()) {
    pass(LB_SETCARETINDEX, static_cast<WPARAM>(list_.listIndex()), FALSE);
  }
}

void ListPeer::copyTop() {
  if (static_cast<int>(pass(LB_GETTOPINDEX)) == list_.topIndex()) return;
  pass(LB_SETTOPINDEX, static_cast<WPARAM>(list_.topIndex()));
}

void ListPeer::commanded(WORD code) {
  if (copying()) return;
  if (!itemsChanged_ && !holdsTheLines()) {
    flushLater(itemsChanged_);
    return;
  }
  if (code == LBN_DBLCLK) {
    const auto line = static_cast<int>(pass(extended() ? LB_GETCARETINDEX : LB_GETCURSEL));
    host().note(*this, Host::Merge::No, [this, line] { list_.userDblClick(line); });
  } else if (code == LBN_SELCHANGE && extended()) {
    const auto line = static_cast<int>(pass(LB_GETCARETINDEX));
    host().note(*this, Host::Merge::Yes,
                [this, line, lines = selectedLines()] { list_.userSelect(line, lines); });
  } else if (code == LBN_SELCHANGE) {
    const auto line = static_cast<int>(pass(LB_GETCURSEL));
    if (line < 0 || line == list_.listIndex()) return;
    host().note(*this, Host::Merge::Yes, [this, line] { list_.userSelect(line); });
  }
}

COLORREF ListPeer::textColor() const {
  if (!windowEnabled()) return GetSysColor(COLOR_GRAYTEXT);
  if (list_.color() == kBlack) return GetSysColor(COLOR_WINDOWTEXT);
  return host().palette().field(list_.color());
}

// A number that has no room is seen to be cut: what is left of it would be another number.
void ListPeer::drawItem(const DRAWITEMSTRUCT& item) {
  const auto line = static_cast<int>(item.itemID);
  if (!list_.items().has(line)) return;
  beginLine(item, textColor());
  const int margin = host().scale().ofPixelsAt96(kSideMargin);
  RECT area = item.rcItem;
  area.left += margin;
  area.right -= margin + host().scale().across(list_.covered());
  const std::wstring text = wide(list_.list(line));
  const Selected font(item.hDC, host().font(list_.font()));
  RECT needed{};
  constexpr UINT kHow = DT_SINGLELINE | DT_NOPREFIX;
  DrawTextW(item.hDC, text.c_str(), -1, &needed, kHow | DT_CALCRECT);
  const bool fits = needed.right <= area.right - area.left;
  DrawTextW(item.hDC, text.c_str(), -1, &area, kHow | (fits ? DT_RIGHT : DT_END_ELLIPSIS));
  endLine(item);
}

HBRUSH ListPeer::colors(HDC context, UINT) {
  if (list_.color() == kBlack) return nullptr;
  SetTextColor(context, host().palette().field(list_.color()));
  SetBkColor(context, GetSysColor(COLOR_WINDOW));
  return GetSysColorBrush(COLOR_WINDOW);
}

// Scrolling is not notified: what the message has moved is read afterwards.
LRESULT ListPeer::message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  flush();
  const LRESULT before = pass(LB_GETTOPINDEX);
  const LRESULT result = ControlPeer::message(window, message, wParam, lParam);
  if (attached() && changesLines(message)) flushLater(itemsChanged_);
  if (!attached() || copying() || itemsChanged_) return result;
  const LRESULT after = pass(LB_GETTOPINDEX);
  if (after != before) {
    list_.setTopIndex(static_cast<int>(after));
    host().note(*this, Host::Merge::Yes, [this] { list_.userScroll(list_.topIndex()); });
  }
  return result;
}

// The window tells of a double-click on any part of it.
LRESULT ListPeer::pressed(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_LBUTTONDBLCLK) {
    flush();
    if (lineAt(lParam) < 0) return 0;
  }
  return ControlPeer::pressed(window, message, wParam, lParam);
}

int ListPeer::lineAt(LPARAM position) {
  const int nearest = LOWORD(pass(LB_ITEMFROMPOINT, 0, position));
  RECT area{};
  if (!list_.items().has(nearest) || pass(LB_GETITEMRECT, static_cast<WPARAM>(nearest),
                                          reinterpret_cast<LPARAM>(&area)) == LB_ERR) {
    return -1;
  }
  const POINT at{static_cast<short>(LOWORD(position)), static_cast<short>(HIWORD(position))};
  return PtInRect(&area, at) ? nearest : -1;
}

}  // namespace toolkit::win32
