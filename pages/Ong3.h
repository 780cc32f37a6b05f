// The coverage page: how agreements are counted, and the service-provision account.
#pragma once

#include "pages/AccountPair.h"
#include "pages/Page.h"
#include "screen/Handlers.h"

namespace pages {

class Ong3 : public Page {
 public:
  explicit Ong3(PageContext context);

  void lier(const screen::Handlers& handlers);

  void afficher() override;
  void ecrire() override;
  void vider() override;

 private:
  void Opt_HeureOrgChg_Click();
  void Opt_MontantOrgChg_Click();

  void ouvrirCadres(bool open);
  void ouvrirAjouts(bool open);

  PageContext context_;
  screen::PriseEnCharge& prise_;
  AccountPair prestation_;
};

}  // namespace pages
