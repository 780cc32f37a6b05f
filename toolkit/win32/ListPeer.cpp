#include "toolkit/win32/ListPeer.h"

#include <algorithm>

#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

ControlPeer::Blueprint ListPeer::blueprint() const {
  const DWORD selection = extended() ? LBS_EXTENDEDSEL : 0;
  return {L"LISTBOX", WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | selection,
          WS_EX_CLIENTEDGE};
}

void ListPeer::copy(Aspect what) {
  switch (what) {
    case Aspect::Items:
      itemsChanged_ = true;
      InvalidateRect(window(), nullptr, FALSE);
      break;
    case Aspect::Selection:
      if (!itemsChanged_) copySelection();
      break;
    case Aspect::Value:
      if (!itemsChanged_) copyTop();
      break;
    default:
      break;
  }
}

void ListPeer::flush() {
  if (!itemsChanged_ || copying()) return;
  itemsChanged_ = false;
  const Copying quiet(*this);
  const bool visible = (GetWindowLongW(window(), GWL_STYLE) & WS_VISIBLE) != 0;
  if (visible) pass(WM_SETREDRAW, FALSE);
  fill();
  copySelection();
  copyTop();
  if (!visible) return;
  pass(WM_SETREDRAW, TRUE);
  InvalidateRect(window(), nullptr, TRUE);
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
  if (!lines.empty()) {
    pass(LB_GETSELITEMS, lines.size(), reinterpret_cast<LPARAM>(lines.data()));
  }
  return lines;
}

void ListPeer::copySelection() {
  const Copying quiet(*this);
  if (!extended()) {
    if (static_cast<int>(pass(LB_GETCURSEL)) != list_.listIndex()) {
      pass(LB_SETCURSEL, static_cast<WPARAM>(list_.listIndex()));
    }
    return;
  }
  for (int line = 0; line < list_.listCount(); ++line) {
    const bool selected = pass(LB_GETSEL, static_cast<WPARAM>(line)) > 0;
    if (selected != list_.selected(line)) pass(LB_SETSEL, list_.selected(line) ? 1 : 0, line);
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

HBRUSH ListPeer::colors(HDC context, UINT message) {
  if (list_.color() == kBlack) return nullptr;
  ControlPeer::colors(context, message);
  SetBkColor(context, GetSysColor(COLOR_WINDOW));
  return GetSysColorBrush(COLOR_WINDOW);
}

// Scrolling is not notified: what the message has moved is read afterwards.
LRESULT ListPeer::message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  flush();
  const LRESULT before = pass(LB_GETTOPINDEX);
  const LRESULT result = ControlPeer::message(window, message, wParam, lParam);
  if (!attached() || copying() || itemsChanged_) return result;
  const LRESULT after = pass(LB_GETTOPINDEX);
  if (after != before) list_.setTopIndex(static_cast<int>(after));
  return result;
}

}  // namespace toolkit::win32
