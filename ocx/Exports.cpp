// The library's entry points.
#include <ole2.h>
#include <shlwapi.h>
#include <wrl/client.h>

#include "com/ComBorder.h"
#include "com/Module.h"
#include "com/Owned.h"
#include "com/Registration.h"
#include "ocx/ClassFactory.h"
#include "ocx/ControlRegistration.h"
#include "ocx/TessalineTypes.h"

namespace com {

const wchar_t* errorSource() { return ocx::kProgId; }

}  // namespace com

namespace {

HRESULT classObject(REFCLSID type, REFIID wanted, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (type != __uuidof(Ctr_OrgPriseCharge)) return CLASS_E_CLASSNOTAVAILABLE;
  com::pinModule();
  const auto factory = com::owned(ocx::ClassFactory::make());
  return factory->QueryInterface(wanted, object);
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID type, REFIID wanted, LPVOID* object) {
  return com::comBorder([&] { return classObject(type, wanted, object); });
}

STDAPI DllCanUnloadNow() {
  return com::comBorder([] { return com::objectsAlive() == 0 ? S_OK : S_FALSE; });
}

STDAPI DllRegisterServer() {
  return com::comBorder([] {
    com::registerLibrary(ocx::controlTable(com::modulePath()));
    return S_OK;
  });
}

STDAPI DllUnregisterServer() {
  return com::comBorder([] {
    com::unregisterLibrary(ocx::controlTable(com::modulePath()));
    return S_OK;
  });
}

STDAPI DllInstall(BOOL install, PCWSTR commandLine) {
  return com::comBorder([&] {
    com::installLibrary(install != FALSE, commandLine, ocx::controlTable(com::modulePath()));
    return S_OK;
  });
}
