#include "ocx/DesignWindow.h"

#include <system_error>
#include <utility>

#include "com/Module.h"
#include "toolkit/win32/Border.h"
#include "toolkit/win32/ObjectTable.h"

namespace ocx {

namespace {

constexpr const wchar_t* kClass = L"TessalineDesign";

toolkit::win32::ObjectTable<HWND, DesignWindow>& windows() {
  static toolkit::win32::ObjectTable<HWND, DesignWindow> table;
  return table;
}

[[noreturn]] void refused(const char* what) {
  throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), what);
}

}  // namespace

LRESULT CALLBACK DesignWindow::procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  return toolkit::win32::windowBorder("DesignWindow", LRESULT{0},
                                      [&] { return received(window, message, first, second); });
}

LRESULT DesignWindow::received(HWND window, UINT message, WPARAM first, LPARAM second) {
  DesignWindow* const own = windows().find(window);
  switch (own == nullptr ? WM_NULL : message) {
    case WM_PAINT:
      own->paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;  // the picture has its own ground
    case WM_NCHITTEST:
      return HTTRANSPARENT;
    case WM_MOUSEACTIVATE:
      return MA_NOACTIVATE;
    case WM_NCDESTROY:
      windows().remove(window);
      own->window_ = nullptr;
      break;
    default:
      break;
  }
  return DefWindowProcW(window, message, first, second);
}

DesignWindow::DesignWindow(HWND parent, const RECT& place, Paint paint) : paint_(std::move(paint)) {
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.style = CS_HREDRAW | CS_VREDRAW;
  windowClass.lpfnWndProc = procedure;
  windowClass.hInstance = com::module();
  windowClass.lpszClassName = kClass;
  if (RegisterClassExW(&windowClass) == 0 && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) {
    refused("RegisterClassEx");
  }
  window_ = CreateWindowExW(0, kClass, L"", WS_CHILD | WS_CLIPSIBLINGS, place.left, place.top,
                            place.right - place.left, place.bottom - place.top, parent, nullptr,
                            com::module(), nullptr);
  if (window_ == nullptr) refused("CreateWindowEx");
  windows().add(window_, this);
}

DesignWindow::~DesignWindow() {
  if (window_ == nullptr) return;
  windows().remove(window_);
  DestroyWindow(window_);
}

void DesignWindow::setPlace(const RECT& place) {
  SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void DesignWindow::show(bool visible) { ShowWindow(window_, visible ? SW_SHOWNA : SW_HIDE); }

void DesignWindow::repaint() { InvalidateRect(window_, nullptr, FALSE); }

void DesignWindow::paint() {
  PAINTSTRUCT paint{};
  RECT area{};
  const HDC context = BeginPaint(window_, &paint);
  GetClientRect(window_, &area);
  paint_(context, area);
  EndPaint(window_, &paint);
}

}  // namespace ocx
