// The slip parameters page: columns of the billing slip and their order, type, copies, sorting.
#pragma once

#include <string>
#include <vector>

#include "pages/Onglet.h"
#include "pages/ShownAttribute.h"
#include "screen/Handlers.h"

namespace pages {

// Characters of a printed line.
inline constexpr int kLargeurBordereau = 130;

class Ong5 : public Onglet {
 public:
  explicit Ong5(PageContext context);

  void lier(const screen::Handlers& handlers);

  // The possible parameters by label, each with its identifier as item data, and their printed
  // widths in the hidden list. Throws what the store throws; the lists are then empty.
  void Remplir_ParamsPoss();
  // Adds up the widths of the selected parameters (EditSession::longueurParams).
  void Long_ListeParam();
  void Passage_A_Droite_Tri();
  void Passage_A_Gauche_Tri();

  void Afficher_Ong5();
  // Also writes the billing period, the statistics category and the agreement requests, which the
  // management rules page shows.
  void Ecrire_Ong5();
  bool Verif_Ong5();

  void afficher() override { Afficher_Ong5(); }
  void ecrire() override { Ecrire_Ong5(); }
  void vider() override;

 private:
  void Lst_ParamPossOrgChg_DblClick();
  void Lst_ParamSelecOrgChg_DblClick();
  void Cmd_HautBord_Click();
  void Cmd_BasBord_Click();
  void Bdh_NbExemp_Change();
  void Txt_NbExEmplOrgChg_KeyPress(char32_t& key);
  void Txt_NbExEmplOrgChg_Change();
  void Txt_NbExEmplOrgChg_LostFocus();
  std::string exemplaires() const;
  // The number that lines carry for an identifier: itself where it is one, else one below 0 that
  // stands for it; 0 for "".
  long numero(std::string_view identifiant);
  long numeroConnu(std::string_view identifiant) const;
  std::string identifiant(const toolkit::ListItem& line) const;
  std::string identifiants(const toolkit::ListBox& list) const;
  std::vector<toolkit::ListItem> lignes(const toolkit::ListBox& possible,
                                        std::string_view attribute) const;
  void Lst_ParamTriPos_Click();
  void Lst_ParamTriSelect_Click();

  void montrerParametres(const store::DynamicArray& record);
  void montrerTri(const store::DynamicArray& record);
  void montrerExemplaires(std::string_view attribute);
  bool barrePeutMontrer(long copies) const;
  bool exemplairesInchanges() const;
  void ecrireReglesDeGestion(store::DynamicArray& record);

  void commencer();
  void deplacer(int step);
  void ouvrirOrdre();
  void Afficher_NbCarSelect();

  screen::Bordereau& page_;
  // Those that are no plain number; the one at position i goes by -1 - i.
  std::vector<std::string> autresIdentifiants_;
  ShownAttribute parametres_;
  ShownAttribute tri_;
  ShownAttribute exemplaires_;
  bool horsBarre_ = false;  // it is none that the scroll bar can show, and none has replaced it
  ShownAttribute thesaurus_;
  ShownAttribute identification_;
};

}  // namespace pages
