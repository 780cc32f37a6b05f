#include "toolkit/win32/AccessibleNames.h"

#include <initguid.h>
// The identifiers of what follows are defined here.
#include <oleacc.h>

namespace toolkit::win32 {

AccessibleNames::AccessibleNames() {
  void* services = nullptr;
  if (SUCCEEDED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER,
                                 IID_IAccPropServices, &services))) {
    services_ = static_cast<IAccPropServices*>(services);
  }
}

AccessibleNames::~AccessibleNames() {
  while (!told_.empty()) forget(told_.begin()->first);
  if (services_) services_->Release();
}

void AccessibleNames::tell(HWND window, const std::wstring& name) {
  if (!services_) return;
  std::wstring& told = told_[window];
  if (told == name) return;
  told = name;
  services_->SetHwndPropStr(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, PROPID_ACC_NAME,
                            name.c_str());
}

void AccessibleNames::forget(HWND window) {
  if (!services_ || told_.erase(window) == 0) return;
  MSAAPROPID name = PROPID_ACC_NAME;
  services_->ClearHwndProps(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, &name, 1);
}

}  // namespace toolkit::win32
