#include "toolkit/win32/LinePeer.h"

#include <algorithm>

#include "toolkit/win32/Handles.h"

namespace toolkit::win32 {

void LinePeer::centreLine(HWND edit) {
  SetWindowPos(edit, nullptr, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

int LinePeer::lineHeight(HWND window) {
  HDC context = GetDC(window);
  TEXTMETRICW metrics{};
  {
    const Selected font(context, host().font(control().font()));
    GetTextMetricsW(context, &metrics);
  }
  ReleaseDC(window, context);
  return static_cast<int>(metrics.tmHeight);
}

int LinePeer::spareAbove(HWND edit, const RECT& place) {
  return std::max(0, (static_cast<int>(place.bottom - place.top) - lineHeight(edit)) / 2);
}

// Between the border, which is as wide above as it is on the left, and the client area.
void LinePeer::paintAbove(HWND edit) {
  RECT window{};
  GetWindowRect(edit, &window);
  RECT client{};
  GetClientRect(edit, &client);
  MapWindowPoints(edit, nullptr, reinterpret_cast<POINT*>(&client), 2);
  const LONG border = client.left - window.left;
  const RECT above{border, border, client.right - window.left, client.top - window.top};
  if (above.bottom <= above.top) return;
  HDC context = GetWindowDC(edit);
  const bool typed = IsWindowEnabled(edit) && (GetWindowLongW(edit, GWL_STYLE) & ES_READONLY) == 0;
  const UINT asked = typed ? WM_CTLCOLOREDIT : WM_CTLCOLORSTATIC;
  const LRESULT brush = SendMessageW(GetParent(edit), asked, reinterpret_cast<WPARAM>(context),
                                     reinterpret_cast<LPARAM>(edit));
  if (brush) FillRect(context, &above, reinterpret_cast<HBRUSH>(brush));
  ReleaseDC(edit, context);
}

LRESULT LinePeer::lineMessage(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
  const LRESULT result = ControlPeer::message(edit, message, wParam, lParam);
  if (!attached()) return result;
  switch (message) {
    case WM_NCCALCSIZE: {
      if (lParam == 0) return result;
      auto& client = *reinterpret_cast<RECT*>(lParam);  // first in either of the two structures
      client.top += spareAbove(edit, client);
      return result;
    }
    case WM_NCPAINT:
      paintAbove(edit);
      return result;
    case WM_NCHITTEST:
      return result == HTNOWHERE || result == HTBORDER ? HTCLIENT : result;
    case WM_ENABLE:
      RedrawWindow(edit, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);
      return result;
    default:
      return result;
  }
}

}  // namespace toolkit::win32
