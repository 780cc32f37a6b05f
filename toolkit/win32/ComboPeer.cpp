#include "toolkit/win32/ComboPeer.h"

#include "toolkit/win32/Typing.h"
#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

constexpr int kLinesShown = 12;
constexpr UINT kOpenList = WM_APP + 5;

bool opensList(UINT message, WPARAM wParam) {
  return (message == WM_KEYDOWN && wParam == VK_F4) ||
         (message == WM_SYSKEYDOWN && (wParam == VK_DOWN || wParam == VK_UP));
}

}  // namespace

ControlPeer::Blueprint ComboPeer::blueprint() const {
  const DWORD kind = editable() ? CBS_DROPDOWN : CBS_DROPDOWNLIST;
  return {L"COMBOBOX", WS_TABSTOP | WS_VSCROLL | CBS_AUTOHSCROLL | kind, 0};
}

void ComboPeer::created() {
  COMBOBOXINFO info{};
  info.cbSize = sizeof info;
  if (!editable() || !GetComboBoxInfo(window(), &info) || !info.hwndItem) return;
  edit_ = info.hwndItem;
  subclass(edit_);
}

// The height given to the window is that of the open list; closed, it is as high as its field.
void ComboPeer::applyPlace() {
  const Copying quiet(*this);
  const RECT place = placeInPixels();
  const int height = place.bottom - place.top;
  const auto line = static_cast<int>(pass(CB_GETITEMHEIGHT, 0));
  SetWindowPos(window(), nullptr, place.left, place.top, place.right - place.left,
               height + kLinesShown * line, SWP_NOZORDER | SWP_NOACTIVATE);
  fitField(height);
  if (edit_) centreLine(edit_);
}

// What the window adds around its field is known to the system alone, and may be more for a height
// that it was given than for its own.
void ComboPeer::fitField(int height) {
  constexpr int kAttempts = 2;
  auto field = static_cast<int>(pass(CB_GETITEMHEIGHT, static_cast<WPARAM>(-1)));
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    RECT closed{};
    GetWindowRect(window(), &closed);
    const int missing = height - static_cast<int>(closed.bottom - closed.top);
    field += missing;
    if (missing == 0 || field <= 0) return;
    pass(CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), field);
  }
}

void ComboPeer::applyFont() {
  ControlPeer::applyFont();
  applyPlace();
}

void ComboPeer::copy(Aspect what) {
  switch (what) {
    case Aspect::Items:
      itemsChanged_ = true;
      InvalidateRect(window(), nullptr, FALSE);
      break;
    case Aspect::Text:
    case Aspect::Selection:
      if (!itemsChanged_) copyChoice();
      break;
    case Aspect::ListOpen:
      copyListOpen();
      break;
    case Aspect::Style:
      if (editable()) pass(CB_LIMITTEXT, static_cast<WPARAM>(combo_.maxLength()));
      break;
    default:
      break;
  }
}

void ComboPeer::flush() {
  if (!itemsChanged_ || copying()) return;
  itemsChanged_ = false;
  fill();
  copyChoice();
}

void ComboPeer::fill() {
  const Copying quiet(*this);
  const bool visible = (GetWindowLongW(window(), GWL_STYLE) & WS_VISIBLE) != 0;
  if (visible) pass(WM_SETREDRAW, FALSE);
  pass(CB_RESETCONTENT);
  pass(CB_INITSTORAGE, static_cast<WPARAM>(combo_.listCount()), LPARAM{32} * combo_.listCount());
  for (const ListItem& item : combo_.items().all()) {
    pass(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide(item.text).c_str()));
  }
  if (visible) {
    pass(WM_SETREDRAW, TRUE);
    InvalidateRect(window(), nullptr, TRUE);
  }
}

void ComboPeer::copyChoice() {
  const Copying quiet(*this);
  const std::wstring text = wide(combo_.text());
  const bool sameText = windowText() == text;
  const auto chosen = static_cast<int>(pass(CB_GETCURSEL));
  // Choosing none would clear what the user is typing.
  const bool typing = editable() && combo_.listIndex() == -1 && sameText;
  if (chosen != combo_.listIndex() && !typing) {
    pass(CB_SETCURSEL, static_cast<WPARAM>(combo_.listIndex()));
  }
  if (editable()) setWindowText(text);
}

// The list opens once what the user has done has ended: its lines and the focus are there by then.
void ComboPeer::copyListOpen() {
  if (combo_.listOpen()) {
    PostMessageW(window(), kOpenList, 0, 0);
  } else if (dropped()) {
    const Copying quiet(*this);
    pass(CB_SHOWDROPDOWN, FALSE);
  }
}

void ComboPeer::showList() {
  if (!combo_.listOpen()) return;
  if (!combo_.hasFocus() || GetFocus() != focusWindow()) {
    combo_.listClosed();
    return;
  }
  const Copying quiet(*this);
  pass(CB_SHOWDROPDOWN, TRUE);
  // The system has highlighted the line that resembles the text, as if it were chosen.
  if (static_cast<int>(pass(CB_GETCURSEL)) != combo_.listIndex()) {
    pass(CB_SETCURSEL, static_cast<WPARAM>(combo_.listIndex()));
  }
  if (!editable()) return;
  const std::wstring text = wide(combo_.text());
  setWindowText(text);
  const auto end = static_cast<LPARAM>(text.size());
  pass(edit_, EM_SETSEL, static_cast<WPARAM>(end), end);
}

void ComboPeer::commanded(WORD code) {
  if (code == CBN_CLOSEUP) combo_.listClosed();
  if (copying()) return;
  if (code == CBN_EDITCHANGE) {
    std::string typed = narrow(windowText());
    if (typed == combo_.text()) return;
    host().note(*this, Host::Merge::Yes,
                [this, typed = std::move(typed)] { combo_.userEdit(typed); });
  } else if (code == CBN_SELCHANGE) {
    const auto line = static_cast<int>(pass(CB_GETCURSEL));
    if (line < 0) return;
    host().note(*this, Host::Merge::No, [this, line] { combo_.userChoose(line); });
  } else if (code == CBN_DROPDOWN && !asked_) {
    host().note(*this, Host::Merge::No, [this] { combo_.userDropDown(); });
  }
}

bool ComboPeer::dropped() const { return SendMessageW(window(), CB_GETDROPPEDSTATE, 0, 0) != 0; }

bool ComboPeer::opens() {
  const bool accepted = combo_.userDropDown();
  if (!attached()) return false;
  flush();
  return accepted && combo_.usable() && combo_.hasFocus();
}

LRESULT ComboPeer::message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == kOpenList) {
    flush();
    showList();
    return 0;
  }
  if (message == WM_PASTE && window == edit_) {
    host().deliver();
    if (attached() && host().takesInput()) pasteCleaned(window);
    return 0;
  }
  if (message == CB_SHOWDROPDOWN && wParam && !copying()) {
    host().deliver();
    if (!attached()) return 0;
    flush();
    if (dropped() || !host().takesInput()) return 0;
    if (!host().surface().moveFocus(&combo_) || !attached() || !opens()) return 0;
    asked_ = true;
    const LRESULT result = pass(window, message, wParam, lParam);
    asked_ = false;
    return result;
  }
  return window == edit_ ? lineMessage(window, message, wParam, lParam)
                         : ControlPeer::message(window, message, wParam, lParam);
}

LRESULT ComboPeer::leftKey(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_KEYDOWN && (wParam == VK_RETURN || wParam == VK_ESCAPE || wParam == VK_TAB)) {
    return 0;
  }
  if (!opensList(message, wParam) || dropped()) {
    return ControlPeer::leftKey(window, message, wParam, lParam);
  }
  if (!opens()) return 0;
  asked_ = true;
  const LRESULT result = pass(window, message, wParam, lParam);
  asked_ = false;
  return result;
}

LRESULT ComboPeer::character(HWND window, WPARAM wParam, LPARAM lParam) {
  if (isForSurfaceAlone(wParam)) return 0;
  if (window != edit_ || isCommand(wParam)) return pass(window, WM_CHAR, wParam, lParam);
  const char32_t key = joined(highSurrogate_, wParam);
  if (key == 0) return 0;
  const char32_t kept = combo_.userKeyPress(key);
  if (kept == 0 || !attached()) return 0;
  for (const wchar_t unit : toolkit::win32::unitsOf(kept)) {
    pass(window, WM_CHAR, unit, lParam);
    if (!attached()) return 0;
  }
  return 0;
}

LRESULT ComboPeer::pressed(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const bool left = message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK;
  if (!left || window == edit_ || dropped()) return pass(window, message, wParam, lParam);
  if (!opens()) return 0;
  asked_ = true;
  const LRESULT result = pass(window, message, wParam, lParam);
  asked_ = false;
  return result;
}

bool ComboPeer::ownsKey(WPARAM virtualKey) const {
  return (virtualKey == VK_RETURN || virtualKey == VK_ESCAPE) && dropped();
}

// What the arrows have chosen in the open list has been told already. Where nothing is, Enter is
// the text's: it searches again.
void ComboPeer::ownedKey(WPARAM virtualKey) {
  const bool chosen = static_cast<int>(pass(CB_GETCURSEL)) >= 0;
  pass(CB_SHOWDROPDOWN, FALSE);
  if (virtualKey == VK_RETURN && !chosen && attached()) host().key(WM_KEYDOWN, virtualKey);
}

LRESULT ComboPeer::dialogCode() const { return DLGC_WANTCHARS | DLGC_WANTARROWS; }

}  // namespace toolkit::win32
