#pragma once

#include "agreements/AgreementContext.h"

namespace agreements {

// Right after a body has been written: asks whether its new scale is to be carried into its
// agreements, and whether the beneficiaries are to be told by letter; then runs Recup_Accord. Asks
// nothing unless a new scale has been entered, of a principal body in hours whose participation is
// managed in amount, and the question is not suspended. Whoever has lost full rights meanwhile
// updates nothing.
void proposerPropagation(const AgreementContext& context);

// Carries the scale on screen into the agreements of the body in hand: the store's command
// MAJTXACCGENE recomputes them, then a letter is printed for each agreement changed (when
// MiseAJourAccords::lettresVoulues is set) and, if the user wants it, a listing of those left
// unchanged. Every store and printer error is trapped; the run goes on with its next step.
//
// The pointer is an hourglass and the control disabled but while the user is asked; in the end both
// are as they were before. When the host closes the control meanwhile the run ends at once by
// ControlClosed: what the store has updated stays, its lists in TEMPO go.
// Of a command that fails, nothing is read: lists that are there are another run's and go.
void Recup_Accord(const AgreementContext& context);

}  // namespace agreements
