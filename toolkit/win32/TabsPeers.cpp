#include "toolkit/win32/TabsPeers.h"

#include <commctrl.h>

#include <algorithm>

#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

constexpr int kTabMargin = 6;  // pixels at 96 dpi beside and above a tab's caption

int lineHeight(HDC context) {
  TEXTMETRICW metrics{};
  GetTextMetricsW(context, &metrics);
  return metrics.tmHeight;
}

int widthOf(HDC context, const std::wstring& text) {
  SIZE size{};
  GetTextExtentPoint32W(context, text.c_str(), static_cast<int>(text.size()), &size);
  return size.cx;
}

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
  return {WC_TABCONTROLW,
          WS_TABSTOP | WS_CLIPCHILDREN | TCS_FIXEDWIDTH | TCS_OWNERDRAWFIXED | TCS_FOCUSNEVER, 0};
}

void TabsPeer::created() {
  for (int tab = 0; tab < tabs_.tabs(); ++tab) {
    std::wstring caption = wide(tabs_.page(tab).caption());
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = caption.data();
    pass(TCM_INSERTITEMW, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
  }
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

bool TabsPeer::fitsOnOneLine(int width) {
  const WindowContext context(window());
  const Selected font(context.get(), host().font(tabs_.font()));
  for (int tab = 0; tab < tabs_.tabs(); ++tab) {
    if (widthOf(context.get(), wide(withoutMnemonic(tabs_.page(tab).caption()))) > width) {
      return false;
    }
  }
  return true;
}

// Tabs of one width side by side, as high as the caption that needs most lines.
void TabsPeer::sizeTabs() {
  if (tabs_.tabs() == 0) return;
  const Copying quiet(*this);
  RECT client{};
  GetClientRect(window(), &client);
  const int margin = host().scale().ofPixelsAt96(kTabMargin);
  const int width = std::max<int>((client.right - 4) / tabs_.tabs(), 2 * margin);
  const int lines = fitsOnOneLine(width - 2 * margin) ? 1 : 2;
  const WindowContext context(window());
  const Selected font(context.get(), host().font(tabs_.font()));
  pass(TCM_SETITEMSIZE, 0, MAKELPARAM(width, lines * lineHeight(context.get()) + margin));
  InvalidateRect(window(), nullptr, TRUE);
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
  SetTextColor(item.hDC, GetSysColor(live ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
  const std::wstring caption = wide(tabs_.page(tab).caption());
  RECT needed = area;
  constexpr UINT kHow = DT_CENTER | DT_WORDBREAK;
  const Selected font(item.hDC, host().font(tabs_.font()));
  const int height = DrawTextW(item.hDC, caption.c_str(), -1, &needed, kHow | DT_CALCRECT);
  area.top += std::max<int>(0, (area.bottom - area.top - height) / 2);
  DrawTextW(item.hDC, caption.c_str(), -1, &area, kHow);
  if (tabs_.hasFocus() && tab == tabs_.tab() && GetFocus() == window()) {
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
    if (tab < 0 || tab >= tabs_.tabs()) return 0;
    tabs_.userSelectTab(tab);
    if (attached()) host().bringKeyboard();
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

void PagePeer::applyPlace() {
  RECT place = placeInPixels();
  if (page_.place() == Place{}) {
    if (auto* tabsPeer = static_cast<TabsPeer*>(tabs().peer())) place = tabsPeer->pageArea();
  }
  SetWindowPos(window(), nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void PagePeer::copy(Aspect what) {
  if (what != Aspect::Caption) return;
  auto* tabsPeer = static_cast<TabsPeer*>(tabs().peer());
  if (tabsPeer) tabsPeer->redrawTabs();
}

bool PagePeer::windowVisible() const {
  return page_.visible() && &tabs().page(tabs().tab()) == &page_;
}

// The pages' own messages are the fields' to their parent.
LRESULT PagePeer::message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == controlNameMessage()) {
    return ControlPeer::message(window, message, wParam, lParam);
  }
  return pass(window, message, wParam, lParam);
}

}  // namespace toolkit::win32
