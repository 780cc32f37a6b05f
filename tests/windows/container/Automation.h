// Late-bound calls, as a script makes them.
#pragma once

#include <oaidl.h>
#include <windows.h>
#include <wrl/client.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace container {

class AutomationError : public std::runtime_error {
 public:
  AutomationError(HRESULT code, const std::string& text) : std::runtime_error(text), code_(code) {}
  // That of the exception when the call raised one.
  HRESULT code() const { return code_; }

 private:
  HRESULT code_;
};

// A variant that cleans up after itself.
class Value {
 public:
  Value();
  explicit Value(const wchar_t* text);
  explicit Value(const std::wstring& text);
  explicit Value(long number);
  explicit Value(bool value);
  explicit Value(IDispatch* object);  // may be null
  Value(const Value& other);
  Value& operator=(const Value&) = delete;
  ~Value();

  VARIANT* raw() { return &value_; }
  const VARIANT& raw() const { return value_; }
  VARTYPE type() const { return value_.vt; }
  std::wstring text() const;
  long number() const;
  bool truth() const;
  Microsoft::WRL::ComPtr<IDispatch> object() const;  // through references and IUnknown as well

 private:
  mutable VARIANT value_;  // the conversions of OLE take it as not const
};

// An empty name is the default member. Each throws AutomationError.
Value call(const Microsoft::WRL::ComPtr<IDispatch>& object, const std::wstring& name,
           const std::vector<Value>& arguments = {});
Value get(const Microsoft::WRL::ComPtr<IDispatch>& object, const std::wstring& name);
void put(const Microsoft::WRL::ComPtr<IDispatch>& object, const std::wstring& name,
         const Value& value, WORD how = DISPATCH_PROPERTYPUT);
DISPID idOf(const Microsoft::WRL::ComPtr<IDispatch>& object, const std::wstring& name);

}  // namespace container
