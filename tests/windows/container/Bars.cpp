#include "tests/windows/container/Bars.h"

namespace container {

void* FrameObject::find(REFIID id) {
  if (id == IID_IUnknown || id == IID_IOleWindow || id == IID_IOleInPlaceUIWindow ||
      id == IID_IOleInPlaceFrame)
    return static_cast<IOleInPlaceFrame*>(this);
  return nullptr;
}

HRESULT FrameObject::GetWindow(HWND* out) {
  rules().called("Frame.GetWindow");
  if (out == nullptr) return E_POINTER;
  *out = window_;
  return S_OK;
}

HRESULT FrameObject::ContextSensitiveHelp(BOOL) {
  rules().called("Frame.ContextSensitiveHelp");
  return E_NOTIMPL;
}

HRESULT FrameObject::GetBorder(RECT*) {
  rules().called("Frame.GetBorder");
  return INPLACE_E_NOTOOLSPACE;
}

HRESULT FrameObject::RequestBorderSpace(const BORDERWIDTHS*) {
  rules().called("Frame.RequestBorderSpace");
  return INPLACE_E_NOTOOLSPACE;
}

HRESULT FrameObject::SetBorderSpace(const BORDERWIDTHS* widths) {
  rules().setBorderSpace(Bar::Frame, widths == nullptr);
  return widths == nullptr ? S_OK : INPLACE_E_NOTOOLSPACE;
}

HRESULT FrameObject::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) {
  rules().setActiveObject(Bar::Frame, object != nullptr);
  active_ = object;
  return S_OK;
}

HRESULT FrameObject::InsertMenus(HMENU, OLEMENUGROUPWIDTHS*) {
  rules().called("Frame.InsertMenus");
  return E_NOTIMPL;
}

HRESULT FrameObject::SetMenu(HMENU, HOLEMENU, HWND) {
  rules().called("Frame.SetMenu");
  return S_OK;
}

HRESULT FrameObject::RemoveMenus(HMENU) {
  rules().called("Frame.RemoveMenus");
  return S_OK;
}

HRESULT FrameObject::SetStatusText(LPCOLESTR) {
  rules().called("Frame.SetStatusText");
  return S_OK;
}

HRESULT FrameObject::EnableModeless(BOOL enable) {
  rules().enableModeless(enable != FALSE);
  if (onModeless) onModeless(enable != FALSE);
  return S_OK;
}

HRESULT FrameObject::TranslateAccelerator(MSG*, WORD) {
  rules().called("Frame.TranslateAccelerator");
  return S_FALSE;
}

void* DocumentObject::find(REFIID id) {
  if (id == IID_IUnknown || id == IID_IOleWindow || id == IID_IOleInPlaceUIWindow)
    return static_cast<IOleInPlaceUIWindow*>(this);
  return nullptr;
}

HRESULT DocumentObject::GetWindow(HWND* out) {
  rules().called("Document.GetWindow");
  if (out == nullptr) return E_POINTER;
  *out = window_;
  return S_OK;
}

HRESULT DocumentObject::ContextSensitiveHelp(BOOL) {
  rules().called("Document.ContextSensitiveHelp");
  return E_NOTIMPL;
}

HRESULT DocumentObject::GetBorder(RECT*) {
  rules().called("Document.GetBorder");
  return INPLACE_E_NOTOOLSPACE;
}

HRESULT DocumentObject::RequestBorderSpace(const BORDERWIDTHS*) {
  rules().called("Document.RequestBorderSpace");
  return INPLACE_E_NOTOOLSPACE;
}

HRESULT DocumentObject::SetBorderSpace(const BORDERWIDTHS* widths) {
  rules().setBorderSpace(Bar::Document, widths == nullptr);
  return widths == nullptr ? S_OK : INPLACE_E_NOTOOLSPACE;
}

HRESULT DocumentObject::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) {
  rules().setActiveObject(Bar::Document, object != nullptr);
  active_ = object;
  return S_OK;
}

}  // namespace container
