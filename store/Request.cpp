#include "store/Request.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace store {

std::string quoted(std::string_view value) { return '"' + std::string(value) + '"'; }

std::string quotedPrefix(std::string_view value) { return '"' + std::string(value) + "]\""; }

std::string request(std::string_view sentence, std::string_view file, std::string_view columns) {
  std::string text;
  text.reserve(sentence.size() + file.size() + columns.size() + 2);
  ((text += sentence) += kAttributeMark) += file;
  (text += kAttributeMark) += columns;
  return text;
}

DynamicArray select(Database& database, std::string_view sentence, std::string_view file,
                    std::string_view columns) {
  return database.ExecuteSentence(request(sentence, file, columns));
}

bool anySelected(const DynamicArray& answer) { return !answer.get(1).empty(); }

DynamicArray turnedOver(const DynamicArray& answer) {
  // Each column is put together as one text, in a fraction of the time that its values would take
  // to be set one by one.
  struct Column {
    std::string text;
    std::size_t marks = 0;
  };
  std::vector<Column> columns;
  const auto records = static_cast<std::size_t>(answer.DCount());
  for (std::size_t record = 0; record < records; ++record) {
    std::string_view rest = answer.get(static_cast<int>(record) + 1);
    if (rest.empty()) continue;
    for (std::size_t column = 0;; ++column) {
      if (column == columns.size()) columns.emplace_back();
      Column& own = columns[column];
      own.text.append(record - std::exchange(own.marks, record), kValueMark);
      const std::size_t end = rest.find(kValueMark);
      own.text += rest.substr(0, end);
      if (end == std::string_view::npos) break;
      rest.remove_prefix(end + 1);
    }
  }
  DynamicArray turned;
  int number = 0;
  for (const Column& column : columns) turned.set(++number, column.text);
  return turned;
}

}  // namespace store
