#include "ocx/View.h"

#include "toolkit/win32/SurfaceWindow.h"

namespace ocx {

using Microsoft::WRL::ComPtr;

HRESULT View::draw(DWORD aspect, HDC context, const RECTL* bounds) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (context == nullptr || bounds == nullptr) return E_INVALIDARG;
  const RECT area{bounds->left, bounds->top, bounds->right, bounds->bottom};
  toolkit::win32::SurfaceWindow::draw(surface_, context, area, place_.ambients().look);
  return S_OK;
}

HRESULT View::setAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
  sink_ = sink;
  aspects_ = aspects;
  flags_ = flags;
  if (sink != nullptr && (flags & ADVF_PRIMEFIRST) != 0) changed();
  return S_OK;
}

HRESULT View::giveAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
  if (aspects != nullptr) *aspects = aspects_;
  if (flags != nullptr) *flags = flags_;
  return sink == nullptr ? S_OK : giveObject(sink, sink_.Get());
}

HRESULT View::giveExtent(DWORD aspect, SIZEL* extent) const {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  return give(extent, kept_.extent());
}

void View::changed() {
  const ComPtr<IAdviseSink> sink = sink_;
  if (sink == nullptr) return;
  if ((flags_ & ADVF_ONLYONCE) != 0) sink_.Reset();
  sink->OnViewChange(DVASPECT_CONTENT, -1);
}

}  // namespace ocx
