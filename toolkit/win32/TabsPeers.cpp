#include "toolkit/win32/TabsPeers.h"

#include <commctrl.h>

#include <algorithm>

#include "toolkit/win32/GivenMemory.h"
#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

constexpr int kTabMargin = 6;   // pixels at 96 dpi beside and above a tab's caption
constexpr int kAroundTabs = 8;  // pixels at 96 dpi that the row leaves free, lest it scrolls

class WindowContext {
 public:
  explicit WindowContext(HWND window) : window_(window), context_(GetDC(window)) {}
  WindowContext(const WindowContext&) = delete;
  WindowContext& operator=(const WindowContext&) = delete;
  ~WindowContext() { ReleaseDC(window_, context_); }
  HDC get() const { return context_; }

 private:
  HWND window_;
  HDC context_;
};

}  // namespace

// Tabs
// ---------------------------------------------------------------------------------------------

ControlPeer::Blueprint TabsPeer::blueprint() const {
  INITCOMMONCONTROLSEX classes{};
  classes.dwSize = sizeof classes;
  classes.dwICC = ICC_TAB_CLASSES;
  InitCommonControlsEx(&classes);
  return {WC_TABCONTROLW, WS_TABSTOP | WS_CLIPCHILDREN | TCS_OWNERDRAWFIXED | TCS_FOCUSNEVER, 0};
}

void TabsPeer::created() {
  for (int tab = 0; tab < tabs_.tabs(); ++tab) nameTab(tab, TCM_INSERTITEMW);
}

void TabsPeer::nameTab(int tab, UINT message) {
  std::wstring caption = wide(withoutMnemonic(tabs_.page(tab).caption()));
  TCITEMW item{};
  item.mask = TCIF_TEXT;
  item.pszText = caption.data();
  pass(message, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
}

void TabsPeer::applyFont() {
  ControlPeer::applyFont();
  sizeTabs();
}

void TabsPeer::applyPlace() {
  ControlPeer::applyPlace();
  sizeTabs();
  host().placeWithin(tabs_);
}

int TabsPeer::lineHeight() {
  const WindowContext context(window());
  const Selected font(context.get(), host().font(tabs_.font()));
  TEXTMETRICW metrics{};
  GetTextMetricsW(context.get(), &metrics);
  return metrics.tmHeight;
}

int TabsPeer::captionWidth(int tab) {
  const WindowContext context(window());
  const Selected font(context.get(), host().font(tabs_.font()));
  const std::wstring caption = wide(withoutMnemonic(tabs_.page(tab).caption()));
  SIZE size{};
  GetTextExtentPoint32W(context.get(), caption.c_str(), static_cast<int>(caption.size()), &size);
  return size.cx;
}

// Tabs as wide as their captions, the spare width of the row shared out among them. Where the row
// is too short for that they are of one width, and their captions break into two lines.
void TabsPeer::sizeTabs() {
  const int count = tabs_.tabs();
  if (count == 0) return;
  const Copying quiet(*this);
  RECT client{};
  GetClientRect(window(), &client);
  const int row = client.right - host().scale().ofPixelsAt96(kAroundTabs);
  const int margin = host().scale().ofPixelsAt96(kTabMargin);
  int captions = 0;
  for (int tab = 0; tab < count; ++tab) captions += captionWidth(tab);
  const int padding = (row - captions) / (2 * count);
  if (padding >= margin) {
    sizeByCaption(std::min(padding, 4 * margin));
  } else {
    sizeAlike(std::max(row / count, 2 * margin), margin);
  }
  InvalidateRect(window(), nullptr, TRUE);
}

void TabsPeer::sizeByCaption(int padding) {
  const LONG style = GetWindowLongW(window(), GWL_STYLE);
  if (style & TCS_FIXEDWIDTH) SetWindowLongW(window(), GWL_STYLE, style & ~TCS_FIXEDWIDTH);
  const int margin = host().scale().ofPixelsAt96(kTabMargin);
  pass(TCM_SETMINTABWIDTH, 0, LPARAM{2} * margin);
  pass(TCM_SETPADDING, 0, MAKELPARAM(padding, margin / 2));
  pass(TCM_SETITEMSIZE, 0, MAKELPARAM(0, lineHeight() + margin));
  // The padding counts from the next time on that a caption is measured.
  for (int tab = 0; tab < tabs_.tabs(); ++tab) nameTab(tab, TCM_SETITEMW);
}

void TabsPeer::sizeAlike(int width, int margin) {
  const LONG style = GetWindowLongW(window(), GWL_STYLE);
  if (!(style & TCS_FIXEDWIDTH)) SetWindowLongW(window(), GWL_STYLE, style | TCS_FIXEDWIDTH);
  bool breaks = false;
  for (int tab = 0; tab < tabs_.tabs(); ++tab) breaks |= captionWidth(tab) > width - 2 * margin;
  const int lines = breaks ? 2 : 1;
  pass(TCM_SETITEMSIZE, 0, MAKELPARAM(width, lines * lineHeight() + margin));
}

void TabsPeer::captionChanged(TabPage& page) {
  const Copying quiet(*this);
  for (int tab = 0; tab < tabs_.tabs(); ++tab) {
    if (&tabs_.page(tab) == &page) nameTab(tab, TCM_SETITEMW);
  }
  sizeTabs();
}

// The standard window does not draw its tabs again by itself.
void TabsPeer::applyEnabled() {
  ControlPeer::applyEnabled();
  redrawTabs();
}

RECT TabsPeer::pageArea() {
  RECT area{};
  GetClientRect(window(), &area);
  pass(TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
  return area;
}

void TabsPeer::copy(Aspect what) {
  if (what == Aspect::Value && static_cast<int>(pass(TCM_GETCURSEL)) != tabs_.tab()) {
    pass(TCM_SETCURSEL, static_cast<WPARAM>(tabs_.tab()));
  }
  if (what == Aspect::Style) redrawTabs();
}

void TabsPeer::redrawTabs() { InvalidateRect(window(), nullptr, FALSE); }

void TabsPeer::drawItem(const DRAWITEMSTRUCT& item) {
  const auto tab = static_cast<int>(item.itemID);
  if (tab < 0 || tab >= tabs_.tabs()) return;
  RECT area = item.rcItem;
  FillRect(item.hDC, &area, host().background());
  const bool live = windowEnabled() && tabs_.tabEnabled(tab);
  SetBkMode(item.hDC, TRANSPARENT);
  SetTextColor(item.hDC, host().palette().text(tabs_.color(), live));
  const std::wstring caption = wide(tabs_.page(tab).caption());
  RECT needed = area;
  constexpr UINT kHow = DT_CENTER | DT_WORDBREAK;
  const Selected font(item.hDC, host().font(tabs_.font()));
  const int height = DrawTextW(item.hDC, caption.c_str(), -1, &needed, kHow | DT_CALCRECT);
  area.top += std::max<int>(0, (area.bottom - area.top - height) / 2);
  DrawTextW(item.hDC, caption.c_str(), -1, &area, kHow);
  if (tabs_.hasFocus() && tab == tabs_.tab() && GetFocus() == window() && !hidesFocus()) {
    RECT mark = item.rcItem;
    InflateRect(&mark, -3, -3);
    DrawFocusRect(item.hDC, &mark);
  }
}

// Only the object changes the page.
LRESULT TabsPeer::notified(const NMHDR& header) { return header.code == TCN_SELCHANGING; }

LRESULT TabsPeer::message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK) {
    host().deliver();
    if (!attached() || !host().takesInput()) return 0;
    TCHITTESTINFO hit{};
    hit.pt = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    const auto tab = static_cast<int>(pass(TCM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
    if (tab < 0 || tab >= tabs_.tabs()) {
      host().pressedBeside();
      return 0;
    }
    host().keyboard().pressed();
    if (!attached()) return 0;
    tabs_.userSelectTab(tab);
    if (attached()) host().keyboard().bring();
    return 0;
  }
  if (message == TCM_SETCURFOCUS && !copying()) {
    const auto tab = static_cast<int>(wParam);
    if (tab < 0 || tab >= tabs_.tabs()) return 0;
    host().note(*this, Host::Merge::No, [this, tab] { tabs_.userSelectTab(tab); });
    return 0;
  }
  const LRESULT result = ControlPeer::message(window, message, wParam, lParam);
  if (attached() && (message == WM_SETFOCUS || message == WM_KILLFOCUS)) redrawTabs();
  return result;
}

// What screen readers and test tools ask. The tabs themselves are changed by the object alone.
bool TabsPeer::understands(UINT message, WPARAM wParam, LPARAM lParam) const {
  switch (message) {
    case TCM_GETITEMCOUNT:
    case TCM_GETCURSEL:
    case TCM_GETCURFOCUS:
    case TCM_GETROWCOUNT:
      return true;
    case TCM_GETITEMRECT:
      return isTab(wParam) && isWritable(lParam, sizeof(RECT));
    case TCM_HITTEST:
      return isWritable(lParam, sizeof(TCHITTESTINFO));
    case TCM_GETITEMA:
    case TCM_GETITEMW: {
      if (!isTab(wParam) || !isWritable(lParam, sizeof(TCITEMW))) return false;
      const auto item = readGiven<TCITEMW>(lParam);  // of one layout with TCITEMA
      if (!item || !(item->mask & TCIF_TEXT)) return item.has_value();
      const std::size_t size = message == TCM_GETITEMW ? sizeof(wchar_t) : sizeof(char);
      return item->cchTextMax > 0 && isWritable(reinterpret_cast<LPARAM>(item->pszText),
                                                static_cast<std::size_t>(item->cchTextMax) * size);
    }
    default:
      return false;
  }
}

// Arrows that the surface left would turn the page behind the object's back.
LRESULT TabsPeer::leftKey(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_KEYDOWN) return 0;
  return ControlPeer::leftKey(window, message, wParam, lParam);
}

// Page
// ---------------------------------------------------------------------------------------------

HWND PagePeer::makeWindow(HWND parent, const RECT& place) {
  return host().createContainer(parent, place);
}

// The tabs say where their pages lie: beside their own border, which no page may cover.
void PagePeer::applyPlace() {
  RECT place = placeInPixels();
  if (auto* tabsPeer = static_cast<TabsPeer*>(tabs().peer())) place = tabsPeer->pageArea();
  SetWindowPos(window(), nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void PagePeer::copy(Aspect what) {
  if (what != Aspect::Caption) return;
  if (auto* tabsPeer = static_cast<TabsPeer*>(tabs().peer())) tabsPeer->captionChanged(page_);
}

// The page's own window stays enabled; its tab shows what it is.
void PagePeer::applyEnabled() {
  if (auto* tabsPeer = static_cast<TabsPeer*>(tabs().peer())) tabsPeer->redrawTabs();
}

bool PagePeer::windowVisible() const {
  return page_.visible() && &tabs().page(tabs().tab()) == &page_;
}

// The pages' own messages are the fields' to their parent.
LRESULT PagePeer::message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == controlNameMessage()) return ControlPeer::message(window, message, wParam, lParam);
  return pass(window, message, wParam, lParam);
}

}  // namespace toolkit::win32
