#include "agreements/Listing.h"

#include "agreements/ListingPages.h"
#include "forms/PrinterChoice.h"
#include "toolkit/Trap.h"

namespace agreements {

void Imprimer_AccordsNonModifies(const AgreementContext& context) {
  toolkit::quietly("Imprimer_AccordsNonModifies", [&] {
    if (forms::preparerImprimanteA4(context.desktop)) imprimerListe(context);
  });
}

}  // namespace agreements
