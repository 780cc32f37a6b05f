#include "toolkit/win32/StaticPeers.h"

#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

void FramePeer::copy(Aspect what) {
  if (what == Aspect::Caption) setWindowText(wide(frame_.caption()));
  if (what == Aspect::Style) InvalidateRect(window(), nullptr, TRUE);
}

void FramePeer::applyPlace() {
  ControlPeer::applyPlace();
  host().placeWithin(frame_);
}

LRESULT FramePeer::message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_ERASEBKGND) {
    RECT client{};
    GetClientRect(window, &client);
    FillRect(reinterpret_cast<HDC>(wParam), &client, host().background());
    return 1;
  }
  return ControlPeer::message(window, message, wParam, lParam);
}

ControlPeer::Blueprint LabelPeer::blueprint() const {
  const DWORD alignment = label_.centered() ? SS_CENTER : SS_LEFT;
  return {L"STATIC", alignment, 0};
}

void LabelPeer::copy(Aspect what) {
  if (what == Aspect::Caption) setWindowText(wide(label_.caption()));
  if (what != Aspect::Style) return;
  const LONG style = GetWindowLongW(window(), GWL_STYLE) & ~SS_TYPEMASK;
  SetWindowLongW(window(), GWL_STYLE, style | (label_.centered() ? SS_CENTER : SS_LEFT));
  InvalidateRect(window(), nullptr, TRUE);
}

}  // namespace toolkit::win32
