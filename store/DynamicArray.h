// The store's record and list value: attributes numbered from 1, each holding values numbered
// from 1. As one text, attributes are separated by the attribute mark, values by the value mark.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace store {

// Bytes that UTF-8 never holds, so that no text can be taken for a mark.
inline constexpr char kAttributeMark = static_cast<char>(0xFE);
inline constexpr char kValueMark = static_cast<char>(0xFD);

// A value type. Positions below 1 throw std::invalid_argument; reading past the end gives "".
// Reading attribute after attribute or value after value, and appending, take constant time each.
// It is one text at heart: a mark inside an assigned text separates, as if it had been there
// before. What get() gives is valid until the array is changed or goes.
class DynamicArray {
 public:
  DynamicArray() = default;
  explicit DynamicArray(std::string_view text);
  // Of a text that need not be copied.
  static DynamicArray taking(std::string&& text);

  std::string_view get(int attribute) const;
  std::string_view get(int attribute, int value) const;
  // Past the end, the array is extended with empty attributes or values.
  void set(int attribute, std::string_view text);
  void set(int attribute, int value, std::string_view text);

  int DCount() const;               // attributes; 0 of an empty array
  int DCount(int attribute) const;  // values; 0 of an empty attribute
  // Inserts a value before the one at that position; the following ones move up. Into an empty
  // attribute at position 1, the text becomes its only value; past the end it is like set().
  void Insert(int attribute, int value, std::string_view text);
  // Removes a value; the following ones move down. Nothing happens past the end.
  void Delete(int attribute, int value);
  // Removes empty attributes at the end, as long as there are more than `kept` attributes.
  void dropEmptyEnd(int kept);

  std::string text() const;
  void setText(std::string_view text);
  bool empty() const;  // the full text is ""

  bool operator==(const DynamicArray& other) const;

 private:
  // Where the first values of a long text begin, as far as they have been looked for.
  using Begins = std::vector<std::uint32_t>;
  struct Attribute {
    std::string text;
    mutable Begins begins;
  };
  struct Found {
    std::string_view text;
    Begins* begins = nullptr;  // of a long text
  };
  struct Place {
    std::size_t begin = 0;    // npos past the last value
    std::size_t present = 1;  // then, how many values there are
  };

  static Place placeOf(const Found& attribute, int value);
  static std::size_t valuesIn(const Found& attribute);
  static std::vector<Attribute> split(std::string_view text);
  static void forgetAfter(Begins& begins, std::size_t offset);
  Found find(int attribute) const;
  Found findInWhole(std::size_t index) const;
  void beginSearch() const;
  void findNext() const;
  std::size_t reached() const;
  void takeApart();
  std::string_view reach(int attribute, std::string_view text, std::string& kept);
  void splice(int attribute, std::size_t offset, std::size_t size, std::string_view text,
              std::size_t marks = 0);
  void spliceLast(std::size_t offset, std::size_t size, std::string_view text, std::size_t marks);
  void spliceInside(std::size_t index, std::size_t offset, std::size_t size, std::string_view text,
                    std::size_t marks);
  void spliceApart(std::size_t index, std::size_t offset, std::size_t size, std::string_view text,
                   std::size_t marks);

  // Read, appended to, or short, it is one text, and where attributes begin is found when asked
  // for. A change before the last attribute takes a longer one apart.
  bool apart_ = false;
  std::string whole_;
  mutable std::vector<std::size_t> begins_;  // of the first attributes
  mutable bool allBegins_ = false;           // of all of them
  mutable std::vector<Begins> valueBegins_;  // by attribute
  std::vector<Attribute> attributes_;        // taken apart
};

DynamicArray NewDynamicArray();

// Takes the first value from an attribute's text, with the mark behind it; "" from an empty one.
// So one walks through many values without their places being looked for.
inline std::string_view takeValue(std::string_view& attribute) {
  std::size_t size = 0;
  while (size < attribute.size() && attribute[size] != kValueMark) ++size;
  const std::string_view value = attribute.substr(0, size);
  attribute.remove_prefix(size < attribute.size() ? size + 1 : size);
  return value;
}

}  // namespace store
