// The control's picture, for containers that draw it themselves.
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include "ocx/Defaults.h"
#include "ocx/InPlace.h"
#include "ocx/Part.h"
#include "ocx/Persistence.h"
#include "toolkit/Surface.h"

namespace ocx {

// Any device context will do, a metafile's and a printer's too; no window is needed.
class View final : public Part<ViewObjectDefaults> {
 public:
  View(Lifetime& whole, toolkit::Surface& surface, const InPlace& place, const Persistence& kept)
      : Part(whole), surface_(surface), place_(place), kept_(kept) {}
  ~View() = default;

  // Tells the container that drawn pictures are out of date.
  void changed();
  // The container hears of nothing any more.
  void forget() { sink_.Reset(); }

  HRESULT STDMETHODCALLTYPE Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC context,
                                 LPCRECTL bounds, LPCRECTL, BOOL(CALLBACK*)(ULONG_PTR),
                                 ULONG_PTR) override {
    return enter([&] { return draw(aspect, context, bounds); });
  }
  HRESULT STDMETHODCALLTYPE SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override {
    return enter([&] { return setAdvise(aspects, flags, sink); });
  }
  HRESULT STDMETHODCALLTYPE GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override {
    return enter([&] { return giveAdvise(aspects, flags, sink); });
  }
  HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, SIZEL* extent) override {
    return enter([&] { return giveExtent(aspect, extent); });
  }

 private:
  HRESULT draw(DWORD aspect, HDC context, const RECTL* bounds);
  HRESULT setAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink);
  HRESULT giveAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink);
  HRESULT giveExtent(DWORD aspect, SIZEL* extent) const;

  toolkit::Surface& surface_;
  const InPlace& place_;
  const Persistence& kept_;
  Microsoft::WRL::ComPtr<IAdviseSink> sink_;
  DWORD aspects_ = 0;
  DWORD flags_ = 0;
};

}  // namespace ocx
