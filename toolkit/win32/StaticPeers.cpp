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

// Not every theme has a look for the caption of a disabled group box.
void FramePeer::paintDisabledCaption() {
  const std::wstring caption = wide(withoutMnemonic(frame_.caption()));
  if (caption.empty()) return;
  HDC context = GetDC(window());
  {
    const Selected font(context, host().font(frame_.font()));
    SIZE size{};
    GetTextExtentPoint32W(context, caption.c_str(), static_cast<int>(caption.size()), &size);
    RECT covered{kCaptionLeft - 3, 0, kCaptionLeft + size.cx + 4, size.cy};
    FillRect(context, &covered, host().background());
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(COLOR_GRAYTEXT));
    TextOutW(context, kCaptionLeft, 0, caption.c_str(), static_cast<int>(caption.size()));
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
  if (message == WM_PAINT && !IsWindowEnabled(window)) paintDisabledCaption();
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
