#include "multivalue/RecordText.h"

#include <algorithm>
#include <cstddef>

#include "store/DynamicArray.h"

namespace multivalue {

// Most attributes are short, and their end is looked at sooner than it is searched for.
std::size_t attributeEnd(std::string_view record) {
  constexpr std::size_t kShort = 16;
  const std::size_t most = std::min(record.size(), kShort);
  for (std::size_t at = 0; at < most; ++at) {
    if (record[at] == store::kAttributeMark) return at;
  }
  return record.find(store::kAttributeMark, most);
}

std::string_view attributeOf(std::string_view record, int attribute) {
  for (int skipped = 1; skipped < attribute; ++skipped) {
    const std::size_t mark = attributeEnd(record);
    if (mark == std::string_view::npos) return {};
    record.remove_prefix(mark + 1);
  }
  return record.substr(0, attributeEnd(record));
}

std::string_view firstValue(std::string_view attribute) {
  return attribute.substr(0, attribute.find(store::kValueMark));
}

bool isIdentifier(std::string_view id) {
  return !id.empty() && id.find(store::kAttributeMark) == std::string_view::npos &&
         id.find(store::kValueMark) == std::string_view::npos;
}

bool holdsMarkCharacter(std::string_view text) {
  for (std::size_t at = text.find('\xC3'); at != std::string_view::npos;
       at = text.find('\xC3', at + 1)) {
    const std::string_view character = text.substr(at, 2);
    if (character == "\xC3\xBD" || character == "\xC3\xBE") return true;
  }
  return false;
}

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

void changeIndex(std::string_view before, std::string_view after, const IndexChanges& changes) {
  if (before == after) return;
  const std::map<std::string_view, bool> old = indexEntries(before);
  const std::map<std::string_view, bool> now = indexEntries(after);
  for (const auto& [value, first] : old) {
    if (!now.contains(value)) changes.remove(value);
  }
  for (const auto& [value, first] : now) {
    const auto same = old.find(value);
    if (same == old.end() || same->second != first) changes.put(value, first);
  }
}

}  // namespace multivalue
