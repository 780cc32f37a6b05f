#include "pages/Ong3.h"

#include "pages/HoursRule.h"
#include "screen/Messages.h"
#include "store/Layouts.h"

namespace pages {

namespace attribut = store::orgprisecharge;

Ong3::Ong3(PageContext context)
    : context_(context),
      prise_(context.screen.priseEnCharge),
      prestation_(context, {prise_.Txt_CodeCptPrestationService, prise_.Cbo_CptPrestationService,
                            kSansEntiteCredit, kSansEntiteCredit}) {}

void Ong3::lier(const screen::Handlers& handlers) {
  prise_.Opt_HeureOrgChg.onClick = handlers.on(*this, &Ong3::Opt_HeureOrgChg_Click);
  prise_.Opt_MontantOrgChg.onClick = handlers.on(*this, &Ong3::Opt_MontantOrgChg_Click);
  prestation_.lier(handlers);
}

void Ong3::afficher() {
  const screen::Quiet quiet(context_.session);
  vider();
  const store::DynamicArray& record = context_.session.RecOrgChg->fields();
  prise_.Opt_HeureOrgChg.setValue(record.get(attribut::AttribOrgChg) == "H");
  prise_.Opt_MontantOrgChg.setValue(record.get(attribut::AttribOrgChg) == "M");
  ouvrirCadres(!prise_.Opt_MontantOrgChg.value());
  prestation_.montrer(record.get(attribut::CptPrestationService), record.get(attribut::Entite));
}

void Ong3::vider() {
  const screen::Quiet quiet(context_.session);
  prise_.Opt_HeureOrgChg.setValue(false);
  prise_.Opt_MontantOrgChg.setValue(false);
  prise_.Cdr_AttribOrgChg.setEnabled(true);
  ouvrirCadres(true);
  ouvrirAjouts(true);
  prestation_.vider();
}

void Ong3::ecrire() {
  context_.session.ErreurOng3 = false;
  store::DynamicArray& record = context_.session.RecOrgChg->fields();
  if (prise_.Opt_HeureOrgChg.value()) ecrireAttribut(record, attribut::AttribOrgChg, "H");
  if (prise_.Opt_MontantOrgChg.value()) ecrireAttribut(record, attribut::AttribOrgChg, "M");
  ecrireAttribut(record, attribut::CptPrestationService, prestation_.compte());
}

void Ong3::Opt_HeureOrgChg_Click() {
  ouvrirCadres(true);
  ouvrirAjouts(true);
  if (context_.screen.regles.Opt_TypePrincipalOrgChg.value()) {
    context_.screen.participation.Opt_GestPartMont.setValue(true);
  }
}

// Rates and deductions are by the hour. A principal body counts agreements in amount for agency
// activities only.
void Ong3::Opt_MontantOrgChg_Click() {
  const bool possible = estMandataire(context_.screen.activites) ||
                        context_.screen.regles.Opt_TypeComplOrgChg.value();
  if (possible) {
    ouvrirCadres(false);
    ouvrirAjouts(false);
    return;
  }
  screen::avertir(context_.desktop,
                  "Vous ne pouvez attribuer une notification en montant à un organisme 'Principal' "
                  "de type 'Prestataire'.");
  prise_.Opt_HeureOrgChg.setValue(true);
}

void Ong3::ouvrirCadres(bool open) {
  prise_.Cdr_TauxOrgChg.setEnabled(open);
  prise_.Cdr_AbatOrgChg.setEnabled(open);
}

void Ong3::ouvrirAjouts(bool open) {
  prise_.Cmd_AjoutTaux.setEnabled(open);
  prise_.Cmd_AjoutAbat.setEnabled(open);
}

}  // namespace pages
