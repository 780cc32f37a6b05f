// A late-bound object of the host: its members by name.
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include <map>
#include <string>
#include <vector>

#include "com/Variant.h"

namespace com {

// Each name is looked up once. A call that fails, or raises an exception, is a store::StoreError
// with the code that the object gave (EXCEPINFO's where there is one) and its description.
class LateBound {
 public:
  explicit LateBound(Microsoft::WRL::ComPtr<IDispatch> object) : object_(std::move(object)) {}

  // A method, or a property read with arguments; the empty name is the default member.
  Variant call(const wchar_t* name, const std::vector<Variant>& arguments = {});
  // As `call`; StoreError (kFailed) when the answer is no object.
  Microsoft::WRL::ComPtr<IDispatch> callForObject(const wchar_t* name,
                                                  const std::vector<Variant>& arguments = {});
  void put(const wchar_t* name, Variant value);
  bool has(const wchar_t* name);

 private:
  // DISPID_UNKNOWN when the object has no such member.
  DISPID idOf(const wchar_t* name);
  DISPID knownIdOf(const wchar_t* name);
  Variant invoke(const wchar_t* name, WORD how, DISPPARAMS& parameters);

  Microsoft::WRL::ComPtr<IDispatch> object_;
  std::map<std::wstring, DISPID, std::less<>> ids_;
};

}  // namespace com
