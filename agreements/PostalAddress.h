// How names and addresses are written on paper.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "store/DynamicArray.h"

namespace agreements {

// The parts that hold anything, joined by single blanks.
std::string joints(std::initializer_list<std::string_view> parties);

// The key, in NATUREVOIE, of the street kind of a record's address.
std::string_view cleNatureVoie(const store::DynamicArray& record);

// The lines of a record's address that hold anything. `natureVoie` is its street kind's label.
// Four at most: complement, street, locality, postal code and town.
std::vector<std::string> lignesAdresse(const store::DynamicArray& record,
                                       std::string_view natureVoie);
// Three at most: complement with locality, street, postal code and town.
std::vector<std::string> lignesAdresseCourte(const store::DynamicArray& record,
                                             std::string_view natureVoie);

}  // namespace agreements
