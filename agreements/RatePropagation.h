#pragma once

#include "agreements/AgreementContext.h"

namespace agreements {

// Carries the changed reimbursement rates on screen into the agreements of the body in hand, one
// record after the other: of the rows 0 to W_DerTauxModif, the oldest one whose date or normal rate
// is none of the record as it was read (AncienOrgChg), and those after its date; row 0 when none
// has changed. Does nothing without a record in hand that has its code.
//
// In each agreement that is not closed and ends after the oldest of these rates, the periods on or
// after that date leave the history, and one period a rate enters it, most recent first. Its scale
// row and participation are those in force on its date before; of an agreement that starts later,
// those that it starts with.
//
// A selection that fails ends it with its StoreError. An agreement that fails is left as it is and
// the others are done; in the end a StoreError tells that one was left. Calling it again is safe.
void Recup_AccordTauxRemb(const AgreementContext& context);

}  // namespace agreements
