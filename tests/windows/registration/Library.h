// The built Tessaline.ocx beside the test program, loaded without being registered.
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include <string>

#include "ocx/TessalineTypes.h"

class Library {
 public:
  Library();

  bool loaded() const { return module_ != nullptr; }
  HMODULE module() const { return module_; }
  std::wstring path() const;
  Microsoft::WRL::ComPtr<_Ctr_OrgPriseCharge> create() const;
  HRESULT classObject(REFCLSID type, REFIID wanted, void** object) const;
  HRESULT canUnload() const;

 private:
  HMODULE module_ = nullptr;
};

// The folder of the test program, with a backslash at its end.
std::wstring programFolder();
