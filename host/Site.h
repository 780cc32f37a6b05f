// What a control finds around it: its client site with all that goes with it, and the frame.
#pragma once

#include <ocidl.h>
#include <oleidl.h>

#include "host/NamelessDispatch.h"

namespace host {

// What the site tells of, or asks of, the window that holds the control.
class Holder {
 public:
  Holder() = default;
  Holder(const Holder&) = delete;
  Holder& operator=(const Holder&) = delete;
  virtual ~Holder() = default;

  virtual HWND window() const = 0;
  virtual RECT place() const = 0;  // of the control, pixels in the window
  virtual RECT room() const = 0;   // in which it is seen
  // The active object, null when there is none; the holder keeps its own reference.
  virtual void setActiveObject(IOleInPlaceActiveObject* object) = 0;
  virtual void placed(const RECT& place) = 0;      // the control asks for another place
  virtual void mnemonicsChanged() = 0;             // the control's accelerators are others now
  virtual void leftByTab(const MSG& message) = 0;  // Tab, or Shift+Tab, past the last field
  virtual void enableModeless(bool enable) = 0;    // a box or form of the control is open
  virtual void propertyChanged(DISPID property) = 0;
};

class Frame final : public IOleInPlaceFrame {
 public:
  explicit Frame(Holder& holder) : holder_(&holder) {}
  Frame(const Frame&) = delete;
  Frame& operator=(const Frame&) = delete;
  // The holder is gone; the control may keep the frame longer.
  void detach() { holder_ = nullptr; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;

  STDMETHODIMP GetBorder(RECT* border) override;
  STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS widths) override;
  STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS widths) override;
  STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR name) override;

  STDMETHODIMP InsertMenus(HMENU menu, LPOLEMENUGROUPWIDTHS widths) override;
  STDMETHODIMP SetMenu(HMENU menu, HOLEMENU descriptor, HWND active) override;
  STDMETHODIMP RemoveMenus(HMENU menu) override;
  STDMETHODIMP SetStatusText(LPCOLESTR text) override;
  STDMETHODIMP EnableModeless(BOOL enable) override;
  STDMETHODIMP TranslateAccelerator(LPMSG message, WORD id) override;

 private:
  ~Frame() = default;
  Holder& holder() const;

  Holder* holder_;
  ULONG references_ = 1;
};

class Site final : public IOleClientSite,
                   public IOleInPlaceSiteEx,
                   public IOleControlSite,
                   public IPropertyNotifySink,
                   public NamelessDispatch {
 public:
  Site(Holder& holder, Frame& frame);
  Site(const Site&) = delete;
  Site& operator=(const Site&) = delete;
  void detach() { holder_ = nullptr; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  // IOleClientSite
  STDMETHODIMP SaveObject() override;
  STDMETHODIMP GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
  STDMETHODIMP GetContainer(IOleContainer** container) override;
  STDMETHODIMP ShowObject() override;
  STDMETHODIMP OnShowWindow(BOOL show) override;
  STDMETHODIMP RequestNewObjectLayout() override;

  // IOleInPlaceSiteEx
  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;
  STDMETHODIMP CanInPlaceActivate() override;
  STDMETHODIMP OnInPlaceActivate() override;
  STDMETHODIMP OnUIActivate() override;
  STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                LPRECT place, LPRECT clip, LPOLEINPLACEFRAMEINFO info) override;
  STDMETHODIMP Scroll(SIZE extent) override;
  STDMETHODIMP OnUIDeactivate(BOOL undoable) override;
  STDMETHODIMP OnInPlaceDeactivate() override;
  STDMETHODIMP DiscardUndoState() override;
  STDMETHODIMP DeactivateAndUndo() override;
  STDMETHODIMP OnPosRectChange(LPCRECT place) override;
  STDMETHODIMP OnInPlaceActivateEx(BOOL* noRedraw, DWORD flags) override;
  STDMETHODIMP OnInPlaceDeactivateEx(BOOL noRedraw) override;
  STDMETHODIMP RequestUIActivate() override;

  // IOleControlSite
  STDMETHODIMP OnControlInfoChanged() override;
  STDMETHODIMP LockInPlaceActive(BOOL lock) override;
  STDMETHODIMP GetExtendedControl(IDispatch** extended) override;
  STDMETHODIMP TransformCoords(POINTL* himetric, POINTF* container, DWORD flags) override;
  STDMETHODIMP TranslateAccelerator(LPMSG message, DWORD modifiers) override;
  STDMETHODIMP OnFocus(BOOL got) override;
  STDMETHODIMP ShowPropertyFrame() override;

  // IPropertyNotifySink
  STDMETHODIMP OnChanged(DISPID property) override;
  STDMETHODIMP OnRequestEdit(DISPID property) override;

  // IDispatch: the ambient properties.
  STDMETHODIMP Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* exception, UINT* wrong) override;

 private:
  ~Site();
  Holder& holder() const;

  Holder* holder_;
  Frame* frame_;
  ULONG references_ = 1;
};

}  // namespace host
