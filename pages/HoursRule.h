#pragma once

#include "screen/Screen.h"

namespace pages {

// Are the covered activities of the agency type? Their first one tells.
bool estMandataire(const screen::Activites& activites);

// The hours of the activities are a principal body's to choose; any other body takes them all.
void ouvrirHeures(screen::Activites& activites, bool principal);

// Week days alone cannot be chosen for agency activities where the hours can be chosen at all.
void reglerSemaine(screen::Activites& activites);

}  // namespace pages
