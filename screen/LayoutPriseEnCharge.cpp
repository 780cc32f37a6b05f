#include "screen/Grid.h"
#include "screen/Layout.h"

namespace screen {

using namespace grid;

// The two editors stand below the account, the invoice options at the foot of the page.
void placePriseEnCharge(PriseEnCharge& page) {
  constexpr int kTop = 120;
  constexpr int kAttribution = 720;
  page.Cdr_AttribOrgChg.setPlace({kFrameLeft, kTop, 4740, kAttribution});
  choice(page.Opt_HeureOrgChg, kLabelInFrame, 330, 1800);
  choice(page.Opt_MontantOrgChg, kInFrame, 330, 1800);

  constexpr int kAccount = kTop + kAttribution + 180;
  constexpr int kNumber = 3720;
  label(page.Etq_CptPrestationService, kLabels, kAccount, kNumber - kLabels - 60);
  field(page.Txt_CodeCptPrestationService, kNumber, kAccount, 1260);
  field(page.Cbo_CptPrestationService, kNumber + 1320, kAccount, kFieldsEnd - kNumber - 1320);
}

}  // namespace screen
