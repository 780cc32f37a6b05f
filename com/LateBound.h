// A late-bound object of the host: its members by name.
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include <map>
#include <string>
#include <vector>

#include "com/ComBorder.h"
#include "com/Variant.h"

namespace com {

// Each name is looked up once. A call that fails, or raises an exception, is a store::StoreError
// with the code that the object gave (EXCEPINFO's where there is one) and its description; it names
// the object, where it has been given a name, and the member.
class LateBound {
 public:
  explicit LateBound(Microsoft::WRL::ComPtr<IDispatch> object, std::string name = {})
      : object_(std::move(object)), name_(std::move(name)) {}

  // Is that the same object, by its IUnknown?
  bool is(IUnknown* other) const;

  // A method, or a property read with arguments; the empty name is the default member.
  Variant call(const wchar_t* name, const std::vector<Variant>& arguments = {});
  // As `call`; StoreError (kFailed) when the answer is no object.
  Microsoft::WRL::ComPtr<IDispatch> callForObject(const wchar_t* name,
                                                  const std::vector<Variant>& arguments = {});
  // What `call` has answered; StoreError (kFailed) when it is no object.
  Microsoft::WRL::ComPtr<IDispatch> objectIn(const wchar_t* name, const Variant& answer) const;
  // As `call`; the answer as a text, Null as an empty one. StoreError when it is neither.
  std::wstring callForText(const wchar_t* name, const std::vector<Variant>& arguments = {});
  // An answer of that member, by one of the conversions of Variant.h; StoreError when that fails.
  template <class Conversion>
  auto read(const wchar_t* name, const Variant& answer, Conversion conversion) const {
    try {
      return conversion(answer.get());
    } catch (const Error& error) {
      fail(static_cast<unsigned>(error.code()), name, error.what());
    }
  }
  void put(const wchar_t* name, Variant value);
  bool has(const wchar_t* name);

 private:
  // DISPID_UNKNOWN when the object has no such member.
  DISPID idOf(const wchar_t* name);
  DISPID knownIdOf(const wchar_t* name);
  Variant invoke(const wchar_t* name, WORD how, DISPPARAMS& parameters);
  // An empty description says only that the call has failed.
  [[noreturn]] void fail(unsigned code, const wchar_t* name, const std::string& description) const;

  Microsoft::WRL::ComPtr<IDispatch> object_;
  std::string name_;  // what it is, "" when that is not told
  std::map<std::wstring, DISPID, std::less<>> ids_;
};

}  // namespace com
