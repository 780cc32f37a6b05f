// What the control says of itself: its class and events, which interfaces leave error texts, what
// is safe.
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
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* events) override {
    return enter([&] { return giveEvents(kind, events); });
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
  static HRESULT giveEvents(DWORD kind, GUID* events);
  HRESULT giveSafety(REFIID asked, DWORD* supported, DWORD* enabled);
  HRESULT setSafety(REFIID asked, DWORD mask, DWORD wanted);
};

}  // namespace ocx
