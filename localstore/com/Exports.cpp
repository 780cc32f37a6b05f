// The library's four entry points.
#include <olectl.h>

#include "com/ComBorder.h"
#include "com/Module.h"
#include "com/Owned.h"
#include "com/Registration.h"
#include "localstore/com/ClassFactory.h"
#include "localstore/com/Classes.h"
#include "localstore/com/RightsObject.h"
#include "localstore/com/StoreObjects.h"

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
  const wchar_t* name;
  const wchar_t* description;
  ClassFactory::Maker maker;
};

const Class kClasses[] = {
    {kClientClass, kClientName, L"Tessaline: opens a store in a file", makeAsUnknown<ClientObject>},
    {kRightsClass, kRightsName, L"Tessaline: rights of a user", makeAsUnknown<RightsObject>},
};

void addClass(com::RegistryTable& table, const Class& type) {
  const auto add = [&table](const std::wstring& key, const std::wstring& name,
                            const std::wstring& text) {
    table.entries.push_back({key, name, com::registryText(text)});
  };
  const std::wstring id = com::guidText(type.id);
  const std::wstring name = type.name;
  const std::wstring key = L"CLSID\\" + id;
  for (const std::wstring& programId : {name, name + L".1"}) {
    add(programId, L"", type.description);
    add(programId + L"\\CLSID", L"", id);
  }
  add(name + L"\\CurVer", L"", name + L".1");
  add(key, L"", type.description);
  add(key + L"\\InprocServer32", L"", com::modulePath());
  add(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  add(key + L"\\ProgID", L"", name + L".1");
  add(key + L"\\VersionIndependentProgID", L"", name);
  add(key + L"\\TypeLib", L"", com::guidText(kStoreLibrary));
  add(key + L"\\Version", L"", L"1.0");
  table.entries.push_back({key + L"\\Programmable", L"", {}});
}

com::RegistryTable registration() {
  com::RegistryTable table;
  table.journal = L"TessalineStore.Replaced";
  for (const Class& type : kClasses) addClass(table, type);
  for (com::RegistryEntry& entry : com::typeLibraryEntries(
           kStoreLibrary, L"1.0", L"Tessaline: a store in a file", com::modulePath())) {
    table.entries.push_back(std::move(entry));
  }
  return table;
}

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
    com::registerLibrary(localstore::face::registration());
    return S_OK;
  });
}

STDAPI DllUnregisterServer() {
  return comBorder([] {
    com::unregisterLibrary(localstore::face::registration());
    return S_OK;
  });
}
