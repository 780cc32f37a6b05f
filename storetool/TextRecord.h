// A record on its way between a store and a text file.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace storetool {

struct TextRecord {
  std::string id;
  std::string text;  // attributes and values with their marks
};

// A line that is no record, or a record that the format cannot hold. The message says where.
class FormatError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Throws FormatError when a text holds U+00FD or U+00FE, which stand for the store's marks.
void requireNoMarkCharacter(const TextRecord& record);

// Receives each record and the offset in the text just behind it.
using RecordVisitor = std::function<void(const TextRecord& record, std::size_t offset)>;

// The parts of a text between marks; none of an empty text.
std::vector<std::string_view> partsOf(std::string_view text, char mark);

}  // namespace storetool
