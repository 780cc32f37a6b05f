// Index entries that fit into an index of the server's, however long the values are.
#pragma once

#include <cstddef>
#include <map>
#include <string_view>
#include <vector>

#include "multivalue/AccessPath.h"

namespace sharedstore {

// An entry of PostgreSQL's indexes takes 2 704 bytes: a value's beginning and a key go into one.
inline constexpr std::size_t kLongestEntry = 1024;
inline constexpr std::size_t kLongestKey = 1024;

inline std::string_view cut(std::string_view value) { return value.substr(0, kLongestEntry); }
// May an entry stand for values that go on?
inline bool isCut(std::string_view entry) { return entry.size() >= kLongestEntry; }

// The entries of an attribute's text: the beginnings of its distinct values, and whether one is the
// first value's.
std::map<std::string_view, bool> cutEntries(std::string_view attribute);

struct EntryChanges {
  std::vector<std::string_view> removed;
  std::map<std::string_view, bool> put;  // new, or the first value's now or no longer
};
// The views are of the texts.
EntryChanges entryChanges(std::string_view before, std::string_view after);

// Has the attribute's text a value that the path, one of an index, asks for?
bool isOnPath(const multivalue::AccessPath& path, std::string_view attribute);

}  // namespace sharedstore
