#include "ocx/Description.h"

#include "ocx/TypeLibrary.h"

namespace ocx {

namespace {

// Whatever a container hands over to load from is checked; nothing else is promised.
DWORD safetyOf(REFIID asked) {
  const bool loads = asked == __uuidof(IPersistStreamInit) ||
                     asked == __uuidof(IPersistPropertyBag) || asked == __uuidof(IPersistStorage);
  return loads ? INTERFACESAFE_FOR_UNTRUSTED_DATA : 0;
}

}  // namespace

HRESULT Description::giveClassInfo(ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = classInfo().Detach();
  return S_OK;
}

HRESULT Description::giveEvents(DWORD kind, GUID* events) {
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return give(events, GUID_NULL, E_INVALIDARG);
  return give<GUID>(events, __uuidof(_Ctr_OrgPriseChargeEvents));
}

HRESULT Description::giveSafety(REFIID asked, DWORD* supported, DWORD* enabled) {
  if (supported == nullptr || enabled == nullptr) return E_POINTER;
  *supported = safetyOf(asked);
  *enabled = *supported;
  return whole().find(asked) == nullptr ? E_NOINTERFACE : S_OK;
}

HRESULT Description::setSafety(REFIID asked, DWORD mask, DWORD wanted) {
  if (whole().find(asked) == nullptr) return E_NOINTERFACE;
  return (mask & wanted & ~safetyOf(asked)) == 0 ? S_OK : E_FAIL;
}

}  // namespace ocx
