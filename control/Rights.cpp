#include "control/Rights.h"

#include "control/Errors.h"

namespace control {

void exigerDroitsComplets(const screen::EditSession& session) {
  if (!session.DroitOrgChg) throw NotReady("DroitsUtilisateur has not been given");
  if (!screen::droitsComplets(session)) throw AccessDenied();
}

void Appliquer_Droits(Context& context) {
  if (screen::droitsComplets(context.session)) return;
  screen::CommandBar& bar = context.screen.bar;
  screen::PriseEnCharge& prise = context.screen.priseEnCharge;
  screen::Participation& part = context.screen.participation;
  for (toolkit::CommandButton* button :
       {&prise.Cmd_AjoutAbat, &bar.Cmd_Ajouter, &part.Cmd_AjoutPart, &prise.Cmd_AjoutTaux,
        &part.Cmd_NouveauBareme, &bar.Cmd_OK, &prise.Cmd_OKAbat, &part.Cmd_OKPart,
        &prise.Cmd_OKTaux, &prise.Cmd_SuppAbat, &part.Cmd_SuppPart, &bar.Cmd_Supprimer,
        &prise.Cmd_SuppTaux}) {
    button->setVisible(false);
  }
}

}  // namespace control
