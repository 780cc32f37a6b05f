#include "storetool/Lines.h"

#include <algorithm>

#include "storetool/Encodings.h"
#include "storetool/TextRecord.h"

namespace storetool {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

bool Lines::fill() {
  if (at_ < end_) return true;
  text_.read(block_.data(), static_cast<std::streamsize>(block_.size()));
  const bool beginning = end_ == 0 && encoding_ == Encoding::Utf8;
  end_ = static_cast<std::size_t>(text_.gcount());
  at_ = 0;
  if (beginning && std::string_view(block_).substr(0, end_).starts_with(kByteOrderMark)) {
    at_ = kByteOrderMark.size();
    offset_ = at_;
  }
  return at_ < end_;
}

bool Lines::next(std::string& line) {
  line.clear();
  if (!fill()) return false;
  ++number_;
  read(line);
  if (encoding_ == Encoding::Windows1252) {
    line = fromWindows1252(line);
  } else if (!isUtf8(line)) {
    throw FormatError("the line is no UTF-8; --encoding windows-1252 reads a file of Windows");
  }
  return true;
}

void Lines::read(std::string& line) {
  do {
    const auto begin = block_.begin() + static_cast<std::ptrdiff_t>(at_);
    const auto end = block_.begin() + static_cast<std::ptrdiff_t>(end_);
    const auto feed = std::find(begin, end, '\n');
    const auto size = static_cast<std::size_t>(feed - begin);
    if (line.size() + size > kLongest) throw FormatError("the line is longer than 64 MiB");
    line.append(begin, feed);
    at_ += size;
    offset_ += size;
    if (feed != end) {
      ++at_;
      ++offset_;
      return;
    }
  } while (fill());
}

}  // namespace storetool
