#include "toolkit/win32/SurfaceImplementation.h"

#include <algorithm>
#include <utility>

#include "toolkit/AccessibleName.h"
#include "toolkit/win32/ControlPeer.h"
#include "toolkit/win32/PostedMessages.h"
#include "toolkit/win32/Scoped.h"
#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

bool isContainer(Kind kind) {
  return kind == Kind::Frame || kind == Kind::SSTab || kind == Kind::TabPage;
}

}  // namespace

// Life -------------------------------------------------------------------------------------------

SurfaceWindow::Implementation::Implementation(Surface& surface, SurfaceWindow& face,
                                              const Ambience& ambience)
    : surface_(&surface), face_(&face), ambience_(ambience), growth_(growthOf(ambience)) {}

SurfaceWindow::Implementation::~Implementation() = default;

void SurfaceWindow::Implementation::create(HWND parent, const RECT& place) {
  window_ = createContainer(parent, place);
  scale_ = scaleNow();
  surface_->setPeer(this);
  surface_->onFocusMoved = [this] { keyboard_.focusMoved(); };
  createPeers(*surface_);
  sinkFrames(*surface_);
  layOut();
  nameWindows();
  keyboard_.hideCues();
}

void SurfaceWindow::Implementation::createPeers(Container& container) {
  for (Control* child : container.children()) {
    const auto peer = makePeer(*this, *child);
    peers_.push_back(peer);
    peer->create();
    if (isContainer(child->kind())) createPeers(static_cast<Container&>(*child));
  }
}

// Group boxes lie below the fields they surround, the outer ones lowest.
void SurfaceWindow::Implementation::sinkFrames(const Container& container) {
  for (const Control* child : container.children()) {
    if (!isContainer(child->kind())) continue;
    sinkFrames(static_cast<const Container&>(*child));
    if (child->kind() != Kind::Frame) continue;
    SetWindowPos(peerOf(*child)->window(), HWND_BOTTOM, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }
}

void SurfaceWindow::Implementation::detach() {
  if (!surface_) return;
  for (const auto& peer : peers_) {
    names_.forget(peer->window());
    names_.forget(peer->focusWindow());
    peer->detach();
  }
  if (surface_->peer() == this) surface_->setPeer(nullptr);
  surface_->onFocusMoved = nullptr;
  surface_ = nullptr;
  notes_.clear();
  forgetContainers();
}

void SurfaceWindow::Implementation::destroy() {
  face_ = nullptr;
  detach();
  if (HWND window = std::exchange(window_, nullptr)) DestroyWindow(window);
}

// Look -------------------------------------------------------------------------------------------

HFONT SurfaceWindow::Implementation::font(const Font& font) {
  OwnedFont& owned = fonts_[{font.name, font.size, font.bold}];
  if (!owned) owned = scale_.font(font, ambience_);
  return owned.get();
}

void SurfaceWindow::Implementation::setPlace(const RECT& place) {
  if (!window_) return;
  SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
  if (window_ && scaleNow().dpi() != scale_.dpi()) reread();
}

void SurfaceWindow::Implementation::setAmbience(const Ambience& ambience) {
  ambience_ = ambience;
  growth_ = growthOf(ambience);
  if (!window_) return;
  reread();
  colorsChanged();
}

void SurfaceWindow::Implementation::colorsChanged() {
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

HBRUSH SurfaceWindow::Implementation::background() {
  const COLORREF color = palette().back();
  if (color != backgroundColor_ || !background_) {
    background_.reset(CreateSolidBrush(color));
    backgroundColor_ = color;
  }
  return background_.get();
}

Scale SurfaceWindow::Implementation::scaleNow() const {
  return Scale(ambience_.dpi ? ambience_.dpi : dpiOf(window_), growth_);
}

void SurfaceWindow::Implementation::layOut() {
  if (!attached() || !window_ || layingOut_) return;
  const Scoped once(layingOut_);
  scroll_.fit(window_, scale_.pixels(surface_->least()));
  RECT client{};
  GetClientRect(window_, &client);
  surface_->setRoom(scale_.twips({client.right, client.bottom}));
  for (const auto& peer : peers_) {
    if (peer->attached() && siteOf(peer->control()).window == window_) peer->applyPlace();
  }
  if (!keyboard_.isHere() || !surface_->focus()) return;
  if (const auto focused = peerOf(*surface_->focus())) reveal(focused->focusWindow());
}

void SurfaceWindow::Implementation::reread() {
  scale_ = scaleNow();
  // The windows use the old fonts until each has its new one.
  const auto before = std::exchange(fonts_, {});
  for (const auto& peer : peers_) {
    peer->applyFont();
    peer->applyPlace();
  }
  layOut();
}

SurfaceWindow::Implementation::Site SurfaceWindow::Implementation::siteOf(
    const Control& control) const {
  Site site;
  for (const Control* c = control.parent(); c; c = c->parent()) {
    if (c->kind() == Kind::Surface) {
      site.window = window_;
      return site;
    }
    if (c->kind() == Kind::TabPage || c->kind() == Kind::SSTab) {
      site.window = peerOf(*c)->window();
      return site;
    }
    site.left += c->place().left;
    site.top += c->place().top;
  }
  return site;
}

void SurfaceWindow::Implementation::placeWithin(const Container& container) {
  for (const Control* child : container.children()) {
    if (const auto peer = peerOf(*child)) peer->applyPlace();
  }
}

bool SurfaceWindow::Implementation::contains(HWND window) const {
  return window && window_ && (window == window_ || IsChild(window_, window));
}

std::shared_ptr<ControlPeer> SurfaceWindow::Implementation::peerOf(HWND window) const {
  const auto found = std::find_if(peers_.begin(), peers_.end(), [window](const auto& peer) {
    return peer->attached() && (peer->window() == window || peer->focusWindow() == window);
  });
  return found == peers_.end() ? nullptr : *found;
}

std::shared_ptr<ControlPeer> SurfaceWindow::Implementation::peerOf(const Control& control) const {
  const auto found = std::find_if(peers_.begin(), peers_.end(), [&control](const auto& peer) {
    return &peer->control() == &control;
  });
  return found == peers_.end() ? nullptr : *found;
}

void SurfaceWindow::Implementation::nameWindows() {
  for (const auto& peer : peers_) {
    if (!peer->attached()) continue;
    if (!peer->control().focusable() && peer->control().remark().empty()) {
      names_.forget(peer->window());
      continue;
    }
    const std::wstring name = wide(accessibleName(peer->control()));
    names_.tell(peer->window(), name);
    names_.tell(peer->focusWindow(), name);
  }
}

void SurfaceWindow::Implementation::captionChanged() {
  if (attached() && !containers_.empty()) nameWindows();
}

// Each window follows its own object; of the surface itself nothing shows.
void SurfaceWindow::Implementation::update(Aspect) {}

void SurfaceWindow::Implementation::refreshPeers() {
  for (const auto& peer : peers_) {
    if (peer->attached()) peer->refresh();
  }
  if (keyboard_.isHere()) keyboard_.bring();
}

// Notes ------------------------------------------------------------------------------------------

void SurfaceWindow::Implementation::note(ControlPeer& peer, Merge merge,
                                         std::function<void()> tell) {
  // What came while a handler runs, or on a disabled surface, is dropped: the window goes back to
  // what the object holds.
  if (!takesInput()) {
    PostMessageW(window_, kRefresh, 0, 0);
    return;
  }
  notes_.add(peer.shared_from_this(), merge, std::move(tell));
  PostMessageW(window_, kDeliver, 0, 0);
}

void SurfaceWindow::Implementation::deliver() {
  const auto self = shared_from_this();
  notes_.deliver();
}

// A copy: the listener may destroy the face that holds it.
std::function<void(bool)> SurfaceWindow::Implementation::keyboardListener() const {
  return face_ ? face_->onKeyboard : std::function<void(bool)>{};
}

std::function<void()> SurfaceWindow::Implementation::pressListener() const {
  return face_ ? face_->onPress : std::function<void()>{};
}

}  // namespace toolkit::win32
