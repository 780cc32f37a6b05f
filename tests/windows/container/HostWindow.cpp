#include "tests/windows/container/HostWindow.h"

#include <stdexcept>
#include <utility>

namespace container {

namespace {

constexpr const wchar_t* kClass = L"TessalineTestHost";
constexpr int kWidth = 900;
constexpr int kHeight = 700;
constexpr int kField = 22;

// All measures are pixels at 96 dots per inch.
int scaled(int pixels) { return MulDiv(pixels, static_cast<int>(GetDpiForSystem()), 96); }

HWND field(HWND parent, int top) {
  return CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER, 4,
                         scaled(top), scaled(120), scaled(kField), parent, nullptr, nullptr,
                         nullptr);
}

bool dispatchOne(const std::function<bool(MSG&)>& translate) {
  MSG message = {};
  if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) == 0) return false;
  if (message.message == WM_QUIT) return false;
  if (translate && translate(message)) return true;
  TranslateMessage(&message);
  DispatchMessageW(&message);
  return true;
}

}  // namespace

HostWindow::HostWindow() {
  WNDCLASSW type = {};
  type.lpfnWndProc = &HostWindow::procedure;
  type.hInstance = GetModuleHandleW(nullptr);
  type.lpszClassName = kClass;
  type.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  type.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  RegisterClassW(&type);  // fails the second time, harmlessly
  window_ = CreateWindowExW(WS_EX_CONTROLPARENT, kClass, L"Hôte",
                            WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 20, 20, scaled(kWidth),
                            scaled(kHeight), nullptr, nullptr, type.hInstance, this);
  if (window_ == nullptr) throw std::runtime_error("no host window");
  before_ = field(window_, 4);
  after_ = field(window_, kHeight - 70);
  ShowWindow(window_, SW_SHOW);
  SetForegroundWindow(window_);
  pumpUntil([this] { return GetForegroundWindow() == window_; }, 3000);
}

HostWindow::~HostWindow() {
  onDestroy = {};
  onFocus = {};
  destroy();
  pump();
}

RECT HostWindow::place() const {
  return {4, scaled(30), 4 + scaled(860), scaled(30) + scaled(590)};
}

void HostWindow::destroy() {
  if (window_ != nullptr) DestroyWindow(window_);
}

LRESULT HostWindow::procedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  if (message == WM_NCCREATE) {
    const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(l);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
  }
  auto* self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self != nullptr && message == WM_SETFOCUS && self->onFocus) {
    self->onFocus();
    return 0;
  }
  if (self != nullptr && message == WM_SYSCOMMAND && (w & 0xFFF0) == SC_KEYMENU) {
    ++self->menus_;
    return 0;
  }
  if (self != nullptr && message == WM_DESTROY) {
    const auto notify = std::exchange(self->onDestroy, {});
    if (notify) notify();
    self->window_ = nullptr;
  }
  return DefWindowProcW(window, message, w, l);
}

void pump(const std::function<bool(MSG&)>& translate) {
  do {
    while (dispatchOne(translate)) {
    }
    // What was sent by the display server may still be on its way.
  } while (MsgWaitForMultipleObjects(0, nullptr, FALSE, 2, QS_ALLINPUT) == WAIT_OBJECT_0 &&
           dispatchOne(translate));
}

bool pumpUntil(const std::function<bool()>& done, DWORD milliseconds,
               const std::function<bool(MSG&)>& translate) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  while (!done()) {
    if (GetTickCount64() > end) return false;
    if (!dispatchOne(translate)) MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
  }
  return true;
}

}  // namespace container
