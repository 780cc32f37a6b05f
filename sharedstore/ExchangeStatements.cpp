#include "sharedstore/ExchangeStatements.h"

#include <map>

#include "multivalue/RecordText.h"
#include "sharedstore/CutEntries.h"
#include "sharedstore/ScanStatement.h"
#include "store/StoreError.h"

namespace sharedstore {

using multivalue::FileDescription;
using multivalue::Replacement;

namespace {

Sql removal(const std::string& table, std::string_view id,
            const std::vector<std::string_view>& values) {
  Sql sql("DELETE FROM " + table + " WHERE id = ");
  sql.bytes(id).add(" AND value IN (");
  for (std::size_t i = 0; i < values.size(); ++i) sql.add(i > 0 ? ", " : "").bytes(values[i]);
  return sql.add(")");
}

Sql addition(const std::string& table, std::string_view id,
             const std::map<std::string_view, bool>& entries, std::string_view from) {
  Sql sql("INSERT INTO " + table + " (value, id, first) SELECT v.value, ");
  sql.bytes(id).add(", v.first FROM (VALUES ");
  bool any = false;
  for (const auto& [value, first] : entries) {
    sql.add(any ? ", (" : "(").bytes(value).add(first ? ", true)" : ", false)");
    any = true;
  }
  return sql.add(") v (value, first)")
      .add(from)
      .add(" ON CONFLICT (value, id) DO UPDATE SET first = excluded.first");
}

// What puts one text in the place of another, if that one is there.
Sql exchanged(const std::string& table, std::string_view id, std::optional<std::string_view> before,
              std::optional<std::string_view> after) {
  Sql sql;
  if (after && !before) {
    sql.add("INSERT INTO " + table + " (id, record) VALUES (").bytes(id).add(", ");
    sql.bytes(*after).add(") ON CONFLICT (id) DO NOTHING");
  } else if (before && !after) {
    sql.add("DELETE FROM " + table + " WHERE id = ").bytes(id).add(" AND record = ");
    sql.bytes(*before);
  } else if (before && after) {
    sql.add("UPDATE " + table + " SET record = ").bytes(*after).add(" WHERE id = ").bytes(id);
    sql.add(" AND record = ").bytes(*before);
  }
  return sql.add(" RETURNING 1");
}

void addEntryStatements(std::vector<Sql>& statements, const std::string& table, int attribute,
                        const std::vector<const Replacement*>& some) {
  Sql gone("DELETE FROM " + table + " i USING (VALUES ");
  Sql put("INSERT INTO " + table + " (value, id, first) VALUES ");
  bool anyGone = false;
  bool anyPut = false;
  for (const Replacement* const each : some) {
    const std::string before = each->before.value_or("");
    const EntryChanges changes = entryChanges(multivalue::attributeOf(before, attribute),
                                              multivalue::attributeOf(each->after, attribute));
    for (const std::string_view value : changes.removed) {
      gone.add(anyGone ? ", (" : "(").bytes(value).add(", ").bytes(each->id).add(")");
      anyGone = true;
    }
    for (const auto& [value, first] : changes.put) {
      put.add(anyPut ? ", (" : "(").bytes(value).add(", ").bytes(each->id);
      put.add(first ? ", true)" : ", false)");
      anyPut = true;
    }
  }
  if (anyGone) {
    statements.push_back(gone.add(") v (value, id) WHERE i.value = v.value AND i.id = v.id"));
  }
  if (anyPut) {
    statements.push_back(put.add(" ON CONFLICT (value, id) DO UPDATE SET first = excluded.first"));
  }
}

}  // namespace

void requireKey(std::string_view id) {
  if (id.size() <= kLongestKey) return;
  throw store::StoreError(store::kBadValue, "a key has at most " + std::to_string(kLongestKey) +
                                                " bytes in a shared store");
}

Exchange exchangeStatements(const FileDescription& file, std::string_view id,
                            std::optional<std::string_view> before,
                            std::optional<std::string_view> after) {
  if (after) requireKey(id);
  Exchange parts;
  Sql& sql = parts.record;
  sql.add("WITH done AS (");
  sql.add(exchanged(recordTable(file.name), id, before, after)).add(")");
  for (const int attribute : file.indexed) {
    const std::string table = indexTable(file.name, attribute);
    const EntryChanges changes =
        entryChanges(multivalue::attributeOf(before.value_or(""), attribute),
                     multivalue::attributeOf(after.value_or(""), attribute));
    const std::string with = ", index" + std::to_string(attribute) + " AS (";
    if (!changes.removed.empty()) {
      sql.add(with).add(removal(table, id, changes.removed));
      sql.add(" AND EXISTS (SELECT 1 FROM done))");
      if (!changes.put.empty()) parts.additions.push_back(addition(table, id, changes.put, ""));
    } else if (!changes.put.empty()) {
      sql.add(with).add(addition(table, id, changes.put, ", done")).add(")");
    }
  }
  return parts;
}

Sql updated(const FileDescription& file, const std::vector<const Replacement*>& some) {
  Sql sql("WITH done AS (UPDATE " + recordTable(file.name) +
          " r SET record = v.after FROM (VALUES ");
  bool any = false;
  for (const Replacement* const each : some) {
    sql.add(any ? ", (" : "(").bytes(each->id).add(", ").bytes(each->textBefore()).add(", ");
    sql.bytes(each->after).add(")");
    any = true;
  }
  return sql.add(") v (id, before, after) WHERE r.id = v.id AND r.record = v.before RETURNING 1)");
}

Sql inserted(const FileDescription& file, const std::vector<const Replacement*>& some) {
  Sql sql("WITH done AS (INSERT INTO " + recordTable(file.name) + " (id, record) VALUES ");
  bool any = false;
  for (const Replacement* const each : some) {
    sql.add(any ? ", (" : "(").bytes(each->id).add(", ").bytes(each->after).add(")");
    any = true;
  }
  return sql.add(" ON CONFLICT (id) DO NOTHING RETURNING 1)");
}

std::vector<Sql> entryStatements(const FileDescription& file,
                                 const std::vector<const Replacement*>& some) {
  std::vector<Sql> statements;
  for (const int attribute : file.indexed) {
    addEntryStatements(statements, indexTable(file.name, attribute), attribute, some);
  }
  return statements;
}

}  // namespace sharedstore
