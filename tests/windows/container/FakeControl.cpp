#include "tests/windows/container/FakeControl.h"

#include <ocidl.h>
#include <ole2.h>
#include <olectl.h>

#include <thread>

namespace container {

using Microsoft::WRL::ComPtr;

namespace {

class FakeControl;

class FakePoint final : public IConnectionPoint {
 public:
  explicit FakePoint(FakeControl& owner) : owner_(owner) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
    *out = id == IID_IUnknown || id == IID_IConnectionPoint ? this : nullptr;
    if (*out == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override {
    *id = IID_IPropertyNotifySink;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
    *cookie = 1;
    return sink->QueryInterface(IID_IPropertyNotifySink,
                                reinterpret_cast<void**>(sink_.ReleaseAndGetAddressOf()));
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD) override;
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

  void notify() {
    const ComPtr<IPropertyNotifySink> sink = sink_;
    if (sink != nullptr) sink->OnChanged(1);
  }

 private:
  FakeControl& owner_;
  ComPtr<IPropertyNotifySink> sink_;
};

class FakeControl final : public IOleObject,
                          public IOleControl,
                          public IOleInPlaceObject,
                          public IOleInPlaceActiveObject,
                          public IPersistStreamInit,
                          public IPersistPropertyBag,
                          public IPersistStorage,
                          public IViewObject2,
                          public IConnectionPointContainer,
                          public IDispatch {
 public:
  FakeControl(Fault fault, std::shared_ptr<int> alive)
      : fault_(fault), alive_(std::move(alive)), point_(*this) {
    ++*alive_;
  }
  FakeControl(const FakeControl&) = delete;
  FakeControl& operator=(const FakeControl&) = delete;
  ~FakeControl() { --*alive_; }

  bool has(Fault fault) const { return fault_ == fault; }

  // IUnknown
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
    *out = find(id);
    if (*out == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  // IOleObject
  HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override {
    if (has(Fault::LeaksSite) && site != nullptr) site->AddRef();
    if (has(Fault::ReleasesTwice) && site == nullptr && site_ != nullptr) site_->Release();
    if (site == nullptr) leave();
    site_ = site;
    if (site != nullptr) readAmbient();
    if (site != nullptr && has(Fault::PositionWhilePassive))
      if (const auto inPlace = inPlaceSite()) inPlace->OnPosRectChange(&place_);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** out) override {
    *out = site_.Get();
    if (*out != nullptr) (*out)->AddRef();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Close(DWORD) override {
    if (has(Fault::StaysActive)) return S_OK;
    leave();
    if (advise_ != nullptr) advise_->OnClose();
    if (has(Fault::CallsAfterClose)) late_ = true;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, MSG*, IOleClientSite*, LONG, HWND parent,
                                   const RECT* place) override {
    if (site_ == nullptr) return E_FAIL;
    if (place != nullptr) place_ = *place;
    activate(parent);
    if (verb == OLEIVERB_UIACTIVATE) uiActivate();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB**) override { return OLEOBJ_E_NOVERBS; }
  HRESULT STDMETHODCALLTYPE Update() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE IsUpToDate() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* id) override { return GetClassID(id); }
  HRESULT STDMETHODCALLTYPE GetUserType(DWORD, LPOLESTR*) override { return OLE_S_USEREG; }
  HRESULT STDMETHODCALLTYPE SetExtent(DWORD, SIZEL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetExtent(DWORD, SIZEL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Advise(IAdviseSink* sink, DWORD* cookie) override {
    if (has(Fault::LeaksAdvise)) sink->AddRef();
    advise_ = sink;
    *cookie = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD) override {
    advise_.Reset();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD, DWORD* status) override {
    *status = 131473;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

  // IOleControl
  HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO* info) override {
    info->hAccel = nullptr;
    info->cAccel = 0;
    if (has(Fault::InfoChangedWithin))
      if (const auto site = controlSite()) site->OnControlInfoChanged();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnMnemonic(MSG*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL) override { return S_OK; }

  // IOleWindow, IOleInPlaceObject, IOleInPlaceActiveObject
  HRESULT STDMETHODCALLTYPE GetWindow(HWND* out) override {
    *out = window_;
    return window_ == nullptr ? E_FAIL : S_OK;
  }
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override {
    leave();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE UIDeactivate() override {
    uiLeave();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetObjectRects(const RECT* place, const RECT*) override {
    place_ = *place;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*) override { return S_FALSE; }
  HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ResizeBorder(const RECT*, IOleInPlaceUIWindow*, BOOL) override {
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }

  // Persistence
  HRESULT STDMETHODCALLTYPE GetClassID(CLSID* id) override {
    *id = {};
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE IsDirty() override { return S_FALSE; }
  HRESULT STDMETHODCALLTYPE InitNew() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Load(IStream*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Save(IStream*, BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) override {
    size->QuadPart = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Load(IPropertyBag*, IErrorLog*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Save(IPropertyBag*, BOOL, BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE InitNew(IStorage*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Load(IStorage*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Save(IStorage*, BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE SaveCompleted(IStorage*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE HandsOffStorage() override { return S_OK; }

  // IViewObject2
  HRESULT STDMETHODCALLTYPE Draw(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, HDC, LPCRECTL, LPCRECTL,
                                 BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) override {
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC,
                                        LOGPALETTE**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Unfreeze(DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetAdvise(DWORD, DWORD, IAdviseSink* sink) override {
    view_ = sink;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetAdvise(DWORD*, DWORD*, IAdviseSink**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetExtent(DWORD, LONG, DVTARGETDEVICE*, LPSIZEL) override {
    return E_NOTIMPL;
  }

  // IConnectionPointContainer
  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** out) override {
    if (id != IID_IPropertyNotifySink) return CONNECT_E_NOCONNECTION;
    *out = &point_;
    point_.AddRef();
    return S_OK;
  }

  // IDispatch
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    if (id == 1) change();
    if (id == 2) box();
    return S_OK;
  }

 private:
  void* find(REFIID id) {
    if (id == IID_IUnknown || id == IID_IOleObject) return static_cast<IOleObject*>(this);
    if (id == IID_IOleControl) return static_cast<IOleControl*>(this);
    if (id == IID_IOleInPlaceObject) return static_cast<IOleInPlaceObject*>(this);
    if (id == IID_IOleInPlaceActiveObject) return static_cast<IOleInPlaceActiveObject*>(this);
    if (id == IID_IPersistStreamInit) return static_cast<IPersistStreamInit*>(this);
    if (id == IID_IPersistPropertyBag) return static_cast<IPersistPropertyBag*>(this);
    if (id == IID_IPersistStorage) return static_cast<IPersistStorage*>(this);
    if (id == IID_IViewObject || id == IID_IViewObject2) return static_cast<IViewObject2*>(this);
    if (id == IID_IConnectionPointContainer) return static_cast<IConnectionPointContainer*>(this);
    if (id == IID_IDispatch) return static_cast<IDispatch*>(this);
    return nullptr;
  }

  template <class Interface>
  ComPtr<Interface> fromSite(REFIID id) const {
    ComPtr<Interface> found;
    if (site_ != nullptr) site_->QueryInterface(id, reinterpret_cast<void**>(found.GetAddressOf()));
    return found;
  }
  ComPtr<IOleInPlaceSite> inPlaceSite() const {
    return fromSite<IOleInPlaceSite>(IID_IOleInPlaceSite);
  }
  ComPtr<IOleControlSite> controlSite() const {
    return fromSite<IOleControlSite>(IID_IOleControlSite);
  }

  void readAmbient() {
    const auto ambients = fromSite<IDispatch>(IID_IDispatch);
    if (ambients == nullptr) return;
    DISPPARAMS none = {};
    VARIANT value;
    VariantInit(&value);
    const WORD how = has(Fault::AmbientAsMethod) ? DISPATCH_METHOD : DISPATCH_PROPERTYGET;
    ambients->Invoke(DISPID_AMBIENT_USERMODE, IID_NULL, 0, how, &none, &value, nullptr, nullptr);
    VariantClear(&value);
  }

  void readContext(IOleInPlaceSite& site) {
    RECT place = {};
    RECT clip = {};
    OLEINPLACEFRAMEINFO info = {};
    info.cb = has(Fault::ContextWithoutSize) ? 0 : sizeof info;
    site.GetWindowContext(frame_.ReleaseAndGetAddressOf(), document_.ReleaseAndGetAddressOf(),
                          &place, &clip, &info);
  }

  void activate(HWND parent) {
    const auto site = inPlaceSite();
    if (active_ || site == nullptr) return;
    if (has(Fault::ContextTooEarly)) readContext(*site.Get());
    if (!has(Fault::ActivatesUnasked)) site->CanInPlaceActivate();
    if (has(Fault::UIActivatesFirst)) site->OnUIActivate();
    activated(*site.Get());
    readContext(*site.Get());
    if (has(Fault::LeaksFrame) && frame_ != nullptr) frame_->AddRef();
    active_ = true;
    window_ = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, place_.left, place_.top, 50,
                              20, parent, nullptr, nullptr, nullptr);
  }

  void activated(IOleInPlaceSite& site) {
    ComPtr<IOleInPlaceSiteEx> extended;
    site.QueryInterface(IID_IOleInPlaceSiteEx, reinterpret_cast<void**>(extended.GetAddressOf()));
    if (extended == nullptr) {
      site.OnInPlaceActivate();
      return;
    }
    BOOL noRedraw = FALSE;
    extended->OnInPlaceActivateEx(
        &noRedraw, has(Fault::WindowlessActivation) ? DWORD{ACTIVATE_WINDOWLESS} : 0);
  }

  void setActiveObjects(IOleInPlaceActiveObject* object) {
    if (frame_ != nullptr) frame_->SetActiveObject(object, nullptr);
    if (document_ != nullptr && !has(Fault::ForgetsDocument))
      document_->SetActiveObject(object, nullptr);
  }

  void setBorderSpace() {
    const BORDERWIDTHS some = {0, 20, 0, 0};
    if (frame_ != nullptr) frame_->SetBorderSpace(has(Fault::WantsBorderSpace) ? &some : nullptr);
  }

  void setFocus(BOOL got) {
    if (const auto site = controlSite()) site->OnFocus(got);
  }

  void uiActivate() {
    const auto site = inPlaceSite();
    if (uiActive_ || site == nullptr) return;
    uiActive_ = true;
    if (has(Fault::ActiveObjectFirst)) setActiveObjects(this);
    if (!has(Fault::UIActivatesFirst)) site->OnUIActivate();
    if (has(Fault::BorderSpaceFirst)) setBorderSpace();
    if (has(Fault::FocusFirst)) setFocus(TRUE);
    if (!has(Fault::ActiveObjectFirst)) setActiveObjects(this);
    if (!has(Fault::BorderSpaceFirst)) setBorderSpace();
    if (!has(Fault::FocusFirst)) setFocus(TRUE);
    if (has(Fault::FocusTwice)) setFocus(TRUE);
  }

  void uiLeave() {
    const auto site = inPlaceSite();
    if (!uiActive_ || site == nullptr) return;
    uiActive_ = false;
    if (!has(Fault::KeepsFocus)) setFocus(FALSE);
    if (!has(Fault::KeepsActiveObject)) setActiveObjects(nullptr);
    site->OnUIDeactivate(has(Fault::Undoable) ? TRUE : FALSE);
  }

  void leave() {
    const auto site = inPlaceSite();
    if (late_ && site_ != nullptr) site_->ShowObject();
    if (!active_ || site == nullptr) return;
    active_ = false;
    if (has(Fault::InPlaceDeactivatesFirst)) site->OnInPlaceDeactivate();
    uiLeave();
    if (!has(Fault::InPlaceDeactivatesFirst)) site->OnInPlaceDeactivate();
    if (!has(Fault::LeavesItsWindow) && window_ != nullptr) DestroyWindow(window_);
    window_ = nullptr;
    frame_.Reset();
    document_.Reset();
  }

  void change() {
    if (has(Fault::NotifiesWithinACall)) {
      point_.notify();
      return;
    }
    AddRef();
    SetTimer(window_, reinterpret_cast<UINT_PTR>(this), 1, &FakeControl::tick);
  }

  static void CALLBACK tick(HWND window, UINT, UINT_PTR id, DWORD) {
    KillTimer(window, id);
    auto* self = reinterpret_cast<FakeControl*>(id);
    if (self->site_ != nullptr) self->point_.notify();
    self->Release();
  }

  void box() {
    if (has(Fault::CallsFromAThread)) {
      std::thread([this] { controlSite()->OnControlInfoChanged(); }).join();
    }
    if (frame_ == nullptr) return;
    if (!has(Fault::ModelessTwice)) frame_->EnableModeless(FALSE);
    if (has(Fault::NotifiesInABox)) point_.notify();
    if (!has(Fault::ModelessUnpaired)) frame_->EnableModeless(TRUE);
  }

  Fault fault_;
  std::shared_ptr<int> alive_;
  ULONG references_ = 0;
  FakePoint point_;
  ComPtr<IOleClientSite> site_;
  ComPtr<IOleInPlaceFrame> frame_;
  ComPtr<IOleInPlaceUIWindow> document_;
  ComPtr<IAdviseSink> advise_;
  ComPtr<IAdviseSink> view_;
  RECT place_ = {};
  HWND window_ = nullptr;
  bool active_ = false;
  bool uiActive_ = false;
  bool late_ = false;
};

ULONG FakePoint::AddRef() { return owner_.AddRef(); }
ULONG FakePoint::Release() { return owner_.Release(); }
HRESULT FakePoint::Unadvise(DWORD) {
  if (owner_.has(Fault::LeaksSink)) sink_->AddRef();
  sink_.Reset();
  return S_OK;
}

}  // namespace

ComPtr<IUnknown> FakeSource::create() {
  ComPtr<IUnknown> made(static_cast<IOleObject*>(new FakeControl(fault_, alive_)));
  if (fault_ == Fault::KeepsItself) made.Get()->AddRef();
  return made;
}

HRESULT FakeSource::canUnloadNow() {
  return *alive_ == 0 && fault_ != Fault::LibraryInUse ? S_OK : S_FALSE;
}

}  // namespace container
