#include "ocx/EmbeddedObject.h"

#include <string>
#include <utility>

namespace ocx {

using Microsoft::WRL::ComPtr;

void EmbeddedObject::tellSaved() {
  const ComPtr<IOleAdviseHolder> holder = advised_;
  if (holder != nullptr) holder->SendOnSave();
}

HRESULT EmbeddedObject::setClientSite(IOleClientSite* site) {
  if (site == nullptr) notices_.forget();
  place_.setSite(site);
  if (site != nullptr) {  // one that goes shall hear of nothing any more
    view_.changed();
  }
  return S_OK;
}

HRESULT EmbeddedObject::close(DWORD save) {
  const ComPtr<IOleClientSite> site = place_.site();
  if (save != OLECLOSE_NOSAVE && kept_.dirty() && site != nullptr) site->SaveObject();
  notices_.forget();  // a host that closes the control needs no word of its leaving
  place_.takeDown();
  const ComPtr<IOleAdviseHolder> holder = advised_;
  if (holder != nullptr && !std::exchange(closeTold_, true)) holder->SendOnClose();
  return S_OK;
}

HRESULT EmbeddedObject::doVerb(LONG verb, const MSG* message) {
  closeTold_ = false;
  switch (verb) {
    case OLEIVERB_PRIMARY:
    case OLEIVERB_UIACTIVATE:
      return place_.activateUi(message);
    case OLEIVERB_SHOW:
    case OLEIVERB_OPEN:
    case OLEIVERB_INPLACEACTIVATE:
      return place_.activate();
    case OLEIVERB_HIDE:
      place_.hide();
      return S_OK;
    default:
      return verb > 0 ? OLEOBJ_S_INVALIDVERB : E_NOTIMPL;
  }
}

HRESULT EmbeddedObject::giveUserType(LPOLESTR* name) {
  if (name == nullptr) return E_POINTER;
  const std::wstring text = kUserType;
  const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
  *name = static_cast<LPOLESTR>(CoTaskMemAlloc(bytes));
  if (*name == nullptr) return E_OUTOFMEMORY;
  CopyMemory(*name, text.c_str(), bytes);
  return S_OK;
}

// In pixels the size comes from SetObjectRects alone: containers disagree about the units here.
HRESULT EmbeddedObject::setExtent(DWORD aspect, const SIZEL* extent) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (extent == nullptr) return E_POINTER;
  if (extent->cx < 0 || extent->cy < 0) return E_INVALIDARG;
  if (kept_.setExtent(*extent)) view_.changed();
  return S_OK;
}

HRESULT EmbeddedObject::giveExtent(DWORD aspect, SIZEL* extent) const {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  return give(extent, kept_.extent());
}

HRESULT EmbeddedObject::advise(IAdviseSink* sink, DWORD* cookie) {
  if (advised_ == nullptr) {
    com::check(CreateOleAdviseHolder(&advised_), "CreateOleAdviseHolder");
  }
  return advised_->Advise(sink, cookie);
}

HRESULT EmbeddedObject::unadvise(DWORD cookie) {
  return advised_ == nullptr ? OLE_E_NOCONNECTION : advised_->Unadvise(cookie);
}

HRESULT EmbeddedObject::enumerateAdvise(IEnumSTATDATA** sinks) {
  if (sinks == nullptr) return E_POINTER;
  *sinks = nullptr;
  return advised_ == nullptr ? S_OK : advised_->EnumAdvise(sinks);
}

}  // namespace ocx
