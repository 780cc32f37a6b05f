#include "tests/windows/container/Automation.h"

#include <oleauto.h>

#include <algorithm>

#include "tests/windows/container/BoxWatcher.h"

namespace container {

using Microsoft::WRL::ComPtr;

Value::Value() { VariantInit(&value_); }

Value::Value(const wchar_t* text) : Value(std::wstring(text)) {}

Value::Value(const std::wstring& text) {
  VariantInit(&value_);
  value_.vt = VT_BSTR;
  value_.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
}

Value::Value(long number) {
  VariantInit(&value_);
  value_.vt = VT_I4;
  value_.lVal = number;
}

Value::Value(bool value) {
  VariantInit(&value_);
  value_.vt = VT_BOOL;
  value_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

Value::Value(IDispatch* object) {
  VariantInit(&value_);
  value_.vt = VT_DISPATCH;
  value_.pdispVal = object;
  if (object != nullptr) object->AddRef();
}

Value::Value(const Value& other) {
  VariantInit(&value_);
  VariantCopy(&value_, &other.value_);
}

Value::~Value() { VariantClear(&value_); }

std::wstring Value::text() const {
  Value copy;
  if (FAILED(VariantChangeType(copy.raw(), &value_, 0, VT_BSTR)) || copy.value_.bstrVal == nullptr)
    return L"";
  return std::wstring(copy.value_.bstrVal, SysStringLen(copy.value_.bstrVal));
}

long Value::number() const {
  Value copy;
  if (FAILED(VariantChangeType(copy.raw(), &value_, 0, VT_I4)))
    throw AutomationError(DISP_E_TYPEMISMATCH, "not a number");
  return copy.value_.lVal;
}

bool Value::truth() const { return number() != 0; }

ComPtr<IDispatch> Value::object() const {
  Value copy;
  ComPtr<IDispatch> found;
  VariantCopyInd(copy.raw(), &value_);
  if (copy.value_.vt == VT_DISPATCH) {
    found = copy.value_.pdispVal;
  } else if (copy.value_.vt == VT_UNKNOWN && copy.value_.punkVal != nullptr) {
    copy.value_.punkVal->QueryInterface(IID_IDispatch,
                                        reinterpret_cast<void**>(found.GetAddressOf()));
  }
  return found;
}

DISPID idOf(const ComPtr<IDispatch>& object, const std::wstring& name) {
  if (name.empty()) return DISPID_VALUE;
  if (object == nullptr) throw AutomationError(E_POINTER, "no object for " + narrow(name));
  auto* given = const_cast<wchar_t*>(name.c_str());
  DISPID id = DISPID_UNKNOWN;
  const HRESULT found = object->GetIDsOfNames(IID_NULL, &given, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(found)) throw AutomationError(found, "no member " + narrow(name));
  return id;
}

namespace {

Value invoke(const ComPtr<IDispatch>& object, const std::wstring& name, WORD how,
             std::vector<Value> arguments) {
  const DISPID id = idOf(object, name);
  std::vector<VARIANT> raw;  // last argument first; they stay the property of `arguments`
  for (auto last = arguments.rbegin(); last != arguments.rend(); ++last)
    raw.push_back(*last->raw());
  DISPID named = DISPID_PROPERTYPUT;
  const bool puts = (how & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  DISPPARAMS parameters = {raw.data(), puts ? &named : nullptr, static_cast<UINT>(raw.size()),
                           puts ? 1u : 0u};
  Value result;
  EXCEPINFO exception = {};
  UINT argument = 0;
  HRESULT code = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, how, &parameters, result.raw(),
                                &exception, &argument);
  if (code == DISP_E_EXCEPTION) {
    if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
    if (exception.scode != 0) code = exception.scode;
  }
  const std::string description =
      exception.bstrDescription == nullptr ? std::string() : narrow(exception.bstrDescription);
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrHelpFile);
  if (FAILED(code)) throw AutomationError(code, narrow(name) + " failed: " + description);
  return result;
}

}  // namespace

Value call(const ComPtr<IDispatch>& object, const std::wstring& name,
           const std::vector<Value>& arguments) {
  return invoke(object, name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments);
}

Value get(const ComPtr<IDispatch>& object, const std::wstring& name) {
  return invoke(object, name, DISPATCH_PROPERTYGET, {});
}

void put(const ComPtr<IDispatch>& object, const std::wstring& name, const Value& value, WORD how) {
  invoke(object, name, how, {value});
}

}  // namespace container
