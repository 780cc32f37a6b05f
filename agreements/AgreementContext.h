#pragma once

#include "screen/EditSession.h"
#include "screen/Screen.h"
#include "toolkit/Desktop.h"
#include "toolkit/Surface.h"

namespace agreements {

// What the update of the agreements works with; all of it outlives it.
struct AgreementContext {
  toolkit::Desktop& desktop;
  toolkit::Surface& surface;
  screen::Screen& screen;
  screen::EditSession& session;
};

}  // namespace agreements
