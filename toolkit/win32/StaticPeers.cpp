#include "toolkit/win32/StaticPeers.h"

#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

constexpr int kCaptionLeft = 8;  // pixels from a frame's edge to its caption, at any dpi

}  // namespace

void FramePeer::copy(Aspect what) {
  if (what == Aspect::Caption) {
    setWindowText(wide(frame_.caption()));
    InvalidateRect(window(), nullptr, TRUE);
  }
  if (what == Aspect::Style) InvalidateRect(window(), nullptr, TRUE);
}

void FramePeer::applyPlace() {
  ControlPeer::applyPlace();
  host().placeWithin(frame_);
}

// Not every theme has a look for the caption of a disabled group box, and some measure the caption
// in another font than they draw it in, which cuts it.
void FramePeer::paintCaption() {
  const std::wstring caption = wide(frame_.caption());
  if (caption.empty()) return;
  const bool enabled = IsWindowEnabled(window()) != FALSE;
  const bool hidden = (SendMessageW(window(), WM_QUERYUISTATE, 0, 0) & UISF_HIDEACCEL) != 0;
  const UINT format = DT_SINGLELINE | DT_NOCLIP | (hidden ? DT_HIDEPREFIX : 0U);
  HDC context = GetDC(window());
  {
    const Selected font(context, host().font(frame_.font()));
    RECT place{kCaptionLeft, 0, kCaptionLeft, 0};
    DrawTextW(context, caption.c_str(), static_cast<int>(caption.size()), &place,
              format | DT_CALCRECT);
    const RECT covered{place.left - 3, place.top, place.right + 4, place.bottom};
    FillRect(context, &covered, host().background());
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    DrawTextW(context, caption.c_str(), static_cast<int>(caption.size()), &place, format);
  }
  ReleaseDC(window(), context);
}

LRESULT FramePeer::message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_ERASEBKGND) {
    RECT client{};
    GetClientRect(window, &client);
    FillRect(reinterpret_cast<HDC>(wParam), &client, host().background());
    return 1;
  }
  const LRESULT result = ControlPeer::message(window, message, wParam, lParam);
  if (!attached()) return result;
  if (message == WM_PAINT) paintCaption();
  if (message == WM_ENABLE) InvalidateRect(window, nullptr, TRUE);
  return result;
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
