// Where the child controls sit.
#pragma once

#include "screen/Screen.h"

namespace screen {

// The bar, the tabs and their pages.
void placeBar(Screen& screen);
void placeCoordonnees(Coordonnees& page);
void placeRegles(Regles& page);
void placePriseEnCharge(PriseEnCharge& page);
void placeParticipation(Participation& page);
void placeBordereau(Bordereau& page);
void placeActivites(Activites& page);

}  // namespace screen
