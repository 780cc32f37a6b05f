#include "tests/windows/registration/Library.h"

#include <bit>

std::wstring programFolder() {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
  return path.substr(0, path.find_last_of(L'\\') + 1);
}

Library::Library() : module_(LoadLibraryW((programFolder() + L"Tessaline.ocx").c_str())) {}

std::wstring Library::path() const { return programFolder() + L"Tessaline.ocx"; }

HRESULT Library::classObject(REFCLSID type, REFIID wanted, void** object) const {
  using Function = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  return std::bit_cast<Function>(GetProcAddress(module_, "DllGetClassObject"))(type, wanted,
                                                                               object);
}

HRESULT Library::canUnload() const {
  using Function = HRESULT(STDAPICALLTYPE*)();
  return std::bit_cast<Function>(GetProcAddress(module_, "DllCanUnloadNow"))();
}

Microsoft::WRL::ComPtr<_Ctr_OrgPriseCharge> Library::create() const {
  Microsoft::WRL::ComPtr<IClassFactory> factory;
  Microsoft::WRL::ComPtr<_Ctr_OrgPriseCharge> control;
  if (SUCCEEDED(classObject(__uuidof(Ctr_OrgPriseCharge), IID_PPV_ARGS(&factory)))) {
    factory->CreateInstance(nullptr, IID_PPV_ARGS(&control));
  }
  return control;
}
