#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pages/Page.h"
#include "pages/RowLetters.h"
#include "screen/Handlers.h"

namespace pages {

// Parallel lists that show the rows of one table and move as one, with the zones and buttons that
// edit a row. In list mode the lists and the add button are used; in edit mode the zones and the
// three other buttons, and all the rest of the screen is locked.
//
// It knows rows by their texts alone: what the columns mean, the checks, the order of the rows and
// the record are its owner's.
class ListEditor {
 public:
  using Row = std::vector<std::string>;  // one text a list
  using Lines = std::vector<toolkit::ListItem>;

  struct Parts {
    int onglet = 0;                         // stays open in edit mode
    std::vector<toolkit::ListBox*> listes;  // one a column
    std::vector<toolkit::TextBox*> zones;   // of the first columns; null where none is edited
    toolkit::ScrollBar* barre = nullptr;
    std::vector<toolkit::Control*> elargis;  // take the scroll bar's room while it is shown
    toolkit::CommandButton* ajouter = nullptr;
    toolkit::CommandButton* ok = nullptr;
    toolkit::CommandButton* annuler = nullptr;
    toolkit::CommandButton* supprimer = nullptr;
    std::vector<toolkit::Control*> verrouilles;  // of the same page, locked in edit mode
    std::vector<toolkit::Control*> preteurs;  // of the same page, lend their letters (RowLetters)
  };

  ListEditor(PageContext context, Parts parts);
  ListEditor(const ListEditor&) = delete;
  ListEditor& operator=(const ListEditor&) = delete;
  ~ListEditor() = default;

  // The ring of lists, the scroll bar, and what a double-click on any of the lists does: it ends
  // quietly at an error, under the procedure's name (a literal).
  void lier(const screen::Handlers& handlers, std::string_view procedure,
            const std::function<void()>& doubleClick);
  // The zones from that column on take numbers. One that holds none takes the focus back, unless
  // the row was opened with that text, or is being given up. Enter in the last of them does what a
  // click on the OK button does.
  void lierNombres(const screen::Handlers& handlers, std::size_t column);

  int lignes() const;
  int ligneChoisie() const;  // 0-based, -1 for none
  Row ligne(int line) const;
  const std::string& texte(int line, std::size_t column) const {
    return parts_.listes[column]->list(line);
  }
  // Filling and removing leave no row selected, and the scroll bar at its start, silently.
  void remplir(std::vector<Row> rows);
  void remplirListes(std::vector<Lines> lists);  // the same, a list a column
  // Empties a list that is filled anew next; what it held is room for that.
  Lines vieilles(std::size_t column) { return parts_.listes[column]->takeItems(); }
  std::vector<Row> toutes() const;
  // The texts of one list, as long as they stay in it; at most so many.
  std::vector<std::string_view> colonne(std::size_t column, int count) const;
  // Another number each time that the texts of one list have changed.
  unsigned changements(std::size_t column) const { return parts_.listes[column]->changes(); }
  // The rows before the first one whose first text is empty.
  int lignesRemplies() const;
  void inserer(int line, const Row& row);  // std::invalid_argument past the end
  void retirer(int line);                  // nothing past the end
  void choisir(int line);                  // in every list, as a click does
  // Sizes the scroll bar to the rows: from the thirteenth on it is shown.
  void dimensionner();

  // Enters edit mode for a row, or (-1) for one to be added. Nothing, and false, when a row is open
  // already, here or in another editor, or the frame of the editor is disabled.
  bool ouvrir(int line);
  // The same for the selected row. With none selected what is typed has no row to go to: it is
  // neither an addition nor a change.
  bool ouvrirChoisie();
  // What the zones hold, one text a column; "" where none is edited.
  Row saisie() const;
  // The zones get the texts of a row, ready to be edited.
  void proposer(const Row& row);
  // False when a zone holds something that is no number: it has the focus then. A text that the row
  // was opened with passes.
  bool nombresLisibles() const;
  // Is the focus on its way to the cancel button? What was typed is then not looked at.
  bool renonce() const;
  // Leaves edit mode and empties the zones; what was enabled before is so again.
  void fermer();
  // The same, and the focus goes to the add button.
  void quitter();
  // The same once a row has been confirmed: after a change the focus goes to the lists, with the
  // next row selected, or the last one.
  void quitterConfirmee();
  bool ouvert() const { return ouvert_; }
  bool enAjout() const { return ouvert_ && ajout_; }
  // The row that was opened, whatever is selected since; -1 for none.
  int editee() const { return editee_; }
  // A change is left at once; leaving an addition is asked about. May it be left?
  bool abandonConfirme() const;
  // Deleting the row is asked about.
  bool suppressionConfirmee() const;
  // A check refuses what was typed: its message, and the focus goes to the field. Always false.
  bool refuser(std::string_view message, toolkit::Control& field) const;
  // The rows have been put in this order (the numbers, from 1, of where they stood): the open one
  // is followed.
  void ordonner(const std::vector<int>& order);

 private:
  void suivre(std::size_t list);
  void valider();
  void derniereZoneKeyPress(char32_t& key);
  void reprendreEn(int line);
  void defiler(int line);
  bool entrer(int line, bool adding);
  void verrouiller(toolkit::Control& control);
  void ouvrirOnglets(bool open);
  bool illisible(std::size_t column) const;

  PageContext context_;
  Parts parts_;
  RowLetters lettres_;
  bool ouvert_ = false;
  bool ajout_ = false;
  int editee_ = -1;
  Row proposee_;                                           // what the zones were given
  std::vector<std::size_t> nombres_;                       // columns whose zones take numbers
  std::vector<std::pair<toolkit::Control*, bool>> avant_;  // enabled before edit mode
};

}  // namespace pages
