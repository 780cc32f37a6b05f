#include "tests/windows/lifecycle/AtlHost.h"

#include <stdexcept>

#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {

using Microsoft::WRL::ComPtr;

namespace {

using Init = BOOL(WINAPI*)();
using Attach = HRESULT(WINAPI*)(IUnknown*, HWND, IUnknown**);

template <class Function>
Function exported(HMODULE module, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace

AtlHost::AtlHost(container::HostWindow& window) {
  const HMODULE atl = LoadLibraryW(L"atl100.dll");
  if (atl == nullptr) throw std::runtime_error("no atl100.dll");
  static const bool ready = exported<Init>(atl, "AtlAxWinInit")() != FALSE;  // once a process
  if (!ready) throw std::runtime_error("atl100.dll is not ready");
  const RECT place = window.place();
  holder_ = CreateWindowExW(0, L"AtlAxWin100", nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
                            place.left, place.top, place.right - place.left,
                            place.bottom - place.top, window.handle(), nullptr, nullptr, nullptr);
  ComPtr<IUnknown> made = library().create();
  if (holder_ == nullptr ||
      FAILED(exported<Attach>(atl, "AtlAxAttachControl")(made.Get(), holder_, &site_))) {
    throw std::runtime_error("the control is not attached");
  }
  made.As(&control_);
}

HWND AtlHost::controlWindow() const {
  ComPtr<IOleWindow> window;
  HWND handle = nullptr;
  if (control_ != nullptr && SUCCEEDED(control_.As(&window))) window->GetWindow(&handle);
  return handle;
}

void AtlHost::release() {
  control_.Reset();
  site_.Reset();
}

}  // namespace lifecycle
