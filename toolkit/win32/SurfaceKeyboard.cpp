#include "toolkit/win32/SurfaceKeyboard.h"

#include <utility>

#include "toolkit/win32/ControlPeer.h"
#include "toolkit/win32/GivenMemory.h"
#include "toolkit/win32/PostedMessages.h"
#include "toolkit/win32/Scoped.h"
#include "toolkit/win32/Strokes.h"
#include "toolkit/win32/SurfaceImplementation.h"

namespace toolkit::win32 {

Surface& SurfaceKeyboard::surface() const { return host_.surface(); }
HWND SurfaceKeyboard::window() const { return host_.window(); }
bool SurfaceKeyboard::isHere() const { return host_.contains(GetFocus()); }

namespace {

// The strokes by which a user goes from control to control.
bool movesFocus(const KeyStroke& stroke) {
  return stroke.key == Key::Tab || (stroke.key == Key::Character && stroke.alt);
}

}  // namespace

// Keys -------------------------------------------------------------------------------------------

// As any key that is pressed with Alt and reaches a window: this one means nothing to anybody.
void SurfaceKeyboard::spendAlt() {
  constexpr LPARAM kWithAlt = MAKELPARAM(1, KF_ALTDOWN);
  if (window()) DefWindowProcW(window(), WM_SYSKEYDOWN, VK_NONAME, kWithAlt);
}

bool SurfaceKeyboard::key(UINT message, WPARAM wParam) {
  const std::optional<KeyStroke> stroke = strokeOf(message, wParam);
  if (!stroke) return false;
  const auto alive = host_.shared_from_this();
  if (stroke->alt && surface().wouldUse(*stroke)) spendAlt();
  if (movesFocus(*stroke)) showCues();
  if (!host_.attached() || surface().key(*stroke) || !host_.attached()) return true;
  if (!wrapsAround(*stroke)) return false;
  surface().enter(stroke->shift);
  return true;
}

bool SurfaceKeyboard::mnemonic(char32_t letter) {
  const auto alive = host_.shared_from_this();
  spendAlt();
  showCues();
  return host_.attached() &&
         surface().key({.key = Key::Character, .character = letter, .alt = true});
}

bool SurfaceKeyboard::translate(const MSG& message) {
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST || !host_.attached())
    return false;
  const auto alive = host_.shared_from_this();
  const bool inside = host_.contains(message.hwnd);
  if (!inside && message.message != WM_SYSCHAR) return false;
  host_.deliver();
  if (!host_.attached()) return true;
  if (!host_.takesInput()) return !isSystemKey(message.message);
  if (const auto peer = inside ? host_.peerOf(message.hwnd) : nullptr) {
    peer->reportSilent();
    if (!host_.attached()) return true;
  }
  const std::optional<KeyStroke> stroke = strokeOf(message.message, message.wParam);
  if (!stroke) return false;
  if (keepsTabs_ && wrapsAround(*stroke)) return key(message.message, message.wParam);
  if (movesFocus(*stroke) && surface().wouldUse(*stroke)) {
    if (stroke->alt) spendAlt();
    showCues();
  }
  return !host_.attached() || surface().key(*stroke);
}

LRESULT SurfaceKeyboard::dialogCode(LRESULT own, LPARAM message) const {
  if (message == 0 || !host_.attached()) return own;
  const auto asked = readGiven<MSG>(message);
  if (!asked) return own;
  if (!surface().takesUserInput()) return own | DLGC_WANTALLKEYS;  // discarded, nobody else's
  const std::optional<KeyStroke> stroke = strokeOf(asked->message, asked->wParam);
  if (!stroke) return own;
  const bool wants = surface().wouldUse(*stroke) || (keepsTabs_ && wrapsAround(*stroke));
  return wants ? own | DLGC_WANTMESSAGE : own;
}

// Cues -------------------------------------------------------------------------------------------

void SurfaceKeyboard::hideCues() {
  BOOL always = FALSE;
  SystemParametersInfoW(SPI_GETKEYBOARDCUES, 0, &always, 0);
  if (always) return;
  const LRESULT around = SendMessageW(GetParent(window()), WM_QUERYUISTATE, 0, 0);
  const WORD hidden = static_cast<WORD>(UISF_HIDEFOCUS | (around & UISF_HIDEACCEL));
  SendMessageW(window(), WM_UPDATEUISTATE, MAKEWPARAM(UIS_SET, hidden), 0);
}

// The host's windows hear of it as they do of a dialog's. Where theirs show all already, that does
// not come back to the surface.
void SurfaceKeyboard::showCues() {
  if (hidden_ == 0) return;
  constexpr WPARAM kAll = MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS | UISF_HIDEACCEL);
  const auto alive = host_.shared_from_this();
  SendMessageW(window(), WM_CHANGEUISTATE, kAll, 0);
  if (host_.attached() && hidden_ != 0) SendMessageW(window(), WM_UPDATEUISTATE, kAll, 0);
}

void SurfaceKeyboard::updateCues(WPARAM change) {
  const WPARAM flags = HIWORD(change);
  const WPARAM before = hidden_;
  if (LOWORD(change) == UIS_SET) hidden_ |= flags;
  if (LOWORD(change) == UIS_CLEAR) hidden_ &= ~flags;
  if (hidden_ == before) return;
  RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

// Focus ------------------------------------------------------------------------------------------

void SurfaceKeyboard::focusMoved() {
  if (coming_ || isHere()) bring();
}

void SurfaceKeyboard::take() {
  if (!host_.attached() || !window()) return;
  const auto alive = host_.shared_from_this();
  const Scoped coming(coming_);
  const Control* focus = surface().focus();
  if ((!focus || !focus->usable()) && host_.takesInput()) surface().enter(false);
  if (host_.attached()) bring();
}

void SurfaceKeyboard::bring() {
  if (!host_.attached() || !window()) return;
  HWND target = window();
  if (const Control* focus = surface().focus()) {
    const auto peer = host_.peerOf(*focus);
    if (peer && peer->attached() && peer->windowEnabled() && focus->shown()) {
      target = peer->focusWindow();
    }
  }
  const auto alive = host_.shared_from_this();
  if (GetFocus() != target) {
    const Scoped bringing(bringing_);
    SetFocus(target);
  }
  if (host_.attached()) host_.reveal(target);
}

void SurfaceKeyboard::park() {
  const auto alive = host_.shared_from_this();
  const Scoped bringing(bringing_);
  SetFocus(window());
}

void SurfaceKeyboard::resume(const Control& control) {
  if (host_.attached() && surface().focus() == &control && GetFocus() == window()) bring();
}

void SurfaceKeyboard::tell(bool inside) {
  if (const auto listener = host_.keyboardListener()) listener(inside);
}

// The host may have taken the control's turn without moving the keyboard.
void SurfaceKeyboard::pressed() {
  if (!isHere()) return;
  if (const auto listener = host_.pressListener()) listener();
}

void SurfaceKeyboard::pressedBeside() {
  if (isHere()) {
    pressed();
  } else {
    take();
  }
}

void SurfaceKeyboard::came(ControlPeer* peer, HWND from) {
  const bool fromInside = host_.contains(from);
  if (!fromInside) tell(true);
  if (!host_.attached() || bringing_) return;
  if (!peer) {
    if (surface().focus()) {
      bring();
    } else {
      PostMessageW(window(), kTakeFocus, 0, 0);
    }
    return;
  }
  Control& control = peer->control();
  if (surface().focus() == &control) return;
  // A dialog gives the keyboard back to the window that it remembers, wherever the focus has gone
  // meanwhile.
  const bool givenBack = !fromInside && GetFocus() == std::exchange(left_, nullptr);
  if (givenBack || !control.focusable() || !control.usable()) {
    PostMessageW(window(), kBringKeyboard, 0, 0);
    return;
  }
  // The host, or another program's tool, has put the focus there, as a user would.
  host_.note(*peer, Notes::Merge::No, [this, &control] {
    surface().moveFocus(&control);
    if (isHere()) bring();
  });
}

void SurfaceKeyboard::left(HWND from, HWND to) {
  if (!host_.attached() || host_.contains(to)) return;
  left_ = from;
  tell(false);
}

// The surface has the keyboard itself while no control of it can.
std::optional<LRESULT> SurfaceKeyboard::keyMessage(UINT message, WPARAM wParam) {
  if (message != WM_KEYDOWN && message != WM_SYSCHAR) return std::nullopt;
  host_.deliver();
  if (!host_.attached()) return 0;
  if (!host_.takesInput()) return isSystemKey(message) ? std::nullopt : std::optional<LRESULT>(0);
  return key(message, wParam) ? std::optional<LRESULT>(0) : std::nullopt;
}

}  // namespace toolkit::win32
