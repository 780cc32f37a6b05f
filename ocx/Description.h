// What the control says of itself: its class, which interfaces leave error texts, what is safe.
#pragma once

#include <objsafe.h>
#include <ocidl.h>

#include "ocx/Answers.h"
#include "ocx/Part.h"
#include "ocx/TessalineTypes.h"

namespace ocx {

class Description final : public Part<IProvideClassInfo2, ISupportErrorInfo, IObjectSafety> {
 public:
  explicit Description(Lifetime& whole) : Part(whole) {}
  ~Description() = default;

  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override {
    return enter([&] { return giveClassInfo(info); });
  }
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD, GUID* events) override {
    return enter([&] { return give(events, GUID_NULL, E_INVALIDARG); });
  }

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID asked) override {
    return enter([&] { return asked == __uuidof(_Ctr_OrgPriseCharge) ? S_OK : S_FALSE; });
  }

  HRESULT STDMETHODCALLTYPE GetInterfaceSafetyOptions(REFIID asked, DWORD* supported,
                                                      DWORD* enabled) override {
    return enter([&] { return giveSafety(asked, supported, enabled); });
  }
  HRESULT STDMETHODCALLTYPE SetInterfaceSafetyOptions(REFIID asked, DWORD mask,
                                                      DWORD wanted) override {
    return enter([&] { return setSafety(asked, mask, wanted); });
  }

 private:
  static HRESULT giveClassInfo(ITypeInfo** info);
  HRESULT giveSafety(REFIID asked, DWORD* supported, DWORD* enabled);
  HRESULT setSafety(REFIID asked, DWORD mask, DWORD wanted);
};

}  // namespace ocx
