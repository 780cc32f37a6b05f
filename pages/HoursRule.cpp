#include "pages/HoursRule.h"

namespace pages {

bool estMandataire(const screen::Activites& activites) {
  return activites.Lst_TypeAct.list(0) == "M";
}

void reglerSemaine(screen::Activites& activites) {
  const bool refused = activites.Cdr_GestionExclu.enabled() && estMandataire(activites);
  activites.Opt_Semaine.setEnabled(!refused);
}

}  // namespace pages
