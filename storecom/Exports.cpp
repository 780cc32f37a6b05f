// The library's entry points.
#include <olectl.h>
#include <shlwapi.h>

#include "com/ComBorder.h"
#include "com/Module.h"
#include "com/Owned.h"
#include "storecom/ClassFactory.h"
#include "storecom/Classes.h"
#include "storecom/RightsObject.h"
#include "storecom/StoreObjects.h"
#include "storecom/StoreRegistration.h"

namespace com {
const wchar_t* errorSource() { return L"TessalineStore"; }
}  // namespace com

namespace storecom {

namespace {

using Microsoft::WRL::ComPtr;

template <class Object>
ComPtr<IUnknown> makeAsUnknown() {
  return com::owned<IUnknown>(static_cast<IDispatch*>(new Object));
}

struct Class {
  const GUID& id;
  ClassFactory::Maker maker;
};

const Class kClasses[] = {{kClientClass, makeAsUnknown<ClientObject>},
                          {kRightsClass, makeAsUnknown<RightsObject>}};

}  // namespace

}  // namespace storecom

using com::comBorder;

STDAPI DllGetClassObject(REFCLSID id, REFIID iid, void** object) {
  return comBorder([&]() -> HRESULT {
    using namespace storecom;
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    for (const Class& type : kClasses) {
      if (type.id == id) {
        com::pinModule();
        return make<ClassFactory>(type.maker)->QueryInterface(iid, object);
      }
    }
    return CLASS_E_CLASSNOTAVAILABLE;
  });
}

STDAPI DllCanUnloadNow() {
  return comBorder([] { return com::objectsAlive() == 0 ? S_OK : S_FALSE; });
}

STDAPI DllRegisterServer() {
  return comBorder([] {
    com::registerLibrary(storecom::storeTable(com::modulePath()));
    return S_OK;
  });
}

STDAPI DllUnregisterServer() {
  return comBorder([] {
    com::unregisterLibrary(storecom::storeTable(com::modulePath()));
    return S_OK;
  });
}

STDAPI DllInstall(BOOL install, PCWSTR commandLine) {
  return comBorder([&] {
    com::installLibrary(install != FALSE, commandLine, storecom::storeTable(com::modulePath()));
    return S_OK;
  });
}
