#pragma once

#include "toolkit/Surface.h"

namespace toolkit::test {

// Gives every control of the surface a place of its own, so that a mouse can hit each: siblings one
// below the other, containers large enough for what they hold. Frames' fields are their children,
// their places relative to them.
void layOut(Surface& surface);

}  // namespace toolkit::test
