#include "ocx/PropertySinks.h"

#include <olectl.h>

#include <algorithm>

#include "ocx/Enumerator.h"

namespace ocx {

namespace {

void handOver(const PropertySinks::Sink& held, CONNECTDATA& element) {
  element.dwCookie = held.cookie;
  element.pUnk = held.sink.Get();
  element.pUnk->AddRef();
}

}  // namespace

bool PropertySinks::isThere(DWORD cookie) const {
  return std::any_of(sinks_.begin(), sinks_.end(),
                     [cookie](const Sink& sink) { return sink.cookie == cookie; });
}

void PropertySinks::tellChanged(DISPID property) {
  const std::vector<Sink> now = sinks_;
  for (const Sink& sink : now) {
    if (isThere(sink.cookie)) sink.sink->OnChanged(property);
  }
}

HRESULT PropertySinks::query(REFIID wanted, void** object) {
  if (object == nullptr) return E_POINTER;
  if (wanted != __uuidof(IUnknown) && wanted != __uuidof(IConnectionPoint)) {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  *object = static_cast<IConnectionPoint*>(this);
  AddRef();
  return S_OK;
}

HRESULT PropertySinks::giveInterface(IID* sinkInterface) {
  if (sinkInterface == nullptr) return E_POINTER;
  *sinkInterface = __uuidof(IPropertyNotifySink);
  return S_OK;
}

HRESULT PropertySinks::giveContainer(IConnectionPointContainer** container) {
  if (container == nullptr) return E_POINTER;
  *container = &container_;
  container_.AddRef();
  return S_OK;
}

HRESULT PropertySinks::advise(IUnknown* sink, DWORD* cookie) {
  if (sink == nullptr || cookie == nullptr) return E_POINTER;
  *cookie = 0;
  Sink added;
  if (FAILED(sink->QueryInterface(IID_PPV_ARGS(&added.sink)))) return CONNECT_E_CANNOTCONNECT;
  added.cookie = ++lastCookie_;
  *cookie = added.cookie;
  sinks_.push_back(std::move(added));
  return S_OK;
}

HRESULT PropertySinks::unadvise(DWORD cookie) {
  const auto found = std::find_if(sinks_.begin(), sinks_.end(),
                                  [cookie](const Sink& sink) { return sink.cookie == cookie; });
  if (found == sinks_.end()) return CONNECT_E_NOCONNECTION;
  const Sink gone = std::move(*found);  // its release may come back in here
  sinks_.erase(found);
  return S_OK;
}

HRESULT PropertySinks::enumerate(IEnumConnections** connections) {
  if (connections == nullptr) return E_POINTER;
  *connections = Enumerator<IEnumConnections, CONNECTDATA, Sink, handOver>::make(sinks_);
  return S_OK;
}

}  // namespace ocx
