#pragma once

#include "agreements/AgreementContext.h"

namespace agreements {

// Carries the scale on screen into the agreements of the body in hand: the store's command
// MAJTXACCGENE recomputes them, then a letter is printed for each agreement changed (when
// MiseAJourAccords::lettresVoulues is set) and, if the user wants it, a listing of those left
// unchanged. Every store and printer error is trapped; the run goes on with its next step.
void Recup_Accord(const AgreementContext& context);

}  // namespace agreements
