#include "toolkit/win32/ComboPeer.h"

#include <algorithm>
#include <utility>

#include "toolkit/win32/Handles.h"
#include "toolkit/win32/Typing.h"
#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

constexpr int kLinesShown = 12;
constexpr int kSideMargin = 3;  // pixels at 96 dots per inch
constexpr UINT kOpenList = WM_APP + 5;

bool opensList(UINT message, WPARAM wParam) {
  return (message == WM_KEYDOWN && wParam == VK_F4) ||
         (message == WM_SYSKEYDOWN && (wParam == VK_DOWN || wParam == VK_UP));
}

class Opening {
 public:
  explicit Opening(bool& flag) : flag_(flag) { flag_ = true; }
  Opening(const Opening&) = delete;
  Opening& operator=(const Opening&) = delete;
  ~Opening() { flag_ = false; }

 private:
  bool& flag_;
};

bool changesLines(UINT message) {
  return message == CB_ADDSTRING || message == CB_INSERTSTRING || message == CB_DELETESTRING ||
         message == CB_RESETCONTENT || message == CB_DIR;
}

}  // namespace

ControlPeer::Blueprint ComboPeer::blueprint() const {
  const DWORD kind =
      editable() ? CBS_DROPDOWN : CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS;
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
  if (!combo_.hasFocus()) copyCaret();
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
  if (!editable()) pass(CB_SETITEMHEIGHT, 0, lineHeight(window()));
  applyPlace();
}

// As high as in a text box of the same height, where the border of the edit keeps one more pixel.
int ComboPeer::spareAbove(HWND edit, const RECT& place) {
  constexpr int kKept = 1;
  RECT combo{};
  GetClientRect(window(), &combo);
  const int above = (static_cast<int>(combo.bottom) - lineHeight(edit)) / 2 + kKept;
  return std::max(0, above - static_cast<int>(place.top));
}

// Painted here: in a field that cannot be typed into, the system writes the text at the top.
void ComboPeer::drawItem(const DRAWITEMSTRUCT& item) {
  const auto line = static_cast<int>(item.itemID);
  const bool disabled = (item.itemState & ODS_DISABLED) != 0;
  beginLine(item, GetSysColor(disabled ? COLOR_GRAYTEXT : COLOR_WINDOWTEXT));
  RECT area = item.rcItem;
  area.left += host().scale().ofPixelsAt96(kSideMargin);
  const std::wstring text = wide(combo_.items().text(line));
  const Selected font(item.hDC, host().font(combo_.font()));
  constexpr UINT kHow = DT_SINGLELINE | DT_NOPREFIX | DT_VCENTER | DT_END_ELLIPSIS;
  DrawTextW(item.hDC, text.c_str(), -1, &area, kHow);
  endLine(item);
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
    case Aspect::Caret:
      copyCaret();
      break;
    case Aspect::Value:
      copyOpened();
      break;
    case Aspect::Style:
      if (editable()) pass(CB_LIMITTEXT, static_cast<WPARAM>(combo_.maxLength()));
      break;
    default:
      break;
  }
}

void ComboPeer::flush() {
  if (copying()) return;
  if (!holdsTheLines()) itemsChanged_ = true;
  if (!itemsChanged_ && !choiceChanged_) return;
  choiceChanged_ = false;
  if (std::exchange(itemsChanged_, false)) fill();
  copyChoice();
}

void ComboPeer::lost(HWND window) {
  if (window == edit_) edit_ = nullptr;
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
  if (!combo_.hasFocus()) copyCaret();
  known_ = windowLine();
}

// The system selects what it has written into the field, also in one that the user is not in.
void ComboPeer::copyCaret() {
  if (!edit_) return;
  const std::wstring text = wide(combo_.text());
  const int start = toolkit::win32::unitsOf(text, combo_.selectionStart());
  const int end = toolkit::win32::unitsOf(text, combo_.selectionStart() + combo_.selectionLength());
  DWORD from = 0;
  DWORD to = 0;
  pass(edit_, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
  if (static_cast<int>(from) == start && static_cast<int>(to) == end) return;
  pass(edit_, EM_SETSEL, static_cast<WPARAM>(start), end);
}

void ComboPeer::reportCaret() {
  if (!edit_) return;
  DWORD from = 0;
  DWORD to = 0;
  pass(edit_, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
  const std::wstring text = windowText();
  const int start = charactersIn(text, static_cast<int>(from));
  const int length = charactersIn(text, static_cast<int>(to)) - start;
  if (start == combo_.selectionStart() && length == combo_.selectionLength()) return;
  combo_.userSelect(start, length);
}

// The list ------------------------------------------------------------------------------------

// By code, the list opens once what the user has done has ended: its lines and the focus are there
// by then.
void ComboPeer::copyOpened() {
  if (opening_) return;
  if (combo_.opened() && !dropped()) {
    PostMessageW(window(), kOpenList, 0, 0);
    return;
  }
  if (!combo_.opened() && dropped()) {
    flush();
    const Copying quiet(*this);
    pass(CB_SHOWDROPDOWN, FALSE);
  }
  settle();
}

void ComboPeer::showList() {
  if (!combo_.opened() || dropped()) return;
  if (!combo_.hasFocus() || GetFocus() != focusWindow()) {
    combo_.closedUp();
    return;
  }
  {
    const Copying quiet(*this);
    pass(CB_SHOWDROPDOWN, TRUE);
    // The system has highlighted the line that resembles the text, as if it were pointed at.
    if (windowLine() != combo_.listIndex()) {
      pass(CB_SETCURSEL, static_cast<WPARAM>(combo_.listIndex()));
    }
  }
  settle();
}

void ComboPeer::settle() {
  confirmed_ = false;
  told_ = false;
  if (itemsChanged_) return;
  const bool kept = !editable() || windowText() == wide(combo_.text());
  copyChoice();
  if (kept || !edit_) return;
  const auto end = static_cast<LPARAM>(windowText().size());
  pass(edit_, EM_SETSEL, static_cast<WPARAM>(end), end);
}

LRESULT ComboPeer::open(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  {
    const Opening asked(opening_);
    combo_.userDropDown();
  }
  if (!attached()) return 0;
  flush();
  if (!combo_.opened()) return 0;
  LRESULT result = 0;
  {
    const Opening follows(opening_);
    result = pass(window, message, wParam, lParam);
  }
  if (!attached()) return result;
  if (!dropped()) combo_.closedUp();
  settle();
  return result;
}

// What the arrows and the mouse have pointed at in the open list.
void ComboPeer::reportSilent() {
  if (combo_.hasFocus()) reportCaret();
  if (!combo_.opened()) return;
  const int line = windowLine();
  if (line == known_) return;
  known_ = line;
  combo_.userPoint(line);
}

// The window may write into its field after it has told that its list is closed.
void ComboPeer::closedUp() {
  combo_.closedUp();
  choiceChanged_ = true;
  InvalidateRect(window(), nullptr, FALSE);
}

void ComboPeer::lineChosen() {
  const int line = windowLine();
  if (line < 0) return;
  told_ = true;
  const auto merge = combo_.opened() ? Host::Merge::Yes : Host::Merge::No;
  host().note(*this, merge, [this, line] { combo_.userChoose(line); });
}

// Arrows in an open list choose nothing. A click on a line first says that it is meant, then closes
// the list and tells of the line, in either order.
void ComboPeer::commanded(WORD code) {
  if (copying()) return;
  if (!itemsChanged_ && !holdsTheLines()) {
    copy(Aspect::Items);
    return;
  }
  switch (code) {
    case CBN_EDITCHANGE: {
      known_ = windowLine();
      std::string typed = narrow(windowText());
      // A completed rest that is typed in full leaves the same text.
      if (typed == combo_.text() && combo_.selectionLength() == 0) return;
      DWORD end = 0;
      if (edit_) pass(edit_, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end));
      const int caret = edit_ ? charactersIn(windowText(), static_cast<int>(end)) : -1;
      host().note(*this, Host::Merge::Yes,
                  [this, typed = std::move(typed), caret] { combo_.userEdit(typed, caret); });
      return;
    }
    case CBN_DROPDOWN:
      if (!opening_) host().note(*this, Host::Merge::No, [this] { combo_.userDropDown(); });
      return;
    case CBN_SELENDOK:
      confirmed_ = combo_.opened();
      return;
    case CBN_SELCHANGE:
      if (!combo_.opened() || confirmed_) lineChosen();
      return;
    case CBN_CLOSEUP:
      if (!combo_.opened() || opening_ || told_) return;
      if (!confirmed_ || !host().takesInput()) {
        closedUp();
      } else {
        host().note(*this, Host::Merge::Yes, [this] {
          reportSilent();
          combo_.userCloseUp(true);
        });
      }
      return;
    default:
      return;
  }
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
  // A closed list leaves the wheel to what is around it.
  if (message == WM_MOUSEWHEEL && !dropped()) {
    return DefWindowProcW(window, message, wParam, lParam);
  }
  if (message == CB_SHOWDROPDOWN && wParam && !copying()) {
    host().deliver();
    if (!attached()) return 0;
    flush();
    if (dropped() || !host().takesInput()) return 0;
    if (!host().surface().moveFocus(&combo_) || !attached()) return 0;
    return open(window, message, wParam, lParam);
  }
  const LRESULT result = window == edit_ ? lineMessage(window, message, wParam, lParam)
                                         : ControlPeer::message(window, message, wParam, lParam);
  if (attached() && window == this->window() && changesLines(message)) copy(Aspect::Items);
  return result;
}

bool ComboPeer::pointsAtNone() { return combo_.opened() && dropped() && windowLine() < 0; }

// The window itself would go down from a first line that it has not highlighted.
void ComboPeer::pointAtFirst() {
  {
    const Copying quiet(*this);
    pass(CB_SETCURSEL, 0);
  }
  reportSilent();
}

LRESULT ComboPeer::leftKey(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_KEYDOWN && (wParam == VK_RETURN || wParam == VK_ESCAPE || wParam == VK_TAB)) {
    return 0;
  }
  if (message == WM_KEYDOWN && wParam == VK_DOWN && pointsAtNone()) {
    pointAtFirst();
    return 0;
  }
  if (!opensList(message, wParam)) return ControlPeer::leftKey(window, message, wParam, lParam);
  if (message == WM_SYSKEYDOWN) host().keyboard().spendAlt();
  if (!combo_.opened()) return open(window, message, wParam, lParam);
  combo_.userCloseUp(true);
  return 0;
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
  return open(window, message, wParam, lParam);
}

LRESULT ComboPeer::dialogCode() const { return DLGC_WANTCHARS | DLGC_WANTARROWS; }

}  // namespace toolkit::win32
