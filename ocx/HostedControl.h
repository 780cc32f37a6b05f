// The control as its container's dialog has it: mnemonics, surroundings, events held back.
#pragma once

#include <ocidl.h>
#include <ole2.h>
#include <olectl.h>

#include <map>
#include <memory>
#include <vector>

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
    return enter([&] {
      notices_.freeze(freeze != FALSE);
      return S_OK;
    });
  }

 private:
  HRESULT giveControlInfo(CONTROLINFO* information);
  HACCEL tableOf(const std::vector<char32_t>& letters);
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
  // By their letters. A container works with the one it was given until it asks again after
  // OnControlInfoChanged, which may be long after another one was asked for: all stay.
  std::map<std::vector<char32_t>, std::unique_ptr<std::remove_pointer_t<HACCEL>, DestroyTable>>
      tables_;
};

}  // namespace ocx
