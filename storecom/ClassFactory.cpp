#include "storecom/ClassFactory.h"

#include "com/ComBorder.h"

namespace storecom {

using com::comBorder;

HRESULT ClassFactory::QueryInterface(REFIID iid, void** object) {
  return comBorder([&]() -> HRESULT {
    if (object == nullptr) return E_POINTER;
    const bool known = iid == IID_IUnknown || iid == IID_IClassFactory;
    *object = known ? static_cast<IClassFactory*>(this) : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  });
}

ULONG ClassFactory::AddRef() { return ++references_; }

ULONG ClassFactory::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
  return comBorder([&]() -> HRESULT {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    return outer != nullptr ? CLASS_E_NOAGGREGATION : maker_()->QueryInterface(iid, object);
  });
}

HRESULT ClassFactory::LockServer(BOOL lock) {
  return comBorder([&] {
    com::lockModule(lock != FALSE);
    return S_OK;
  });
}

}  // namespace storecom
