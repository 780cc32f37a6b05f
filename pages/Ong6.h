// The covered activities page: legal entity, its activities, allocation of hours.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pages/Onglet.h"
#include "pages/ShownAttribute.h"
#include "screen/Handlers.h"
#include "store/DynamicArray.h"

namespace pages {

class Ong6 : public Onglet {
 public:
  explicit Ong6(PageContext context);

  void lier(const screen::Handlers& handlers);

  // Another entity than the one before has been chosen by the user.
  std::function<void()> entiteChangee;

  // All legal entities in the combo, by name; its text stays. Throws what the store throws; the
  // list is then as before.
  void Remplir_Entite();
  // The activities of the entity in Txt_Entite, none of them covered. Throws what the store throws;
  // the lists are then empty.
  void Remplir_Liste_Activite();
  void Passage_A_Droite();
  void Passage_A_Gauche();

  void Afficher_Ong6();
  void Ecrire_Ong6();
  // Throws what reading the activities throws.
  bool Verif_Ong6();

  void afficher() override { Afficher_Ong6(); }
  void annoncer() override;
  void ecrire() override { Ecrire_Ong6(); }
  void vider() override;

 private:
  void Txt_Entite_Change();
  void Txt_Entite_LostFocus();
  void Cbo_Entite_KeyPress(char32_t& key);
  void Cbo_Entite_DropDown();
  void Cbo_Entite_Click();
  void Cbo_Entite_LostFocus();

  void choisirEntite(const std::string& code);
  void refuserEntite();
  store::DynamicArray lireActivites();
  // With room for the lines, where there is some.
  void montrerPossibles(store::DynamicArray answer, std::vector<toolkit::ListItem> lines = {});
  void viderPossibles();
  void oublierEntite();
  void chercherEntite();
  void lister(const store::DynamicArray& answer);

  struct Activite {
    std::string libelle;
    std::string type;  // its letter
  };
  using Positions = std::unordered_map<std::string_view, int>;

  Activite activite(std::string_view code, int position) const;
  Positions positionsDesCouvertes(const store::DynamicArray& record) const;
  void montrerCouvertes(const store::DynamicArray& record);
  void montrerHeures(const store::DynamicArray& record);
  void viderListes();
  void commencer();

  bool typesMeles() const;
  bool memeService() const;

  screen::Activites& page_;
  ShownAttribute entite_;
  std::string nomEntite_;        // of the entity chosen
  std::string codeCouvert_;      // of the entity that was chosen last: the covered ones are its own
  store::DynamicArray entites_;  // columns "0 1" of the entities listed, line by line
  // The possible activities line by line: value 1 the code, 2 the label, 3 the type's letter.
  store::DynamicArray activites_;
};

}  // namespace pages
