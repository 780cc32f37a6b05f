// What stands in a record's text: its attributes, and the index entries that they make.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string_view>

namespace multivalue {

// An attribute (from 1) of a record's text, with its value marks; "" past the end.
std::string_view attributeOf(std::string_view record, int attribute);
// Where the first attribute of a text ends: its mark, npos when it is the last.
std::size_t attributeEnd(std::string_view record);
// The first value of an attribute's text.
std::string_view firstValue(std::string_view attribute);

// Not empty and without marks.
bool isIdentifier(std::string_view id);

// Outside the store the marks are the characters U+00FD and U+00FE: a text that holds one of these
// could not be told from marks there.
bool holdsMarkCharacter(std::string_view text);

// The distinct non-empty values of an attribute's text, and whether each is the first.
std::map<std::string_view, bool> indexEntries(std::string_view attribute);

// What becomes of an index when an attribute's text is changed.
struct IndexChanges {
  std::function<void(std::string_view value)> remove;
  // Adds an entry, or makes it the first value's or no longer.
  std::function<void(std::string_view value, bool first)> put;
};
void changeIndex(std::string_view before, std::string_view after, const IndexChanges& changes);

}  // namespace multivalue
