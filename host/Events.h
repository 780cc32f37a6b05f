// What the control tells its host by events, in words for a status bar; and what the user has to
// know before he goes on, for a box.
#pragma once

#include <ocidl.h>
#include <ole2.h>
#include <wrl/client.h>

#include <functional>
#include <string>

#include "host/NamelessDispatch.h"

namespace host {

// Found by the control's own class information: a control without events is none the worse.
class Events final : public NamelessDispatch {
 public:
  using Told = std::function<void(const std::wstring& text)>;

  Events(Told told, Told warned) : told_(std::move(told)), warned_(std::move(warned)) {}
  Events(const Events&) = delete;
  Events& operator=(const Events&) = delete;

  void connect(IUnknown& control);
  void disconnect();

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP Invoke(DISPID event, REFIID iid, LCID locale, WORD flags, DISPPARAMS* given,
                      VARIANT* result, EXCEPINFO* exception, UINT* wrong) override;

 private:
  ~Events() = default;

  Told told_;
  Told warned_;
  GUID source_{};
  Microsoft::WRL::ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
  ULONG references_ = 1;
};

}  // namespace host
