// Where the child controls sit. `more` is what the height of the control has beyond its natural
// one, in twips: the lists get it.
#pragma once

#include "screen/Screen.h"

namespace screen {

// The bar, the tabs and their pages.
void placeBar(Screen& screen, int more);
void placeCoordonnees(Coordonnees& page);
void placeRegles(Regles& page, int more);
void placePriseEnCharge(PriseEnCharge& page, int more);
void placeParticipation(Participation& page, int more);
void placeBordereau(Bordereau& page, int more);
void placeActivites(Activites& page, int more);

}  // namespace screen
