#include "store/Request.h"

namespace store {

std::string quoted(std::string_view value) { return '"' + std::string(value) + '"'; }

std::string quotedPrefix(std::string_view value) { return '"' + std::string(value) + "]\""; }

std::string request(std::string_view sentence, std::string_view file, std::string_view columns) {
  DynamicArray scratch = NewDynamicArray();
  scratch.set(1, sentence);
  scratch.set(2, file);
  scratch.set(3, columns);
  return scratch.text();
}

DynamicArray select(Database& database, std::string_view sentence, std::string_view file,
                    std::string_view columns) {
  return database.ExecuteSentence(request(sentence, file, columns));
}

bool anySelected(const DynamicArray& answer) { return !answer.get(1).empty(); }

DynamicArray turnedOver(const DynamicArray& answer) {
  DynamicArray columns;
  for (int record = 1; record <= answer.DCount(); ++record) {
    const int width = answer.DCount(record);
    for (int column = 1; column <= width; ++column) {
      columns.set(column, record, answer.get(record, column));
    }
  }
  return columns;
}

}  // namespace store
