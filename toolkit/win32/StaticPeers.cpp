#include "toolkit/win32/StaticPeers.h"

#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

constexpr int kCaptionLeft = 8;    // pixels from a frame's edge to its caption, at any dpi
constexpr int kBesideNumbers = 5;  // pixels at 96 dpi: the border of a list and its margin

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
  const UINT format = DT_SINGLELINE | DT_NOCLIP | hiddenPrefix();
  HDC context = GetDC(window());
  {
    const Selected font(context, host().font(frame_.font()));
    RECT place{kCaptionLeft, 0, kCaptionLeft, 0};
    DrawTextW(context, caption.c_str(), static_cast<int>(caption.size()), &place,
              format | DT_CALCRECT);
    const RECT covered{place.left - 3, place.top, place.right + 4, place.bottom};
    FillRect(context, &covered, host().background());
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, host().palette().text(frame_.color(), enabled));
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

// Painted here: the system draws the text of a disabled label in a colour of its own, whatever lies
// below it.
ControlPeer::Blueprint LabelPeer::blueprint() const { return {L"STATIC", SS_OWNERDRAW, 0}; }

void LabelPeer::copy(Aspect what) {
  if (what == Aspect::Caption) setWindowText(wide(label_.caption()));
  if (what == Aspect::Caption || what == Aspect::Style) InvalidateRect(window(), nullptr, TRUE);
}

void LabelPeer::drawItem(const DRAWITEMSTRUCT& item) {
  RECT area = item.rcItem;
  FillRect(item.hDC, &area, host().background());
  const std::wstring caption = wide(label_.caption());
  const Selected font(item.hDC, host().font(label_.font()));
  SetBkMode(item.hDC, TRANSPARENT);
  SetTextColor(item.hDC, host().palette().text(label_.color(), looksEnabled()));
  UINT alignment = label_.centered() ? DT_CENTER : DT_LEFT;
  if (label_.rightAligned()) {
    alignment = DT_RIGHT;
    area.right -= host().scale().ofPixelsAt96(kBesideNumbers);
  }
  DrawTextW(item.hDC, caption.c_str(), -1, &area,
            DT_WORDBREAK | DT_EXPANDTABS | alignment | hiddenPrefix());
}

}  // namespace toolkit::win32
