// A text file line by line, of which no more than a line is in memory.
#pragma once

#include <cstddef>
#include <istream>
#include <string>

#include "storetool/TextFormat.h"

namespace storetool {

// Lines end with a line feed; what stands before it, a carriage return too, belongs to them. A byte
// order mark at the beginning is passed over.
class Lines {
 public:
  Lines(std::istream& text, Encoding encoding)
      : text_(text), encoding_(encoding), block_(std::size_t{1} << 16, '\0') {}

  // False at the end of the text. The line is UTF-8. Throws FormatError for one beyond kLongest,
  // and for one that is not of the encoding.
  bool next(std::string& line);

  // Of the last line, from 1.
  std::size_t number() const { return number_; }
  // How many bytes of the text have been given.
  std::size_t offset() const { return offset_; }

  static constexpr std::size_t kLongest = std::size_t{64} << 20;

 private:
  bool fill();
  void read(std::string& line);

  std::istream& text_;
  const Encoding encoding_;
  std::string block_;
  std::size_t at_ = 0;
  std::size_t end_ = 0;
  std::size_t number_ = 0;
  std::size_t offset_ = 0;
};

}  // namespace storetool
