#include "toolkit/win32/SurfaceImplementation.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

#include "toolkit/win32/Border.h"
#include "toolkit/win32/ControlPeer.h"
#include "toolkit/win32/GivenMemory.h"
#include "toolkit/win32/ObjectTable.h"
#include "toolkit/win32/WindowClasses.h"

namespace toolkit::win32 {

namespace {

constexpr UINT kDeliver = WM_APP + 1;
constexpr UINT kRefresh = WM_APP + 2;
constexpr UINT kBringKeyboard = WM_APP + 3;
constexpr UINT kTakeFocus = WM_APP + 4;
constexpr UINT kDpiChangedAfterParent = 0x02E3;

class Scoped {
 public:
  explicit Scoped(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
  Scoped(const Scoped&) = delete;
  Scoped& operator=(const Scoped&) = delete;
  ~Scoped() { flag_ = before_; }

 private:
  bool& flag_;
  bool before_;
};

bool down(int virtualKey) { return GetKeyState(virtualKey) < 0; }

std::optional<Key> keyOf(WPARAM virtualKey) {
  static constexpr std::array<std::pair<WPARAM, Key>, 12> kKeys{{{VK_TAB, Key::Tab},
                                                                 {VK_RETURN, Key::Enter},
                                                                 {VK_ESCAPE, Key::Escape},
                                                                 {VK_SPACE, Key::Space},
                                                                 {VK_LEFT, Key::Left},
                                                                 {VK_RIGHT, Key::Right},
                                                                 {VK_UP, Key::Up},
                                                                 {VK_DOWN, Key::Down},
                                                                 {VK_PRIOR, Key::PageUp},
                                                                 {VK_NEXT, Key::PageDown},
                                                                 {VK_HOME, Key::Home},
                                                                 {VK_END, Key::End}}};
  for (const auto& [virtualCode, key] : kKeys) {
    if (virtualCode == virtualKey) return key;
  }
  return std::nullopt;
}

bool isSystemKey(UINT message) { return message == WM_SYSKEYDOWN || message == WM_SYSCHAR; }

bool isContainer(Kind kind) {
  return kind == Kind::Frame || kind == Kind::SSTab || kind == Kind::TabPage;
}

ObjectTable<HWND, SurfaceWindow::Implementation>& surfaces() {
  static ObjectTable<HWND, SurfaceWindow::Implementation> table;
  return table;
}

bool wrapsAround(const KeyStroke& stroke) {
  return stroke.key == Key::Tab && !stroke.control && !stroke.alt;
}

}  // namespace

std::optional<KeyStroke> strokeOf(UINT message, WPARAM wParam) {
  KeyStroke stroke;
  stroke.shift = down(VK_SHIFT);
  stroke.control = down(VK_CONTROL);
  if (message == WM_SYSCHAR) {
    stroke.character = static_cast<char32_t>(wParam);
    stroke.alt = true;
    return stroke;
  }
  const std::optional<Key> key = message == WM_KEYDOWN ? keyOf(wParam) : std::nullopt;
  if (!key) return std::nullopt;
  stroke.key = *key;
  return stroke;
}

// Life -------------------------------------------------------------------------------------------

SurfaceWindow::Implementation::Implementation(Surface& surface, SurfaceWindow& face,
                                              const Ambience& ambience)
    : surface_(&surface),
      face_(&face),
      ambience_(ambience),
      background_(CreateSolidBrush(ambience.backColor)) {}

SurfaceWindow::Implementation::~Implementation() = default;

void SurfaceWindow::Implementation::create(HWND parent, const RECT& place) {
  window_ = createContainer(parent, place);
  scale_ = Scale(ambience_.dpi ? ambience_.dpi : dpiOf(window_));
  surface_->setPeer(this);
  surface_->onFocusMoved = [this] { focusMoved(); };
  createPeers(*surface_);
  sinkFrames(*surface_);
}

HWND SurfaceWindow::Implementation::createContainer(HWND parent, const RECT& place) {
  HWND window = CreateWindowExW(0, surfaceClass(&Implementation::containerProcedure), L"",
                                WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, place.left, place.top,
                                place.right - place.left, place.bottom - place.top, parent, nullptr,
                                moduleInstance(), nullptr);
  if (!window) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                            "CreateWindow");
  }
  surfaces().add(window, this);
  containers_.push_back(window);
  return window;
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
  for (const auto& peer : peers_) peer->detach();
  if (surface_->peer() == this) surface_->setPeer(nullptr);
  surface_->onFocusMoved = nullptr;
  surface_ = nullptr;
  notes_.clear();
  for (HWND container : containers_) surfaces().remove(container);
  containers_.clear();
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
  if (window_ && Scale(ambience_.dpi ? ambience_.dpi : dpiOf(window_)).dpi() != scale_.dpi()) {
    reread();
  }
}

void SurfaceWindow::Implementation::setAmbience(const Ambience& ambience) {
  ambience_ = ambience;
  background_.reset(CreateSolidBrush(ambience.backColor));
  if (!window_) return;
  reread();
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void SurfaceWindow::Implementation::reread() {
  scale_ = Scale(ambience_.dpi ? ambience_.dpi : dpiOf(window_));
  // The windows use the old fonts until each has its new one.
  const auto before = std::exchange(fonts_, {});
  for (const auto& peer : peers_) {
    peer->applyFont();
    peer->applyPlace();
  }
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

// Each window follows its own object; of the surface itself nothing shows.
void SurfaceWindow::Implementation::update(Aspect) {}

void SurfaceWindow::Implementation::refreshPeers() {
  for (const auto& peer : peers_) {
    if (peer->attached()) peer->refresh();
  }
  if (hasKeyboard()) bringKeyboard();
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
  if (merge == Merge::Yes && !notes_.empty() && notes_.back().peer.get() == &peer &&
      notes_.back().merge == Merge::Yes) {
    notes_.back().tell = std::move(tell);
    return;
  }
  notes_.push_back({peer.shared_from_this(), merge, std::move(tell)});
  PostMessageW(window_, kDeliver, 0, 0);
}

void SurfaceWindow::Implementation::deliver() {
  if (delivering_ || notes_.empty()) return;
  const auto self = shared_from_this();
  const Scoped delivering(delivering_);
  while (attached() && !notes_.empty()) {
    const Note note = std::move(notes_.front());
    notes_.pop_front();
    if (note.peer->attached()) note.tell();
  }
}

// Keys -------------------------------------------------------------------------------------------

bool SurfaceWindow::Implementation::key(UINT message, WPARAM wParam) {
  const std::optional<KeyStroke> stroke = strokeOf(message, wParam);
  if (!stroke) return false;
  const auto self = shared_from_this();
  if (surface_->key(*stroke) || !attached()) return true;
  if (!wrapsAround(*stroke)) return false;
  surface_->enter(stroke->shift);
  return true;
}

bool SurfaceWindow::Implementation::translate(const MSG& message) {
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST || !attached()) return false;
  const auto self = shared_from_this();
  const bool inside = contains(message.hwnd);
  if (!inside && message.message != WM_SYSCHAR) return false;
  deliver();
  if (!attached()) return true;
  if (!takesInput()) return !isSystemKey(message.message);
  if (const auto peer = inside ? peerOf(message.hwnd) : nullptr) {
    peer->reportSilent();
    if (!attached()) return true;
  }
  const std::optional<KeyStroke> stroke = strokeOf(message.message, message.wParam);
  if (!stroke) return false;
  if (keepsTabs_ && wrapsAround(*stroke)) return key(message.message, message.wParam);
  return surface_->key(*stroke);
}

LRESULT SurfaceWindow::Implementation::dialogCode(LRESULT own, LPARAM message) const {
  if (message == 0 || !attached()) return own;
  const auto asked = readGiven<MSG>(message);
  if (!asked) return own;
  if (!surface_->takesUserInput()) return own | DLGC_WANTALLKEYS;  // discarded, nobody else's
  const std::optional<KeyStroke> stroke = strokeOf(asked->message, asked->wParam);
  if (!stroke) return own;
  const bool wants = surface_->wouldUse(*stroke) || (keepsTabs_ && wrapsAround(*stroke));
  return wants ? own | DLGC_WANTMESSAGE : own;
}

// Keyboard ---------------------------------------------------------------------------------------

void SurfaceWindow::Implementation::focusMoved() {
  if (coming_ || hasKeyboard()) bringKeyboard();
}

void SurfaceWindow::Implementation::takeFocus() {
  if (!attached() || !window_) return;
  const auto self = shared_from_this();
  const Scoped coming(coming_);
  const Control* focus = surface_->focus();
  if ((!focus || !focus->usable()) && takesInput()) surface_->enter(false);
  if (attached()) bringKeyboard();
}

void SurfaceWindow::Implementation::bringKeyboard() {
  if (!attached() || !window_) return;
  HWND target = window_;
  if (const Control* focus = surface_->focus()) {
    const auto peer = peerOf(*focus);
    if (peer && peer->attached() && peer->windowEnabled() && focus->shown()) {
      target = peer->focusWindow();
    }
  }
  if (GetFocus() == target) return;
  const auto self = shared_from_this();
  const Scoped bringing(bringing_);
  SetFocus(target);
}

void SurfaceWindow::Implementation::parkKeyboard() {
  const auto self = shared_from_this();
  const Scoped bringing(bringing_);
  SetFocus(window_);
}

void SurfaceWindow::Implementation::resumeKeyboard(const Control& control) {
  if (attached() && surface_->focus() == &control && GetFocus() == window_) bringKeyboard();
}

void SurfaceWindow::Implementation::tellKeyboard(bool inside) {
  // A copy: the listener may destroy the face that holds it.
  const auto tell = face_ ? face_->onKeyboard : std::function<void(bool)>{};
  if (tell) tell(inside);
}

void SurfaceWindow::Implementation::keyboardCame(ControlPeer* peer, HWND from) {
  const bool fromInside = contains(from);
  if (!fromInside) tellKeyboard(true);
  if (!attached() || bringing_) return;
  if (!peer) {
    if (surface_->focus()) {
      bringKeyboard();
    } else {
      PostMessageW(window_, kTakeFocus, 0, 0);
    }
    return;
  }
  Control& control = peer->control();
  if (surface_->focus() == &control) return;
  if (!fromInside || !control.focusable()) {
    PostMessageW(window_, kBringKeyboard, 0, 0);
    return;
  }
  // Another program's tool has put the focus there, as a user would.
  note(*peer, Merge::No, [this, &control] {
    surface_->moveFocus(&control);
    if (hasKeyboard()) bringKeyboard();
  });
}

void SurfaceWindow::Implementation::keyboardLeft(HWND to) {
  if (attached() && !contains(to)) tellKeyboard(false);
}

// Messages ---------------------------------------------------------------------------------------

LRESULT CALLBACK SurfaceWindow::Implementation::containerProcedure(HWND window, UINT message,
                                                                   WPARAM wParam, LPARAM lParam) {
  return windowBorder("SurfaceWindow", LRESULT{0}, [=]() -> LRESULT {
    Implementation* const raw = surfaces().find(window);
    if (!raw) return DefWindowProcW(window, message, wParam, lParam);
    const auto self = raw->shared_from_this();
    const auto entry = self->entered();
    if (message == WM_NCDESTROY) surfaces().remove(window);
    return self->containerMessage(window, message, wParam, lParam);
  });
}

LRESULT SurfaceWindow::Implementation::containerMessage(HWND window, UINT message, WPARAM wParam,
                                                        LPARAM lParam) {
  if (!attached()) return DefWindowProcW(window, message, wParam, lParam);
  if (const auto answer = reflected(message, wParam, lParam)) return *answer;
  if (message == WM_ERASEBKGND) {
    RECT client{};
    GetClientRect(window, &client);
    FillRect(reinterpret_cast<HDC>(wParam), &client, background_.get());
    return 1;
  }
  if (window == window_) {
    if (const auto answer = surfaceMessage(message, wParam, lParam)) return *answer;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

std::optional<LRESULT> SurfaceWindow::Implementation::reflected(UINT message, WPARAM wParam,
                                                                LPARAM lParam) {
  const auto at = [this](auto window) { return peerOf(reinterpret_cast<HWND>(window)); };
  switch (message) {
    case WM_COMMAND:
      if (const auto peer = at(lParam)) peer->commanded(HIWORD(wParam));
      return 0;
    case WM_HSCROLL:
    case WM_VSCROLL:
      if (const auto peer = at(lParam)) peer->scrolled(LOWORD(wParam));
      return 0;
    case WM_NOTIFY: {
      const auto header = readGiven<NMHDR>(lParam);
      if (!header) return 0;
      const auto peer = at(header->hwndFrom);
      return peer ? peer->notified(*header) : 0;
    }
    case WM_DRAWITEM: {
      const auto item = readGiven<DRAWITEMSTRUCT>(lParam);
      if (!item) return TRUE;
      if (const auto peer = at(item->hwndItem)) peer->drawItem(*item);
      return TRUE;
    }
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN: {
      const auto peer = at(lParam);
      HBRUSH brush = peer ? peer->colors(reinterpret_cast<HDC>(wParam), message) : nullptr;
      if (!brush) return std::nullopt;
      return reinterpret_cast<LRESULT>(brush);
    }
    default:
      return std::nullopt;
  }
}

std::optional<LRESULT> SurfaceWindow::Implementation::surfaceMessage(UINT message, WPARAM wParam,
                                                                     LPARAM lParam) {
  switch (message) {
    case kDeliver:
      deliver();
      return 0;
    case kRefresh:
      refreshPeers();
      return 0;
    case kBringKeyboard:
      if (hasKeyboard()) bringKeyboard();
      return 0;
    case kTakeFocus:
      if (GetFocus() == window_) takeFocus();
      return 0;
    case WM_SETFOCUS:
      keyboardCame(nullptr, reinterpret_cast<HWND>(wParam));
      return 0;
    case WM_KILLFOCUS:
      keyboardLeft(reinterpret_cast<HWND>(wParam));
      return 0;
    case WM_LBUTTONDOWN:
      deliver();
      if (takesInput() && !hasKeyboard()) takeFocus();
      return 0;
    case WM_GETDLGCODE:
      return dialogCode(0, lParam);
    case WM_SETCURSOR:
      if (!GetPropW(window_, kHourglassProperty)) return std::nullopt;
      SetCursor(LoadCursorW(nullptr, IDC_WAIT));
      return TRUE;
    case kDpiChangedAfterParent:
      reread();
      return 0;
    case WM_DESTROY:
      detach();
      window_ = nullptr;
      return 0;
    default:
      return keyMessage(message, wParam);
  }
}

// The surface has the keyboard itself while no control of it can.
std::optional<LRESULT> SurfaceWindow::Implementation::keyMessage(UINT message, WPARAM wParam) {
  if (message != WM_KEYDOWN && message != WM_SYSCHAR) return std::nullopt;
  deliver();
  if (!attached()) return 0;
  if (!takesInput()) return isSystemKey(message) ? std::nullopt : std::optional<LRESULT>(0);
  return key(message, wParam) ? std::optional<LRESULT>(0) : std::nullopt;
}

}  // namespace toolkit::win32
