#include "ocx/ConnectionPoints.h"

#include <olectl.h>
#include <wrl/client.h>

#include "ocx/Answers.h"
#include "ocx/Enumerator.h"
#include "ocx/TessalineTypes.h"

namespace ocx {

using Microsoft::WRL::ComPtr;

namespace {

void handOver(const ComPtr<IConnectionPoint>& held, IConnectionPoint*& element) {
  element = held.Get();
  element->AddRef();
}

}  // namespace

ConnectionPoints::ConnectionPoints(Lifetime& whole)
    : Part(whole),
      events_(*this, __uuidof(_Ctr_OrgPriseChargeEvents), ConnectionPoint::Sinks::Dispatch),
      properties_(*this, __uuidof(IPropertyNotifySink), ConnectionPoint::Sinks::OfTheInterface) {}

void ConnectionPoints::clear() {
  events_.clear();
  properties_.clear();
}

HRESULT ConnectionPoints::enumerate(IEnumConnectionPoints** points) {
  if (points == nullptr) return E_POINTER;
  *points = Enumerator<IEnumConnectionPoints, IConnectionPoint*, ComPtr<IConnectionPoint>,
                       handOver>::make({ComPtr<IConnectionPoint>(&events_),
                                        ComPtr<IConnectionPoint>(&properties_)});
  return S_OK;
}

HRESULT ConnectionPoints::find(REFIID sink, IConnectionPoint** point) {
  if (point == nullptr) return E_POINTER;
  for (ConnectionPoint* own : {&events_, &properties_}) {
    if (own->sinkInterface() == sink) return giveObject<IConnectionPoint>(point, own);
  }
  *point = nullptr;
  return CONNECT_E_NOCONNECTION;
}

}  // namespace ocx
