#include "ocx/ControlRegistration.h"

#include "ocx/TypeLibrary.h"
#include "text/Version.h"

namespace ocx {

namespace {

constexpr const wchar_t* kControlCategory = L"{40FC6ED4-2438-11CF-A3DB-080036F12502}";
constexpr const wchar_t* kProgrammableCategory = L"{40FC6ED5-2438-11CF-A3DB-080036F12502}";
constexpr const wchar_t* kToolboxBitmap = L"101";

void append(std::vector<com::RegistryEntry>& entries, std::vector<com::RegistryEntry> more) {
  entries.insert(entries.end(), more.begin(), more.end());
}

std::vector<com::RegistryEntry> classEntries(const std::wstring& key, const std::wstring& file) {
  using com::registryText;
  return {
      {key, L"", registryText(kUserType)},
      {key + L"\\InprocServer32", L"", registryText(file)},
      {key + L"\\InprocServer32", L"ThreadingModel", registryText(L"Apartment")},
      {key + L"\\ProgID", L"", registryText(kVersionedProgId)},
      {key + L"\\VersionIndependentProgID", L"", registryText(kProgId)},
      {key + L"\\TypeLib", L"", registryText(com::guidText(libraryId()))},
      {key + L"\\Version", L"", registryText(text::kInterfaceVersion)},
      {key + L"\\MiscStatus", L"", registryText(L"0")},
      {key + L"\\MiscStatus\\1", L"", registryText(std::to_wstring(kMiscStatus))},
      {key + L"\\ToolboxBitmap32", L"", registryText(file + L", " + kToolboxBitmap)},
      {key + L"\\Control", L"", std::nullopt},
      {key + L"\\Programmable", L"", std::nullopt},
      {key + L"\\Implemented Categories\\" + kControlCategory, L"", std::nullopt},
      {key + L"\\Implemented Categories\\" + kProgrammableCategory, L"", std::nullopt},
  };
}

std::vector<com::RegistryEntry> progIdEntries(const std::wstring& clsid) {
  using com::registryText;
  const std::wstring general = kProgId;
  const std::wstring versioned = kVersionedProgId;
  return {
      {general, L"", registryText(kUserType)},
      {general + L"\\CLSID", L"", registryText(clsid)},
      {general + L"\\CurVer", L"", registryText(versioned)},
      {versioned, L"", registryText(kUserType)},
      {versioned + L"\\CLSID", L"", registryText(clsid)},
  };
}

}  // namespace

com::RegistryTable controlTable(const std::wstring& file, com::Width width) {
  const std::wstring clsid = com::guidText(__uuidof(Ctr_OrgPriseCharge));
  com::RegistryTable table{L"Tessaline.Replaced", {}, file, width};
  append(table.entries, classEntries(L"CLSID\\" + clsid, file));
  append(table.entries, progIdEntries(clsid));
  append(table.entries,
         com::typeLibraryEntries(libraryId(), text::kInterfaceVersion,
                                 std::wstring(L"Tessaline ") + text::kInterfaceVersion, file,
                                 LIBFLAG_FCONTROL, width));
  append(table.entries, com::interfaceEntries(__uuidof(_Ctr_OrgPriseCharge), L"_Ctr_OrgPriseCharge",
                                              libraryId(), text::kInterfaceVersion));
  append(table.entries,
         com::interfaceEntries(__uuidof(_Ctr_OrgPriseChargeEvents), L"_Ctr_OrgPriseChargeEvents",
                               libraryId(), text::kInterfaceVersion, com::Interface::Dispatch));
  return table;
}

}  // namespace ocx
