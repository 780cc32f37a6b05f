// The connection point through which hosts hear of a change of W_Sortir.
#pragma once

#include <ocidl.h>
#include <wrl/client.h>

#include <vector>

#include "com/ComBorder.h"

namespace ocx {

// Part of the control: its references are the control's, its identity is its own.
class PropertySinks final : public IConnectionPoint {
 public:
  // The container outlives it.
  explicit PropertySinks(IConnectionPointContainer& container) : container_(container) {}
  PropertySinks(const PropertySinks&) = delete;
  PropertySinks& operator=(const PropertySinks&) = delete;
  ~PropertySinks() = default;

  bool empty() const { return sinks_.empty(); }
  void clear() { sinks_.clear(); }
  // Tells those that were there at the start and have not gone meanwhile.
  void tellChanged(DISPID property);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    return com::comBorder([&] { return query(wanted, object); });
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return com::comBorder<ULONG>([&] { return container_.AddRef(); });
  }
  ULONG STDMETHODCALLTYPE Release() override {
    return com::comBorder<ULONG>([&] { return container_.Release(); });
  }
  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* sinkInterface) override {
    return com::comBorder([&] { return giveInterface(sinkInterface); });
  }
  HRESULT STDMETHODCALLTYPE
  GetConnectionPointContainer(IConnectionPointContainer** container) override {
    return com::comBorder([&] { return giveContainer(container); });
  }
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
    return com::comBorder([&] { return advise(sink, cookie); });
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
    return com::comBorder([&] { return unadvise(cookie); });
  }
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override {
    return com::comBorder([&] { return enumerate(connections); });
  }

  struct Sink {
    DWORD cookie = 0;
    Microsoft::WRL::ComPtr<IPropertyNotifySink> sink;
  };

 private:
  HRESULT query(REFIID wanted, void** object);
  HRESULT giveInterface(IID* sinkInterface);
  HRESULT giveContainer(IConnectionPointContainer** container);
  HRESULT advise(IUnknown* sink, DWORD* cookie);
  HRESULT unadvise(DWORD cookie);
  HRESULT enumerate(IEnumConnections** connections);
  bool isThere(DWORD cookie) const;

  IConnectionPointContainer& container_;
  std::vector<Sink> sinks_;
  DWORD lastCookie_ = 0;
};

}  // namespace ocx
