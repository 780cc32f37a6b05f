// One connection point: those who want to be told of something through one interface.
#pragma once

#include <ocidl.h>
#include <wrl/client.h>

#include <vector>

#include "com/ComBorder.h"

namespace ocx {

// Part of the control: its references are the control's, its identity is its own.
class ConnectionPoint final : public IConnectionPoint {
 public:
  // A sink has to have that interface; for a dispinterface, one that answers to IDispatch alone
  // will do. The container outlives the point.
  enum class Sinks { OfTheInterface, Dispatch };
  ConnectionPoint(IConnectionPointContainer& container, const IID& sinkInterface, Sinks kind)
      : container_(container), sinkInterface_(sinkInterface), kind_(kind) {}
  ConnectionPoint(const ConnectionPoint&) = delete;
  ConnectionPoint& operator=(const ConnectionPoint&) = delete;
  ~ConnectionPoint() = default;

  const IID& sinkInterface() const { return sinkInterface_; }
  bool empty() const { return sinks_.empty(); }
  void clear() { sinks_.clear(); }

  // Tells those that were there at the start and have not gone meanwhile; what they answer is left
  // alone. `Interface` is the one that the sinks were taken for.
  template <class Interface, class Call>
  void tell(const Call& call) {
    const std::vector<Sink> now = sinks_;
    for (const Sink& sink : now) {
      if (isThere(sink.cookie)) call(*static_cast<Interface*>(sink.object.Get()));
    }
  }

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
    Microsoft::WRL::ComPtr<IUnknown> object;  // the pointer of the interface that is called
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
  const IID sinkInterface_;
  const Sinks kind_;
  std::vector<Sink> sinks_;
  DWORD lastCookie_ = 0;
};

}  // namespace ocx
