// Between the values of an attribute and the rows of a list. A value that cannot be read is shown
// as it stands; one whose row has not changed is written back as it was.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/DynamicArray.h"

namespace pages {

// Day numbers, shown dd/mm/yyyy.
std::string jourMontre(std::string_view value);
std::string jourEcrit(std::string_view row);
// Numbers of hundredths, shown with two decimals; a blank value shows a blank row.
std::string centiemesMontres(std::string_view value);
std::string centiemesEcrits(std::string_view row);

using Montre = std::string (*)(std::string_view value);
using Ecrit = std::string (*)(std::string_view row);

// Puts the values of an attribute, as they are shown, into one column of the rows.
void montrerColonne(std::vector<std::vector<std::string>>& rows, std::size_t column,
                    const store::DynamicArray& record, int attribute, Montre montre);

// The values of an attribute for rows that now show these texts. `vide` stands for an empty row.
std::string valeurs(const store::DynamicArray& record, int attribute,
                    const std::vector<std::string_view>& rows, Montre montre, Ecrit ecrit,
                    std::string_view vide);

// A typed number with two decimals; "" for what is no number.
std::string deuxDecimales(std::string_view typed);
// A shown or typed number in single precision, as the checks compare them; 0 for what is none.
float simplePrecision(std::string_view typed);

}  // namespace pages
