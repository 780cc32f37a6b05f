#include "com/LateBound.h"

#include <dispex.h>

#include <algorithm>

#include "store/StoreError.h"

namespace com {

using Microsoft::WRL::ComPtr;

namespace {

class ExceptionInfo {
 public:
  ExceptionInfo() = default;
  ExceptionInfo(const ExceptionInfo&) = delete;
  ExceptionInfo& operator=(const ExceptionInfo&) = delete;
  ~ExceptionInfo() {
    SysFreeString(info_.bstrSource);
    SysFreeString(info_.bstrDescription);
    SysFreeString(info_.bstrHelpFile);
  }

  EXCEPINFO* get() { return &info_; }

  void complete() {
    if (info_.pfnDeferredFillIn != nullptr) {
      const auto fill = info_.pfnDeferredFillIn;
      info_.pfnDeferredFillIn = nullptr;
      fill(&info_);
    }
  }

  // Objects that give a small number instead of an HRESULT leave scode at zero.
  HRESULT code() const {
    if (info_.scode != 0) return info_.scode;
    return info_.wCode != 0 ? MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, info_.wCode) : E_FAIL;
  }

  std::string description() const { return utf8(viewOf(info_.bstrDescription)); }

 private:
  EXCEPINFO info_{};
};

// Arguments as a call wants them: backwards.
std::vector<VARIANT> backwards(const std::vector<Variant>& arguments) {
  std::vector<VARIANT> values;
  values.reserve(arguments.size());
  std::transform(arguments.rbegin(), arguments.rend(), std::back_inserter(values),
                 [](const Variant& argument) { return argument.get(); });
  return values;
}

}  // namespace

void LateBound::fail(unsigned code, const wchar_t* name, const std::string& description) const {
  std::string member = *name == L'\0' ? "default member" : utf8(name);
  if (!name_.empty()) member = name_ + "." + member;
  throw store::StoreError(
      code, description.empty() ? member + " failed" : member + ": " + description, member);
}

bool LateBound::is(IUnknown* other) const {
  ComPtr<IUnknown> own;
  ComPtr<IUnknown> its;
  return other != nullptr && SUCCEEDED(object_.As(&own)) &&
         SUCCEEDED(other->QueryInterface(IID_PPV_ARGS(&its))) && own.Get() == its.Get();
}

DISPID LateBound::idOf(const wchar_t* name) {
  if (*name == L'\0') return DISPID_VALUE;
  const auto known = ids_.find(std::wstring_view(name));
  if (known != ids_.end()) return known->second;
  std::wstring copy(name);
  LPOLESTR names = copy.data();
  DISPID id = DISPID_UNKNOWN;
  HRESULT result = object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
  ComPtr<IDispatchEx> named;
  // Some scripts' objects know their members' names through this interface alone.
  if (result == E_NOTIMPL && SUCCEEDED(object_.As(&named))) {
    result = named->GetDispID(Bstr(name).get(), fdexNameCaseInsensitive, &id);
  }
  if (FAILED(result) && result != DISP_E_UNKNOWNNAME && result != DISP_E_MEMBERNOTFOUND) {
    fail(static_cast<unsigned>(result), name, "");
  }
  return ids_.emplace(name, FAILED(result) ? DISPID_UNKNOWN : id).first->second;
}

DISPID LateBound::knownIdOf(const wchar_t* name) {
  const DISPID id = idOf(name);
  if (id == DISPID_UNKNOWN && *name != L'\0') {
    fail(static_cast<unsigned>(DISP_E_UNKNOWNNAME), name, "no such member");
  }
  return id;
}

bool LateBound::has(const wchar_t* name) { return idOf(name) != DISPID_UNKNOWN; }

Variant LateBound::invoke(const wchar_t* name, WORD how, DISPPARAMS& parameters) {
  const DISPID id = knownIdOf(name);
  Variant result;
  ExceptionInfo exception;
  UINT wrong = 0;
  const bool wantsResult = (how & DISPATCH_PROPERTYPUT) == 0;
  HRESULT failure = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, how, &parameters,
                                    wantsResult ? result.out() : nullptr, exception.get(), &wrong);
  if (failure == DISP_E_EXCEPTION) {
    exception.complete();
    failure = exception.code();
    fail(static_cast<unsigned>(FAILED(failure) ? failure : E_FAIL), name, exception.description());
  }
  if (FAILED(failure)) fail(static_cast<unsigned>(failure), name, "");
  if ((result.get().vt & VT_BYREF) == 0) return result;
  return read(name, result, Variant::copyOf);
}

Variant LateBound::call(const wchar_t* name, const std::vector<Variant>& arguments) {
  std::vector<VARIANT> values = backwards(arguments);
  DISPPARAMS parameters{values.data(), nullptr, static_cast<UINT>(values.size()), 0};
  return invoke(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, parameters);
}

ComPtr<IDispatch> LateBound::callForObject(const wchar_t* name,
                                           const std::vector<Variant>& arguments) {
  return objectIn(name, call(name, arguments));
}

ComPtr<IDispatch> LateBound::objectIn(const wchar_t* name, const Variant& answer) const {
  ComPtr<IDispatch> object;
  if (answer.get().vt == VT_DISPATCH || answer.get().vt == VT_UNKNOWN) {
    object = read(name, answer, objectOf);
  }
  if (object == nullptr) fail(store::kFailed, name, "no object was given back");
  return object;
}

std::wstring LateBound::callForText(const wchar_t* name, const std::vector<Variant>& arguments) {
  return read(name, call(name, arguments), textOrNullOf);
}

void LateBound::put(const wchar_t* name, Variant value) {
  VARIANT assigned = value.get();
  DISPID named = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{&assigned, &named, 1, 1};
  invoke(name, DISPATCH_PROPERTYPUT, parameters);
}

}  // namespace com
