// Where hosts connect to be told of something: the events, and changes of properties.
#pragma once

#include <ocidl.h>

#include "ocx/ConnectionPoint.h"
#include "ocx/Part.h"

namespace ocx {

class ConnectionPoints final : public Part<IConnectionPointContainer> {
 public:
  explicit ConnectionPoints(Lifetime& whole);
  ~ConnectionPoints() = default;

  // Sinks are IDispatch.
  ConnectionPoint& events() { return events_; }
  // Sinks are IPropertyNotifySink.
  ConnectionPoint& properties() { return properties_; }
  // Lets go of every sink.
  void clear();

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override {
    return enter([&] { return enumerate(points); });
  }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID sink, IConnectionPoint** point) override {
    return enter([&] { return find(sink, point); });
  }

 private:
  HRESULT enumerate(IEnumConnectionPoints** points);
  HRESULT find(REFIID sink, IConnectionPoint** point);

  ConnectionPoint events_;
  ConnectionPoint properties_;
};

}  // namespace ocx
