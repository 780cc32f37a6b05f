// The control as an object embedded in a document of its container: site, verbs, size, closing.
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include "ocx/ControlRegistration.h"
#include "ocx/Defaults.h"
#include "ocx/InPlace.h"
#include "ocx/Notices.h"
#include "ocx/Part.h"
#include "ocx/Persistence.h"
#include "ocx/View.h"

namespace ocx {

class EmbeddedObject final : public Part<OleObjectDefaults> {
 public:
  EmbeddedObject(Lifetime& whole, InPlace& place, Persistence& kept, View& view, Notices& notices)
      : Part(whole), place_(place), kept_(kept), view_(view), notices_(notices) {}
  ~EmbeddedObject() = default;

  // To those who have asked for it by Advise.
  void tellSaved();
  // They hear of nothing any more.
  void forget() { advised_.Reset(); }

  HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override {
    return enter([&] { return setClientSite(site); });
  }
  HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** site) override {
    return enter([&] { return giveObject(site, place_.site()); });
  }
  HRESULT STDMETHODCALLTYPE Close(DWORD save) override {
    return enter([&] { return close(save); });
  }
  HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, MSG* message, IOleClientSite*, LONG, HWND,
                                   LPCRECT) override {
    return enter([&] { return doVerb(verb, message); });
  }
  HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* type) override {
    return enter([&] { return give(type, __uuidof(Ctr_OrgPriseCharge)); });
  }
  HRESULT STDMETHODCALLTYPE GetUserType(DWORD, LPOLESTR* name) override {
    return enter([&] { return giveUserType(name); });
  }
  HRESULT STDMETHODCALLTYPE SetExtent(DWORD aspect, SIZEL* extent) override {
    return enter([&] { return setExtent(aspect, extent); });
  }
  HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, SIZEL* extent) override {
    return enter([&] { return giveExtent(aspect, extent); });
  }
  HRESULT STDMETHODCALLTYPE Advise(IAdviseSink* sink, DWORD* cookie) override {
    return enter([&] { return advise(sink, cookie); });
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
    return enter([&] { return unadvise(cookie); });
  }
  HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA** sinks) override {
    return enter([&] { return enumerateAdvise(sinks); });
  }
  HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD aspect, DWORD* status) override {
    return enter([&] { return give(status, aspect == DVASPECT_CONTENT ? kMiscStatus : DWORD{0}); });
  }

 private:
  HRESULT setClientSite(IOleClientSite* site);
  HRESULT close(DWORD save);
  HRESULT doVerb(LONG verb, const MSG* message);
  static HRESULT giveUserType(LPOLESTR* name);
  HRESULT setExtent(DWORD aspect, const SIZEL* extent);
  HRESULT giveExtent(DWORD aspect, SIZEL* extent) const;
  HRESULT advise(IAdviseSink* sink, DWORD* cookie);
  HRESULT unadvise(DWORD cookie);
  HRESULT enumerateAdvise(IEnumSTATDATA** sinks);

  InPlace& place_;
  Persistence& kept_;
  View& view_;
  Notices& notices_;
  Microsoft::WRL::ComPtr<IOleAdviseHolder> advised_;
  bool closeTold_ = false;  // since the last verb
};

}  // namespace ocx
