#include "pages/Columns.h"

#include <algorithm>
#include <utility>

#include "store/Conversions.h"
#include "text/Utf8.h"

namespace pages {
namespace {

// Takes the first value from an attribute; "" past the last one.
std::string_view prendre(std::string_view& attribute) {
  const std::string_view value = attribute.substr(0, attribute.find(store::kValueMark));
  attribute.remove_prefix(std::min(value.size() + 1, attribute.size()));
  return value;
}

}  // namespace

std::string jourMontre(std::string_view value) {
  std::string shown = store::textOfDay(value);
  return shown.empty() ? std::string(value) : shown;
}

std::string jourEcrit(std::string_view row) {
  const auto day = store::dayOfText(row);
  return day ? std::to_string(*day) : std::string(row);
}

std::string centiemesMontres(std::string_view value) {
  std::string shown = store::shownHundredths(value);
  if (shown.empty() && !text::trim(value).empty()) shown = value;
  return shown;
}

std::string centiemesEcrits(std::string_view row) {
  if (text::trim(row).empty()) return {};
  const auto number = store::hundredths(row);
  return number ? std::to_string(*number) : std::string(row);
}

void montrerColonne(std::vector<std::vector<std::string>>& rows, std::size_t column,
                    const store::DynamicArray& record, int attribute, Montre montre) {
  std::string_view left = record.get(attribute);
  for (std::vector<std::string>& row : rows) row[column] = montre(prendre(left));
}

std::string valeurs(const store::DynamicArray& record, int attribute,
                    const std::vector<std::string_view>& rows, Montre montre, Ecrit ecrit,
                    std::string_view vide) {
  std::string written;
  std::string_view left = record.get(attribute);
  written.reserve(left.size());
  bool first = true;
  for (const std::string_view row : rows) {
    if (!std::exchange(first, false)) written += store::kValueMark;
    const std::string_view before = prendre(left);
    if (row.empty()) {
      written += vide;
    } else if (row == montre(before)) {
      written += before;
    } else {
      written += ecrit(row);
    }
  }
  return written;
}

std::string deuxDecimales(std::string_view typed) {
  const auto number = store::hundredths(typed);
  return number ? store::twoDecimals(*number) : std::string();
}

float simplePrecision(std::string_view typed) {
  return static_cast<float>(static_cast<double>(store::hundredths(typed).value_or(0)) / 100.0);
}

}  // namespace pages
