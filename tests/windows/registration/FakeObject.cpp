#include "tests/windows/registration/FakeObject.h"

#include <algorithm>

#include "com/Owned.h"

using Microsoft::WRL::ComPtr;

ComPtr<FakeObject> FakeObject::make() { return com::owned(new FakeObject); }

void FakeObject::answers(const std::wstring& name, const std::wstring& text) {
  on(name, [text](const FakeCall& call) {
    if (call.result != nullptr) *call.result = com::Variant::ofText(text).release();
    return S_OK;
  });
}

void FakeObject::gives(const std::wstring& name, const ComPtr<FakeObject>& object) {
  on(name, [object](const FakeCall& call) {
    if (call.result != nullptr) *call.result = com::Variant::ofObject(object.Get()).release();
    return S_OK;
  });
}

HRESULT FakeObject::QueryInterface(REFIID wanted, void** object) {
  const bool known = wanted == __uuidof(IUnknown) || wanted == __uuidof(IDispatch);
  *object = known ? static_cast<IDispatch*>(this) : nullptr;
  references_ += known ? 1 : 0;
  return known ? S_OK : E_NOINTERFACE;
}

ULONG FakeObject::AddRef() { return ++references_; }

ULONG FakeObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT FakeObject::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

HRESULT FakeObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  *info = nullptr;
  return DISP_E_BADINDEX;
}

HRESULT FakeObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) {
  ++lookUps_;
  if (!members_.contains(names[0])) {
    *ids = DISPID_UNKNOWN;
    return DISP_E_UNKNOWNNAME;
  }
  names_.emplace_back(names[0]);
  *ids = static_cast<DISPID>(names_.size());
  return S_OK;
}

HRESULT FakeObject::Invoke(DISPID member, REFIID, LCID, WORD how, DISPPARAMS* parameters,
                           VARIANT* result, EXCEPINFO* exception, UINT*) {
  const std::wstring name =
      member == DISPID_VALUE ? L"" : names_.at(static_cast<std::size_t>(member - 1));
  FakeCall call{how, {}, result, exception};
  for (UINT at = parameters->cArgs; at > 0; --at) {
    call.arguments.push_back(com::textOf(parameters->rgvarg[at - 1]));
  }
  std::wstring all;
  for (const std::wstring& argument : call.arguments) all += (all.empty() ? L"" : L", ") + argument;
  journal.push_back((how & DISPATCH_PROPERTYPUT) != 0 ? name + L"=" + all
                                                      : name + L"(" + all + L")");
  const auto found = members_.find(name);
  return found == members_.end() ? DISP_E_MEMBERNOTFOUND : found->second(call);
}
