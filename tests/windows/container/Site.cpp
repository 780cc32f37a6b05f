#include "tests/windows/container/Site.h"

#include <olectl.h>

#include <utility>

namespace container {

Site::Site(std::shared_ptr<Rules> rules, const Profile& profile, HWND parent, FrameObject* frame,
           DocumentObject* document)
    : HostObject(std::move(rules), "site"),
      profile_(profile),
      parent_(parent),
      frame_(frame),
      document_(document) {
  ambients_.userMode = profile.userMode;
}

void* Site::find(REFIID id) {
  if (id == IID_IUnknown || id == IID_IOleClientSite) return static_cast<IOleClientSite*>(this);
  if (id == IID_IOleWindow || id == IID_IOleInPlaceSite)
    return static_cast<IOleInPlaceSite*>(static_cast<IOleInPlaceSiteEx*>(this));
  if (id == IID_IOleInPlaceSiteEx && profile_.siteEx) return static_cast<IOleInPlaceSiteEx*>(this);
  if (id == IID_IOleControlSite && profile_.controlSite) return static_cast<IOleControlSite*>(this);
  if (id == IID_IDispatch && profile_.ambients) return static_cast<IDispatch*>(this);
  return nullptr;
}

HRESULT Site::SaveObject() {
  rules().called("SaveObject");
  return S_OK;
}

HRESULT Site::GetMoniker(DWORD, DWORD, IMoniker** out) {
  rules().called("GetMoniker");
  if (out != nullptr) *out = nullptr;
  return E_NOTIMPL;
}

HRESULT Site::GetContainer(IOleContainer** out) {
  rules().called("GetContainer");
  if (out != nullptr) *out = nullptr;
  return E_NOINTERFACE;
}

HRESULT Site::ShowObject() {
  rules().called("ShowObject");
  return S_OK;
}

HRESULT Site::OnShowWindow(BOOL) {
  rules().called("OnShowWindow");
  return S_OK;
}

HRESULT Site::RequestNewObjectLayout() {
  rules().called("RequestNewObjectLayout");
  return E_NOTIMPL;
}

HRESULT Site::GetWindow(HWND* out) {
  rules().called("GetWindow");
  if (out == nullptr) return E_POINTER;
  *out = parent_;
  return S_OK;
}

HRESULT Site::ContextSensitiveHelp(BOOL) {
  rules().called("ContextSensitiveHelp");
  return E_NOTIMPL;
}

HRESULT Site::CanInPlaceActivate() {
  rules().canInPlaceActivate();
  return S_OK;
}

HRESULT Site::OnInPlaceActivate() {
  rules().onInPlaceActivate();
  return S_OK;
}

HRESULT Site::OnUIActivate() {
  rules().onUIActivate();
  return S_OK;
}

HRESULT Site::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                               RECT* position, RECT* clip, OLEINPLACEFRAMEINFO* info) {
  rules().windowContext();
  if (frame == nullptr || document == nullptr || position == nullptr || clip == nullptr ||
      info == nullptr) {
    rules().violation("GetWindowContext with a null argument");
    return E_POINTER;
  }
  if (info->cb != sizeof *info) rules().violation("GetWindowContext without the size of its info");
  *frame = frame_;
  if (frame_ != nullptr) frame_->AddRef();
  *document = document_;
  if (document_ != nullptr) document_->AddRef();
  *position = place_;
  *clip = place_;
  info->fMDIApp = FALSE;
  info->hwndFrame = GetAncestor(parent_, GA_ROOT);
  info->haccel = nullptr;
  info->cAccelEntries = 0;
  return S_OK;
}

HRESULT Site::Scroll(SIZE) {
  rules().called("Scroll");
  return E_NOTIMPL;
}

HRESULT Site::OnUIDeactivate(BOOL undoable) {
  rules().onUIDeactivate();
  if (undoable != FALSE) rules().violation("OnUIDeactivate says that it can be undone");
  return S_OK;
}

HRESULT Site::OnInPlaceDeactivate() {
  rules().onInPlaceDeactivate();
  return S_OK;
}

HRESULT Site::DiscardUndoState() {
  rules().called("DiscardUndoState");
  return E_NOTIMPL;
}

HRESULT Site::DeactivateAndUndo() {
  rules().called("DeactivateAndUndo");
  return E_NOTIMPL;
}

HRESULT Site::OnPosRectChange(const RECT*) {
  rules().onPosRectChange();
  return S_OK;
}

HRESULT Site::OnInPlaceActivateEx(BOOL* noRedraw, DWORD flags) {
  rules().onInPlaceActivate();
  if ((flags & ACTIVATE_WINDOWLESS) != 0) rules().violation("windowless activation");
  if (noRedraw != nullptr) *noRedraw = FALSE;
  return S_OK;
}

HRESULT Site::OnInPlaceDeactivateEx(BOOL) {
  rules().onInPlaceDeactivate();
  return S_OK;
}

HRESULT Site::RequestUIActivate() {
  rules().called("RequestUIActivate");
  return S_OK;
}

HRESULT Site::OnControlInfoChanged() {
  rules().onControlInfoChanged();
  ++controlInfoChanges_;
  return S_OK;
}

HRESULT Site::LockInPlaceActive(BOOL lock) {
  rules().called(lock != FALSE ? "LockInPlaceActive(TRUE)" : "LockInPlaceActive(FALSE)");
  return S_OK;
}

HRESULT Site::GetExtendedControl(IDispatch** out) {
  rules().called("GetExtendedControl");
  if (out != nullptr) *out = nullptr;
  return E_NOTIMPL;
}

HRESULT Site::TransformCoords(POINTL*, POINTF*, DWORD) {
  rules().called("TransformCoords");
  return E_NOTIMPL;
}

HRESULT Site::TranslateAccelerator(MSG* message, DWORD modifiers) {
  rules().called("ControlSite.TranslateAccelerator");
  if (message == nullptr) return E_POINTER;
  return onKey ? onKey(*message, modifiers) : S_FALSE;
}

HRESULT Site::OnFocus(BOOL got) {
  rules().onFocus(got != FALSE);
  if (onFocusChanged) onFocusChanged(got != FALSE);
  return S_OK;
}

HRESULT Site::ShowPropertyFrame() {
  rules().called("ShowPropertyFrame");
  return E_NOTIMPL;
}

HRESULT Site::GetTypeInfoCount(UINT* count) {
  rules().called("Ambient.GetTypeInfoCount");
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT Site::GetTypeInfo(UINT, LCID, ITypeInfo** out) {
  rules().called("Ambient.GetTypeInfo");
  if (out != nullptr) *out = nullptr;
  return E_NOTIMPL;
}

HRESULT Site::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
  rules().called("Ambient.GetIDsOfNames");
  return DISP_E_UNKNOWNNAME;
}

HRESULT Site::ambientFont(VARIANT* result) const {
  FONTDESC description = {};
  description.cbSizeofstruct = sizeof description;
  description.lpstrName = const_cast<wchar_t*>(ambients_.fontName.c_str());
  description.cySize.int64 = ambients_.fontSize * 10000LL;
  description.sWeight = FW_NORMAL;
  description.sCharset = DEFAULT_CHARSET;
  const HRESULT made = OleCreateFontIndirect(&description, IID_IFontDisp,
                                             reinterpret_cast<void**>(&result->pdispVal));
  if (SUCCEEDED(made)) result->vt = VT_DISPATCH;
  return made;
}

HRESULT Site::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* args, VARIANT* result,
                     EXCEPINFO*, UINT*) {
  rules().called("Ambient(" + std::to_string(id) + ")");
  asked_.push_back(id);
  if ((flags & DISPATCH_PROPERTYGET) == 0) rules().violation("an ambient is not read but called");
  if (args == nullptr || args->cArgs != 0) rules().violation("an ambient is read with arguments");
  if (result == nullptr) return E_POINTER;
  VariantInit(result);
  switch (id) {
    case DISPID_AMBIENT_USERMODE:
    case DISPID_AMBIENT_UIDEAD: {
      const bool value = id == DISPID_AMBIENT_USERMODE ? ambients_.userMode : ambients_.uiDead;
      result->vt = VT_BOOL;
      result->boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
      return S_OK;
    }
    case DISPID_AMBIENT_BACKCOLOR:
    case DISPID_AMBIENT_FORECOLOR:
      result->vt = VT_I4;
      result->lVal = static_cast<LONG>(id == DISPID_AMBIENT_BACKCOLOR ? ambients_.backColor
                                                                      : ambients_.foreColor);
      return S_OK;
    case DISPID_AMBIENT_LOCALEID:
      result->vt = VT_I4;
      result->lVal = static_cast<LONG>(ambients_.locale);
      return S_OK;
    case DISPID_AMBIENT_FONT:
      return ambientFont(result);
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace container
