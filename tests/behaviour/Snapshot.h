// All that is on screen, as text: to compare a screen with another one, or with itself later.
#pragma once

#include <map>
#include <set>
#include <string>

#include "toolkit/Control.h"

namespace behaviour {

// What each child control below the container shows, by name: texts, lines, selections, values,
// what is enabled and visible, captions and colours. Left out is where the user was: the tab in
// front, the focus, carets, how far a list is scrolled.
using Snapshot = std::map<std::string, std::string>;

Snapshot snapshotOf(const toolkit::Container& container);

// What differs, a line a child control; "" when nothing does.
std::string difference(const Snapshot& expected, const Snapshot& actual,
                       const std::set<std::string>& apartFrom = {});

}  // namespace behaviour
