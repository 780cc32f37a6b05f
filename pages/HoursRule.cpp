#include "pages/HoursRule.h"

namespace pages {

bool estMandataire(const screen::Activites& activites) {
  return activites.Lst_TypeAct.list(0) == "M";
}

void ouvrirHeures(screen::Activites& activites, bool principal) {
  activites.Cdr_GestionExclu.setEnabled(principal);
  if (!principal) activites.Opt_Totalite.setValue(true);
  reglerSemaine(activites);
}

void reglerSemaine(screen::Activites& activites) {
  const bool refused = activites.Cdr_GestionExclu.enabled() && estMandataire(activites);
  activites.Opt_Semaine.setEnabled(!refused);
}

}  // namespace pages
