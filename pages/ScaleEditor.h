// The rows of the participation scale: a bracket for single persons, one for households, and the
// participation before and now (attributes 32 to 37).
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "pages/Columns.h"
#include "pages/ListEditor.h"
#include "screen/Handlers.h"

namespace pages {

// The lists are the reference: the record follows when the page is written.
class ScaleEditor {
 public:
  // What stands behind a row.
  struct Ligne {
    std::array<std::string, 6> valeurs;  // of the record, by column; empty where it has none
    bool ajoutee = false;                // under the new scale that is being entered
  };
  // What a new scale that is cancelled puts back.
  struct Copie {
    std::vector<ListEditor::Row> rows;
    std::vector<Ligne> lignes;
    bool premier;
  };

  explicit ScaleEditor(PageContext context);

  void lier(const screen::Handlers& handlers);

  void afficher(const store::DynamicArray& record);
  void ecrire(store::DynamicArray& record);
  // List mode, every list open.
  void fermer();
  // The same, and no row.
  void vider();

  void AfficherZonesBareme();  // leaves edit mode, and empties the zones
  // By start for single persons; rows of one start keep their order, and an open row is followed.
  void TriBareme();

  // The current participations become the previous ones, unless the record had no scale. From here
  // on only they are entered, and rows of their own. Gives back what stood before.
  Copie commencerBareme();
  void annulerBareme(const Copie& copie);
  // Was a scale shown from the record?
  bool existait() const { return existait_; }
  // An empty current participation becomes 0.
  void completer();
  // The first row that does not start where the one before ends; -1 when all do.
  int ruptureSeul() const;
  int ruptureMenage() const;
  void choisir(int row) { editor_.choisir(row); }
  // Opens the add button where rows may be added.
  void ouvrirAjout();

 private:
  void Cmd_AjoutPart_Click();
  void Cmd_OKPart_Click();
  void Cmd_AnnulerPart_Click();
  void Cmd_SuppPart_Click();
  void modifier();

  bool saisieAcceptee();
  bool tranchesFermees(int row);
  std::vector<Ligne>& lignes();  // of the rows, in their order

  PageContext context_;
  screen::Participation& page_;
  ListEditor editor_;
  ColonnesMontrees colonnes_;
  std::optional<std::vector<Ligne>> lignes_;  // none until a shown row is looked behind
  bool existait_ = false;
  bool premier_ = true;  // a first scale is being entered: there was none to start from
};

}  // namespace pages
