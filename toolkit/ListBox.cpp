#include "toolkit/ListBox.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace toolkit {

namespace {

std::size_t at(int line) { return static_cast<std::size_t>(line); }

}  // namespace

ListBox::ListBox(Container* parent, std::string name, Selection selection)
    : Control(parent, Kind::ListBox, std::move(name)), selection_(selection) {}

void ListBox::setRightAligned(const Control* bar) {
  rightAligned_ = true;
  bar_ = bar;
}

int ListBox::covered() const {
  if (!bar_ || !bar_->visible()) return 0;
  return std::clamp(place().left + place().width - bar_->place().left, 0, place().width);
}

void ListBox::requireLine(int line) const {
  if (!items_.has(line)) throw std::invalid_argument("no such line in the list box");
}

void ListBox::linesChanged() {
  ++changes_;
  topIndex_ = std::clamp(topIndex_, 0, std::max(0, listCount() - 1));
  changed(Aspect::Items);
}

void ListBox::addItem(std::string_view text, long data) { insertItem(listCount(), text, data); }

void ListBox::insertItem(int line, std::string_view text, long data) {
  items_.insert(line, {std::string(text), data});
  selected_.insert(selected_.begin() + line, 0);
  if (listIndex_ >= line) ++listIndex_;
  linesChanged();
}

void ListBox::replaceItem(int line, std::string_view text, long data) {
  items_.replace(line, {std::string(text), data});
  linesChanged();
}

void ListBox::setItems(std::vector<ListItem> items) {
  items_.assign(std::move(items));
  selected_.assign(at(listCount()), 0);
  listIndex_ = -1;
  topIndex_ = 0;
  linesChanged();
}

std::vector<ListItem> ListBox::takeItems() {
  std::vector<ListItem> items = items_.take();
  setItems({});
  return items;
}

void ListBox::removeItem(int line) {
  requireLine(line);
  removeItems({line});
}

void ListBox::removeItems(const std::vector<int>& lines) {
  for (const int line : lines) requireLine(line);
  if (lines.empty()) return;
  std::vector<ListItem> kept;
  std::vector<char> flags;
  int place = -1;  // of the line that listIndex_ names, or of the next one that stays
  for (int line = 0; line < listCount(); ++line) {
    if (line == listIndex_) place = static_cast<int>(kept.size());
    if (std::binary_search(lines.begin(), lines.end(), line)) continue;
    kept.push_back(items_.all()[at(line)]);
    flags.push_back(selected_[at(line)]);
  }
  const bool gone = std::binary_search(lines.begin(), lines.end(), listIndex_);
  if (gone && selection_ == Selection::Single) place = -1;
  listIndex_ = std::min(place, static_cast<int>(kept.size()) - 1);
  items_.assign(std::move(kept));
  selected_ = std::move(flags);
  linesChanged();
}

void ListBox::removeSelected() { removeItems(selectedLines()); }

void ListBox::moveItem(int from, int to) {
  requireLine(from);
  requireLine(to);
  if (from == to) return;
  const auto turn = [from, to](auto begin) {
    if (from < to) {
      std::rotate(begin + from, begin + from + 1, begin + to + 1);
    } else {
      std::rotate(begin + to, begin + from, begin + from + 1);
    }
  };
  std::vector<ListItem> lines = items_.all();
  turn(lines.begin());
  items_.assign(std::move(lines));
  turn(selected_.begin());
  if (listIndex_ == from) {
    listIndex_ = to;
  } else if (from < listIndex_ && listIndex_ <= to) {
    --listIndex_;
  } else if (to <= listIndex_ && listIndex_ < from) {
    ++listIndex_;
  }
  linesChanged();
}

void ListBox::clear() { setItems({}); }

void ListBox::setListIndex(int line) {
  if (line != -1) requireLine(line);
  if (line == listIndex_) return;
  listIndex_ = line;
  changed(Aspect::Selection);
  if (selection_ == Selection::Single && line != -1) fire(onClick);
}

bool ListBox::selected(int line) const {
  if (!items_.has(line)) return false;
  return selection_ == Selection::Single ? line == listIndex_ : selected_[at(line)] != 0;
}

void ListBox::setSelected(int line, bool selected) {
  requireLine(line);
  if (selected == this->selected(line)) return;
  if (selection_ == Selection::Single) {
    setListIndex(selected ? line : -1);
    return;
  }
  selected_[at(line)] = selected ? 1 : 0;
  changed(Aspect::Selection);
  fire(onClick);
}

int ListBox::selectedCount() const {
  if (selection_ == Selection::Single) return listIndex_ == -1 ? 0 : 1;
  return static_cast<int>(std::count(selected_.begin(), selected_.end(), 1));
}

std::vector<int> ListBox::selectedLines() const {
  std::vector<int> lines;
  for (int line = 0; line < listCount(); ++line) {
    if (selected(line)) lines.push_back(line);
  }
  return lines;
}

void ListBox::selectNone() {
  if (selectedCount() == 0) return;
  if (selection_ == Selection::Single) {
    setListIndex(-1);
    return;
  }
  std::fill(selected_.begin(), selected_.end(), 0);
  changed(Aspect::Selection);
  fire(onClick);
}

void ListBox::bringIntoView(int line) {
  if (line < topIndex_) {
    setTopIndex(line);
  } else if (linesInView_ > 0 && line >= topIndex_ + linesInView_) {
    setTopIndex(line - linesInView_ + 1);
  }
}

void ListBox::setTopIndex(int line) {
  const int pulledIn = std::clamp(line, 0, std::max(0, listCount() - 1));
  if (pulledIn == topIndex_) return;
  topIndex_ = pulledIn;
  changed(Aspect::Value);
}

void ListBox::selectByUser(int line, std::vector<char> flags) {
  const bool differs = selection_ == Selection::Single ? line != listIndex_ : flags != selected_;
  listIndex_ = line;
  if (selection_ == Selection::Extended) selected_ = std::move(flags);
  changed(Aspect::Selection);
  if (differs) fire(onClick);
}

bool ListBox::userSelect(int line) { return userSelect(line, {line}); }

bool ListBox::userSelect(int line, const std::vector<int>& lines) {
  const bool done = items_.has(line) && userDoes(FocusFirst::Yes, [&] {
                      if (!items_.has(line)) return;
                      std::vector<char> flags(selected_.size(), 0);
                      for (const int selected : lines) {
                        if (items_.has(selected)) flags[at(selected)] = 1;
                      }
                      selectByUser(line, std::move(flags));
                    });
  if (!done) changed(Aspect::Selection);
  return done;
}

bool ListBox::userDblClick(int line) {
  bool done = false;
  const bool arrived = userDoes(FocusFirst::Yes, [&] {
    if (!items_.has(line)) return;
    std::vector<char> flags(selected_.size(), 0);
    flags[at(line)] = 1;
    selectByUser(line, std::move(flags));
    if (!usable()) return;
    done = true;
    fire(onDblClick);
  });
  if (!arrived) changed(Aspect::Selection);
  return done;
}

void ListBox::userScroll(int line) {
  setTopIndex(line);
  fire(onScroll);
}

char32_t ListBox::keyPressed(char32_t) {
  fire(onDblClick);
  return 0;
}

}  // namespace toolkit
