#include "ocx/ClassFactory.h"

#include "ocx/ControlObject.h"

namespace ocx {

HRESULT ClassFactory::query(REFIID wanted, void** object) {
  if (object == nullptr) return E_POINTER;
  const bool known = wanted == __uuidof(IUnknown) || wanted == __uuidof(IClassFactory);
  *object = known ? static_cast<IClassFactory*>(this) : nullptr;
  references_ += known ? 1 : 0;
  return known ? S_OK : E_NOINTERFACE;
}

ULONG ClassFactory::release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT ClassFactory::create(IUnknown* outer, REFIID wanted, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  IUnknown* control = ControlObject::make();
  const HRESULT result = control->QueryInterface(wanted, object);
  control->Release();
  return result;
}

}  // namespace ocx
