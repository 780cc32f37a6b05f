#pragma once

#include <functional>
#include <vector>

#include "pages/AddressPort.h"
#include "pages/Page.h"
#include "screen/EditSession.h"
#include "screen/Screen.h"
#include "toolkit/Desktop.h"
#include "toolkit/Surface.h"

namespace control {

// What the parts of the control work with; all of it outlives them.
struct Context {
  toolkit::Desktop& desktop;
  toolkit::Surface& surface;
  screen::Screen& screen;
  screen::EditSession& session;
  pages::AddressPort& adresse;
  std::vector<pages::Page*> pages;  // in tab order
};

}  // namespace control
