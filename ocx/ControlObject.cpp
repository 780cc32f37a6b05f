#include "ocx/ControlObject.h"

#include <array>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "com/Variant.h"
#include "ocx/ControlRegistration.h"
#include "ocx/Enumerator.h"
#include "ocx/HostRights.h"
#include "ocx/HostStore.h"
#include "ocx/Members.h"
#include "ocx/TypeLibrary.h"
#include "toolkit/ControlClosed.h"
#include "toolkit/Trace.h"
#include "toolkit/win32/WindowsDesktop.h"

namespace ocx {

using Microsoft::WRL::ComPtr;

namespace {

LONG controlsAlive = 0;

constexpr int kTwipsPerInch = 1440;
constexpr int kHundredthsOfMillimetrePerInch = 2540;

LONG fromTwips(int twips) { return MulDiv(twips, kHundredthsOfMillimetrePerInch, kTwipsPerInch); }

void handOver(const ComPtr<IConnectionPoint>& held, IConnectionPoint*& element) {
  element = held.Get();
  element->AddRef();
}

}  // namespace

// Life -------------------------------------------------------------------------------------------

ControlObject::ControlObject()
    : place_(*this, [this] { return heldEntry(); }),
      desktop_(toolkit::win32::makeWindowsDesktop(place_)),
      control_(*desktop_) {
  InterlockedIncrement(&controlsAlive);
  place_.setSurface(control_.surface());
  saved_.extent = naturalExtent();
  control_.surface().onInfoChanged = [this] { infoChanged_ = true; };
  control_.onSortirChanged = [this] { noteSortir(); };
}

ControlObject::~ControlObject() {
  control_.onSortirChanged = nullptr;
  control_.surface().onInfoChanged = nullptr;
  if (InterlockedDecrement(&controlsAlive) == 0) {
    toolkit::win32::SurfaceWindow::unregisterClasses();
    PostedCall::unregisterClass();
  }
}

void ControlObject::abandoned() noexcept {
  com::comBorder([&] {
    place_.setSite(nullptr);
    sinks_.clear();
    viewSink_.Reset();
    adviseHolder_.Reset();
    return S_OK;
  });
}

void ControlObject::idle() noexcept {
  com::comBorder([&] {
    place_.reopen();
    const ComPtr<IOleControlSite> site = place_.controlSite();
    if (infoChanged_ && site != nullptr && place_.active()) {
      infoChanged_ = false;
      site->OnControlInfoChanged();
    }
    return S_OK;
  });
}

HRESULT ControlObject::query(REFIID wanted, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = find(wanted);
  if (*object == nullptr) return E_NOINTERFACE;
  addReference();
  return S_OK;
}

// The pointer of one interface, of the right type behind the void.
void* ControlObject::find(REFIID wanted) {
  struct Face {
    const IID* id;
    void* object;
  };
  const Face interfaces[] = {
      {&__uuidof(IUnknown), static_cast<_Ctr_OrgPriseCharge*>(this)},
      {&__uuidof(IDispatch), static_cast<_Ctr_OrgPriseCharge*>(this)},
      {&__uuidof(_Ctr_OrgPriseCharge), static_cast<_Ctr_OrgPriseCharge*>(this)},
      {&__uuidof(IOleObject), static_cast<IOleObject*>(this)},
      {&__uuidof(IOleControl), static_cast<IOleControl*>(this)},
      {&__uuidof(IOleWindow), static_cast<IOleInPlaceObject*>(this)},
      {&__uuidof(IOleInPlaceObject), static_cast<IOleInPlaceObject*>(this)},
      {&__uuidof(IOleInPlaceActiveObject), static_cast<IOleInPlaceActiveObject*>(this)},
      {&__uuidof(IViewObject), static_cast<IViewObject2*>(this)},
      {&__uuidof(IViewObject2), static_cast<IViewObject2*>(this)},
      {&__uuidof(IPersist), static_cast<IPersistStreamInit*>(this)},
      {&__uuidof(IPersistStreamInit), static_cast<IPersistStreamInit*>(this)},
      {&__uuidof(IPersistPropertyBag), static_cast<IPersistPropertyBag*>(this)},
      {&__uuidof(IPersistStorage), static_cast<IPersistStorage*>(this)},
      {&__uuidof(IProvideClassInfo), static_cast<IProvideClassInfo2*>(this)},
      {&__uuidof(IProvideClassInfo2), static_cast<IProvideClassInfo2*>(this)},
      {&__uuidof(IConnectionPointContainer), static_cast<IConnectionPointContainer*>(this)},
      {&__uuidof(ISupportErrorInfo), static_cast<ISupportErrorInfo*>(this)},
      {&IID_IObjectSafety, static_cast<IObjectSafety*>(this)},
  };
  for (const Face& face : interfaces) {
    if (*face.id == wanted) return face.object;
  }
  return nullptr;
}

// Automation -------------------------------------------------------------------------------------

HRESULT ControlObject::giveTypeInfo(UINT index, ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  if (typeInfo_ == nullptr) typeInfo_ = interfaceInfo();
  return giveObject(info, typeInfo_.Get());
}

HRESULT ControlObject::giveIds(LPOLESTR* names, UINT count, DISPID* ids) {
  ComPtr<ITypeInfo> info;
  giveTypeInfo(0, &info);
  return DispGetIDsOfNames(info.Get(), names, count, ids);
}

HRESULT ControlObject::invoke(DISPID member, WORD how, DISPPARAMS* parameters, VARIANT* result,
                              EXCEPINFO* exception, UINT* wrongArgument) {
  return invokeMember(*this, member, how, parameters, result, exception, wrongArgument);
}

void ControlObject::callControl(const std::function<void()>& call) {
  try {
    call();
  } catch (const control::Busy& failure) {
    throw com::Error(HRESULT_FROM_WIN32(ERROR_BUSY), failure.what());
  } catch (const control::AccessDenied& failure) {
    throw com::Error(E_ACCESSDENIED, failure.what());
  } catch (const control::NotReady& failure) {
    throw com::Error(E_UNEXPECTED, failure.what());
  } catch (const toolkit::ControlClosed&) {
    throw com::Error(E_ABORT, "the control was closed meanwhile");
  }
}

HRESULT ControlObject::keepRights(IDispatch* object) {
  callControl([&] { control_.setDroitsUtilisateur(rightsOf(object)); });
  return S_OK;
}

HRESULT ControlObject::keepClient(IDispatch* object) {
  const auto release = [](void* client) { static_cast<IDispatch*>(client)->Release(); };
  std::shared_ptr<void> client;
  if (object != nullptr) {
    object->AddRef();
    client = {object, release};
  }
  callControl([&] { control_.setTheClient(std::move(client)); });
  return S_OK;
}

HRESULT ControlObject::keepDatabase(IDispatch* object) {
  std::shared_ptr<store::Database> database = database_.lock();
  if (database == nullptr || !isDatabaseOf(*database, object)) database = databaseOf(object);
  callControl([&] { control_.setTheDatabase(database); });
  database_ = database;
  return S_OK;
}

HRESULT ControlObject::insertRate(short* index) {
  if (index == nullptr) return E_POINTER;
  callControl([&] { control_.AjoutLists(*index); });
  return S_OK;
}

HRESULT ControlObject::verify(VARIANT_BOOL* accepted, bool (Control::*check)()) {
  if (accepted == nullptr) return E_POINTER;
  *accepted = VARIANT_FALSE;
  callControl([&] { *accepted = truth((control_.*check)()); });
  return S_OK;
}

// IOleObject -------------------------------------------------------------------------------------

HRESULT ControlObject::setClientSite(IOleClientSite* site) {
  sortirPending_ = sortirPending_ && site != nullptr;
  place_.setSite(site);
  if (site != nullptr) {  // one that goes shall hear of nothing any more
    viewChanged();
  }
  return S_OK;
}

HRESULT ControlObject::close(DWORD save) {
  const ComPtr<IOleClientSite> site = place_.site();
  if (save != OLECLOSE_NOSAVE && dirty_ && site != nullptr) site->SaveObject();
  sortirPending_ = false;  // a host that closes the control needs no word of its leaving
  place_.takeDown();
  const ComPtr<IOleAdviseHolder> holder = adviseHolder_;
  if (holder != nullptr && !std::exchange(closeTold_, true)) holder->SendOnClose();
  return S_OK;
}

HRESULT ControlObject::doVerb(LONG verb, const MSG* message) {
  closeTold_ = false;
  switch (verb) {
    case OLEIVERB_PRIMARY:
    case OLEIVERB_UIACTIVATE:
      return place_.activateUi(message);
    case OLEIVERB_SHOW:
    case OLEIVERB_OPEN:
    case OLEIVERB_INPLACEACTIVATE:
      return place_.activate();
    case OLEIVERB_HIDE:
      place_.hide();
      return S_OK;
    default:
      return verb > 0 ? OLEOBJ_S_INVALIDVERB : E_NOTIMPL;
  }
}

HRESULT ControlObject::giveUserType(LPOLESTR* name) {
  if (name == nullptr) return E_POINTER;
  const std::wstring text = kUserType;
  const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
  *name = static_cast<LPOLESTR>(CoTaskMemAlloc(bytes));
  if (*name == nullptr) return E_OUTOFMEMORY;
  CopyMemory(*name, text.c_str(), bytes);
  return S_OK;
}

SIZEL ControlObject::naturalExtent() const {
  const toolkit::Place& place = const_cast<Control&>(control_).surface().place();
  return {fromTwips(place.width), fromTwips(place.height)};
}

// In pixels the size comes from SetObjectRects alone: containers disagree about the units here.
HRESULT ControlObject::setExtent(DWORD aspect, const SIZEL* extent) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (extent == nullptr) return E_POINTER;
  if (extent->cx < 0 || extent->cy < 0) return E_INVALIDARG;
  if (extent->cx != saved_.extent.cx || extent->cy != saved_.extent.cy) {
    saved_.extent = *extent;
    dirty_ = true;
    viewChanged();
  }
  return S_OK;
}

HRESULT ControlObject::giveExtent(DWORD aspect, SIZEL* extent) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  return give(extent, saved_.extent);
}

HRESULT ControlObject::advise(IAdviseSink* sink, DWORD* cookie) {
  if (adviseHolder_ == nullptr) {
    com::check(CreateOleAdviseHolder(&adviseHolder_), "CreateOleAdviseHolder");
  }
  return adviseHolder_->Advise(sink, cookie);
}

HRESULT ControlObject::unadvise(DWORD cookie) {
  return adviseHolder_ == nullptr ? OLE_E_NOCONNECTION : adviseHolder_->Unadvise(cookie);
}

HRESULT ControlObject::enumerateAdvise(IEnumSTATDATA** sinks) {
  if (sinks == nullptr) return E_POINTER;
  *sinks = nullptr;
  return adviseHolder_ == nullptr ? S_OK : adviseHolder_->EnumAdvise(sinks);
}

HRESULT ControlObject::giveMiscStatus(DWORD aspect, DWORD* status) {
  return give(status, aspect == DVASPECT_CONTENT ? kMiscStatus : DWORD{0});
}

// IOleControl ------------------------------------------------------------------------------------

HRESULT ControlObject::giveControlInfo(CONTROLINFO* information) {
  if (information == nullptr) return E_POINTER;
  std::vector<ACCEL> keys;
  for (const char32_t letter : control_.surface().mnemonics()) {
    const auto upper = static_cast<WORD>(letter);
    const auto lower = static_cast<WORD>(
        reinterpret_cast<ULONG_PTR>(CharLowerW(reinterpret_cast<LPWSTR>(ULONG_PTR{upper}))));
    keys.push_back({FALT, upper, static_cast<WORD>(keys.size() + 1)});
    keys.push_back({FALT, lower, static_cast<WORD>(keys.size() + 1)});
  }
  const auto count = static_cast<USHORT>(keys.size());
  mnemonics_.reset(keys.empty() ? nullptr : CreateAcceleratorTableW(keys.data(), count));
  information->hAccel = mnemonics_.get();
  information->cAccel = mnemonics_ == nullptr ? USHORT{0} : count;
  information->dwFlags = CTRLINFO_EATS_RETURN;
  if (control_.surface().cancelable()) information->dwFlags |= CTRLINFO_EATS_ESCAPE;
  return S_OK;
}

HRESULT ControlObject::mnemonic(const MSG* message) {
  if (message == nullptr) return E_POINTER;
  place_.mnemonic(static_cast<char32_t>(message->wParam));
  return S_OK;
}

HRESULT ControlObject::ambientsChanged() {
  place_.readAmbients();
  viewChanged();
  return S_OK;
}

HRESULT ControlObject::freezeEvents(bool freeze) {
  frozen_ = freeze;
  if (!frozen_ && sortirPending_) sortirChanged_.post();
  return S_OK;
}

// In place ---------------------------------------------------------------------------------------

HRESULT ControlObject::giveWindow(HWND* window) {
  const HWND own = place_.window();
  return give(window, own, own == nullptr ? E_FAIL : S_OK);
}

HRESULT ControlObject::setObjectRects(const RECT* place, const RECT* clip) {
  if (place == nullptr) return E_POINTER;
  place_.setRectangles(*place, clip == nullptr ? *place : *clip);
  return S_OK;
}

// View -------------------------------------------------------------------------------------------

HRESULT ControlObject::draw(DWORD aspect, HDC context, const RECTL* bounds) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (context == nullptr || bounds == nullptr) return E_INVALIDARG;
  const RECT area{bounds->left, bounds->top, bounds->right, bounds->bottom};
  toolkit::win32::SurfaceWindow::draw(control_.surface(), context, area, place_.ambients().look);
  return S_OK;
}

HRESULT ControlObject::setViewAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
  viewSink_ = sink;
  viewAspects_ = aspects;
  viewFlags_ = flags;
  if (sink != nullptr && (flags & ADVF_PRIMEFIRST) != 0) viewChanged();
  return S_OK;
}

HRESULT ControlObject::giveViewAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
  if (aspects != nullptr) *aspects = viewAspects_;
  if (flags != nullptr) *flags = viewFlags_;
  return sink == nullptr ? S_OK : giveObject(sink, viewSink_.Get());
}

void ControlObject::viewChanged() {
  const ComPtr<IAdviseSink> sink = viewSink_;
  if (sink == nullptr) return;
  if ((viewFlags_ & ADVF_ONLYONCE) != 0) viewSink_.Reset();
  sink->OnViewChange(DVASPECT_CONTENT, -1);
}

// Persistence ------------------------------------------------------------------------------------

HRESULT ControlObject::initNew() {
  saved_ = Saved{naturalExtent()};
  dirty_ = true;
  return S_OK;
}

HRESULT ControlObject::initNew(IStorage* storage) {
  return storage == nullptr ? E_POINTER : initNew();
}

HRESULT ControlObject::loadFrom(IStream* stream) {
  if (stream == nullptr) return E_POINTER;
  saved_ = readSaved(*stream);
  dirty_ = false;
  return S_OK;
}

HRESULT ControlObject::loadFrom(IPropertyBag* bag, IErrorLog* log) {
  if (bag == nullptr) return E_POINTER;
  saved_ = readSaved(*bag, log, saved_);
  dirty_ = false;
  return S_OK;
}

HRESULT ControlObject::loadFrom(IStorage* storage) {
  if (storage == nullptr) return E_POINTER;
  saved_ = readSaved(*storage);
  dirty_ = false;
  return S_OK;
}

HRESULT ControlObject::saveTo(IStream* stream, bool clearDirty) {
  if (stream == nullptr) return E_POINTER;
  writeSaved(saved_, *stream);
  dirty_ = dirty_ && !clearDirty;
  return S_OK;
}

HRESULT ControlObject::saveTo(IPropertyBag* bag, bool clearDirty) {
  if (bag == nullptr) return E_POINTER;
  writeSaved(saved_, *bag);
  dirty_ = dirty_ && !clearDirty;
  return S_OK;
}

HRESULT ControlObject::saveTo(IStorage* storage) {
  if (storage == nullptr) return E_POINTER;
  writeSaved(saved_, *storage);
  return S_OK;
}

HRESULT ControlObject::saveCompleted() {
  dirty_ = false;
  const ComPtr<IOleAdviseHolder> holder = adviseHolder_;
  if (holder != nullptr) holder->SendOnSave();
  return S_OK;
}

// Notification and the rest ----------------------------------------------------------------------

void ControlObject::noteSortir() {
  if (sinks_.empty()) return;
  sortirPending_ = true;
  try {
    sortirChanged_.post();
  } catch (const std::system_error& failure) {
    toolkit::trace("W_Sortir", failure);
  }
}

bool ControlObject::tellSortir() {
  if (entries() > 0) return false;
  const Entry entry(*this);
  if (!frozen_ && sortirPending_) {
    sortirPending_ = false;
    sinks_.tellChanged(kSortir);
  }
  return true;
}

HRESULT ControlObject::giveClassInfo(ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = classInfo().Detach();
  return S_OK;
}

HRESULT ControlObject::enumeratePoints(IEnumConnectionPoints** points) {
  if (points == nullptr) return E_POINTER;
  *points = Enumerator<IEnumConnectionPoints, IConnectionPoint*, ComPtr<IConnectionPoint>,
                       handOver>::make({ComPtr<IConnectionPoint>(&sinks_)});
  return S_OK;
}

HRESULT ControlObject::findPoint(REFIID sink, IConnectionPoint** point) {
  if (point == nullptr) return E_POINTER;
  if (sink != __uuidof(IPropertyNotifySink)) {
    *point = nullptr;
    return CONNECT_E_NOCONNECTION;
  }
  return giveObject<IConnectionPoint>(point, &sinks_);
}

namespace {

// Whatever a container hands over to load from is checked; nothing else is promised.
DWORD safetyOf(REFIID asked) {
  const bool loads = asked == __uuidof(IPersistStreamInit) ||
                     asked == __uuidof(IPersistPropertyBag) || asked == __uuidof(IPersistStorage);
  return loads ? INTERFACESAFE_FOR_UNTRUSTED_DATA : 0;
}

}  // namespace

HRESULT ControlObject::giveSafety(REFIID asked, DWORD* supported, DWORD* enabled) {
  if (supported == nullptr || enabled == nullptr) return E_POINTER;
  *supported = safetyOf(asked);
  *enabled = *supported;
  return find(asked) == nullptr ? E_NOINTERFACE : S_OK;
}

HRESULT ControlObject::setSafety(REFIID asked, DWORD mask, DWORD wanted) {
  if (find(asked) == nullptr) return E_NOINTERFACE;
  return (mask & wanted & ~safetyOf(asked)) == 0 ? S_OK : E_FAIL;
}

}  // namespace ocx
