#include "pages/Columns.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "pages/ShownAttribute.h"
#include "store/Amounts.h"
#include "store/Dates.h"
#include "store/Digits.h"
#include "text/Utf8.h"

namespace pages {
namespace {

// The values for rows that now show these texts.
std::string valeurs(std::string_view attribute, const Colonne& column,
                    const std::vector<std::string_view>& rows) {
  std::string written;
  written.reserve(attribute.size());
  bool first = true;
  for (const std::string_view row : rows) {
    if (!std::exchange(first, false)) written += store::kValueMark;
    ajouterValeur(written, column, store::takeValue(attribute), row);
  }
  return written;
}

// A whole number of hundredths without a leading zero is shown by its own digits.
bool chiffresMontres(std::string_view value, std::string_view row) {
  constexpr std::size_t kMost = 15;
  if (value.size() < 3 || value.size() > kMost || row.size() != value.size() + 1) return false;
  const std::size_t units = value.size() - 2;
  bool same = value.front() != '0' && row[units] == ',';
  for (std::size_t i = 0; i < value.size(); ++i) {
    same = same && store::isDigit(value[i]) && value[i] == row[i < units ? i : i + 1];
  }
  return same;
}

// Do these rows, one for each value, write what is there already?
bool commeMontrees(std::string_view attribute, const Colonne& column,
                   const std::vector<std::string_view>& rows) {
  return std::all_of(rows.begin(), rows.end(), [&](std::string_view row) {
    const std::string_view value = store::takeValue(attribute);
    return row.empty() ? value == column.vide : column.forme.montreAinsi(value, row);
  });
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

bool jourMontreAinsi(std::string_view value, std::string_view row) {
  return row == jourMontre(value);
}

bool centiemesMontresAinsi(std::string_view value, std::string_view row) {
  return chiffresMontres(value, row) || row == centiemesMontres(value);
}

std::string centiemesEcrits(std::string_view row) {
  if (text::trim(row).empty()) return {};
  const auto number = store::hundredths(row);
  return number ? std::to_string(*number) : std::string(row);
}

void ajouterValeur(std::string& written, const Colonne& column, std::string_view before,
                   std::string_view row) {
  if (row.empty()) {
    written += column.vide;
  } else if (column.forme.montreAinsi(before, row)) {
    written += before;
  } else {
    written += column.forme.ecrit(row);
  }
}

std::string valeurSaisie(const Colonne& column, std::string_view before, std::string_view typed) {
  std::string written = column.forme.ecrit(typed);
  const bool same = !written.empty() && column.forme.montre(written) == column.forme.montre(before);
  return same ? std::string(before) : written;
}

void ColonnesMontrees::montrer(ListEditor& editor, const store::DynamicArray& record,
                               Colonnes colonnes, int count) {
  std::vector<ListEditor::Lines> lists;
  lists.reserve(colonnes.size());
  montrees_.resize(colonnes.size());
  count_ = count;
  for (std::size_t i = 0; i < colonnes.size(); ++i) {
    Montree& shown = montrees_[i];
    shown.attribute = colonnes[i].attribute;
    shown.texte = record.get(shown.attribute);
    ListEditor::Lines& lines = lists.emplace_back(editor.vieilles(i));
    lines.resize(static_cast<std::size_t>(count));
    shown.fidele = remplir(lines, shown.texte, colonnes[i]);
  }
  editor.remplirListes(std::move(lists));
  for (std::size_t i = 0; i < montrees_.size(); ++i) {
    montrees_[i].changements = editor.changements(i);
  }
}

// Will the rows be taken for their values again? There are as many then, and an empty row stands
// for one value alone.
bool ColonnesMontrees::remplir(ListEditor::Lines& lines, std::string_view attribute,
                               const Colonne& column) {
  std::size_t values = attribute.empty() ? 0 : 1;
  bool faithful = true;
  for (toolkit::ListItem& line : lines) {
    const std::size_t before = attribute.size();
    const std::string_view value = store::takeValue(attribute);
    if (value.size() < before) ++values;
    line.text = column.forme.montre(value);
    faithful = faithful && (!line.text.empty() || value == column.vide);
  }
  return faithful && values == lines.size();
}

bool ColonnesMontrees::inchangee(const ListEditor& editor, const store::DynamicArray& record,
                                 std::size_t column, int count) const {
  if (column >= montrees_.size()) return false;
  const Montree& shown = montrees_[column];
  return shown.fidele && count == count_ && shown.changements == editor.changements(column) &&
         record.get(shown.attribute) == shown.texte;
}

void ColonnesMontrees::ecrire(const ListEditor& editor, store::DynamicArray& record,
                              Colonnes colonnes, int count) const {
  for (std::size_t i = 0; i < colonnes.size(); ++i) {
    if (inchangee(editor, record, i, count)) continue;
    const int attribute = colonnes[i].attribute;
    const std::vector<std::string_view> rows = editor.colonne(i, count);
    const bool asMany = record.DCount(attribute) == std::ssize(rows);
    if (asMany && commeMontrees(record.get(attribute), colonnes[i], rows)) continue;
    ecrireAttribut(record, attribute, valeurs(record.get(attribute), colonnes[i], rows));
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
  for (long long& number : numbers) number = store::wholeNumber(store::takeValue(left));
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
