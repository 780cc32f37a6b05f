#include "ocx/PostedCall.h"

#include <system_error>

#include "com/Module.h"
#include "toolkit/win32/Border.h"
#include "toolkit/win32/ObjectTable.h"

namespace ocx {

namespace {

constexpr const wchar_t* kClass = L"TessalineCall";
constexpr UINT kCall = WM_APP;
constexpr UINT_PTR kTimer = 1;
constexpr UINT kRetryMilliseconds = 20;

toolkit::win32::ObjectTable<HWND, PostedCall>& calls() {
  static toolkit::win32::ObjectTable<HWND, PostedCall> table;
  return table;
}

[[noreturn]] void refused(const char* what) {
  throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), what);
}

ATOM registered(WNDPROC procedure) {
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = procedure;
  windowClass.hInstance = com::module();
  windowClass.lpszClassName = kClass;
  const ATOM atom = RegisterClassExW(&windowClass);
  if (atom == 0) refused("RegisterClassEx");
  return atom;
}

}  // namespace

LRESULT CALLBACK PostedCall::procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  return toolkit::win32::windowBorder("PostedCall", LRESULT{0},
                                      [&] { return received(window, message, first, second); });
}

LRESULT PostedCall::received(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message != kCall && message != WM_TIMER) {
    return DefWindowProcW(window, message, first, second);
  }
  KillTimer(window, kTimer);
  if (PostedCall* const call = calls().find(window)) call->attempt();
  return 0;
}

// A call that is made may end the life of this object.
void PostedCall::attempt() {
  const std::function<bool()> call = call_;
  waiting_ = false;
  if (!call()) waiting_ = SetTimer(window_, kTimer, kRetryMilliseconds, nullptr) != 0;
}

void PostedCall::post() {
  if (window_ == nullptr) {
    // Registered once, whichever thread comes first; it stays, as the module does.
    static const ATOM windowClass = registered(procedure);
    window_ = CreateWindowExW(0, MAKEINTATOM(windowClass), L"", 0, 0, 0, 0, 0, HWND_MESSAGE,
                              nullptr, com::module(), nullptr);
    if (window_ == nullptr) refused("CreateWindowEx");
    calls().add(window_, this);
  }
  if (!waiting_) waiting_ = PostMessageW(window_, kCall, 0, 0) != 0;
}

PostedCall::~PostedCall() {
  if (window_ != nullptr) {
    calls().remove(window_);
    DestroyWindow(window_);
  }
}

}  // namespace ocx
