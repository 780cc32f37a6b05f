#include "toolkit/win32/TextPeer.h"

#include "toolkit/win32/Typing.h"
#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

ControlPeer::Blueprint TextPeer::blueprint() const {
  const DWORD alignment = box_.rightAligned() ? ES_RIGHT : ES_LEFT;
  return {L"EDIT", WS_TABSTOP | ES_AUTOHSCROLL | alignment, WS_EX_CLIENTEDGE};
}

void TextPeer::applyPlace() {
  ControlPeer::applyPlace();
  centreLine(window());
}

void TextPeer::applyFont() {
  ControlPeer::applyFont();
  centreLine(window());
}

void TextPeer::copy(Aspect what) {
  if (what == Aspect::Text) copyText();
  if (what == Aspect::Selection) copySelection();
  if (what == Aspect::Style) copyStyle();
}

void TextPeer::copyText() {
  const std::wstring text = wide(box_.text());
  if (windowText() == text) return;
  setWindowText(text);
  copySelection();
}

void TextPeer::copySelection() {
  const std::wstring text = wide(box_.text());
  const int start = toolkit::win32::unitsOf(text, box_.selectionStart());
  const int end = toolkit::win32::unitsOf(text, box_.selectionStart() + box_.selectionLength());
  DWORD from = 0;
  DWORD to = 0;
  pass(EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
  if (static_cast<int>(from) == start && static_cast<int>(to) == end) return;
  pass(EM_SETSEL, static_cast<WPARAM>(start), end);
  pass(EM_SCROLLCARET);
}

void TextPeer::copyStyle() {
  pass(EM_LIMITTEXT, static_cast<WPARAM>(box_.maxLength()));
  const LONG style = GetWindowLongW(window(), GWL_STYLE);
  const LONG wanted = box_.rightAligned() ? style | ES_RIGHT : style & ~ES_RIGHT;
  if (style != wanted) SetWindowLongW(window(), GWL_STYLE, wanted);
  InvalidateRect(window(), nullptr, TRUE);
}

void TextPeer::reportSilent() {
  DWORD from = 0;
  DWORD to = 0;
  pass(EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
  const std::wstring text = windowText();
  const int start = charactersIn(text, static_cast<int>(from));
  const int length = charactersIn(text, static_cast<int>(to)) - start;
  if (start == box_.selectionStart() && length == box_.selectionLength()) return;
  box_.userSelect(start, length);
}

void TextPeer::commanded(WORD code) {
  if (code != EN_CHANGE || copying()) return;
  const std::wstring text = windowText();
  if (narrow(text) == box_.text()) return;
  DWORD end = 0;
  pass(EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end));
  const int caret = charactersIn(text, static_cast<int>(end));
  host().note(*this, Host::Merge::Yes,
              [this, typed = narrow(text), caret] { box_.userEdit(typed, caret); });
}

HBRUSH TextPeer::colors(HDC context, UINT message) {
  if (message == WM_CTLCOLORSTATIC) return nullptr;  // disabled: the system's look
  if (box_.color() == kBlack) return nullptr;
  SetTextColor(context, host().palette().field(box_.color()));
  SetBkColor(context, GetSysColor(COLOR_WINDOW));
  return GetSysColorBrush(COLOR_WINDOW);
}

LRESULT TextPeer::message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_PASTE) return lineMessage(window, message, wParam, lParam);
  host().deliver();
  if (attached() && host().takesInput() && !box_.readOnly()) pasteCleaned(window);
  return 0;
}

LRESULT TextPeer::leftKey(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_KEYDOWN && (wParam == VK_RETURN || wParam == VK_ESCAPE || wParam == VK_TAB)) {
    return 0;
  }
  return ControlPeer::leftKey(window, message, wParam, lParam);
}

LRESULT TextPeer::character(HWND window, WPARAM wParam, LPARAM lParam) {
  if (isForSurfaceAlone(wParam)) return 0;
  if (isCommand(wParam)) return pass(window, WM_CHAR, wParam, lParam);
  const char32_t key = joined(highSurrogate_, wParam);
  if (key == 0) return 0;
  const char32_t kept = box_.userKeyPress(key);
  if (kept == 0 || !attached()) return 0;
  for (const wchar_t unit : toolkit::win32::unitsOf(kept)) {
    pass(window, WM_CHAR, unit, lParam);
    if (!attached()) return 0;
  }
  return 0;
}

LRESULT TextPeer::dialogCode() const { return DLGC_WANTCHARS | DLGC_WANTARROWS | DLGC_HASSETSEL; }

}  // namespace toolkit::win32
