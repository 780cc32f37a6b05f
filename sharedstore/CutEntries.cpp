#include "sharedstore/CutEntries.h"

#include "multivalue/RecordText.h"

namespace sharedstore {

std::map<std::string_view, bool> cutEntries(std::string_view attribute) {
  std::map<std::string_view, bool> entries;
  for (const auto& [value, first] : multivalue::indexEntries(attribute)) {
    bool& isFirst = entries.emplace(cut(value), false).first->second;
    isFirst = isFirst || first;
  }
  return entries;
}

EntryChanges entryChanges(std::string_view before, std::string_view after) {
  EntryChanges changes;
  if (before == after) return changes;
  const std::map<std::string_view, bool> old = cutEntries(before);
  changes.put = cutEntries(after);
  for (const auto& [value, first] : old) {
    const auto same = changes.put.find(value);
    if (same == changes.put.end()) {
      changes.removed.push_back(value);
    } else if (same->second == first) {
      changes.put.erase(same);
    }
  }
  return changes;
}

bool isOnPath(const multivalue::AccessPath& path, std::string_view attribute) {
  for (const auto& [value, first] : multivalue::indexEntries(attribute)) {
    if (path.exact ? value == path.low : value >= path.low && (!path.high || value < *path.high)) {
      return true;
    }
  }
  return false;
}

}  // namespace sharedstore
