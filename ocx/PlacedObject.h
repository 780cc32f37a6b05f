// The control as the object that its container places and whose keys it asks about.
#pragma once

#include <ole2.h>

#include "ocx/Defaults.h"
#include "ocx/InPlace.h"
#include "ocx/Part.h"

namespace ocx {

class PlacedObject final : public Part<InPlaceObjectDefaults, ActiveObjectDefaults> {
 public:
  PlacedObject(Lifetime& whole, InPlace& place) : Part(whole), place_(place) {}
  ~PlacedObject() = default;

  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
    return enter([&] { return giveWindow(window); });
  }
  HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override {
    return enter([&] {
      place_.deactivate();
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE UIDeactivate() override {
    return enter([&] {
      place_.deactivateUi();
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT place, LPCRECT clip) override {
    return enter([&] { return setObjectRects(place, clip); });
  }
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message) override {
    return enter([&] { return message == nullptr ? E_POINTER : place_.translate(*message); });
  }

 private:
  HRESULT giveWindow(HWND* window) const {
    const HWND own = place_.window();
    return give(window, own, own == nullptr ? E_FAIL : S_OK);
  }
  HRESULT setObjectRects(const RECT* place, const RECT* clip) {
    if (place == nullptr) return E_POINTER;
    place_.setRectangles(*place, clip == nullptr ? *place : *clip);
    return S_OK;
  }

  InPlace& place_;
};

}  // namespace ocx
