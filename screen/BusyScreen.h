#pragma once

#include <exception>

#include "toolkit/ControlClosed.h"
#include "toolkit/Desktop.h"
#include "toolkit/Surface.h"
#include "toolkit/Trace.h"

namespace screen {

// The hourglass, and the whole control disabled, while this lives.
class BusyScreen {
 public:
  BusyScreen(toolkit::Desktop& desktop, toolkit::Surface& surface)
      : desktop_(desktop), surface_(surface), exceptions_(std::uncaught_exceptions()) {
    desktop_.setPointer(toolkit::Pointer::Hourglass);
    surface_.setEnabled(false);
  }
  // Enabling gives the focus that was asked for meanwhile. An error of its GotFocus passes on, or
  // is traced when this ends by another one.
  ~BusyScreen() noexcept(false) {
    desktop_.setPointer(toolkit::Pointer::Normal);
    if (std::uncaught_exceptions() == exceptions_) {
      surface_.setEnabled(true);
      return;
    }
    try {
      surface_.setEnabled(true);
    } catch (const std::exception& error) {
      toolkit::trace("BusyScreen", error.what());
    } catch (const toolkit::ControlClosed&) {
      toolkit::trace("BusyScreen", "closed");
    }
  }
  BusyScreen(const BusyScreen&) = delete;
  BusyScreen& operator=(const BusyScreen&) = delete;

 private:
  toolkit::Desktop& desktop_;
  toolkit::Surface& surface_;
  int exceptions_;
};

}  // namespace screen
