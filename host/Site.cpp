#include "host/Site.h"

#include "com/ComBorder.h"
#include "host/Ambients.h"

namespace host {

using com::comBorder;

Site::Site(Holder& holder, Frame& frame) : holder_(&holder), frame_(&frame) { frame_->AddRef(); }

Site::~Site() { frame_->Release(); }

Holder& Site::holder() const {
  if (holder_ == nullptr) throw com::Error(E_UNEXPECTED, "the window is closed");
  return *holder_;
}

HRESULT Site::QueryInterface(REFIID iid, void** object) {
  return comBorder([&]() -> HRESULT {
    if (object == nullptr) return E_POINTER;
    if (iid == IID_IUnknown || iid == IID_IOleClientSite) {
      *object = static_cast<IOleClientSite*>(this);
    } else if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite ||
               iid == IID_IOleInPlaceSiteEx) {
      *object = static_cast<IOleInPlaceSiteEx*>(this);
    } else if (iid == IID_IOleControlSite) {
      *object = static_cast<IOleControlSite*>(this);
    } else if (iid == IID_IPropertyNotifySink) {
      *object = static_cast<IPropertyNotifySink*>(this);
    } else if (iid == IID_IDispatch) {
      *object = static_cast<IDispatch*>(this);
    } else {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  });
}

ULONG Site::AddRef() { return ++references_; }

ULONG Site::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT Site::SaveObject() { return E_NOTIMPL; }

HRESULT Site::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
  *moniker = nullptr;
  return E_NOTIMPL;
}

HRESULT Site::GetContainer(IOleContainer** container) {
  *container = nullptr;
  return E_NOINTERFACE;
}

HRESULT Site::ShowObject() { return S_OK; }
HRESULT Site::OnShowWindow(BOOL) { return S_OK; }
HRESULT Site::RequestNewObjectLayout() { return E_NOTIMPL; }

HRESULT Site::GetWindow(HWND* window) {
  return comBorder([&] {
    *window = holder().window();
    return S_OK;
  });
}

HRESULT Site::ContextSensitiveHelp(BOOL) { return E_NOTIMPL; }
HRESULT Site::CanInPlaceActivate() { return holder_ != nullptr ? S_OK : S_FALSE; }
HRESULT Site::OnInPlaceActivate() { return S_OK; }
HRESULT Site::OnUIActivate() { return S_OK; }

HRESULT Site::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                               LPRECT place, LPRECT clip, LPOLEINPLACEFRAMEINFO info) {
  return comBorder([&] {
    *frame = nullptr;
    *document = nullptr;  // the frame's window is the document's
    const HWND window = holder().window();
    *place = holder().place();
    *clip = holder().room();
    info->fMDIApp = FALSE;
    info->hwndFrame = window;
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    *frame = frame_;
    frame_->AddRef();
    return S_OK;
  });
}

HRESULT Site::Scroll(SIZE) { return E_NOTIMPL; }

HRESULT Site::OnUIDeactivate(BOOL) { return S_OK; }
HRESULT Site::OnInPlaceDeactivate() { return S_OK; }
HRESULT Site::DiscardUndoState() { return E_NOTIMPL; }
HRESULT Site::DeactivateAndUndo() { return E_NOTIMPL; }

HRESULT Site::OnPosRectChange(LPCRECT place) {
  return comBorder([&] {
    holder().placed(*place);
    return S_OK;
  });
}

HRESULT Site::OnInPlaceActivateEx(BOOL* noRedraw, DWORD) {
  if (noRedraw != nullptr) *noRedraw = FALSE;
  return S_OK;
}

HRESULT Site::OnInPlaceDeactivateEx(BOOL) { return S_OK; }
HRESULT Site::RequestUIActivate() { return S_OK; }

HRESULT Site::OnControlInfoChanged() {
  return comBorder([&] {
    holder().mnemonicsChanged();
    return S_OK;
  });
}

HRESULT Site::LockInPlaceActive(BOOL) { return S_OK; }

HRESULT Site::GetExtendedControl(IDispatch** extended) {
  *extended = nullptr;
  return E_NOTIMPL;
}

// A container's unit here is the twip: 1440 to the inch, of which HIMETRIC counts 2540.
HRESULT Site::TransformCoords(POINTL* himetric, POINTF* container, DWORD flags) {
  constexpr float kTwipsInHimetric = 1440.0F / 2540.0F;
  if ((flags & XFORMCOORDS_HIMETRICTOCONTAINER) != 0) {
    container->x = static_cast<float>(himetric->x) * kTwipsInHimetric;
    container->y = static_cast<float>(himetric->y) * kTwipsInHimetric;
    return S_OK;
  }
  if ((flags & XFORMCOORDS_CONTAINERTOHIMETRIC) != 0) {
    himetric->x = static_cast<LONG>(container->x / kTwipsInHimetric);
    himetric->y = static_cast<LONG>(container->y / kTwipsInHimetric);
    return S_OK;
  }
  return E_INVALIDARG;
}

HRESULT Site::TranslateAccelerator(LPMSG message, DWORD) {
  return comBorder([&]() -> HRESULT {
    if (message->message != WM_KEYDOWN || message->wParam != VK_TAB) return S_FALSE;
    holder().leftByTab(*message);
    return S_OK;
  });
}

HRESULT Site::OnFocus(BOOL) { return S_OK; }
HRESULT Site::ShowPropertyFrame() { return E_NOTIMPL; }

HRESULT Site::OnChanged(DISPID property) {
  return comBorder([&] {
    holder().propertyChanged(property);
    return S_OK;
  });
}

HRESULT Site::OnRequestEdit(DISPID) { return S_OK; }

HRESULT Site::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result,
                     EXCEPINFO*, UINT*) {
  return comBorder([&]() -> HRESULT {
    if ((flags & DISPATCH_PROPERTYGET) == 0) return DISP_E_MEMBERNOTFOUND;
    com::Variant value = ambient(member);
    if (result != nullptr) *result = value.release();
    return S_OK;
  });
}

}  // namespace host
