#include "toolkit/win32/ControlPeer.h"

#include <algorithm>
#include <system_error>

#include "toolkit/win32/Border.h"
#include "toolkit/win32/GivenMemory.h"
#include "toolkit/win32/ObjectTable.h"
#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

bool isKey(UINT message) {
  return message == WM_KEYDOWN || message == WM_SYSKEYDOWN || message == WM_CHAR ||
         message == WM_SYSCHAR;
}

bool isPress(UINT message) {
  return message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK || message == WM_RBUTTONDOWN ||
         message == WM_RBUTTONDBLCLK || message == WM_MBUTTONDOWN || message == WM_MBUTTONDBLCLK;
}

// Other ways in which a user changes a window.
bool isOtherInput(UINT message) {
  return message == WM_MOUSEWHEEL || message == WM_CONTEXTMENU || message == WM_PASTE ||
         message == WM_CUT || message == WM_CLEAR || message == WM_UNDO;
}

// From here up to the registered messages, each class of windows has messages of its own.
bool isOfItsClass(UINT message) { return message >= WM_USER && message < 0xC000; }

// Addresses of code and memory for an edit, which nobody outside has to give.
bool replacesItsWorks(UINT message) {
  return message == EM_SETWORDBREAKPROC || message == EM_SETHANDLE;
}

ObjectTable<HWND, ControlPeer>& peers() {
  static ObjectTable<HWND, ControlPeer> table;
  return table;
}

// A page or surface has a window of its own; a frame's fields are its siblings.
bool hasOwnWindow(const Control& container) {
  return container.kind() == Kind::Surface || container.kind() == Kind::TabPage;
}

bool isChosen(const DRAWITEMSTRUCT& item) { return (item.itemState & ODS_SELECTED) != 0; }

int groundOf(const DRAWITEMSTRUCT& item) { return isChosen(item) ? COLOR_HIGHLIGHT : COLOR_WINDOW; }

}  // namespace

UINT controlNameMessage() {
  static const UINT message = RegisterWindowMessageW(L"WM_GETCONTROLNAME");
  return message;
}

// Window -----------------------------------------------------------------------------------------

void ControlPeer::create() {
  const Copying quiet(*this);
  window_ = makeWindow(host_.siteOf(control_).window, placeInPixels());
  if (!window_) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                            "CreateWindow");
  }
  subclass(window_);
  created();
  control_.setPeer(this);
  applyFont();
  applyPlace();
  refresh();
}

HWND ControlPeer::makeWindow(HWND parent, const RECT& place) {
  const Blueprint plan = blueprint();
  return CreateWindowExW(
      plan.extendedStyle, plan.className, L"", WS_CHILD | WS_CLIPSIBLINGS | plan.style, place.left,
      place.top, place.right - place.left, place.bottom - place.top, parent, nullptr,
      reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(parent, GWLP_HINSTANCE)), nullptr);
}

void ControlPeer::beginLine(const DRAWITEMSTRUCT& item, COLORREF ink) {
  FillRect(item.hDC, &item.rcItem, GetSysColorBrush(groundOf(item)));
  SetBkMode(item.hDC, TRANSPARENT);
  SetTextColor(item.hDC, isChosen(item) ? GetSysColor(COLOR_HIGHLIGHTTEXT) : ink);
}

void ControlPeer::endLine(const DRAWITEMSTRUCT& item) const {
  if ((item.itemState & ODS_FOCUS) == 0 || hidesFocus()) return;
  SetBkColor(item.hDC, GetSysColor(groundOf(item)));
  DrawFocusRect(item.hDC, &item.rcItem);
}

void ControlPeer::subclass(HWND window) {
  peers().add(window, this);
  const LONG_PTR original =
      SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ControlPeer::procedure));
  subclassed_.push_back({window, reinterpret_cast<WNDPROC>(original)});
}

void ControlPeer::detach() {
  if (!window_) return;
  if (control_.peer() == this) control_.setPeer(nullptr);
  for (const Subclassed& s : subclassed_) {
    SetWindowLongPtrW(s.window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(s.original));
    peers().remove(s.window);
  }
  window_ = nullptr;
}

void ControlPeer::forget(HWND window) {
  peers().remove(window);
  std::erase_if(subclassed_, [window](const Subclassed& s) { return s.window == window; });
  lost(window);
}

LRESULT ControlPeer::pass(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto found = std::find_if(subclassed_.begin(), subclassed_.end(),
                                  [window](const Subclassed& s) { return s.window == window; });
  if (found == subclassed_.end()) return 0;
  return CallWindowProcW(found->original, window, message, wParam, lParam);
}

std::wstring ControlPeer::windowText() {
  const LRESULT announced = std::max<LRESULT>(0, pass(WM_GETTEXTLENGTH));
  std::wstring text(static_cast<std::size_t>(announced), L'\0');
  const LRESULT length = pass(WM_GETTEXT, text.size() + 1, reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(std::clamp<LRESULT>(length, 0, announced)));
  return text;
}

void ControlPeer::setWindowText(const std::wstring& text) {
  if (windowText() == text) return;
  const Copying quiet(*this);
  pass(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

// State ------------------------------------------------------------------------------------------

void ControlPeer::update(Aspect what) {
  if (!window_) return;
  switch (what) {
    case Aspect::Enabled:
      applyEnabled();
      host_.keyboard().resume(control_);
      break;
    case Aspect::Visible:
      applyVisible();
      host_.keyboard().resume(control_);
      break;
    case Aspect::Place:
      applyPlace();
      break;
    case Aspect::Style:
      applyFont();
      copy(what);
      redraw();
      break;
    case Aspect::Caption:
      copy(what);
      host_.captionChanged();
      break;
    case Aspect::ReadOnly:
      applyReadOnly();
      applyEnabled();
      break;
    default:
      copy(what);
  }
}

void ControlPeer::refresh() {
  for (const Aspect what : {Aspect::Caption, Aspect::Range, Aspect::Items, Aspect::Text,
                            Aspect::Selection, Aspect::Value, Aspect::Style}) {
    copy(what);
  }
  applyReadOnly();
  applyEnabled();
  applyVisible();
}

void ControlPeer::applyFont() {
  const auto font = reinterpret_cast<WPARAM>(host_.font(control_.font()));
  if (static_cast<WPARAM>(pass(WM_GETFONT)) == font) return;
  const Copying quiet(*this);
  pass(WM_SETFONT, font, TRUE);
}

RECT ControlPeer::placeInPixels() const {
  const Host::Site site = host_.siteOf(control_);
  const Place& place = control_.place();
  RECT pixels = host_.scale().rectangle(site.left + place.left, site.top + place.top, place.width,
                                        place.height);
  const POINT scrolled = host_.scrolled();
  if (site.window == host_.window()) OffsetRect(&pixels, -scrolled.x, -scrolled.y);
  return pixels;
}

void ControlPeer::applyPlace() {
  const Copying quiet(*this);
  const RECT place = placeInPixels();
  SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

// The surface's own disabling is portable: windows follow what is between it and the control.
bool ControlPeer::windowEnabled() const {
  for (const Control* c = &control_; c && c->kind() != Kind::Surface; c = c->parent()) {
    if (c->closed()) return false;
  }
  return true;
}

bool ControlPeer::looksEnabled() const { return windowEnabled() && !control_.pale(); }

bool ControlPeer::windowVisible() const {
  for (const Control* c = &control_; c; c = c->parent()) {
    if (!c->visible()) return false;
    if (c->parent() && hasOwnWindow(*c->parent())) break;
  }
  return true;
}

UINT ControlPeer::hiddenPrefix() const {
  return (host_.keyboard().hiddenCues() & UISF_HIDEACCEL) != 0 ? DT_HIDEPREFIX : 0U;
}

bool ControlPeer::hidesFocus() const {
  return (host_.keyboard().hiddenCues() & UISF_HIDEFOCUS) != 0;
}

void ControlPeer::applyEnabled() {
  const bool enabled = windowEnabled();
  if ((IsWindowEnabled(window_) != FALSE) == enabled) return;
  if (!enabled && host_.keyboard().isHere() && GetFocus() == focusWindow()) host_.keyboard().park();
  if (window_) EnableWindow(window_, enabled ? TRUE : FALSE);
}

// An edit lets its text be selected and copied still.
void ControlPeer::applyReadOnly() {
  const bool field = control_.kind() == Kind::TextBox || control_.kind() == Kind::ComboBox;
  if (field && focusWindow()) {
    const bool shown = (GetWindowLongW(focusWindow(), GWL_STYLE) & ES_READONLY) != 0;
    if (shown == control_.readOnly()) return;
    pass(focusWindow(), EM_SETREADONLY, control_.readOnly() ? TRUE : FALSE);
  }
  redraw();
}

void ControlPeer::redraw() const {
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN);
}

void ControlPeer::applyVisible() {
  const bool visible = windowVisible();
  if (((GetWindowLongW(window_, GWL_STYLE) & WS_VISIBLE) != 0) == visible) return;
  if (!visible && (GetFocus() == window_ || IsChild(window_, GetFocus()))) host_.keyboard().park();
  if (window_) ShowWindow(window_, visible ? SW_SHOWNA : SW_HIDE);
}

HBRUSH ControlPeer::ground(HDC context, UINT message) {
  const bool field = control_.kind() == Kind::TextBox || control_.kind() == Kind::ComboBox;
  const bool written = control_.readOnly() && message == WM_CTLCOLORSTATIC;
  if (field && (written || control_.pale())) return ControlPeer::colors(context, message);
  return colors(context, message);
}

HBRUSH ControlPeer::colors(HDC context, UINT) {
  const Palette palette = host_.palette();
  SetTextColor(context, palette.text(control_.color(), looksEnabled()));
  SetBkColor(context, palette.back());
  return host_.background();
}

LRESULT ControlPeer::giveName(WPARAM room, LPARAM buffer) const {
  if (room == 0 || buffer == 0) return 0;
  const std::wstring name = wide(control_.name());
  const std::size_t length = std::min<std::size_t>(name.size(), room - 1);
  if (!isWritable(buffer, (length + 1) * sizeof(wchar_t))) return 0;
  wchar_t* out = reinterpret_cast<wchar_t*>(buffer);
  name.copy(out, length);
  out[length] = L'\0';
  return static_cast<LRESULT>(length + 1);
}

// Messages ---------------------------------------------------------------------------------------

LRESULT CALLBACK ControlPeer::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return windowBorder("ControlPeer", LRESULT{0}, [=]() -> LRESULT {
    ControlPeer* const raw = peers().find(window);
    if (!raw) return DefWindowProcW(window, message, wParam, lParam);
    const auto host = raw->host_.shared_from_this();
    const auto entry = host->entered();
    const auto peer = raw->shared_from_this();
    if (!peer->attached()) return DefWindowProcW(window, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
      if (window == peer->window_) peer->detach();
      const LRESULT result = peer->pass(window, message, wParam, lParam);
      if (peer->attached()) peer->forget(window);
      return result;
    }
    return peer->message(window, message, wParam, lParam);
  });
}

LRESULT ControlPeer::message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == controlNameMessage() && window == window_) return giveName(wParam, lParam);
  if (isOfItsClass(message) && !understands(message, wParam, lParam)) return 0;
  if (replacesItsWorks(message)) return 0;
  flush();
  if (isKey(message)) return keyMessage(window, message, wParam, lParam);
  if (isPress(message)) return press(window, message, wParam, lParam);
  if (isOtherInput(message)) {
    host_.deliver();
    if (!attached() || !host_.takesInput()) return 0;
  }
  switch (message) {
    case WM_QUERYUISTATE:
      return static_cast<LRESULT>(host_.keyboard().hiddenCues());
    case WM_GETDLGCODE:
      return host_.keyboard().dialogCode(dialogCode(), lParam);
    case WM_SETFOCUS: {
      const LRESULT result = pass(window, message, wParam, lParam);
      host_.keyboard().came(this, reinterpret_cast<HWND>(wParam));
      return result;
    }
    case WM_KILLFOCUS: {
      const LRESULT result = pass(window, message, wParam, lParam);
      host_.keyboard().left(window, reinterpret_cast<HWND>(wParam));
      return result;
    }
    default:
      return pass(window, message, wParam, lParam);
  }
}

LRESULT ControlPeer::keyMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  host_.deliver();
  if (!attached()) return 0;
  const bool system = message == WM_SYSKEYDOWN || message == WM_SYSCHAR;
  if (!host_.takesInput()) return system ? DefWindowProcW(window, message, wParam, lParam) : 0;
  if (message == WM_CHAR) {
    reportSilent();
    return attached() ? character(window, wParam, lParam) : 0;
  }
  reportSilent();
  if (!attached() || host_.keyboard().key(message, wParam)) return 0;
  if (isForNobody(message, wParam)) return 0;
  return attached() ? leftKey(window, message, wParam, lParam) : 0;
}

bool ControlPeer::isForNobody(UINT message, WPARAM wParam) const {
  if (control_.kind() != Kind::ComboBox || !control_.readOnly() || message != WM_KEYDOWN) {
    return false;
  }
  return wParam == VK_UP || wParam == VK_DOWN || wParam == VK_PRIOR || wParam == VK_NEXT;
}

LRESULT ControlPeer::leftKey(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return pass(window, message, wParam, lParam);
}

LRESULT ControlPeer::character(HWND window, WPARAM wParam, LPARAM lParam) {
  return pass(window, WM_CHAR, wParam, lParam);
}

LRESULT ControlPeer::press(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  host_.deliver();
  if (!attached() || !host_.takesInput() || !control_.usable()) return 0;
  host_.keyboard().pressed();
  if (!attached()) return 0;
  bool moves = false;
  if (control_.focusable()) {
    moves = host_.surface().focus() != &control_;
    const bool arrived = host_.surface().moveFocus(&control_);
    if (!attached()) return 0;
    host_.keyboard().bring();
    if (!arrived || !attached()) return 0;
  }
  const LRESULT result = pressed(window, message, wParam, lParam);
  // A box opened by the focus moving has swallowed the button's release: without it the window
  // would go on waiting.
  if (moves && attached() && message == WM_LBUTTONDOWN && GetKeyState(VK_LBUTTON) >= 0) {
    return pass(window, WM_LBUTTONUP, 0, lParam);
  }
  return result;
}

LRESULT ControlPeer::pressed(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return pass(window, message, wParam, lParam);
}

}  // namespace toolkit::win32
