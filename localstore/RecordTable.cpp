#include "localstore/RecordTable.h"

#include <cstddef>
#include <map>
#include <utility>

#include "store/DynamicArray.h"
#include "store/StoreError.h"

namespace localstore {

namespace {

// Distinct non-empty values, and whether each is the first.
std::map<std::string_view, bool> indexEntries(std::string_view attribute) {
  std::map<std::string_view, bool> entries;
  bool first = true;
  for (;;) {
    const std::size_t mark = attribute.find(store::kValueMark);
    const std::string_view value = attribute.substr(0, mark);
    if (!value.empty()) entries.emplace(value, first);
    if (mark == std::string_view::npos) return entries;
    attribute.remove_prefix(mark + 1);
    first = false;
  }
}

}  // namespace

std::string_view attributeOf(std::string_view record, int attribute) {
  for (int skipped = 1; skipped < attribute; ++skipped) {
    const std::size_t mark = record.find(store::kAttributeMark);
    if (mark == std::string_view::npos) return {};
    record.remove_prefix(mark + 1);
  }
  return record.substr(0, record.find(store::kAttributeMark));
}

std::string_view firstValue(std::string_view attribute) {
  return attribute.substr(0, attribute.find(store::kValueMark));
}

bool isIdentifier(std::string_view id) {
  return !id.empty() && id.find(store::kAttributeMark) == std::string_view::npos &&
         id.find(store::kValueMark) == std::string_view::npos;
}

std::optional<std::string> RecordTable::read(std::string_view id) {
  Query query(connection_, reading_);
  if (!query.bind(1, id).step()) return std::nullopt;
  return std::string(query.text(0));
}

void RecordTable::write(std::string_view id, std::string_view record) {
  if (!isIdentifier(id)) {
    throw store::StoreError(store::kBadValue, "no identifier for a record of " + file_->name +
                                                  ": it is empty or holds a mark");
  }
  replace(id, read(id).value_or(""), record);
}

void RecordTable::replace(std::string_view id, std::string_view before, std::string_view record) {
  for (const int attribute : file_->indexed) {
    reindex(attribute, id, attributeOf(before, attribute), attributeOf(record, attribute));
  }
  Query(connection_, writing_).bind(1, id).bindBytes(2, record).run();
}

bool RecordTable::remove(std::string_view id) {
  const std::optional<std::string> before = read(id);
  if (!before) return false;
  for (const int attribute : file_->indexed) {
    reindex(attribute, id, attributeOf(*before, attribute), {});
  }
  Query(connection_, "DELETE FROM " + file_->recordTable() + " WHERE id = ?1").bind(1, id).run();
  return true;
}

void RecordTable::forEach(
    const std::function<void(std::string_view id, std::string_view record)>& visitor) {
  Query query(connection_, "SELECT id, record FROM " + file_->recordTable() + " ORDER BY id");
  while (query.step()) visitor(query.text(0), query.text(1));
}

void RecordTable::reindex(int attribute, std::string_view id, std::string_view before,
                          std::string_view after) {
  if (before == after) return;
  const std::map<std::string_view, bool> old = indexEntries(before);
  const std::map<std::string_view, bool> now = indexEntries(after);
  const std::string table = file_->indexTable(attribute);
  for (const auto& [value, first] : old) {
    if (now.contains(value)) continue;
    Query(connection_, "DELETE FROM " + table + " WHERE value = ?1 AND id = ?2")
        .bind(1, value)
        .bind(2, id)
        .run();
  }
  for (const auto& [value, first] : now) {
    const auto same = old.find(value);
    if (same != old.end() && same->second == first) continue;
    Query(connection_, "INSERT INTO " + table +
                           " VALUES(?1, ?2, ?3) ON CONFLICT(value, id) DO UPDATE SET first = ?3")
        .bind(1, value)
        .bind(2, id)
        .bind(3, static_cast<std::int64_t>(first))
        .run();
  }
}

}  // namespace localstore
