#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace toolkit {

// One line of a list, with a number that travels with it.
struct ListItem {
  std::string text;
  long data = 0;
  bool operator==(const ListItem&) const = default;
};

// The lines of a list or combo box; positions are 0-based. Reading past the end gives "" and 0.
class ListItems {
 public:
  int count() const { return static_cast<int>(items_.size()); }
  const std::string& text(int line) const;
  long data(int line) const;
  bool has(int line) const { return line >= 0 && line < count(); }
  // First line that equals the text exactly, -1 when none does.
  int find(std::string_view text) const;
  // The functions that change it throw std::invalid_argument for a line that is not there.
  void insert(int line, ListItem item);  // line == count() appends
  void replace(int line, ListItem item);
  void erase(int line);
  void clear() { items_.clear(); }
  void assign(std::vector<ListItem> items) { items_ = std::move(items); }
  std::vector<ListItem> take() { return std::exchange(items_, {}); }
  const std::vector<ListItem>& all() const { return items_; }

 private:
  void require(int line, int end) const;
  std::vector<ListItem> items_;
};

}  // namespace toolkit
