#include "storecom/StoreRegistration.h"

#include "storecom/Classes.h"
#include "text/Version.h"

namespace storecom {

namespace {

struct Class {
  const GUID& id;
  const wchar_t* name;
  const wchar_t* description;
};

const Class kClasses[] = {
    {kClientClass, kClientName, L"Tessaline: opens a store in a file"},
    {kRightsClass, kRightsName, L"Tessaline: rights of a user"},
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
  add(key + L"\\InprocServer32", L"", table.file);
  add(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  add(key + L"\\ProgID", L"", name + L".1");
  add(key + L"\\VersionIndependentProgID", L"", name);
  add(key + L"\\TypeLib", L"", com::guidText(kStoreLibrary));
  add(key + L"\\Version", L"", text::kInterfaceVersion);
  table.entries.push_back({key + L"\\Programmable", L"", {}});
}

}  // namespace

com::RegistryTable storeTable(const std::wstring& file, com::Width width) {
  com::RegistryTable table{L"TessalineStore.Replaced", {}, file, width};
  for (const Class& type : kClasses) addClass(table, type);
  for (com::RegistryEntry& entry :
       com::typeLibraryEntries(kStoreLibrary, text::kInterfaceVersion,
                               L"Tessaline: a store in a file", file, 0, width)) {
    table.entries.push_back(std::move(entry));
  }
  return table;
}

}  // namespace storecom
