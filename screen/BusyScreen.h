#pragma once

#include <exception>

#include "toolkit/ControlClosed.h"
#include "toolkit/Desktop.h"
#include "toolkit/Surface.h"
#include "toolkit/Trace.h"
#include "toolkit/Trap.h"

namespace screen {

// Pointer and whole control are in another state while one lives, and then as they were before: one
// inside another ends in the state of the outer one.
class HeldScreen {
 public:
  // Enabling gives the focus that was asked for meanwhile. An error of its GotFocus passes on, or
  // is traced when this ends by another one.
  ~HeldScreen() noexcept(false) {
    toolkit::quietly("HeldScreen", [this] { desktop_.setPointer(pointer_); });
    if (std::uncaught_exceptions() == exceptions_) {
      surface_.setEnabled(enabled_);
      return;
    }
    try {
      surface_.setEnabled(enabled_);
    } catch (const std::exception& error) {
      toolkit::trace("HeldScreen", error);
    } catch (const toolkit::ControlClosed&) {
      toolkit::trace("HeldScreen", "closed");
    }
  }
  HeldScreen(const HeldScreen&) = delete;
  HeldScreen& operator=(const HeldScreen&) = delete;

 protected:
  HeldScreen(toolkit::Desktop& desktop, toolkit::Surface& surface, toolkit::Pointer pointer,
             bool enabled)
      : desktop_(desktop),
        surface_(surface),
        pointer_(desktop.pointer()),
        enabled_(surface.enabled()),
        exceptions_(std::uncaught_exceptions()) {
    toolkit::quietly("HeldScreen", [&] { desktop_.setPointer(pointer); });
    surface_.setEnabled(enabled);
  }

 private:
  toolkit::Desktop& desktop_;
  toolkit::Surface& surface_;
  toolkit::Pointer pointer_;
  bool enabled_;
  int exceptions_;
};

// The hourglass, and the whole control disabled.
class BusyScreen : public HeldScreen {
 public:
  BusyScreen(toolkit::Desktop& desktop, toolkit::Surface& surface)
      : HeldScreen(desktop, surface, toolkit::Pointer::Hourglass, false) {}
};

// The normal pointer and the control enabled, in the midst of a BusyScreen: the user is asked.
class UsableScreen : public HeldScreen {
 public:
  UsableScreen(toolkit::Desktop& desktop, toolkit::Surface& surface)
      : HeldScreen(desktop, surface, toolkit::Pointer::Normal, true) {}
};

}  // namespace screen
