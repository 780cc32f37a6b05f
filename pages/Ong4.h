// The participation page: the scale by income bracket, in force and before.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "pages/Onglet.h"
#include "pages/ScaleEditor.h"
#include "pages/ShownAttribute.h"
#include "screen/Handlers.h"

namespace pages {

class Ong4 : public Onglet {
 public:
  explicit Ong4(PageContext context);

  void lier(const screen::Handlers& handlers);

  // The six lists of the scale, from the record in hand. A row that is open is left.
  void Affiche_Bareme();
  void AfficherZonesBareme() { bareme_.AfficherZonesBareme(); }
  void TriBareme() { bareme_.TriBareme(); }

  void Afficher_Ong4();
  void Ecrire_Ong4();
  // Throws what the search for active agreements throws.
  bool Verif_Ong4();

  void afficher() override { Afficher_Ong4(); }
  void ecrire() override { Ecrire_Ong4(); }
  void vider() override;

 private:
  void Cmd_NouveauBareme_Click();
  void Opt_GestPartMont_Click();
  void Opt_GestPartPourc_Click();
  void Txt_DatBaremCours_KeyPress(char32_t& key);
  void Txt_DatBaremCours_LostFocus();

  // What "Annuler barème" puts back.
  struct Copie {
    ScaleEditor::Copie bareme;
    std::string precedente;
    std::string enCours;
  };
  struct Date {
    toolkit::TextBox* box;
    int attribute;
    ShownAttribute shown;
  };

  void commencerBareme();
  void annulerBareme();
  void oublierBareme();
  bool datesAcceptees();
  bool tranchesAcceptees();
  bool modeInchange();
  bool refuserDate(std::string_view message);
  toolkit::ListBox& ouverte(toolkit::ListBox& list);

  screen::Participation& page_;
  ScaleEditor bareme_;
  Date precedente_;
  Date enCours_;
  std::optional<Copie> copie_;
};

}  // namespace pages
