// Where hosts connect to be told of something.
#pragma once

#include <ocidl.h>

#include "ocx/Part.h"
#include "ocx/PropertySinks.h"

namespace ocx {

class ConnectionPoints final : public Part<IConnectionPointContainer> {
 public:
  explicit ConnectionPoints(Lifetime& whole) : Part(whole) {}
  ~ConnectionPoints() = default;

  PropertySinks& properties() { return properties_; }
  // Lets go of every sink.
  void clear() { properties_.clear(); }

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override {
    return enter([&] { return enumerate(points); });
  }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID sink, IConnectionPoint** point) override {
    return enter([&] { return find(sink, point); });
  }

 private:
  HRESULT enumerate(IEnumConnectionPoints** points);
  HRESULT find(REFIID sink, IConnectionPoint** point);

  PropertySinks properties_{*this};
};

}  // namespace ocx
