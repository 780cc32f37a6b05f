// The container's side of a control: client site, in-place site, control site and ambients.
#pragma once

#include <ocidl.h>
#include <ole2.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/windows/container/Bars.h"
#include "tests/windows/container/HostObject.h"
#include "tests/windows/container/Profile.h"

namespace container {

struct Ambients {
  bool userMode = true;
  bool uiDead = false;
  COLORREF backColor = RGB(0xF0, 0xF0, 0xF0);
  COLORREF foreColor = RGB(0, 0, 0);
  LCID locale = 0x040C;
  std::wstring fontName = L"MS Shell Dlg";
  int fontSize = 8;
};

class Site final
    : public HostObject<IOleClientSite, IOleInPlaceSiteEx, IOleControlSite, IDispatch> {
 public:
  // `frame` and `document` may be null: the control is then given none.
  Site(std::shared_ptr<Rules> rules, const Profile& profile, HWND parent, FrameObject* frame,
       DocumentObject* document);

  // IOleClientSite
  HRESULT STDMETHODCALLTYPE SaveObject() override;
  HRESULT STDMETHODCALLTYPE GetMoniker(DWORD assign, DWORD which, IMoniker** out) override;
  HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** out) override;
  HRESULT STDMETHODCALLTYPE ShowObject() override;
  HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL show) override;
  HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override;
  // IOleInPlaceSiteEx
  HRESULT STDMETHODCALLTYPE GetWindow(HWND* out) override;
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL enter) override;
  HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override;
  HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override;
  HRESULT STDMETHODCALLTYPE OnUIActivate() override;
  HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame,
                                             IOleInPlaceUIWindow** document, RECT* position,
                                             RECT* clip, OLEINPLACEFRAMEINFO* info) override;
  HRESULT STDMETHODCALLTYPE Scroll(SIZE extent) override;
  HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL undoable) override;
  HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override;
  HRESULT STDMETHODCALLTYPE DiscardUndoState() override;
  HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override;
  HRESULT STDMETHODCALLTYPE OnPosRectChange(const RECT* position) override;
  HRESULT STDMETHODCALLTYPE OnInPlaceActivateEx(BOOL* noRedraw, DWORD flags) override;
  HRESULT STDMETHODCALLTYPE OnInPlaceDeactivateEx(BOOL noRedraw) override;
  HRESULT STDMETHODCALLTYPE RequestUIActivate() override;
  // IOleControlSite
  HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override;
  HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL lock) override;
  HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** out) override;
  HRESULT STDMETHODCALLTYPE TransformCoords(POINTL* himetric, POINTF* container,
                                            DWORD flags) override;
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, DWORD modifiers) override;
  HRESULT STDMETHODCALLTYPE OnFocus(BOOL got) override;
  HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override;
  // IDispatch: ambient properties
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** out) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* args,
                                   VARIANT* result, EXCEPINFO* exception, UINT* argument) override;

  Ambients& ambients() { return ambients_; }
  void setPlace(const RECT& place) { place_ = place; }
  const RECT& place() const { return place_; }
  // How often the control has said that its mnemonics changed.
  int controlInfoChanges() const { return controlInfoChanges_; }
  // Ambients that the control has asked for, in order.
  const std::vector<DISPID>& asked() const { return asked_; }

  // What the control leaves to the host; unset: nothing is used (S_FALSE).
  std::function<HRESULT(const MSG& message, DWORD modifiers)> onKey;
  std::function<void(bool got)> onFocusChanged;

 private:
  void* find(REFIID id) override;
  HRESULT ambientFont(VARIANT* result) const;

  const Profile profile_;
  HWND parent_;
  FrameObject* frame_;
  DocumentObject* document_;
  Ambients ambients_;
  RECT place_ = {};
  int controlInfoChanges_ = 0;
  std::vector<DISPID> asked_;
};

}  // namespace container
