#include "pages/Columns.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "pages/ShownAttribute.h"
#include "store/Amounts.h"
#include "store/Dates.h"
#include "text/Utf8.h"

namespace pages {
namespace {

// Takes the first value from an attribute; "" past the last one.
std::string_view prendre(std::string_view& attribute) {
  const std::string_view value = attribute.substr(0, attribute.find(store::kValueMark));
  attribute.remove_prefix(std::min(value.size() + 1, attribute.size()));
  return value;
}

// The values for rows that now show these texts.
std::string valeurs(std::string_view attribute, const Colonne& column,
                    const std::vector<std::string_view>& rows) {
  std::string written;
  written.reserve(attribute.size());
  bool first = true;
  for (const std::string_view row : rows) {
    if (!std::exchange(first, false)) written += store::kValueMark;
    written += valeurDeLigne(column, prendre(attribute), row);
  }
  return written;
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

std::string valeurDeLigne(const Colonne& column, std::string_view before, std::string_view row) {
  if (row.empty()) return std::string(column.vide);
  return row == column.montre(before) ? std::string(before) : column.ecrit(row);
}

std::string valeurSaisie(const Colonne& column, std::string_view before, std::string_view typed) {
  std::string written = column.ecrit(typed);
  const bool same = !written.empty() && column.montre(written) == column.montre(before);
  return same ? std::string(before) : written;
}

void montrerColonnes(ListEditor& editor, const store::DynamicArray& record, Colonnes colonnes,
                     int count) {
  std::vector<ListEditor::Row> rows(static_cast<std::size_t>(count),
                                    ListEditor::Row(colonnes.size()));
  for (std::size_t i = 0; i < colonnes.size(); ++i) {
    std::string_view left = record.get(colonnes[i].attribute);
    for (ListEditor::Row& row : rows) row[i] = colonnes[i].montre(prendre(left));
  }
  editor.remplir(std::move(rows));
}

void ecrireColonnes(const ListEditor& editor, store::DynamicArray& record, Colonnes colonnes,
                    int count) {
  for (std::size_t i = 0; i < colonnes.size(); ++i) {
    ecrireAttribut(
        record, colonnes[i].attribute,
        valeurs(record.get(colonnes[i].attribute), colonnes[i], editor.colonne(i, count)));
  }
}

std::vector<int> ordreCroissant(const std::vector<long long>& numbers) {
  std::vector<int> order(numbers.size());
  std::iota(order.begin(), order.end(), 1);
  std::stable_sort(order.begin(), order.end(), [&numbers](int a, int b) {
    return numbers[static_cast<std::size_t>(a - 1)] < numbers[static_cast<std::size_t>(b - 1)];
  });
  return order;
}

std::vector<long long> nombres(const store::DynamicArray& record, int attribute) {
  std::vector<long long> numbers(static_cast<std::size_t>(record.DCount(attribute)));
  std::string_view left = record.get(attribute);
  for (long long& number : numbers) number = store::wholeNumber(prendre(left));
  return numbers;
}

void ordonnerColonnes(store::DynamicArray& record, Colonnes colonnes,
                      const std::vector<int>& order) {
  for (const Colonne& column : colonnes) {
    store::DynamicArray placed;
    int value = 0;
    for (const int from : order) placed.set(1, ++value, record.get(column.attribute, from));
    ecrireAttribut(record, column.attribute, placed.get(1));
  }
}

}  // namespace pages
