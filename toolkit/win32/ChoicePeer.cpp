#include "toolkit/win32/ChoicePeer.h"

#include <commctrl.h>
#include <uxtheme.h>

#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

constexpr int kMarkSide = 13;  // pixels at 96 dpi
constexpr int kGap = 5;        // from the mark to the caption

// Parts and states of the theme's buttons, from the system's vssym32.h.
constexpr int kOptionPart = 2;
constexpr int kCheckPart = 3;
constexpr int kHot = 1;  // each state's place after the normal one
constexpr int kPressed = 2;
constexpr int kDisabled = 3;
constexpr int kUnset = 1;
constexpr int kSet = 5;

struct CloseTheme {
  void operator()(void* theme) const { CloseThemeData(theme); }
};
using OwnedTheme = std::unique_ptr<std::remove_pointer_t<HTHEME>, CloseTheme>;

// Buttons of version 6 are the common controls', older ones the system's own, which no theme
// paints.
OwnedTheme themeOf(HWND button) {
  const auto owner = reinterpret_cast<HMODULE>(GetClassLongPtrW(button, GCLP_HMODULE));
  if (owner == GetModuleHandleW(L"user32.dll") || !IsAppThemed()) return nullptr;
  return OwnedTheme(OpenThemeData(button, L"BUTTON"));
}

}  // namespace

int captionLeft(int dpi) { return MulDiv(kMarkSide + kGap, dpi, 96); }

LRESULT ChoicePeer::message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_ERASEBKGND) return 1;
  if (message == WM_PRINTCLIENT) {
    paint(reinterpret_cast<HDC>(wParam));
    return 0;
  }
  if (message == WM_PAINT) {
    PAINTSTRUCT area{};
    const HDC context = BeginPaint(window, &area);
    if (context) paint(context);
    EndPaint(window, &area);
    return 0;
  }
  const LRESULT result = ButtonPeer::message(window, message, wParam, lParam);
  if (attached() && changesLook(message)) InvalidateRect(window, nullptr, FALSE);
  return result;
}

void ChoicePeer::paint(HDC context) {
  RECT client{};
  GetClientRect(window(), &client);
  FillRect(context, &client, host().background());
  paintMark(context, client, host().scale().ofPixelsAt96(kMarkSide));
  client.left += captionLeft(host().scale().dpi());
  paintCaption(context, client);
}

void ChoicePeer::paintMark(HDC context, const RECT& client, int side) {
  const LONG top = (client.bottom - side) / 2;
  RECT mark{0, top, side, top + side};
  const bool option = control().kind() == Kind::OptionButton;
  const auto look = static_cast<UINT>(pass(BM_GETSTATE));
  const bool answers = !control().readOnly();
  const bool pressed = answers && (look & BST_PUSHED) != 0;
  if (const OwnedTheme theme = themeOf(window())) {
    int state = value() ? kSet : kUnset;
    if (!windowEnabled()) {
      state += kDisabled;
    } else if (pressed) {
      state += kPressed;
    } else if (answers && (look & BST_HOT) != 0) {
      state += kHot;
    }
    DrawThemeBackground(theme.get(), context, option ? kOptionPart : kCheckPart, state, &mark,
                        nullptr);
    return;
  }
  UINT kind = option ? DFCS_BUTTONRADIO : DFCS_BUTTONCHECK;
  if (value()) kind |= DFCS_CHECKED;
  // That is a mark on the ground of what cannot be changed, as read-only fields have it.
  if (pressed || !answers) kind |= DFCS_PUSHED;
  if (!windowEnabled()) kind |= DFCS_INACTIVE;
  DrawFrameControl(context, &mark, DFC_BUTTON, kind);
}

void ChoicePeer::paintCaption(HDC context, RECT area) {
  const std::wstring caption = wide(control().caption());
  const Selected font(context, host().font(control().font()));
  const UINT format = DT_SINGLELINE | DT_VCENTER | hiddenPrefix();
  SetBkMode(context, TRANSPARENT);
  SetTextColor(context, host().palette().text(control().color(), windowEnabled()));
  DrawTextW(context, caption.c_str(), -1, &area, format);
  if (GetFocus() != window() || hidesFocus()) return;
  RECT text = area;
  DrawTextW(context, caption.c_str(), -1, &text, format | DT_CALCRECT);
  OffsetRect(&text, 0, (area.bottom - text.bottom) / 2);
  InflateRect(&text, 1, 1);
  SetBkColor(context, host().palette().back());
  DrawFocusRect(context, &text);
}

}  // namespace toolkit::win32
