#include "tests/windows/lifecycle/PropertyServices.h"

#include <stdexcept>

namespace lifecycle {

PropertyServices::PropertyServices() {
  if (FAILED(CoRegisterClassObject(CLSID_AccPropServices, static_cast<IClassFactory*>(this),
                                   CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_))) {
    throw std::runtime_error("the service for names cannot be stood in for");
  }
}

PropertyServices::~PropertyServices() { CoRevokeClassObject(cookie_); }

HRESULT PropertyServices::QueryInterface(REFIID id, void** object) {
  *object = nullptr;
  if (id == IID_IClassFactory || id == IID_IUnknown) {
    *object = static_cast<IClassFactory*>(this);
  } else if (id == IID_IAccPropServices) {
    *object = static_cast<IAccPropServices*>(this);
  }
  return *object == nullptr ? E_NOINTERFACE : S_OK;
}

HRESULT PropertyServices::CreateInstance(IUnknown*, REFIID id, void** object) {
  return QueryInterface(id, object);
}

HRESULT PropertyServices::SetHwndPropStr(HWND window, DWORD object, DWORD child,
                                         MSAAPROPID property, LPCWSTR text) {
  if (object != static_cast<DWORD>(OBJID_CLIENT) || child != CHILDID_SELF) return E_INVALIDARG;
  if (property != PROPID_ACC_NAME || IsWindow(window) == FALSE) return E_INVALIDARG;
  names_[window] = text;
  return S_OK;
}

HRESULT PropertyServices::ClearHwndProps(HWND window, DWORD, DWORD, const MSAAPROPID*, int) {
  names_.erase(window);
  return S_OK;
}

}  // namespace lifecycle
