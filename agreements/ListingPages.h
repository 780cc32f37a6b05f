#pragma once

#include "agreements/AgreementContext.h"

namespace agreements {

// Prints MiseAJourAccords::accordsNonModifies on the current printer and ends the job. A civil
// record that cannot be read leaves the name blank; what the printer refuses is left out.
void imprimerListe(const AgreementContext& context);

}  // namespace agreements
