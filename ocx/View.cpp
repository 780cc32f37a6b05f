#include "ocx/View.h"

#include <algorithm>
#include <utility>

#include "toolkit/win32/SurfaceWindow.h"

namespace ocx {

using Microsoft::WRL::ComPtr;

namespace {

// A picture's place with its top above its bottom, in a device context whose y axis runs down.
class Upright {
 public:
  Upright(HDC context, const RECTL& bounds)
      : context_(context),
        saved_(SaveDC(context)),
        area_{std::min(bounds.left, bounds.right), bounds.top, std::max(bounds.left, bounds.right),
              bounds.bottom} {
    if (runsUp()) turn();
    if (area_.top > area_.bottom) std::swap(area_.top, area_.bottom);
  }
  Upright(const Upright&) = delete;
  Upright& operator=(const Upright&) = delete;
  ~Upright() { RestoreDC(context_, saved_); }

  const RECT& area() const { return area_; }

 private:
  bool runsUp() const {
    POINT ends[] = {{area_.left, area_.top}, {area_.left, area_.bottom}};
    if (LPtoDP(context_, ends, 2) == FALSE) return false;
    return (ends[0].y < ends[1].y) != (area_.top < area_.bottom) && ends[0].y != ends[1].y;
  }

  void turn() {
    SIZE window{};
    SIZE viewport{};
    POINT origin{};
    GetWindowExtEx(context_, &window);
    GetViewportExtEx(context_, &viewport);
    GetWindowOrgEx(context_, &origin);
    SetMapMode(context_, MM_ANISOTROPIC);
    SetWindowExtEx(context_, window.cx, -window.cy, nullptr);
    SetViewportExtEx(context_, viewport.cx, viewport.cy, nullptr);
    SetWindowOrgEx(context_, origin.x, -origin.y, nullptr);
    area_.top = -area_.top;
    area_.bottom = -area_.bottom;
  }

  HDC context_;
  int saved_;
  RECT area_;
};

}  // namespace

HRESULT View::draw(DWORD aspect, HDC context, const RECTL* bounds) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (context == nullptr || bounds == nullptr) return E_INVALIDARG;
  const Upright upright(context, *bounds);
  toolkit::win32::SurfaceWindow::draw(surface_, context, upright.area(), place_.ambients().look);
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
