#include "pages/Ong3.h"

#include "pages/HoursRule.h"
#include "screen/Messages.h"
#include "store/Amounts.h"
#include "store/Layouts.h"

namespace pages {

namespace attribut = store::orgprisecharge;

Ong3::Ong3(PageContext context)
    : Onglet(context, &screen::EditSession::ErreurOng3),
      prise_(context.screen.priseEnCharge),
      prestation_(context, {prise_.Txt_CodeCptPrestationService, prise_.Cbo_CptPrestationService,
                            kSansEntiteCredit, kSansEntiteCredit}),
      taux_(context),
      abattements_(context) {}

void Ong3::lier(const screen::Handlers& handlers) {
  prise_.Opt_HeureOrgChg.onClick = handlers.on(*this, &Ong3::Opt_HeureOrgChg_Click);
  prise_.Opt_MontantOrgChg.onClick = handlers.on(*this, &Ong3::Opt_MontantOrgChg_Click);
  prestation_.lier(handlers);
  taux_.lier(handlers);
  abattements_.lier(handlers);
}

void Ong3::Afficher_Ong3() {
  const screen::Quiet quiet(context_.session);
  commencer();
  const store::DynamicArray& record = context_.session.RecOrgChg->fields();
  prise_.Opt_HeureOrgChg.setValue(record.get(attribut::AttribOrgChg) == "H");
  prise_.Opt_MontantOrgChg.setValue(record.get(attribut::AttribOrgChg) == "M");
  ouvrirCadres(!prise_.Opt_MontantOrgChg.value());
  prestation_.montrer(record.get(attribut::CptPrestationService), record.get(attribut::Entite));
  prise_.Txt_DesFacture.renewText(record.get(attribut::DesFacture));
  designation_.keep(record.get(attribut::DesFacture), prise_.Txt_DesFacture.text());
  prise_.Cac_AjusTarif.setValue(store::wholeNumber(record.get(attribut::AjusTarif)) != 0);
  prise_.Cac_CoutGlobal.setValue(store::wholeNumber(record.get(attribut::CoutGlobal)) != 0);
  taux_.afficher(record);
  abattements_.afficher(record);
}

void Ong3::annoncer() {
  const store::DynamicArray& record = context_.session.RecOrgChg->fields();
  AccountPair::annoncer(context_, record.get(attribut::Entite),
                        {record.get(attribut::CptPrestationService)});
}

// What a record need not say anything of.
void Ong3::commencer() {
  taux_.fermer();
  abattements_.fermer();
  prise_.Cdr_AttribOrgChg.setEnabled(true);
  ouvrirAjouts(true);
}

void Ong3::vider() {
  const screen::Quiet quiet(context_.session);
  commencer();
  prise_.Opt_HeureOrgChg.setValue(false);
  prise_.Opt_MontantOrgChg.setValue(false);
  taux_.vider();
  abattements_.vider();
  prise_.Txt_DesFacture.setText("");
  designation_.keep("", "");
  prise_.Cac_AjusTarif.setValue(false);
  prise_.Cac_CoutGlobal.setValue(false);
  ouvrirCadres(true);
  prestation_.vider();
}

void Ong3::Ecrire_Ong3() {
  context_.session.ErreurOng3 = false;
  if (context_.session.modeVerif && !Verif_Ong3()) return;
  store::DynamicArray& record = context_.session.RecOrgChg->fields();
  ecrireAttribut(record, attribut::AjusTarif, prise_.Cac_AjusTarif.value() ? "1" : "0");
  if (prise_.Opt_HeureOrgChg.value()) ecrireAttribut(record, attribut::AttribOrgChg, "H");
  if (prise_.Opt_MontantOrgChg.value()) ecrireAttribut(record, attribut::AttribOrgChg, "M");
  taux_.ecrire(record);
  if (context_.screen.bordereau.Opt_MFPBordOrgChg.value()) {
    abattements_.effacer(record);
  } else {
    abattements_.ecrire(record);
  }
  ecrireAttribut(record, attribut::CptPrestationService, prestation_.compte());
  ecrireAttribut(record, attribut::CoutGlobal, prise_.Cac_CoutGlobal.value() ? "1" : "0");
  ecrireAttribut(record, attribut::DesFacture, designation_.written(prise_.Txt_DesFacture.text()));
}

// --- Checking

bool Ong3::Verif_Ong3() {
  context_.session.ErreurOng3 = false;
  screen::Participation& part = context_.screen.participation;
  const bool principal = context_.screen.regles.Opt_TypePrincipalOrgChg.value();
  if (estMandataire(context_.screen.activites) && principal && !part.Opt_GestPartMont.value()) {
    refuser(
        "Pour ce type d'organisme la gestion de la part bénéficiaire doit obligatoirement être en "
        "montant.",
        screen::kParticipation, part.Opt_GestPartMont);
    part.Opt_GestPartMont.setValue(true);
    return false;
  }
  if (!prise_.Opt_HeureOrgChg.value() && !prise_.Opt_MontantOrgChg.value()) {
    return refuser("L'attribution des notifications d'accord est obligatoire.",
                   screen::kPriseEnCharge, prise_.Opt_HeureOrgChg);
  }
  if (prise_.Opt_HeureOrgChg.value() && prise_.Lst_DateRembOrgChg.list(0).empty()) {
    return refuser("Au moins un taux de remboursement est obligatoire.", screen::kPriseEnCharge,
                   prise_.Cmd_AjoutTaux);
  }
  return true;
}

// --- Handlers

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
  reprendreHeures();
}

// Nothing but the choice goes back: how the participation is managed stays.
void Ong3::reprendreHeures() {
  const screen::Quiet quiet(context_.session);
  prise_.Opt_HeureOrgChg.setValue(true);
  ouvrirCadres(true);
  ouvrirAjouts(true);
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
