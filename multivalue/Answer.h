// What a selection finds, put together as one text and in the order asked for: a store may find a
// million records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "multivalue/Comparison.h"
#include "store/DynamicArray.h"

namespace multivalue {

class Answer {
 public:
  // Attribute numbers, 0 for the key; both lists must outlive it.
  Answer(const std::vector<int>& columns, const std::vector<int>& order)
      : columns_(columns), order_(order) {
    places_.reserve(columns.size());
    pieces_.reserve(perRow());
  }

  // The order in which records are added, each once.
  enum class Coming { ByKey, ByFirstValue, AsItMay };

  // Forgets what was found. Of one that comes AsItMay, or outOfTurn, the place has to be found, and
  // it may be added again. ByFirstValue: by that of `attribute` byte by byte, then by the key.
  void begin(Coming coming, int attribute = 0);
  void outOfTurn();
  // `valueOf` gives the first value of an attribute, the key for 0. A record that is added again
  // counts once.
  template <typename ValueOf>
  void add(const ValueOf& valueOf) {
    if (count_++ > 0) text_ += store::kAttributeMark;
    const std::size_t start = text_.size();
    places_.clear();
    for (const int attribute : columns_) {
      if (!places_.empty()) text_ += store::kValueMark;
      const std::string_view value = valueOf(attribute);
      places_.push_back({text_.size(), static_cast<std::uint32_t>(value.size()), true});
      text_ += value;
    }
    if (settled_ || (placeless_ && standsAsItIs())) return;
    if (placeless_) findPlaces(start == 0 ? 0 : start - 1);
    starts_.push_back(start);
    bool asItStands = true;
    for (const int attribute : order_) asItStands &= addKey(attribute, valueOf, true);
    addKey(0, valueOf, false);
    inOrder_ = inOrder_ && (inTurn_ ? asItStands : lastIsInOrder());
  }
  // One attribute a record, its values the columns; by the order asked for, then by the key. Once.
  store::DynamicArray take();

 private:
  struct Piece {
    std::size_t start = 0;
    std::uint32_t size = 0;
    bool inText = false;  // or else in keys_
  };
  struct Row {
    std::uint64_t word = 0;  // of the piece that is sorted by just then
    std::size_t number = 0;
  };
  using Rows = std::vector<Row>::iterator;

  // What is in the text already is not kept twice. Is the key the value as it stands?
  template <typename ValueOf>
  bool addKey(int attribute, const ValueOf& valueOf, bool forOrder) {
    const Piece* const own = ownPlace(attribute);
    const std::string_view value = own != nullptr ? view(*own) : valueOf(attribute);
    const std::string_view key = forOrder ? orderKey(value, room_) : value;
    const bool asItStands = key.data() == value.data();
    if (own != nullptr && asItStands) {
      pieces_.push_back(*own);
    } else {
      pieces_.push_back({keys_.size(), static_cast<std::uint32_t>(key.size()), false});
      keys_ += key;
    }
    return asItStands;
  }

  std::string_view view(const Piece& piece) const {
    return {(piece.inText ? text_ : keys_).data() + piece.start, piece.size};
  }
  std::size_t perRow() const { return order_.size() + 1; }
  std::string_view piece(std::size_t row, std::size_t number) const {
    return view(pieces_[row * perRow() + number]);
  }
  const Piece* ownPlace(int attribute) const;
  bool standsAsItIs();
  void findPlaces(std::size_t end);
  bool lastIsInOrder() const;
  bool comesBefore(std::size_t a, std::size_t b, std::size_t from) const;
  void sort(Rows first, Rows last, std::size_t number, std::size_t depth) const;
  void sortAlike(Rows first, Rows last, std::size_t number, std::size_t depth) const;
  std::string_view textOf(std::size_t row) const;

  const std::vector<int>& columns_;
  const std::vector<int>& order_;
  bool settled_ = false;  // nothing is sorted, and no record comes twice
  bool inTurn_ = false;   // records come in the order asked for where keys are texts as they stand
  bool inOrder_ = true;   // as far as added, which leaves none twice
  // In turn, and sorted by what is in the text: nothing else has to be known of the rows.
  bool placeless_ = false;
  std::size_t count_ = 0;
  std::string text_;
  std::vector<std::size_t> starts_;  // of the rows in the text
  std::string keys_;
  std::vector<Piece> pieces_;  // of each row, what it is sorted by
  std::vector<Piece> places_;  // of the columns of the row that is added
  std::string room_;
};

}  // namespace multivalue
