#include "sharedstore/ScanStatement.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "sharedstore/CutEntries.h"

namespace sharedstore {

using multivalue::AccessPath;
using multivalue::Criterion;
using multivalue::Operator;
using multivalue::Scan;
using multivalue::Test;

namespace {

std::string quoted(const std::string& name) {
  std::string text = "\"";
  for (const char c : name) {
    if (c == '"') text += '"';
    text += c;
  }
  return text + "\"";
}

Sql keyRange(const AccessPath& path, const std::string& column) {
  Sql sql(column);
  if (path.exact) return sql.add(" = ").bytes(path.low);
  sql.add(" >= ").bytes(path.low);
  if (path.high) sql.add(" AND " + column + " < ").bytes(*path.high);
  return sql;
}

// Beginnings stand for what they begin: a bound that is cut off lets all of them through.
Sql entryRange(const AccessPath& path, const std::string& column) {
  Sql sql(column);
  if (path.exact) return sql.add(" = ").bytes(cut(path.low));
  sql.add(" >= ").bytes(cut(path.low));
  if (path.high) {
    const bool whole = path.high->size() <= kLongestEntry;
    sql.add(" AND " + column + (whole ? " < " : " <= ")).bytes(cut(*path.high));
  }
  return sql;
}

// An attribute in letters of ASCII alone, each other byte as a backslash and three digits.
std::string shownAttribute(int attribute) {
  return "split_part(encode(r.record, 'escape'), chr(92) || '376', " + std::to_string(attribute) +
         ")";
}

bool isShortNumber(const std::string& text) {
  constexpr std::size_t kDigits = 18;
  return !text.empty() && text.size() <= kDigits &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// By size where both are plain numbers; everything else passes.
std::optional<Sql> sizeFilter(const Test& test, std::string_view sign) {
  const std::string& value = test.criterion.text();
  if (!isShortNumber(value)) return std::nullopt;
  const std::string shown = shownAttribute(test.attribute);
  Sql sql("CASE WHEN length(" + shown + ") <= 18 AND " + shown + " ~ '^[0-9]+$' THEN CAST(" +
          shown + " AS bigint) ");
  return sql.add(sign).add(" CAST('" + value + "' AS bigint) ELSE true END");
}

// What every attribute that satisfies the test satisfies; nothing where that is not cheap to say.
std::optional<Sql> attributeFilter(const Test& test) {
  const Criterion& criterion = test.criterion;
  const bool empty = criterion.text().empty();
  const bool whole = criterion.match() == Criterion::Match::Whole;
  switch (criterion.comparison()) {
    case Operator::Equal:
      if (empty && !whole) return std::nullopt;
      if (empty) return Sql(shownAttribute(test.attribute) + " = ''");
      return Sql("position(encode(")
          .bytes(criterion.text())
          .add(", 'escape') in " + shownAttribute(test.attribute) + ") > 0");
    case Operator::Different:
      if (!empty || !whole) return std::nullopt;
      return Sql(shownAttribute(test.attribute) + " <> ''");
    case Operator::Less:
      return sizeFilter(test, "<");
    case Operator::AtMost:
      return sizeFilter(test, "<=");
    case Operator::Greater:
      return sizeFilter(test, ">");
    case Operator::AtLeast:
      return sizeFilter(test, ">=");
  }
  return std::nullopt;
}

std::optional<Sql> keyFilter(const Test& test, const std::string& key) {
  const Criterion& criterion = test.criterion;
  if (criterion.comparison() != Operator::Equal || criterion.text().empty()) return std::nullopt;
  return Sql("position(").bytes(criterion.text()).add(" in " + key + ") > 0");
}

class Conditions {
 public:
  void add(const std::optional<Sql>& condition) {
    if (!condition) return;
    sql_.add(empty_ ? " WHERE " : " AND ").add(*condition);
    empty_ = false;
  }
  const Sql& sql() const { return sql_; }

 private:
  Sql sql_;
  bool empty_ = true;
};

// Each test but the one that the path answers: as a range of the keys or of an index where it is
// one, so that the server chooses among them.
void addTests(Conditions& conditions, const Scan& scan, const std::string& key, bool records) {
  if (scan.tests == nullptr) return;
  const std::vector<AccessPath> ranges = multivalue::accessPaths(scan.file, *scan.tests);
  for (const Test& test : *scan.tests) {
    if (scan.path != nullptr && scan.path->answers == &test) continue;
    const auto range = std::find_if(ranges.begin(), ranges.end(),
                                    [&](const AccessPath& each) { return each.answers == &test; });
    if (test.attribute == 0) {
      conditions.add(range != ranges.end() ? keyRange(*range, key) : keyFilter(test, key));
    } else if (records && range != ranges.end()) {
      Sql met("EXISTS (SELECT 1 FROM " + indexTable(scan.file.name, test.attribute) +
              " j WHERE j.id = " + key + " AND ");
      conditions.add(met.add(entryRange(*range, "j.value")).add(")"));
    } else if (records) {
      conditions.add(attributeFilter(test));
    }
  }
}

Sql entriesStatement(const Scan& scan) {
  Sql sql(
      "SELECT i.id, i.value, CAST(i.first AS integer), CASE WHEN i.first AND length(i.value) < ");
  sql.number(kLongestEntry)
      .add(" THEN ''::bytea ELSE (SELECT r.record FROM " + recordTable(scan.file.name) +
           " r WHERE r.id = i.id) END FROM " + indexTable(scan.file.name, scan.path->attribute) +
           " i");
  Conditions conditions;
  conditions.add(entryRange(*scan.path, "i.value"));
  addTests(conditions, scan, "i.id", false);
  sql.add(conditions.sql());
  return scan.path->exact ? sql.add(" ORDER BY i.id") : sql;
}

// The record up to the last attribute that is looked at. Only what ends at the first mark is cheap
// to say of bytes: of bodies' acronyms, or accounts' labels, that is a hundredth of what is stored.
std::string neededText(const Scan& scan) {
  if (scan.lastAttribute != 1) return "r.record";
  const std::string end = "position(decode('fe', 'hex') in r.record)";
  return "CASE WHEN " + end + " = 0 THEN r.record ELSE substring(r.record from 1 for " + end +
         " - 1) END";
}

Sql recordsStatement(const Scan& scan) {
  const bool indexed = scan.path != nullptr && scan.path->attribute != 0;
  const bool keysOnly = scan.gives == Scan::Gives::Keys;
  Sql sql("SELECT r.id, " + (keysOnly ? "''::bytea" : neededText(scan)) + " FROM ");
  sql.add(recordTable(scan.file.name) + " r");
  Conditions conditions;
  if (indexed) {
    sql.add(" JOIN " + indexTable(scan.file.name, scan.path->attribute) + " i ON i.id = r.id");
    conditions.add(entryRange(*scan.path, "i.value"));
  } else if (scan.path != nullptr) {
    conditions.add(keyRange(*scan.path, "r.id"));
  }
  addTests(conditions, scan, "r.id", true);
  sql.add(conditions.sql());
  if (!indexed || scan.path->exact) sql.add(" ORDER BY r.id");
  return scan.locked ? sql.add(" FOR UPDATE OF r") : sql;
}

}  // namespace

std::string recordTable(std::string_view file) { return quoted("record_" + std::string(file)); }

std::string indexTable(std::string_view file, int attribute) {
  return quoted("index_" + std::string(file) + "_" + std::to_string(attribute));
}

Sql scanStatement(const Scan& scan) {
  const bool entries =
      scan.path != nullptr && scan.path->attribute != 0 && scan.gives == Scan::Gives::IndexEntries;
  return entries ? entriesStatement(scan) : recordsStatement(scan);
}

}  // namespace sharedstore
