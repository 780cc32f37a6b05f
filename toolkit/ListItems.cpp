#include "toolkit/ListItems.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace toolkit {

const std::string& ListItems::text(int line) const {
  static const std::string kNone;
  return has(line) ? items_[static_cast<std::size_t>(line)].text : kNone;
}

long ListItems::data(int line) const {
  return has(line) ? items_[static_cast<std::size_t>(line)].data : 0;
}

int ListItems::find(std::string_view text) const {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [text](const ListItem& item) { return item.text == text; });
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

void ListItems::require(int line, int end) const {
  if (line < 0 || line >= end) throw std::invalid_argument("no such line in the list");
}

void ListItems::insert(int line, ListItem item) {
  require(line, count() + 1);
  items_.insert(items_.begin() + line, std::move(item));
}

void ListItems::replace(int line, ListItem item) {
  require(line, count());
  items_[static_cast<std::size_t>(line)] = std::move(item);
}

void ListItems::erase(int line) {
  require(line, count());
  items_.erase(items_.begin() + line);
}

}  // namespace toolkit
