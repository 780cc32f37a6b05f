#include "multivalue/Answer.h"

#include <algorithm>
#include <utility>

namespace multivalue {

namespace {

constexpr std::string_view kMarks{"\xFE\xFD", 2};
constexpr std::size_t kBytesOfWord = 7;
// Fewer rows are compared as they stand.
constexpr std::ptrdiff_t kFew = 12;

// Seven bytes of a text and how many there are, so that words compare as the texts do: a text that
// ends comes before one that goes on. Eight stands for more.
std::uint64_t wordOf(std::string_view text, std::size_t depth) {
  const std::size_t left = text.size() - depth;
  const char* const bytes = text.data() + depth;
  std::uint64_t word = 0;
  if (left > kBytesOfWord) {
    for (std::size_t i = 0; i < 8; ++i) word = word << 8 | static_cast<unsigned char>(bytes[i]);
    return (word & ~std::uint64_t{0xFF}) | (kBytesOfWord + 1);
  }
  for (std::size_t i = 0; i < left; ++i) word = word << 8 | static_cast<unsigned char>(bytes[i]);
  for (std::size_t i = left; i < kBytesOfWord; ++i) word <<= 8;
  return word << 8 | left;
}

bool goesOn(std::uint64_t word) { return (word & 0xFF) > kBytesOfWord; }

}  // namespace

void Answer::begin(Coming coming, int attribute) {
  settled_ = coming == Coming::ByKey && order_.empty();
  inTurn_ = coming == Coming::ByFirstValue && order_.size() == 1 && order_.front() == attribute;
  inOrder_ = true;
  const auto isColumn = [&](int asked) {
    return std::find(columns_.begin(), columns_.end(), asked) != columns_.end();
  };
  placeless_ = inTurn_ && isColumn(0) && isColumn(attribute);
  count_ = 0;
  text_.clear();
  starts_.clear();
  keys_.clear();
  pieces_.clear();
}

void Answer::outOfTurn() {
  inOrder_ = false;
  if (placeless_) findPlaces(text_.size());
}

// Is the value that the row just added is sorted by its own key?
bool Answer::standsAsItIs() {
  const std::string_view value = view(*ownPlace(order_.front()));
  return orderKey(value, room_).data() == value.data();
}

// Of the rows up to there, which stand as they are.
void Answer::findPlaces(std::size_t end) {
  placeless_ = false;
  std::vector<Piece> ofTheLast = std::move(places_);
  for (std::size_t at = 0; at < end;) {
    starts_.push_back(at);
    places_.clear();
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      const std::size_t mark = text_.find_first_of(kMarks, at);
      const std::size_t stop = std::min(mark, end);
      places_.push_back({at, static_cast<std::uint32_t>(stop - at), true});
      at = stop + 1;
    }
    for (const int attribute : order_) pieces_.push_back(*ownPlace(attribute));
    pieces_.push_back(*ownPlace(0));
  }
  places_ = std::move(ofTheLast);
}

const Answer::Piece* Answer::ownPlace(int attribute) const {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (columns_[i] == attribute) return &places_[i];
  }
  return nullptr;
}

bool Answer::lastIsInOrder() const {
  const std::size_t rows = starts_.size();
  return rows < 2 || comesBefore(rows - 2, rows - 1, 0);
}

bool Answer::comesBefore(std::size_t a, std::size_t b, std::size_t from) const {
  for (std::size_t i = from; i < perRow(); ++i) {
    const int comparison = piece(a, i).compare(piece(b, i));
    if (comparison != 0) return comparison < 0;
  }
  return false;
}

// Rows that are alike up to this place of this piece. Those that share their next bytes too are
// sorted by what follows, so that what many begin with is looked at once.
void Answer::sort(Rows first, Rows last, std::size_t number, std::size_t depth) const {
  if (last - first <= kFew) {
    std::sort(first, last,
              [&](const Row& a, const Row& b) { return comesBefore(a.number, b.number, number); });
    return;
  }
  for (auto row = first; row != last; ++row) row->word = wordOf(piece(row->number, number), depth);
  const auto smaller = [](const Row& a, const Row& b) { return a.word < b.word; };
  if (!std::is_sorted(first, last, smaller)) std::sort(first, last, smaller);
  while (first != last) {
    const auto word = first->word;
    const auto end = std::find_if(first, last, [&](const Row& row) { return row.word != word; });
    sortAlike(first, end, number, depth);
    first = end;
  }
}

void Answer::sortAlike(Rows first, Rows last, std::size_t number, std::size_t depth) const {
  if (last - first < 2) return;
  if (goesOn(first->word)) {
    sort(first, last, number, depth + kBytesOfWord);
  } else if (number + 1 < perRow()) {
    sort(first, last, number + 1, 0);
  }
}

std::string_view Answer::textOf(std::size_t row) const {
  const std::size_t end = row + 1 < starts_.size() ? starts_[row + 1] - 1 : text_.size();
  return std::string_view(text_).substr(starts_[row], end - starts_[row]);
}

store::DynamicArray Answer::take() {
  if (settled_ || inOrder_) return store::DynamicArray::taking(std::move(text_));
  std::vector<Row> rows(starts_.size());
  for (std::size_t i = 0; i < rows.size(); ++i) rows[i].number = i;
  sort(rows.begin(), rows.end(), 0, 0);
  std::string sorted;
  sorted.reserve(text_.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::size_t row = rows[i].number;
    // A record that was met under several of its values stands beside itself.
    if (i > 0 && piece(row, order_.size()) == piece(rows[i - 1].number, order_.size())) continue;
    if (i > 0) sorted += store::kAttributeMark;
    sorted += textOf(row);
  }
  return store::DynamicArray::taking(std::move(sorted));
}

}  // namespace multivalue
