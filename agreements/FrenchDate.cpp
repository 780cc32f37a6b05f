#include "agreements/FrenchDate.h"

#include <array>
#include <string_view>

namespace agreements {

std::string dateEnLettres(const toolkit::CalendarDate& date) {
  constexpr std::array<std::string_view, 12> kMois{"janvier",   "février", "mars",     "avril",
                                                   "mai",       "juin",    "juillet",  "août",
                                                   "septembre", "octobre", "novembre", "décembre"};
  if (date.month < 1 || date.month > 12) return {};
  const std::string jour = std::to_string(date.day);
  const std::string annee = std::to_string(date.year);
  return (jour.size() < 2 ? "0" : "") + jour + " " +
         std::string(kMois[static_cast<std::size_t>(date.month - 1)]) + " " + annee;
}

}  // namespace agreements
