// The management rules page: type of body, ceiling, renewal, options, accounts.
#pragma once

#include <string_view>

#include "pages/AccountPair.h"
#include "pages/Onglet.h"
#include "screen/Handlers.h"

namespace pages {

class Ong2 : public Onglet {
 public:
  explicit Ong2(PageContext context);

  void lier(const screen::Handlers& handlers);

  // The labels of the code tables, in table order.
  void Remplir_PiecesPoss();
  void Remplir_StatOrgChg();

  void Afficher_Ong2();
  // A change of type or ceiling is refused while the body has active agreements: the page's error
  // flag is then set, and the attributes after that one are as before. Throws what the search for
  // the agreements throws.
  void Ecrire_Ong2();
  bool Verif_Ong2();

  // The three accounts, after another entity has been chosen.
  void relireComptes();

  void afficher() override { Afficher_Ong2(); }
  void annoncer() override;
  void ecrire() override { Ecrire_Ong2(); }
  void vider() override;

 private:
  void Opt_TypePrincipalOrgChg_Click();
  void Opt_TypeComplOrgChg_Click();
  void Cac_DemAccordOrgChg_Click();
  void Cac_IncidCompta_Click();
  void Cbo_PeriodFactOrgChg_LostFocus();
  void Cbo_RenouvOrgChg_LostFocus();
  void Cbo_StatsOrgChg_Change();
  void Cbo_StatsOrgChg_LostFocus();
  void Lst_PiecePossibleOrgChg_DblClick();
  void Lst_PieceRenouOrgChg_DblClick();

  void montrerPieces(const store::DynamicArray& record);
  void montrerOptions(store::DynamicArray& record);
  void montrerComptes(const store::DynamicArray& record);
  void ecrireTypeEtPlafond();
  void ecrirePieces(store::DynamicArray& record);
  void ecrireComptes(store::DynamicArray& record);
  bool changementRefuse(int attribute, std::string_view message);

  bool comptesOuverts() const;
  void ouvrirComptes();
  void viderComptes();
  void commencer();
  void montrerTypeDuBareme();
  void montrerHeures();

  screen::Regles& regles_;
  AccountPair debit_;
  AccountPair credit_;
  AccountPair produitAide_;
};

}  // namespace pages
