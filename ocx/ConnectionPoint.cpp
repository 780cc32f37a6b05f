#include "ocx/ConnectionPoint.h"

#include <olectl.h>

#include <algorithm>

#include "ocx/Enumerator.h"

namespace ocx {

namespace {

void handOver(const ConnectionPoint::Sink& held, CONNECTDATA& element) {
  element.dwCookie = held.cookie;
  element.pUnk = held.object.Get();
  element.pUnk->AddRef();
}

}  // namespace

bool ConnectionPoint::isThere(DWORD cookie) const {
  return std::any_of(sinks_.begin(), sinks_.end(),
                     [cookie](const Sink& sink) { return sink.cookie == cookie; });
}

HRESULT ConnectionPoint::query(REFIID wanted, void** object) {
  if (object == nullptr) return E_POINTER;
  if (wanted != __uuidof(IUnknown) && wanted != __uuidof(IConnectionPoint)) {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  *object = static_cast<IConnectionPoint*>(this);
  AddRef();
  return S_OK;
}

HRESULT ConnectionPoint::giveInterface(IID* sinkInterface) {
  if (sinkInterface == nullptr) return E_POINTER;
  *sinkInterface = sinkInterface_;
  return S_OK;
}

HRESULT ConnectionPoint::giveContainer(IConnectionPointContainer** container) {
  if (container == nullptr) return E_POINTER;
  *container = &container_;
  container_.AddRef();
  return S_OK;
}

HRESULT ConnectionPoint::advise(IUnknown* sink, DWORD* cookie) {
  if (sink == nullptr || cookie == nullptr) return E_POINTER;
  *cookie = 0;
  Sink added;
  const auto take = [&](const IID& id) {
    return SUCCEEDED(
        sink->QueryInterface(id, reinterpret_cast<void**>(added.object.ReleaseAndGetAddressOf())));
  };
  if (!take(sinkInterface_) && (kind_ != Sinks::Dispatch || !take(IID_IDispatch))) {
    return CONNECT_E_CANNOTCONNECT;
  }
  added.cookie = ++lastCookie_;
  *cookie = added.cookie;
  sinks_.push_back(std::move(added));
  return S_OK;
}

HRESULT ConnectionPoint::unadvise(DWORD cookie) {
  const auto found = std::find_if(sinks_.begin(), sinks_.end(),
                                  [cookie](const Sink& sink) { return sink.cookie == cookie; });
  if (found == sinks_.end()) return CONNECT_E_NOCONNECTION;
  const Sink gone = std::move(*found);  // its release may come back in here
  sinks_.erase(found);
  return S_OK;
}

HRESULT ConnectionPoint::enumerate(IEnumConnections** connections) {
  if (connections == nullptr) return E_POINTER;
  *connections = Enumerator<IEnumConnections, CONNECTDATA, Sink, handOver>::make(sinks_);
  return S_OK;
}

}  // namespace ocx
