// The messages to the windows of our own class: the surface's, and one a page.
#include <system_error>

#include "toolkit/win32/Border.h"
#include "toolkit/win32/ControlPeer.h"
#include "toolkit/win32/GivenMemory.h"
#include "toolkit/win32/ObjectTable.h"
#include "toolkit/win32/PostedMessages.h"
#include "toolkit/win32/SurfaceImplementation.h"
#include "toolkit/win32/WindowClasses.h"

namespace toolkit::win32 {

namespace {

constexpr UINT kDpiChangedAfterParent = 0x02E3;

ObjectTable<HWND, SurfaceWindow::Implementation>& surfaces() {
  static ObjectTable<HWND, SurfaceWindow::Implementation> table;
  return table;
}

}  // namespace

HWND SurfaceWindow::Implementation::createContainer(HWND parent, const RECT& place) {
  HWND window = CreateWindowExW(0, surfaceClass(&Implementation::containerProcedure), L"",
                                WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, place.left, place.top,
                                place.right - place.left, place.bottom - place.top, parent, nullptr,
                                moduleInstance(), nullptr);
  if (!window) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                            "CreateWindow");
  }
  surfaces().add(window, this);
  containers_.push_back(window);
  return window;
}

void SurfaceWindow::Implementation::forgetContainers() {
  for (HWND container : containers_) surfaces().remove(container);
  containers_.clear();
}

LRESULT CALLBACK SurfaceWindow::Implementation::containerProcedure(HWND window, UINT message,
                                                                   WPARAM wParam, LPARAM lParam) {
  return windowBorder("SurfaceWindow", LRESULT{0}, [=]() -> LRESULT {
    Implementation* const raw = surfaces().find(window);
    if (!raw) return DefWindowProcW(window, message, wParam, lParam);
    const auto self = raw->shared_from_this();
    const auto entry = self->entered();
    if (message == WM_NCDESTROY) surfaces().remove(window);
    return self->containerMessage(window, message, wParam, lParam);
  });
}

LRESULT SurfaceWindow::Implementation::containerMessage(HWND window, UINT message, WPARAM wParam,
                                                        LPARAM lParam) {
  if (!attached()) return DefWindowProcW(window, message, wParam, lParam);
  if (window == window_) {
    if (const auto answer = scroll_.message(window, message, wParam, lParam)) return *answer;
  }
  if (const auto answer = reflected(message, wParam, lParam)) return *answer;
  if (message == WM_ERASEBKGND) {
    RECT client{};
    GetClientRect(window, &client);
    FillRect(reinterpret_cast<HDC>(wParam), &client, background());
    return 1;
  }
  if (message == WM_QUERYUISTATE) return static_cast<LRESULT>(keyboard_.hiddenCues());
  if (message == WM_LBUTTONDOWN) {
    pressedBeside();
    return 0;
  }
  if (window == window_) {
    if (const auto answer = surfaceMessage(message, wParam, lParam)) return *answer;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

void SurfaceWindow::Implementation::pressedBeside() {
  deliver();
  if (takesInput()) keyboard_.pressedBeside();
}

std::optional<LRESULT> SurfaceWindow::Implementation::reflected(UINT message, WPARAM wParam,
                                                                LPARAM lParam) {
  const auto at = [this](auto window) { return peerOf(reinterpret_cast<HWND>(window)); };
  switch (message) {
    case WM_COMMAND:
      if (const auto peer = at(lParam)) peer->commanded(HIWORD(wParam));
      return 0;
    case WM_HSCROLL:
    case WM_VSCROLL:
      if (const auto peer = at(lParam)) peer->scrolled(LOWORD(wParam));
      return 0;
    case WM_NOTIFY: {
      const auto header = readGiven<NMHDR>(lParam);
      if (!header) return 0;
      const auto peer = at(header->hwndFrom);
      return peer ? peer->notified(*header) : 0;
    }
    case WM_DRAWITEM: {
      const auto item = readGiven<DRAWITEMSTRUCT>(lParam);
      if (!item) return TRUE;
      if (const auto peer = at(item->hwndItem)) peer->drawItem(*item);
      return TRUE;
    }
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN: {
      const auto peer = at(lParam);
      HBRUSH brush = peer ? peer->ground(reinterpret_cast<HDC>(wParam), message) : nullptr;
      if (!brush) return std::nullopt;
      return reinterpret_cast<LRESULT>(brush);
    }
    default:
      return std::nullopt;
  }
}

std::optional<LRESULT> SurfaceWindow::Implementation::surfaceMessage(UINT message, WPARAM wParam,
                                                                     LPARAM lParam) {
  switch (message) {
    case kDeliver:
      deliver();
      return 0;
    case kRefresh:
      refreshPeers();
      return 0;
    case kBringKeyboard:
      if (keyboard_.isHere()) keyboard_.bring();
      return 0;
    case kTakeFocus:
      if (GetFocus() == window_) keyboard_.take();
      return 0;
    case WM_SETFOCUS:
      keyboard_.came(nullptr, reinterpret_cast<HWND>(wParam));
      return 0;
    case WM_KILLFOCUS:
      keyboard_.left(window_, reinterpret_cast<HWND>(wParam));
      return 0;
    case WM_GETDLGCODE:
      return keyboard_.dialogCode(0, lParam);
    case WM_SETCURSOR:
      if (!GetPropW(window_, kHourglassProperty)) return std::nullopt;
      SetCursor(LoadCursorW(nullptr, IDC_WAIT));
      return TRUE;
    case WM_SIZE:
      layOut();
      return 0;
    case WM_UPDATEUISTATE:
      keyboard_.updateCues(wParam);
      return std::nullopt;  // on to the children
    case WM_SYSCOLORCHANGE:
      for (const auto& peer : peers_) {
        if (peer->attached()) SendMessageW(peer->window(), message, 0, 0);
      }
      colorsChanged();
      return 0;
    case WM_THEMECHANGED:
      colorsChanged();
      return 0;
    case kDpiChangedAfterParent:
      reread();
      return 0;
    case WM_DESTROY:
      detach();
      window_ = nullptr;
      return 0;
    default:
      return keyboard_.keyMessage(message, wParam);
  }
}

}  // namespace toolkit::win32
