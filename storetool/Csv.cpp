#include "storetool/Csv.h"

#include <algorithm>
#include <cstddef>

#include "multivalue/RecordText.h"
#include "store/DynamicArray.h"
#include "storetool/Lines.h"

namespace storetool {

namespace {

// The cells of a row's text.
class Row {
 public:
  Row(std::string_view text, char separator) : text_(text), separator_(separator) {}

  void cells(std::vector<std::string>& cells) {
    cells.clear();
    for (;;) {
      cells.push_back(cell());
      if (endsLine()) return;
      ++at_;  // the separator
    }
  }

 private:
  bool endsLine() const {
    return at_ == text_.size() || (text_[at_] == '\r' && at_ + 1 == text_.size());
  }

  std::string cell() {
    if (at_ < text_.size() && text_[at_] == '"') return quotedCell();
    const std::size_t start = at_;
    while (!endsLine() && text_[at_] != separator_) {
      if (text_[at_] == '"') throw FormatError("a double quote inside a cell without quotes");
      ++at_;
    }
    return std::string(text_.substr(start, at_ - start));
  }

  std::string quotedCell() {
    std::string cell;
    for (++at_;; ++at_) {
      if (at_ == text_.size()) throw FormatError("the cell's closing double quote is missing");
      if (text_[at_] == '"') {
        ++at_;
        if (endsLine() || text_[at_] == separator_) return cell;
        if (text_[at_] != '"') {
          throw FormatError((separator_ == ',' ? "a comma" : "a semicolon") +
                            std::string(" is expected after the closing quote"));
        }
      }
      cell += text_[at_];
    }
  }

  std::string_view text_;
  const char separator_;
  std::size_t at_ = 0;
};

// Rows of cells, with the line on which the last row read starts.
class Rows {
 public:
  Rows(std::istream& text, const TextFormat& format)
      : lines_(text, format.encoding), separator_(format.separator) {}

  // False at the end of the text.
  bool next(std::vector<std::string>& cells) {
    do {
      start_ = lines_.number() + 1;
      if (!lines_.next(row_)) return false;
      row_.erase(0, row_.find_first_not_of('\r'));
    } while (row_.empty());
    // A row goes on behind a line feed within quotes, that is behind an odd number of them.
    auto quotes = std::count(row_.begin(), row_.end(), '"');
    while (quotes % 2 != 0 && lines_.next(line_)) {
      if (row_.size() + line_.size() >= Lines::kLongest) {
        throw FormatError("the row is longer than 64 MiB");
      }
      quotes += std::count(line_.begin(), line_.end(), '"');
      row_ += '\n';
      row_ += line_;
    }
    Row(row_, separator_).cells(cells);
    return true;
  }

  std::size_t line() const { return start_; }
  std::size_t offset() const { return lines_.offset(); }

 private:
  Lines lines_;
  const char separator_;
  std::string row_;
  std::string line_;
  std::size_t start_ = 1;
};

void checkHeader(const std::vector<std::string>& cells, char separator) {
  bool right = cells[0] == "id";
  for (std::size_t i = 1; i < cells.size(); ++i) right = right && cells[i] == std::to_string(i);
  if (right) return;
  const std::string between(1, separator);
  throw FormatError("the header is not id" + between + "1" + between + "2" + between + "...");
}

std::string attributeText(std::string_view cell, char valueSeparator) {
  std::string text;
  for (std::size_t i = 0; i < cell.size(); ++i) {
    if (cell[i] == store::kAttributeMark || cell[i] == store::kValueMark) {
      throw FormatError("a cell holds a mark");
    }
    if (cell[i] == valueSeparator) {
      text += store::kValueMark;
    } else if (cell[i] != '\\') {
      text += cell[i];
    } else {
      ++i;
      if (i == cell.size() || (cell[i] != valueSeparator && cell[i] != '\\')) {
        throw FormatError("a backslash is followed by neither \"" + std::string(1, valueSeparator) +
                          "\" nor \"\\\"");
      }
      text += cell[i];
    }
  }
  return text;
}

TextRecord recordOfRow(const std::vector<std::string>& cells, std::size_t columns,
                       const TextFormat& format) {
  if (cells.size() > columns) throw FormatError("more cells than the header has");
  TextRecord record;
  record.id = cells[0];
  if (!multivalue::isIdentifier(record.id)) throw FormatError("the id is empty or holds a mark");
  for (std::size_t i = 1; i < cells.size(); ++i) {
    if (i > 1) record.text += store::kAttributeMark;
    record.text += attributeText(cells[i], format.valueSeparator());
  }
  requireNoMarkCharacter(record);
  return record;
}

std::string quotedCell(std::string_view text, char separator) {
  if (text.find_first_of("\"\r\n") == std::string_view::npos &&
      text.find(separator) == std::string_view::npos) {
    return std::string(text);
  }
  std::string cell = "\"";
  for (const char c : text) {
    if (c == '"') cell += '"';
    cell += c;
  }
  return cell + '"';
}

}  // namespace

void readCsv(std::istream& text, const RecordVisitor& visitor, const TextFormat& format) {
  Rows rows(text, format);
  std::vector<std::string> cells;
  std::size_t columns = 0;
  for (;;) {
    TextRecord record;
    try {
      if (!rows.next(cells)) break;
      if (columns == 0) {
        checkHeader(cells, format.separator);
        columns = cells.size();
        continue;
      }
      record = recordOfRow(cells, columns, format);
    } catch (const FormatError& error) {
      throw FormatError("line " + std::to_string(rows.line()) + ": " + error.what());
    }
    visitor(record, rows.offset());
  }
  if (columns == 0) throw FormatError("line 1: the header is missing");
}

std::string csvHeader(int attributes, const TextFormat& format) {
  std::string header = "id";
  for (int i = 1; i <= attributes; ++i) header += format.separator + std::to_string(i);
  return header;
}

std::string csvRow(std::string_view id, std::string_view record, const TextFormat& format) {
  const char between = format.valueSeparator();
  std::string row = quotedCell(id, format.separator);
  for (const std::string_view attribute : partsOf(record, store::kAttributeMark)) {
    std::string cell;
    for (const char c : attribute) {
      if (c == between || c == '\\') cell += '\\';
      cell += c == store::kValueMark ? between : c;
    }
    row += format.separator;
    row += quotedCell(cell, format.separator);
  }
  return row;
}

}  // namespace storetool
