// The control as its container's dialog has it: mnemonics, surroundings, events held back.
#pragma once

#include <ocidl.h>
#include <ole2.h>
#include <olectl.h>

#include <memory>

#include "ocx/Defaults.h"
#include "ocx/InPlace.h"
#include "ocx/Notices.h"
#include "ocx/Part.h"
#include "ocx/View.h"
#include "toolkit/Surface.h"

namespace ocx {

class HostedControl final : public Part<IOleControl> {
 public:
  HostedControl(Lifetime& whole, toolkit::Surface& surface, InPlace& place, View& view,
                Notices& notices)
      : Part(whole), surface_(surface), place_(place), view_(view), notices_(notices) {}
  ~HostedControl() = default;

  // What GetControlInfo would answer is another now; the container hears of it later, while the
  // control is active.
  void noteInfoChanged() { infoChanged_ = true; }
  void tellInfoChanged();

  HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO* information) override {
    return enter([&] { return giveControlInfo(information); });
  }
  HRESULT STDMETHODCALLTYPE OnMnemonic(MSG* message) override {
    return enter([&] { return mnemonic(message); });
  }
  HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID) override {
    return enter([&] { return ambientsChanged(); });
  }
  HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL freeze) override {
    return enter([&] { return notices_.freeze(freeze != FALSE); });
  }

 private:
  HRESULT giveControlInfo(CONTROLINFO* information);
  HRESULT mnemonic(const MSG* message);
  HRESULT ambientsChanged();

  struct DestroyTable {
    void operator()(HACCEL table) const { DestroyAcceleratorTable(table); }
  };

  toolkit::Surface& surface_;
  InPlace& place_;
  View& view_;
  Notices& notices_;
  bool infoChanged_ = false;
  std::unique_ptr<std::remove_pointer_t<HACCEL>, DestroyTable> mnemonics_;
};

}  // namespace ocx
