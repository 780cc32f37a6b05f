#include "storecom/Automation.h"

#include "com/ComBorder.h"
#include "storecom/Classes.h"

namespace storecom {

using com::comBorder;
using com::Error;
using Microsoft::WRL::ComPtr;

namespace {

// Read once and kept until the process ends, as the library itself is: names are looked up for each
// record anew.
ITypeLib& typeLibrary() {
  static ITypeLib* const library = [] {
    ITypeLib* loaded = nullptr;
    com::check(LoadTypeLibEx(com::modulePath().c_str(), REGKIND_NONE, &loaded),
               "the library's type information");
    return loaded;
  }();
  return *library;
}

void describe(EXCEPINFO& exception, HRESULT code, const std::exception& failure) {
  exception = {};
  exception.scode = code;
  exception.bstrSource = com::Bstr(com::errorSource()).release();
  exception.bstrDescription = com::Bstr(com::wide(failure.what())).release();
}

}  // namespace

HRESULT Automation::QueryInterface(REFIID iid, void** object) {
  return comBorder([&]() -> HRESULT {
    if (object == nullptr) return E_POINTER;
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == dispatch_) {
      *object = static_cast<IDispatch*>(this);
    } else if (iid == IID_ISupportErrorInfo) {
      *object = static_cast<ISupportErrorInfo*>(this);
    } else {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  });
}

ULONG Automation::AddRef() { return ++references_; }

ULONG Automation::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT Automation::GetTypeInfoCount(UINT* count) {
  return comBorder([&] {
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
  });
}

HRESULT Automation::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
  return comBorder([&] {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    *info = typeInfo().Detach();
    return S_OK;
  });
}

HRESULT Automation::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  return comBorder([&]() -> HRESULT {
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (names == nullptr || ids == nullptr) return E_POINTER;
    return typeInfo()->GetIDsOfNames(names, count, ids);
  });
}

HRESULT Automation::Invoke(DISPID member, REFIID reserved, LCID, WORD flags, DISPPARAMS* parameters,
                           VARIANT* result, EXCEPINFO* exception, UINT*) {
  return comBorder([&]() -> HRESULT {
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (parameters == nullptr) return E_INVALIDARG;
    const ComPtr<IDispatch> alive(this);
    const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (mostArguments(member, isPut) < 0) return DISP_E_MEMBERNOTFOUND;
    try {
      com::Variant answer = run(member, isPut, *parameters);
      if (result != nullptr) *result = answer.release();
      return S_OK;
    } catch (const std::exception& failure) {
      const HRESULT code = com::failureOf(failure);
      if (exception == nullptr) return code;
      describe(*exception, code, failure);
      return DISP_E_EXCEPTION;
    }
  });
}

com::Variant Automation::run(DISPID member, bool isPut, const DISPPARAMS& parameters) {
  const Arguments arguments(parameters, isPut,
                            static_cast<std::size_t>(mostArguments(member, isPut)));
  if (!isPut) return call(member, arguments);
  put(member, arguments);
  return {};
}

void Automation::put(DISPID, const Arguments&) {
  throw Error(DISP_E_MEMBERNOTFOUND, "the property cannot be assigned");
}

HRESULT Automation::InterfaceSupportsErrorInfo(REFIID iid) {
  return comBorder([&] { return iid == IID_IDispatch || iid == dispatch_ ? S_OK : S_FALSE; });
}

ComPtr<ITypeInfo> Automation::typeInfo() const {
  ComPtr<ITypeInfo> info;
  com::check(typeLibrary().GetTypeInfoOfGuid(dispatch_, &info), "the object's type information");
  return info;
}

}  // namespace storecom
