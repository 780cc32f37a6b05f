#pragma once

#include "screen/Screen.h"

namespace pages {

// The acronym's place on the bar holds the look-up or the entry field, each with its label.
void montrerRechercheSigle(screen::CommandBar& bar);
void montrerSaisieSigle(screen::CommandBar& bar);

}  // namespace pages
