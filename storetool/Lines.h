// A text file line by line, of which no more than a line is in memory.
#pragma once

#include <cstddef>
#include <istream>
#include <string>

namespace storetool {

// Lines end with a line feed; what stands before it, a carriage return too, belongs to them. A byte
// order mark at the beginning is passed over.
class Lines {
 public:
  explicit Lines(std::istream& text) : text_(text), block_(std::size_t{1} << 16, '\0') {}

  // False at the end of the text. Throws FormatError for a line beyond kLongest.
  bool next(std::string& line);

  // Of the last line, from 1.
  std::size_t number() const { return number_; }
  // How many bytes of the text have been given.
  std::size_t offset() const { return offset_; }

  static constexpr std::size_t kLongest = std::size_t{64} << 20;

 private:
  bool fill();

  std::istream& text_;
  std::string block_;
  std::size_t at_ = 0;
  std::size_t end_ = 0;
  std::size_t number_ = 0;
  std::size_t offset_ = 0;
};

}  // namespace storetool
