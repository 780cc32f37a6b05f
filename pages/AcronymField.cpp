#include "pages/AcronymField.h"

namespace pages {
namespace {

void montrer(screen::CommandBar& bar, bool saisie) {
  bar.Etq_RechercheSigle.setVisible(!saisie);
  bar.Cbo_SigleOrgChg.setVisible(!saisie);
  bar.Etq_SigleOrgChg.setVisible(saisie);
  bar.Txt_SigleOrgChg.setVisible(saisie);
}

}  // namespace

void montrerRechercheSigle(screen::CommandBar& bar) { montrer(bar, false); }
void montrerSaisieSigle(screen::CommandBar& bar) { montrer(bar, true); }

}  // namespace pages
