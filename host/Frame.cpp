#include "com/ComBorder.h"
#include "host/Site.h"

namespace host {

using com::comBorder;

Holder& Frame::holder() const {
  if (holder_ == nullptr) throw com::Error(E_UNEXPECTED, "the window is closed");
  return *holder_;
}

HRESULT Frame::QueryInterface(REFIID iid, void** object) {
  return comBorder([&]() -> HRESULT {
    if (object == nullptr) return E_POINTER;
    const bool known = iid == IID_IUnknown || iid == IID_IOleWindow ||
                       iid == IID_IOleInPlaceUIWindow || iid == IID_IOleInPlaceFrame;
    *object = known ? static_cast<IOleInPlaceFrame*>(this) : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  });
}

ULONG Frame::AddRef() { return ++references_; }

ULONG Frame::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT Frame::GetWindow(HWND* window) {
  return comBorder([&] {
    *window = holder().window();
    return S_OK;
  });
}

HRESULT Frame::ContextSensitiveHelp(BOOL) { return E_NOTIMPL; }
HRESULT Frame::GetBorder(RECT*) { return INPLACE_E_NOTOOLSPACE; }
HRESULT Frame::RequestBorderSpace(LPCBORDERWIDTHS) { return INPLACE_E_NOTOOLSPACE; }

HRESULT Frame::SetBorderSpace(LPCBORDERWIDTHS widths) {
  const bool none = widths == nullptr || (widths->left == 0 && widths->top == 0 &&
                                          widths->right == 0 && widths->bottom == 0);
  return none ? S_OK : INPLACE_E_NOTOOLSPACE;
}

HRESULT Frame::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) {
  return comBorder([&] {
    holder().setActiveObject(object);
    return S_OK;
  });
}

HRESULT Frame::InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) { return E_NOTIMPL; }
HRESULT Frame::SetMenu(HMENU, HOLEMENU, HWND) { return S_OK; }
HRESULT Frame::RemoveMenus(HMENU) { return S_OK; }
HRESULT Frame::SetStatusText(LPCOLESTR) { return S_OK; }

HRESULT Frame::EnableModeless(BOOL enable) {
  return comBorder([&] {
    holder().enableModeless(enable != FALSE);
    return S_OK;
  });
}

HRESULT Frame::TranslateAccelerator(LPMSG, WORD) { return S_FALSE; }

}  // namespace host
