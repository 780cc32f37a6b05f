// What the container says of its surroundings.
#pragma once

#include <ole2.h>

#include "toolkit/win32/Ambience.h"

namespace ocx {

// Each property may be absent: the defaults here are then kept.
struct Ambients {
  bool userMode = true;  // false: drawing only, no windows
  bool uiDead = false;   // true: no input
  LCID locale = LOCALE_USER_DEFAULT;
  toolkit::win32::Ambience look;
};

// Of a site without automation, or of none: the defaults.
Ambients ambientsOf(IOleClientSite* site);

}  // namespace ocx
