#pragma once

#include "toolkit/Desktop.h"
#include "toolkit/Surface.h"

namespace control {

// The hourglass, and the whole control disabled, while this lives.
class BusyScreen {
 public:
  BusyScreen(toolkit::Desktop& desktop, toolkit::Surface& surface)
      : desktop_(desktop), surface_(surface) {
    desktop_.setPointer(toolkit::Pointer::Hourglass);
    surface_.setEnabled(false);
  }
  // Enabling gives the focus that was asked for meanwhile, so it may run a handler that throws.
  ~BusyScreen() noexcept(false) {
    desktop_.setPointer(toolkit::Pointer::Normal);
    surface_.setEnabled(true);
  }
  BusyScreen(const BusyScreen&) = delete;
  BusyScreen& operator=(const BusyScreen&) = delete;

 private:
  toolkit::Desktop& desktop_;
  toolkit::Surface& surface_;
};

}  // namespace control
