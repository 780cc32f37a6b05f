// The coverage page: how agreements are counted, rates, deductions, invoice options, and the
// service-provision account.
#pragma once

#include "pages/AccountPair.h"
#include "pages/DeductionEditor.h"
#include "pages/Onglet.h"
#include "pages/RateEditor.h"
#include "pages/ShownAttribute.h"
#include "screen/Handlers.h"

namespace pages {

class Ong3 : public Onglet {
 public:
  explicit Ong3(PageContext context);

  void lier(const screen::Handlers& handlers);

  void Afficher_Ong3();
  // The lists are the source of the rates and deductions; a slip of type "M.F.P." has no
  // deductions.
  void Ecrire_Ong3();
  bool Verif_Ong3();

  // The service-provision account, after another entity has been chosen.
  void relireCompte() { prestation_.relire(); }

  void afficher() override { Afficher_Ong3(); }
  void annoncer() override;
  void ecrire() override { Ecrire_Ong3(); }
  void vider() override;

  RateEditor& taux() { return taux_; }
  DeductionEditor& abattements() { return abattements_; }

 private:
  void Opt_HeureOrgChg_Click();
  void Opt_MontantOrgChg_Click();

  void reprendreHeures();
  void ouvrirCadres(bool open);
  void ouvrirAjouts(bool open);
  void commencer();

  screen::PriseEnCharge& prise_;
  AccountPair prestation_;
  RateEditor taux_;
  DeductionEditor abattements_;
  ShownAttribute designation_;
};

}  // namespace pages
