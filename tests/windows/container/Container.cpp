#include "tests/windows/container/Container.h"

#include <olectl.h>

#include <stdexcept>

namespace container {

using Microsoft::WRL::ComPtr;

namespace {

// Objects that a control still holds after its end: they must not go while it may call them.
template <class Object>
void keepIfHeld(std::unique_ptr<Object>& object) {
  if (object != nullptr && object->references() > 0) (void)object.release();
}

BOOL CALLBACK countOne(HWND, LPARAM total) {
  ++*reinterpret_cast<int*>(total);
  return TRUE;
}

int countChildren(HWND parent) {
  int count = 0;
  if (parent != nullptr) EnumChildWindows(parent, &countOne, reinterpret_cast<LPARAM>(&count));
  return count;
}

Offer offerOf(const Profile& profile) {
  Offer offer;
  offer.frame = profile.frame;
  offer.document = profile.document;
  offer.controlSite = profile.controlSite;
  return offer;
}

void demand(HRESULT result, const char* what) {
  if (FAILED(result)) throw std::runtime_error(std::string(what) + " was refused");
}

}  // namespace

Container::Container(const Profile& profile, HostWindow& window, Source& source)
    : profile_(profile),
      window_(window),
      source_(source),
      rules_(std::make_shared<Rules>(offerOf(profile))) {
  if (profile.frame) frame_ = std::make_unique<FrameObject>(rules_, window.handle());
  if (profile.document) document_ = std::make_unique<DocumentObject>(rules_, window.handle());
  site_ = std::make_unique<Site>(rules_, profile_, window.handle(), frame_.get(), document_.get());
  site_->setPlace(window.place());
  site_->onKey = [this](const MSG& message, DWORD modifiers) {
    return keyLeftByControl(message, modifiers);
  };
  properties_ = std::make_unique<PropertySink>(rules_);
  advises_ = std::make_unique<AdviseSink>(rules_, "advise sink");
  views_ = std::make_unique<AdviseSink>(rules_, "view sink");
  windowsBefore_ = countChildren(window.handle());
  control_ = source.create();
  // A window that gets the focus back passes it on to what it holds.
  window.onFocus = [this] {
    const HWND inner = controlWindow();
    if (inner != nullptr && rules_->uiActive()) SetFocus(inner);
  };
}

Container::~Container() {
  if (!finished_) finish();
}

template <class Interface>
ComPtr<Interface> Container::as() const {
  ComPtr<Interface> found;
  if (control_ != nullptr)
    control_->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(found.GetAddressOf()));
  return found;
}

HRESULT Container::setSite(bool set) {
  const auto object = as<IOleObject>();
  if (object == nullptr) throw std::runtime_error("the control is no OLE object");
  if (set) rules_->connected();
  HRESULT result = S_OK;
  {
    const Rules::HostCall call(*rules_, "SetClientSite");
    result = object->SetClientSite(set ? site_.get() : nullptr);
  }
  if (!set) rules_->disconnected();
  return result;
}

HRESULT Container::initStorage() {
  const auto persist = as<IPersistStorage>();
  if (persist == nullptr) return E_NOINTERFACE;
  if (storage_ == nullptr) {
    const HRESULT made = StgCreateDocfile(
        nullptr, STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_CREATE | STGM_DELETEONRELEASE, 0,
        &storage_);
    if (FAILED(made)) return made;
  }
  return persist->InitNew(storage_.Get());
}

HRESULT Container::initialise() {
  const Rules::HostCall call(*rules_, "InitNew");
  switch (profile_.persistence) {
    case Persistence::PropertyBag: {
      const auto persist = as<IPersistPropertyBag>();
      return persist == nullptr ? E_NOINTERFACE : persist->InitNew();
    }
    case Persistence::StreamInit: {
      const auto persist = as<IPersistStreamInit>();
      return persist == nullptr ? E_NOINTERFACE : persist->InitNew();
    }
    case Persistence::Storage:
      return initStorage();
    case Persistence::None:
      return S_OK;
  }
  return E_UNEXPECTED;
}

void Container::adviseAll() {
  const auto object = as<IOleObject>();
  const auto view = as<IViewObject2>();
  const auto points = as<IConnectionPointContainer>();
  demand(object->Advise(advises_.get(), &adviseCookie_), "Advise");
  if (view == nullptr) throw std::runtime_error("the control has no IViewObject2");
  demand(view->SetAdvise(DVASPECT_CONTENT, 0, views_.get()), "SetAdvise");
  if (points == nullptr) throw std::runtime_error("the control has no connection points");
  demand(points->FindConnectionPoint(IID_IPropertyNotifySink, &connection_), "FindConnectionPoint");
  demand(connection_->Advise(properties_.get(), &connectionCookie_), "the sink's Advise");
  connectEvents();
}

void Container::connectEvents() {
  const auto information = as<IProvideClassInfo2>();
  const auto points = as<IConnectionPointContainer>();
  GUID source{};
  if (information == nullptr ||
      FAILED(information->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source))) {
    return;
  }
  events_ = std::make_unique<EventSink>(rules_, source);
  demand(points->FindConnectionPoint(source, &eventSource_), "the default source");
  demand(eventSource_->Advise(events_.get(), &eventCookie_), "the event sink's Advise");
}

void Container::unadviseAll() {
  if (connection_ != nullptr && connectionCookie_ != 0) connection_->Unadvise(connectionCookie_);
  connection_.Reset();
  connectionCookie_ = 0;
  if (eventSource_ != nullptr && eventCookie_ != 0) eventSource_->Unadvise(eventCookie_);
  eventSource_.Reset();
  eventCookie_ = 0;
  if (const auto view = as<IViewObject2>()) view->SetAdvise(DVASPECT_CONTENT, 0, nullptr);
  const auto object = as<IOleObject>();
  if (object != nullptr && adviseCookie_ != 0) object->Unadvise(adviseCookie_);
  adviseCookie_ = 0;
}

void Container::load() {
  if (profile_.siteFirst) demand(setSite(true), "SetClientSite");
  demand(initialise(), "InitNew");
  if (!profile_.siteFirst) demand(setSite(true), "SetClientSite");
  adviseAll();
}

HRESULT Container::open() {
  load();
  const auto object = as<IOleObject>();
  if (profile_.extent) {
    SIZEL extent = {15000, 10000};
    object->SetExtent(DVASPECT_CONTENT, &extent);
  }
  if (profile_.rectsFirst) setRects(site_->place());
  if (!profile_.uiActivateFirst) {
    const HRESULT inPlace = activate();
    if (FAILED(inPlace)) return inPlace;
  }
  return uiActivate();
}

HRESULT Container::doVerb(LONG verb, MSG* message) {
  const auto object = as<IOleObject>();
  if (object == nullptr) return E_NOINTERFACE;
  const Rules::HostCall call(*rules_, "DoVerb");
  const RECT place = site_->place();
  return object->DoVerb(verb, message, site_.get(), 0, window_.handle(), &place);
}

HRESULT Container::uiDeactivate() {
  const auto object = as<IOleInPlaceObject>();
  if (object == nullptr) return E_NOINTERFACE;
  const Rules::HostCall call(*rules_, "UIDeactivate");
  return object->UIDeactivate();
}

HRESULT Container::deactivate() {
  const auto object = as<IOleInPlaceObject>();
  if (object == nullptr) return E_NOINTERFACE;
  const Rules::HostCall call(*rules_, "InPlaceDeactivate");
  return object->InPlaceDeactivate();
}

HRESULT Container::setRects(const RECT& place) {
  site_->setPlace(place);
  const auto object = as<IOleInPlaceObject>();
  if (object == nullptr) return E_NOINTERFACE;
  const Rules::HostCall call(*rules_, "SetObjectRects");
  return object->SetObjectRects(&place, &place);
}

HRESULT Container::close() {
  const auto object = as<IOleObject>();
  if (object == nullptr) return E_NOINTERFACE;
  HRESULT result = S_OK;
  {
    const Rules::HostCall call(*rules_, "Close");
    result = object->Close(OLECLOSE_NOSAVE);
  }
  rules_->disconnected();
  return result;
}

HRESULT Container::ambientChanged(DISPID id) {
  const auto control = as<IOleControl>();
  if (control == nullptr) return E_NOINTERFACE;
  const Rules::HostCall call(*rules_, "OnAmbientPropertyChange");
  return control->OnAmbientPropertyChange(id);
}

CONTROLINFO Container::controlInfo(HRESULT* result) {
  CONTROLINFO info = {};
  info.cb = sizeof info;
  const auto control = as<IOleControl>();
  const Rules::HostCall call(*rules_, "GetControlInfo");
  const HRESULT got = control == nullptr ? E_NOINTERFACE : control->GetControlInfo(&info);
  if (result != nullptr) *result = got;
  return info;
}

IOleInPlaceActiveObject* Container::activeObject() const {
  return frame_ == nullptr ? nullptr : frame_->activeObject();
}

bool Container::asAccelerator(MSG& message) {
  HRESULT result = S_OK;
  const CONTROLINFO info = controlInfo(&result);
  WORD command = 0;
  if (FAILED(result) || info.hAccel == nullptr ||
      IsAccelerator(info.hAccel, info.cAccel, &message, &command) == FALSE)
    return false;
  const auto control = as<IOleControl>();
  const Rules::HostCall call(*rules_, "OnMnemonic");
  control->OnMnemonic(&message);
  return true;
}

bool Container::translate(MSG& message) {
  const bool key = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
  if (profile_.keys == Keys::Dialog)
    return key && window_.handle() != nullptr &&
           IsDialogMessageW(window_.handle(), &message) != FALSE;
  if (!key) return false;
  const ComPtr<IOleInPlaceActiveObject> active = activeObject();
  if (active != nullptr) {
    const Rules::HostCall call(*rules_, "TranslateAccelerator");
    if (active->TranslateAccelerator(&message) == S_OK) return true;
  }
  return profile_.keys == Keys::Mnemonics && control_ != nullptr && asAccelerator(message);
}

HRESULT Container::keyLeftByControl(const MSG& message, DWORD modifiers) {
  if (message.message != WM_KEYDOWN || message.wParam != VK_TAB) return S_FALSE;
  const bool backwards = (modifiers & 1) != 0 || GetKeyState(VK_SHIFT) < 0;
  SetFocus(backwards ? window_.before() : window_.after());
  return S_OK;
}

void Container::pump() {
  container::pump([this](MSG& message) { return translate(message); });
}

bool Container::pumpUntil(const std::function<bool()>& done, DWORD milliseconds) {
  return container::pumpUntil(done, milliseconds,
                              [this](MSG& message) { return translate(message); });
}

HWND Container::controlWindow() const {
  const auto object = as<IOleInPlaceObject>();
  HWND window = nullptr;
  if (object == nullptr || FAILED(object->GetWindow(&window))) return nullptr;
  return window;
}

ComPtr<IDispatch> Container::automation() const { return as<IDispatch>(); }

HRESULT Container::saveAndLoadAnother() {
  const ComPtr<IUnknown> other = source_.create();
  ComPtr<IStream> stream;
  HRESULT result = CreateStreamOnHGlobal(nullptr, TRUE, &stream);
  if (FAILED(result)) return result;
  if (profile_.persistence == Persistence::Storage) {
    ComPtr<IStorage> target;
    ComPtr<IPersistStorage> reader;
    const auto writer = as<IPersistStorage>();
    result = StgCreateDocfile(
        nullptr, STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_CREATE | STGM_DELETEONRELEASE, 0,
        &target);
    if (SUCCEEDED(result)) result = writer->Save(target.Get(), FALSE);
    if (SUCCEEDED(result)) result = writer->SaveCompleted(nullptr);
    if (SUCCEEDED(result)) result = other.As(&reader);
    return SUCCEEDED(result) ? reader->Load(target.Get()) : result;
  }
  ComPtr<IPersistStreamInit> reader;
  const auto writer = as<IPersistStreamInit>();
  result = writer == nullptr ? E_NOINTERFACE : writer->Save(stream.Get(), TRUE);
  if (SUCCEEDED(result)) result = stream->Seek({}, STREAM_SEEK_SET, nullptr);
  if (SUCCEEDED(result)) result = other.As(&reader);
  return SUCCEEDED(result) ? reader->Load(stream.Get()) : result;
}

void Container::checkReferences() {
  const auto check = [this](const auto& object) {
    if (object != nullptr && object->references() != 0)
      rules_->violation(object->name() + " is still held " + std::to_string(object->references()) +
                        " times");
  };
  check(site_);
  check(frame_);
  check(document_);
  check(properties_);
  check(events_);
  check(advises_);
  check(views_);
}

void Container::checkWindows() {
  if (window_.handle() == nullptr) return;
  const int left = countChildren(window_.handle()) - windowsBefore_;
  if (left > 0) rules_->violation(std::to_string(left) + " windows are left");
}

ULONG Container::letGo() {
  released_ = true;
  window_.onFocus = {};
  unadviseAll();
  deactivate();
  close();
  setSite(false);
  if (frame_ != nullptr) frame_->forget();
  if (document_ != nullptr) document_->forget();
  storage_.Reset();
  IUnknown* const last = control_.Detach();
  return last->Release();
}

void Container::abandon() {
  if (!released_) letGo();
}

std::string Container::finish() {
  if (finished_) return rules_->report();
  finished_ = true;
  if (!released_) {
    container::pump();
    const ULONG left = letGo();
    if (left != 0) rules_->violation("the last Release gives " + std::to_string(left));
  }
  container::pump();
  check();
  return rules_->report();
}

void Container::check() {
  rules_->ended();
  checkReferences();
  checkWindows();
  if (source_.canUnloadNow() != S_OK) rules_->violation("DllCanUnloadNow does not answer S_OK");
  keepIfHeld(site_);
  keepIfHeld(frame_);
  keepIfHeld(document_);
  keepIfHeld(properties_);
  keepIfHeld(events_);
  keepIfHeld(advises_);
  keepIfHeld(views_);
}

}  // namespace container
