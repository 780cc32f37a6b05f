// The names that screen readers give to windows.
#pragma once

#include <windows.h>

#include <map>
#include <string>

struct IAccPropServices;

namespace toolkit::win32 {

// Windows itself names a window by its text, which of a field is what the user has typed. Where the
// system has no such service, nothing is named and nothing fails.
class AccessibleNames {
 public:
  AccessibleNames();
  AccessibleNames(const AccessibleNames&) = delete;
  AccessibleNames& operator=(const AccessibleNames&) = delete;
  ~AccessibleNames();

  // Does nothing when it has that name.
  void tell(HWND window, const std::wstring& name);
  // Before the window goes.
  void forget(HWND window);

 private:
  IAccPropServices* services_ = nullptr;
  std::map<HWND, std::wstring> told_;
};

}  // namespace toolkit::win32
