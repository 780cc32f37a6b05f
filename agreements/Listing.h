#pragma once

#include "agreements/AgreementContext.h"

namespace agreements {

// Asks for a printer and prints MiseAJourAccords::accordsNonModifies on it, a line an agreement.
// Prints nothing when the printer is refused. Every store and printer error is trapped.
void Imprimer_AccordsNonModifies(const AgreementContext& context);

}  // namespace agreements
