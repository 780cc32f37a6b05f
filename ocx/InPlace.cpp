#include "ocx/InPlace.h"

#include <olectl.h>

#include <system_error>
#include <utility>

#include "toolkit/win32/Border.h"

namespace ocx {

using Microsoft::WRL::ComPtr;

namespace {

// KEYMODIFIERS, which not every SDK declares.
constexpr DWORD kShiftDown = 1;
constexpr DWORD kControlDown = 2;
constexpr DWORD kAltDown = 4;

DWORD modifiersNow() {
  const auto down = [](int key) { return GetKeyState(key) < 0; };
  return static_cast<DWORD>((down(VK_SHIFT) ? kShiftDown : 0) |
                            (down(VK_CONTROL) ? kControlDown : 0) | (down(VK_MENU) ? kAltDown : 0));
}

// An error in a handler ends that handler alone: the key that led to it counts as used.
template <class Body>
bool handled(const char* entry, const Body& body) {
  return toolkit::win32::windowBorder(entry, true, body);
}

// What is begun and not kept is undone, whichever way it ends.
class Undone {
 public:
  explicit Undone(std::function<void()> undo) : undo_(std::move(undo)) {}
  Undone(const Undone&) = delete;
  Undone& operator=(const Undone&) = delete;
  ~Undone() {
    if (undo_) undo_();
  }
  void keep() { undo_ = nullptr; }

 private:
  std::function<void()> undo_;
};

bool isTab(const MSG* message) {
  return message != nullptr && message->message == WM_KEYDOWN && message->wParam == VK_TAB;
}

}  // namespace

InPlace::InPlace(IOleInPlaceActiveObject& object, std::function<std::shared_ptr<void>()> keepAlive)
    : object_(object), keepAlive_(std::move(keepAlive)) {}

// Site -------------------------------------------------------------------------------------------

void InPlace::setSite(IOleClientSite* site) {
  takeDown();
  site_ = site;
  controlSite_.Reset();
  if (site_ != nullptr) site_.As(&controlSite_);
  readAmbients();
}

void InPlace::readAmbients() {
  const ComPtr<IOleClientSite> site = site_;
  const bool before = ambients_.userMode;
  ambients_ = ambientsOf(site.Get());
  surface_->setAcceptsInput(ambients_.userMode && !ambients_.uiDead);
  if (onAmbients) onAmbients();
  if (active() && ambients_.userMode != before) {
    changeMode();
  } else if (windows_) {
    windows_->setAmbience(ambients_.look);
  } else if (picture_) {
    picture_->repaint();
  }
}

// The place stays, another window takes it; a box that is open goes with the one before.
void InPlace::changeMode() {
  const HWND parent = GetParent(window());
  const bool visible = IsWindowVisible(window()) != FALSE;
  closed_ = true;
  deactivateUi();
  windows_.reset();
  picture_.reset();
  if (!active() || parent == nullptr) return;
  makeWindowIn(parent);
  show(visible);
}

// Activation -------------------------------------------------------------------------------------

HRESULT InPlace::activate() {
  if (active() && window() == nullptr) {
    deactivate();  // the container has destroyed the window from outside
  }
  if (active()) {
    show(true);
    return S_OK;
  }
  Undone entering([this] { deactivate(); });
  const HRESULT result = enterPlace();
  if (FAILED(result)) return result;
  entering.keep();
  if (site_ != nullptr) {
    const ComPtr<IOleClientSite> site = site_;
    site->ShowObject();
  }
  return S_OK;
}

HRESULT InPlace::enterPlace() {
  ComPtr<IOleInPlaceSite> site;
  if (site_ == nullptr || FAILED(site_.As(&site))) return E_NOINTERFACE;
  HRESULT result = site->CanInPlaceActivate();
  if (result != S_OK) return FAILED(result) ? result : E_FAIL;
  inPlaceSite_ = site;
  result = site->OnInPlaceActivate();
  if (FAILED(result)) {
    inPlaceSite_.Reset();  // it has not heard of an activation: it shall hear of no deactivation
    return result;
  }
  return makeWindow();
}

HRESULT InPlace::makeWindow() {
  const ComPtr<IOleInPlaceSite> site = inPlaceSite_;
  if (site == nullptr) return E_ABORT;
  HWND parent = nullptr;
  HRESULT result = site->GetWindow(&parent);
  if (FAILED(result)) return result;
  OLEINPLACEFRAMEINFO information{};
  information.cb = sizeof information;
  ComPtr<IOleInPlaceFrame> frame;
  ComPtr<IOleInPlaceUIWindow> document;
  result = site->GetWindowContext(&frame, &document, &place_, &clip_, &information);
  if (FAILED(result)) return result;
  if (inPlaceSite_ != site) return E_ABORT;
  frame_ = frame;
  document_ = document;
  makeWindowIn(parent);
  show(true);
  return S_OK;
}

void InPlace::makeWindowIn(HWND parent) {
  if (ambients_.userMode) {
    windows_ =
        std::make_unique<toolkit::win32::SurfaceWindow>(*surface_, parent, place_, ambients_.look);
    windows_->onEntry = keepAlive_;
    windows_->onKeyboard = [this](bool inside) { keyboardMoved(inside); };
    windows_->onPress = [this] { keyboardMoved(true); };
  } else {
    picture_ =
        std::make_unique<DesignWindow>(parent, place_, [this](HDC context, const RECT& area) {
          toolkit::win32::SurfaceWindow::draw(*surface_, context, area, ambients_.look);
        });
  }
  applyClip();
}

HWND InPlace::window() const {
  if (picture_) return picture_->handle();
  return windows_ ? windows_->handle() : nullptr;
}

void InPlace::show(bool visible) {
  if (windows_) windows_->show(visible);
  if (picture_) picture_->show(visible);
}

HRESULT InPlace::activateUi(const MSG* message) {
  HRESULT result = activate();
  if (SUCCEEDED(result) && active() && windows_ && !uiActive_) result = tellUiActive();
  if (FAILED(result) || !uiActive_ || !windows_) return result;
  handled("UIActivate", [&] {
    if (isTab(message)) {
      windows_->showCues();
      surface_->enter(GetKeyState(VK_SHIFT) < 0);
    }
    takeFocus();
    return true;
  });
  return S_OK;
}

HRESULT InPlace::tellUiActive() {
  const ComPtr<IOleInPlaceSite> site = inPlaceSite_;
  uiActive_ = true;
  const HRESULT result = site->OnUIActivate();
  if (FAILED(result)) {
    uiActive_ = false;
    return result;
  }
  if (uiActive_) showActiveObject();
  if (uiActive_) tellFocus(true);
  return S_OK;
}

void InPlace::showActiveObject() {
  constexpr const wchar_t* kName = L"Tessaline";
  const ComPtr<IOleInPlaceFrame> frame = frame_;
  const ComPtr<IOleInPlaceUIWindow> document = document_;
  if (frame != nullptr) frame->SetActiveObject(&object_, kName);
  if (document != nullptr) document->SetActiveObject(&object_, kName);
  if (frame != nullptr) frame->SetBorderSpace(nullptr);
  if (document != nullptr) document->SetBorderSpace(nullptr);
}

void InPlace::deactivateUi() {
  if (!uiActive_) return;
  uiActive_ = false;
  tellFocus(false);
  const ComPtr<IOleInPlaceSite> site = inPlaceSite_;
  const ComPtr<IOleInPlaceFrame> frame = frame_;
  const ComPtr<IOleInPlaceUIWindow> document = document_;
  if (document != nullptr) document->SetActiveObject(nullptr, nullptr);
  if (frame != nullptr) frame->SetActiveObject(nullptr, nullptr);
  if (site != nullptr) site->OnUIDeactivate(FALSE);
}

void InPlace::deactivate() {
  if (!active()) return;
  closed_ = true;
  while (barred_ > 0) {
    --barred_;
    if (frame_ != nullptr) {
      const ComPtr<IOleInPlaceFrame> frame = frame_;
      frame->EnableModeless(TRUE);
    }
  }
  deactivateUi();
  std::unique_ptr<toolkit::win32::SurfaceWindow> windows = std::move(windows_);
  const std::unique_ptr<DesignWindow> picture = std::move(picture_);
  const ComPtr<IOleInPlaceSite> site = std::move(inPlaceSite_);
  dropFrame();
  windows.reset();
  if (site != nullptr) site->OnInPlaceDeactivate();
}

void InPlace::dropFrame() {
  const ComPtr<IOleInPlaceFrame> frame = std::move(frame_);
  const ComPtr<IOleInPlaceUIWindow> document = std::move(document_);
  clipped_ = false;
}

void InPlace::hide() {
  deactivateUi();
  show(false);
}

void InPlace::takeDown() {
  closed_ = true;
  deactivate();
}

// Place ------------------------------------------------------------------------------------------

void InPlace::setRectangles(const RECT& place, const RECT& clip) {
  place_ = place;
  clip_ = clip;
  if (windows_) windows_->setPlace(place_);
  if (picture_) picture_->setPlace(place_);
  applyClip();
}

// The part of the window that the container lets be seen.
void InPlace::applyClip() {
  const HWND handle = window();
  RECT visible{};
  if (handle == nullptr) return;
  IntersectRect(&visible, &place_, &clip_);
  const bool clips = EqualRect(&visible, &place_) == 0;
  if (clips) {
    OffsetRect(&visible, -place_.left, -place_.top);
    SetWindowRgn(handle, CreateRectRgnIndirect(&visible), TRUE);  // Windows owns the region
  } else if (clipped_) {
    SetWindowRgn(handle, nullptr, TRUE);
  }
  clipped_ = clips;
}

// Keyboard ---------------------------------------------------------------------------------------

HRESULT InPlace::translate(MSG& message) {
  if (handled("TranslateAccelerator", [&] { return windows_ && windows_->translate(message); })) {
    return S_OK;
  }
  const ComPtr<IOleControlSite> site = controlSite_;
  return site == nullptr ? S_FALSE : site->TranslateAccelerator(&message, modifiersNow());
}

void InPlace::mnemonic(char32_t letter) {
  if (!ambients_.userMode) return;
  if (active()) activateUi(nullptr);
  handled("OnMnemonic", [&] {
    if (windows_) return windows_->mnemonic(letter);
    return surface_->key({.key = toolkit::Key::Character, .character = letter, .alt = true});
  });
}

void InPlace::takeFocus() {
  if (windows_) windows_->takeFocus();
}

void InPlace::keyboardMoved(bool inside) {
  if (modal_ > 0 || !windows_) {
    return;  // a box of ours takes it and gives it back, or the windows are going
  }
  if (inside && active() && !uiActive_) {
    tellUiActive();
  } else {
    tellFocus(inside);
  }
}

void InPlace::tellFocus(bool inside) {
  if (focusTold_ == inside) return;
  focusTold_ = inside;
  const ComPtr<IOleControlSite> site = controlSite_;
  if (site != nullptr) site->OnFocus(inside ? TRUE : FALSE);
}

// Modal windows ----------------------------------------------------------------------------------

HWND InPlace::owner() const {
  const HWND handle = window();
  return handle == nullptr ? nullptr : GetAncestor(handle, GA_ROOT);
}

bool InPlace::closed() const { return closed_ || (active() && window() == nullptr); }

void InPlace::enableModeless(bool enable) {
  modal_ += enable ? -1 : 1;
  const ComPtr<IOleInPlaceFrame> frame = frame_;
  if (frame == nullptr || (enable && barred_ == 0)) {
    return;  // the frame of a box that was closed meanwhile has heard already
  }
  barred_ += enable ? -1 : 1;
  frame->EnableModeless(enable ? TRUE : FALSE);
}

void InPlace::restoreFocus() {
  if (uiActive_) takeFocus();
}

}  // namespace ocx
