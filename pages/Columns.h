// Between the values of an attribute and the rows of a list. A value that cannot be read is shown
// as it stands; one whose row has not changed is written back as it was.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pages/ListEditor.h"
#include "store/DynamicArray.h"

namespace pages {

// Day numbers, shown dd/mm/yyyy.
std::string jourMontre(std::string_view value);
std::string jourEcrit(std::string_view row);
// Numbers of hundredths, shown with two decimals; a blank value shows a blank row.
std::string centiemesMontres(std::string_view value);
std::string centiemesEcrits(std::string_view row);

// Is the row what the value is shown as?
bool jourMontreAinsi(std::string_view value, std::string_view row);
bool centiemesMontresAinsi(std::string_view value, std::string_view row);

// Between a value and the text of its row.
struct Forme {
  std::string (*montre)(std::string_view value);
  bool (*montreAinsi)(std::string_view value, std::string_view row);
  std::string (*ecrit)(std::string_view row);
};
inline constexpr Forme kJours{jourMontre, jourMontreAinsi, jourEcrit};
inline constexpr Forme kCentiemes{centiemesMontres, centiemesMontresAinsi, centiemesEcrits};

// A list of an editor and the attribute that its rows show, value by value.
struct Colonne {
  int attribute;
  Forme forme;
  std::string_view vide;  // the value of an empty row
};
using Colonnes = std::span<const Colonne>;

// Adds the value for a row that shows this text; `before` while it shows the same.
void ajouterValeur(std::string& written, const Colonne& column, std::string_view before,
                   std::string_view row);
// The value for a zone that holds this text; `before` while it would show the same.
std::string valeurSaisie(const Colonne& column, std::string_view before, std::string_view typed);

// The columns of an editor as they were shown from their attributes. What has not been touched
// since has nothing to write, and is not converted to see that.
class ColonnesMontrees {
 public:
  // So many rows, whatever the attributes hold.
  void montrer(ListEditor& editor, const store::DynamicArray& record, Colonnes colonnes, int count);
  // The first rows, so many, become the values of the attributes.
  void ecrire(const ListEditor& editor, store::DynamicArray& record, Colonnes colonnes,
              int count) const;
  // Would so many rows of a column write what its attribute holds, since neither has changed?
  bool inchangee(const ListEditor& editor, const store::DynamicArray& record, std::size_t column,
                 int count) const;
  int lignes() const { return count_; }
  // What the attribute of a column held.
  std::string_view attribut(std::size_t column) const { return montrees_[column].texte; }

 private:
  struct Montree {
    int attribute = 0;
    std::string texte;
    unsigned changements = 0;
    bool fidele = false;  // its rows write what they were shown from
  };
  static bool remplir(ListEditor::Lines& lines, std::string_view attribute, const Colonne& column);

  std::vector<Montree> montrees_;
  int count_ = 0;
};

// The places, from 1, of these numbers from the lowest on; equal ones keep their order.
std::vector<int> ordreCroissant(const std::vector<long long>& numbers);
// The values of an attribute as whole numbers.
std::vector<long long> nombres(const store::DynamicArray& record, int attribute);
// Puts the values of the attributes in this order; those of the first are all there.
void ordonnerColonnes(store::DynamicArray& record, Colonnes colonnes,
                      const std::vector<int>& order);

}  // namespace pages
