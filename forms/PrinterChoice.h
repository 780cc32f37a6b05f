#pragma once

#include <string>
#include <string_view>

#include "toolkit/Desktop.h"

namespace forms {

inline constexpr std::string_view kAucuneImprimante = "-1";

// Lets the user choose a printer for A4 pages. Answers the position of the chosen one among the
// desktop's printers, which is then the current one; kAucuneImprimante when none was chosen: the
// current printer is then what it was before. Throws what the desktop throws, ControlClosed among
// it; the current printer is then unchanged as well.
std::string choisirImprimanteA4(toolkit::Desktop& desktop);

}  // namespace forms
