#pragma once

#include "agreements/AgreementContext.h"

namespace agreements {

// Prints one letter on the current printer: the participation of MiseAJourAccords::accord, whose
// key is cleLettre (or stands at indiceLettre of accordsModifies), told to the beneficiary or to
// the person responsible. A record that cannot be read leaves its lines empty; what the printer
// refuses is left out. Neither ends the page nor the job. The files it reads stay open for the next
// letter, see fermerFichiersLettre.
void Impression_ModifAccord(const AgreementContext& context);

// Releases the files that the letters have opened. To be called when a run of letters has ended,
// in whatever way.
void fermerFichiersLettre(screen::EditSession& session);

}  // namespace agreements
