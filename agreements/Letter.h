#pragma once

#include "agreements/AgreementContext.h"

namespace agreements {

// Prints one letter on the current printer: the participation of MiseAJourAccords::accord, whose
// key stands at indiceLettre of accordsModifies, told to the beneficiary or to the person
// responsible. A record that cannot be read leaves its lines empty. Neither ends the page nor the
// job.
void Impression_ModifAccord(const AgreementContext& context);

}  // namespace agreements
