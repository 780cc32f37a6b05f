#include "agreements/Listing.h"

#include "agreements/ListingPages.h"
#include "forms/PrinterChoice.h"
#include "toolkit/Trap.h"

namespace agreements {

void Imprimer_AccordsNonModifies(const AgreementContext& context) {
  bool choisie = false;
  toolkit::quietly("Imprimer_AccordsNonModifies", [&] {
    choisie = forms::choisirImprimanteA4(context.desktop) != forms::kAucuneImprimante;
  });
  if (choisie) imprimerListe(context);
}

}  // namespace agreements
