#include "ocx/ConnectionPoints.h"

#include <olectl.h>
#include <wrl/client.h>

#include "ocx/Answers.h"
#include "ocx/Enumerator.h"

namespace ocx {

using Microsoft::WRL::ComPtr;

namespace {

void handOver(const ComPtr<IConnectionPoint>& held, IConnectionPoint*& element) {
  element = held.Get();
  element->AddRef();
}

}  // namespace

HRESULT ConnectionPoints::enumerate(IEnumConnectionPoints** points) {
  if (points == nullptr) return E_POINTER;
  *points = Enumerator<IEnumConnectionPoints, IConnectionPoint*, ComPtr<IConnectionPoint>,
                       handOver>::make({ComPtr<IConnectionPoint>(&properties_)});
  return S_OK;
}

HRESULT ConnectionPoints::find(REFIID sink, IConnectionPoint** point) {
  if (point == nullptr) return E_POINTER;
  if (sink != __uuidof(IPropertyNotifySink)) {
    *point = nullptr;
    return CONNECT_E_NOCONNECTION;
  }
  return giveObject<IConnectionPoint>(point, &properties_);
}

}  // namespace ocx
