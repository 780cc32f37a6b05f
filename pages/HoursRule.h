#pragma once

#include "screen/Screen.h"

namespace pages {

// Are the covered activities of the agency type? Their first one tells.
bool estMandataire(const screen::Activites& activites);

// Week days alone cannot be chosen for agency activities where the hours can be chosen at all.
void reglerSemaine(screen::Activites& activites);

}  // namespace pages
