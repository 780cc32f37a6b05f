#pragma once

#include "agreements/AgreementContext.h"

namespace agreements {

// Carries the changed reimbursement rates on screen into the agreements of the body in hand, one
// record after the other. Does nothing without a record in hand.
void Recup_AccordTauxRemb(const AgreementContext& context);

}  // namespace agreements
