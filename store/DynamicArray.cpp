#include "store/DynamicArray.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace store {
namespace {

// Below this size looking for a mark is quicker than remembering where it was.
constexpr std::size_t kLongText = 192;
constexpr std::size_t kNone = std::string::npos;

void requirePosition(int position) {
  if (position < 1) throw std::invalid_argument("Positions in a dynamic array begin at 1.");
}

std::size_t endOfValue(std::string_view text, std::size_t begin) {
  return std::min(text.find(kValueMark, begin), text.size());
}

std::size_t countOf(std::string_view text, char mark) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), mark));
}

}  // namespace

DynamicArray NewDynamicArray() { return {}; }

DynamicArray::DynamicArray(std::string_view text) { setText(text); }

const DynamicArray::Attribute* DynamicArray::find(int attribute) const {
  requirePosition(attribute);
  const auto index = static_cast<std::size_t>(attribute) - 1;
  return index < attributes_.size() ? &attributes_[index] : nullptr;
}

// Offset of a value's first byte; kNone past the last value.
std::size_t DynamicArray::beginOf(const Attribute& attribute, int value) {
  requirePosition(value);
  const std::string& text = attribute.text;
  if (text.size() < kLongText) {
    std::size_t begin = 0;
    for (int i = 1; i < value; ++i) {
      const std::size_t mark = text.find(kValueMark, begin);
      if (mark == kNone) return kNone;
      begin = mark + 1;
    }
    return begin;
  }
  auto& begins = attribute.begins;
  const auto wanted = static_cast<std::size_t>(value);
  if (begins.empty()) begins.push_back(0);
  while (begins.size() < wanted) {
    const std::size_t mark = text.find(kValueMark, begins.back());
    if (mark == kNone) return kNone;
    begins.push_back(static_cast<std::uint32_t>(mark + 1));
  }
  return begins[wanted - 1];
}

std::size_t DynamicArray::valuesIn(const Attribute& attribute) {
  if (attribute.text.empty()) return 0;
  if (attribute.begins.empty()) return countOf(attribute.text, kValueMark) + 1;
  const std::string_view rest = std::string_view(attribute.text).substr(attribute.begins.back());
  return attribute.begins.size() + countOf(rest, kValueMark);
}

// Replaces bytes of an attribute that is there; the new ones may be its own. Attribute marks among
// them begin further attributes.
void DynamicArray::splice(int attribute, std::size_t offset, std::size_t size,
                          std::string_view text) {
  const auto place = attributes_.begin() + attribute - 1;
  const bool separates = text.find(kAttributeMark) != kNone;
  place->begins.erase(std::upper_bound(place->begins.begin(), place->begins.end(), offset),
                      place->begins.end());
  place->text.replace(offset, size, text);
  if (!separates) return;
  DynamicArray parts(place->text);
  *place = std::move(parts.attributes_.front());
  attributes_.insert(place + 1, std::make_move_iterator(parts.attributes_.begin() + 1),
                     std::make_move_iterator(parts.attributes_.end()));
}

// Makes sure that an attribute is there, and gives back a text that is still valid then: growing
// moves what the array holds, and the text may be part of it.
std::string_view DynamicArray::reach(int attribute, std::string_view text, std::string& kept) {
  requirePosition(attribute);
  const auto count = static_cast<std::size_t>(attribute);
  if (count <= attributes_.size()) return text;
  if (count > attributes_.capacity()) {
    kept = text;
    text = kept;
  }
  attributes_.resize(count);
  return text;
}

std::string_view DynamicArray::get(int attribute) const {
  const Attribute* found = find(attribute);
  return found ? std::string_view(found->text) : std::string_view();
}

std::string_view DynamicArray::get(int attribute, int value) const {
  requirePosition(value);
  const Attribute* found = find(attribute);
  const std::size_t begin = found ? beginOf(*found, value) : kNone;
  if (begin == kNone) return {};
  const std::string_view text = found->text;
  return text.substr(begin, endOfValue(text, begin) - begin);
}

void DynamicArray::set(int attribute, std::string_view text) {
  std::string kept;
  text = reach(attribute, text, kept);
  splice(attribute, 0, find(attribute)->text.size(), text);
}

void DynamicArray::set(int attribute, int value, std::string_view text) {
  requirePosition(value);
  std::string kept;
  text = reach(attribute, text, kept);
  const Attribute& target = *find(attribute);
  const std::size_t begin = beginOf(target, value);
  if (begin != kNone) {
    splice(attribute, begin, endOfValue(target.text, begin) - begin, text);
    return;
  }
  const std::size_t present = std::max<std::size_t>(valuesIn(target), 1);
  const std::size_t end = target.text.size();
  splice(attribute, end, 0, text);
  attributes_[static_cast<std::size_t>(attribute) - 1].text.insert(
      end, static_cast<std::size_t>(value) - present, kValueMark);
}

int DynamicArray::DCount() const {
  if (attributes_.size() == 1 && attributes_.front().text.empty()) return 0;
  return static_cast<int>(attributes_.size());
}

int DynamicArray::DCount(int attribute) const {
  const Attribute* found = find(attribute);
  return found ? static_cast<int>(valuesIn(*found)) : 0;
}

void DynamicArray::Insert(int attribute, int value, std::string_view text) {
  requirePosition(value);
  const Attribute* found = find(attribute);
  const std::size_t begin = found && !found->text.empty() ? beginOf(*found, value) : kNone;
  if (begin == kNone) {
    set(attribute, value, text);
  } else {
    splice(attribute, begin, 0, std::string(text) + kValueMark);
  }
}

void DynamicArray::Delete(int attribute, int value) {
  requirePosition(value);
  const Attribute* found = find(attribute);
  const std::size_t begin = found ? beginOf(*found, value) : kNone;
  if (begin == kNone) return;
  const std::size_t end = endOfValue(found->text, begin);
  if (end < found->text.size()) {
    splice(attribute, begin, end + 1 - begin, {});
  } else if (begin > 0) {
    splice(attribute, begin - 1, end + 1 - begin, {});
  } else {
    splice(attribute, 0, end, {});
  }
}

void DynamicArray::dropEmptyEnd(int kept) {
  while (std::ssize(attributes_) > kept && attributes_.back().text.empty()) attributes_.pop_back();
}

std::string DynamicArray::text() const {
  std::size_t size = attributes_.size();
  for (const Attribute& attribute : attributes_) size += attribute.text.size();
  std::string out;
  out.reserve(size);
  for (std::size_t i = 0; i < attributes_.size(); ++i) {
    if (i > 0) out += kAttributeMark;
    out += attributes_[i].text;
  }
  return out;
}

void DynamicArray::setText(std::string_view text) {
  std::vector<Attribute> attributes;
  if (!text.empty()) attributes.reserve(countOf(text, kAttributeMark) + 1);
  for (std::size_t begin = 0; !text.empty() && begin != kNone;) {
    const std::size_t mark = text.find(kAttributeMark, begin);
    attributes.emplace_back().text = text.substr(begin, mark == kNone ? kNone : mark - begin);
    begin = mark == kNone ? kNone : mark + 1;
  }
  attributes_ = std::move(attributes);
}

bool DynamicArray::empty() const { return DCount() == 0; }

}  // namespace store
