#include "tests/windows/container/Source.h"

#include <oleauto.h>

#include <stdexcept>

namespace container {

using Microsoft::WRL::ComPtr;

namespace {

template <class Function>
Function exported(HMODULE module, const char* name) {
  const FARPROC found = GetProcAddress(module, name);
  if (found == nullptr) throw std::runtime_error(std::string("not exported: ") + name);
  return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

// The identifier of a coclass; of the first when the name is empty.
CLSID coclassOf(const std::wstring& path, const std::wstring& name) {
  ComPtr<ITypeLib> library;
  if (FAILED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, &library)))
    throw std::runtime_error("the library holds no type library");
  for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
    TYPEKIND kind = TKIND_MAX;
    library->GetTypeInfoType(i, &kind);
    if (kind != TKIND_COCLASS) continue;
    ComPtr<ITypeInfo> info;
    TYPEATTR* attributes = nullptr;
    BSTR found = nullptr;
    if (FAILED(library->GetTypeInfo(i, &info)) || FAILED(info->GetTypeAttr(&attributes))) continue;
    const CLSID id = attributes->guid;
    info->ReleaseTypeAttr(attributes);
    info->GetDocumentation(MEMBERID_NIL, &found, nullptr, nullptr, nullptr);
    const bool wanted = name.empty() || (found != nullptr && name == found);
    SysFreeString(found);
    if (wanted) return id;
  }
  throw std::runtime_error("the type library has no such class");
}

}  // namespace

LibrarySource::LibrarySource(const std::wstring& path) : path_(path) {
  module_ = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (module_ == nullptr)
    throw std::runtime_error("LoadLibrary failed: " + std::to_string(GetLastError()));
  classId_ = coclassOf(path, L"");
}

ComPtr<IUnknown> LibrarySource::create() { return create(classId_); }

ComPtr<IUnknown> LibrarySource::create(const std::wstring& coclass) {
  return create(coclassOf(path_, coclass));
}

ComPtr<IUnknown> LibrarySource::create(const CLSID& id) {
  const auto getClass = exported<decltype(&DllGetClassObject)>(module_, "DllGetClassObject");
  ComPtr<IClassFactory> factory;
  ComPtr<IUnknown> made;
  if (FAILED(getClass(id, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf()))))
    throw std::runtime_error("the library does not make this class");
  if (FAILED(factory->CreateInstance(nullptr, IID_IUnknown,
                                     reinterpret_cast<void**>(made.GetAddressOf()))))
    throw std::runtime_error("the class makes no object");
  return made;
}

HRESULT LibrarySource::canUnloadNow() {
  return exported<decltype(&DllCanUnloadNow)>(module_, "DllCanUnloadNow")();
}

}  // namespace container
