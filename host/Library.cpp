#include "host/Library.h"

#include <bit>
#include <optional>

#include "com/ComBorder.h"
#include "com/Module.h"
#include "com/Variant.h"

namespace host {

using Microsoft::WRL::ComPtr;

std::wstring besideProgram(const std::wstring& fileName) {
  const std::wstring program = com::modulePath();
  return program.substr(0, program.find_last_of(L"\\/") + 1) + fileName;
}

namespace {

// Nothing for what is no class or has another name.
std::optional<GUID> classNamed(ITypeInfo& info, const std::wstring& name) {
  BSTR found = nullptr;
  TYPEATTR* attributes = nullptr;
  com::check(info.GetDocumentation(MEMBERID_NIL, &found, nullptr, nullptr, nullptr),
             "a type's name");
  const bool same = com::viewOf(found) == name;
  SysFreeString(found);
  com::check(info.GetTypeAttr(&attributes), "a type's kind");
  const bool isClass = attributes->typekind == TKIND_COCLASS;
  const GUID id = attributes->guid;
  info.ReleaseTypeAttr(attributes);
  return same && isClass ? std::optional(id) : std::nullopt;
}

}  // namespace

Library::Library(const std::wstring& fileName) : path_(besideProgram(fileName)) {
  const HMODULE library = LoadLibraryExW(path_.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  const auto entry = [library](const char* name) {
    return library == nullptr ? nullptr : GetProcAddress(library, name);
  };
  getClassObject_ = std::bit_cast<GetClassObject>(entry("DllGetClassObject"));
  canUnloadNow_ = std::bit_cast<CanUnloadNow>(entry("DllCanUnloadNow"));
  if (getClassObject_ == nullptr || canUnloadNow_ == nullptr) {
    throw com::Error(HRESULT_FROM_WIN32(GetLastError()),
                     com::utf8(fileName) + " : bibliothèque absente ou illisible");
  }
}

bool Library::unused() const { return canUnloadNow_() == S_OK; }

CLSID Library::classOf(const std::wstring& className) const {
  ComPtr<ITypeLib> types;
  com::check(LoadTypeLibEx(path_.c_str(), REGKIND_NONE, &types), "the library's type information");
  for (UINT i = 0; i < types->GetTypeInfoCount(); ++i) {
    ComPtr<ITypeInfo> info;
    com::check(types->GetTypeInfo(i, &info), "the library's type information");
    if (const std::optional<GUID> found = classNamed(*info.Get(), className)) return *found;
  }
  throw com::Error(CLASS_E_CLASSNOTAVAILABLE, com::utf8(className) + " : classe inconnue");
}

ComPtr<IUnknown> Library::create(const std::wstring& className) const {
  ComPtr<IClassFactory> factory;
  com::check(getClassObject_(classOf(className), IID_PPV_ARGS(&factory)), "DllGetClassObject");
  ComPtr<IUnknown> object;
  com::check(factory->CreateInstance(nullptr, IID_PPV_ARGS(&object)), "CreateInstance");
  return object;
}

}  // namespace host
