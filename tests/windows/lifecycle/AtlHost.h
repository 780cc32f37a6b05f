// A container that is not ours: the ATL library's window class.
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include "tests/windows/container/HostWindow.h"

namespace lifecycle {

// Holds a new control in the window. It places, shows and closes; it forwards no keys and has no
// ambients.
class AtlHost {
 public:
  // std::runtime_error when the library is not there or refuses the control.
  explicit AtlHost(container::HostWindow& window);
  AtlHost(const AtlHost&) = delete;
  AtlHost& operator=(const AtlHost&) = delete;

  const Microsoft::WRL::ComPtr<IDispatch>& control() const { return control_; }
  HWND holder() const { return holder_; }
  HWND controlWindow() const;
  // Lets the control go; its window goes with the host's.
  void release();

 private:
  HWND holder_ = nullptr;
  Microsoft::WRL::ComPtr<IUnknown> site_;  // the library makes one only when asked for it
  Microsoft::WRL::ComPtr<IDispatch> control_;
};

}  // namespace lifecycle
