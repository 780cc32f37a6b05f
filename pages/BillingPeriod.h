#pragma once

#include <array>
#include <string_view>

namespace pages {

// Codes of the billing periods (attribute 17), in the order of the lines of Cbo_PeriodFactOrgChg.
inline constexpr std::array<std::string_view, 3> kPeriodesFact{"M", "T", "F"};

// The line of a code; -1 when there is none.
constexpr int lignePeriodeFact(std::string_view code) {
  for (std::size_t line = 0; line < kPeriodesFact.size(); ++line) {
    if (kPeriodesFact[line] == code) return static_cast<int>(line);
  }
  return -1;
}

}  // namespace pages
