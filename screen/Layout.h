// Where the child controls sit.
#pragma once

#include "screen/Screen.h"

namespace screen {

// The bar, the tabs and their pages.
void placeBar(Screen& screen);
void placeCoordonnees(Coordonnees& page);

}  // namespace screen
