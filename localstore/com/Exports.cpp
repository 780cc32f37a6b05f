// The library's entry points.
#include <olectl.h>
#include <shlwapi.h>

#include "com/ComBorder.h"
#include "com/Module.h"
#include "com/Owned.h"
#include "localstore/com/ClassFactory.h"
#include "localstore/com/Classes.h"
#include "localstore/com/RightsObject.h"
#include "localstore/com/StoreObjects.h"
#include "localstore/com/StoreRegistration.h"

namespace com {
const wchar_t* errorSource() { return L"TessalineStore"; }
}  // namespace com

namespace localstore::face {

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

}  // namespace localstore::face

using com::comBorder;

STDAPI DllGetClassObject(REFCLSID id, REFIID iid, void** object) {
  return comBorder([&]() -> HRESULT {
    using namespace localstore::face;
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
    com::registerLibrary(localstore::face::storeTable(com::modulePath()));
    return S_OK;
  });
}

STDAPI DllUnregisterServer() {
  return comBorder([] {
    com::unregisterLibrary(localstore::face::storeTable(com::modulePath()));
    return S_OK;
  });
}

STDAPI DllInstall(BOOL install, PCWSTR commandLine) {
  return comBorder([&] {
    com::installLibrary(install != FALSE, commandLine,
                        localstore::face::storeTable(com::modulePath()));
    return S_OK;
  });
}
