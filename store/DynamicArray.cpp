#include "store/DynamicArray.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace store {
namespace {

// Below this size looking for a mark is quicker than remembering where it was.
constexpr std::size_t kLongText = 192;
// Up to this size a text is changed where it stands, whatever has to move for it.
constexpr std::size_t kShortWhole = 2048;
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

DynamicArray::DynamicArray(std::string_view text) : whole_(text) {}

DynamicArray DynamicArray::taking(std::string&& text) {
  DynamicArray array;
  array.whole_ = std::move(text);
  return array;
}

// --- Where attributes and values are

DynamicArray::Found DynamicArray::find(int attribute) const {
  requirePosition(attribute);
  const auto index = static_cast<std::size_t>(attribute) - 1;
  if (!apart_) return findInWhole(index);
  if (index >= attributes_.size()) return {};
  const Attribute& found = attributes_[index];
  return {found.text, found.text.size() < kLongText ? nullptr : &found.begins};
}

DynamicArray::Found DynamicArray::findInWhole(std::size_t index) const {
  const std::string_view whole = whole_;
  if (whole.empty()) return {};
  beginSearch();
  // One further than asked for, since that is where it ends.
  while (!allBegins_ && begins_.size() < index + 2) findNext();
  if (index >= begins_.size()) return {};
  const std::size_t begin = begins_[index];
  const std::size_t end = index + 1 < begins_.size() ? begins_[index + 1] - 1 : whole.size();
  Found found{whole.substr(begin, end - begin)};
  if (found.text.size() >= kLongText) {
    if (index >= valueBegins_.size()) valueBegins_.resize(index + 1);
    found.begins = &valueBegins_[index];
  }
  return found;
}

DynamicArray::Place DynamicArray::placeOf(const Found& attribute, int value) {
  const auto wanted = static_cast<std::size_t>(value);
  const std::string_view text = attribute.text;
  if (attribute.begins == nullptr) {
    Place place;
    for (; place.present < wanted; ++place.present) {
      const std::size_t mark = text.find(kValueMark, place.begin);
      if (mark == kNone) return {kNone, place.present};
      place.begin = mark + 1;
    }
    return place;
  }
  Begins& begins = *attribute.begins;
  if (begins.empty()) begins.push_back(0);
  while (begins.size() < wanted) {
    const std::size_t mark = text.find(kValueMark, begins.back());
    if (mark == kNone) return {kNone, begins.size()};
    begins.push_back(static_cast<std::uint32_t>(mark + 1));
  }
  return {begins[wanted - 1], wanted};
}

std::size_t DynamicArray::valuesIn(const Found& attribute) {
  if (attribute.text.empty()) return 0;
  if (attribute.begins == nullptr || attribute.begins->empty()) {
    return countOf(attribute.text, kValueMark) + 1;
  }
  const Begins& begins = *attribute.begins;
  return begins.size() + countOf(attribute.text.substr(begins.back()), kValueMark);
}

void DynamicArray::beginSearch() const {
  if (!begins_.empty()) return;
  constexpr std::size_t kOftenEnough = 16;
  begins_.reserve(kOftenEnough);
  begins_.push_back(0);
  allBegins_ = false;
}

void DynamicArray::findNext() const {
  const std::size_t mark = whole_.find(kAttributeMark, begins_.back());
  allBegins_ = mark == kNone;
  if (!allBegins_) begins_.push_back(mark + 1);
}

// How many attributes there are to write to; a text without any has an empty one.
std::size_t DynamicArray::reached() const {
  if (apart_) return attributes_.size();
  beginSearch();
  while (!allBegins_) findNext();
  return begins_.size();
}

// --- Changes

std::vector<DynamicArray::Attribute> DynamicArray::split(std::string_view text) {
  std::vector<Attribute> attributes;
  attributes.reserve(countOf(text, kAttributeMark) + 1);
  for (std::size_t begin = 0; begin != kNone;) {
    const std::size_t mark = text.find(kAttributeMark, begin);
    attributes.emplace_back().text = text.substr(begin, mark == kNone ? kNone : mark - begin);
    begin = mark == kNone ? kNone : mark + 1;
  }
  return attributes;
}

void DynamicArray::takeApart() {
  attributes_ = split(whole_);
  apart_ = true;
  whole_ = {};
  begins_ = {};
  valueBegins_ = {};
}

// Makes sure that an attribute is there, and gives back a text that is still valid then: growing
// moves what the array holds, and the text may be part of it.
std::string_view DynamicArray::reach(int attribute, std::string_view text, std::string& kept) {
  requirePosition(attribute);
  const auto wanted = static_cast<std::size_t>(attribute);
  const std::size_t present = reached();
  if (wanted <= present) return text;
  const std::size_t room = apart_ ? attributes_.capacity() : whole_.capacity();
  if ((apart_ ? wanted : whole_.size() + wanted - present) > room) {
    kept = text;
    text = kept;
  }
  if (apart_) {
    attributes_.resize(wanted);
    return text;
  }
  whole_.append(wanted - present, kAttributeMark);
  for (std::size_t i = wanted - present; i > 0; --i) begins_.push_back(whole_.size() + 1 - i);
  return text;
}

// Replaces bytes of an attribute that is there, by new ones that may be its own and that follow
// `marks` value marks. Attribute marks among them begin further attributes.
void DynamicArray::splice(int attribute, std::size_t offset, std::size_t size,
                          std::string_view text, std::size_t marks) {
  const auto index = static_cast<std::size_t>(attribute) - 1;
  if (!apart_ && index + 1 < reached() && whole_.size() <= kShortWhole) {
    spliceInside(index, offset, size, text, marks);
  } else if (!apart_ && index + 1 < reached()) {
    const std::string kept(text);
    takeApart();
    spliceApart(index, offset, size, kept, marks);
  } else if (apart_) {
    spliceApart(index, offset, size, text, marks);
  } else {
    spliceLast(offset, size, text, marks);
  }
}

void DynamicArray::spliceLast(std::size_t offset, std::size_t size, std::string_view text,
                              std::size_t marks) {
  const std::size_t index = begins_.size() - 1;
  if (index < valueBegins_.size()) forgetAfter(valueBegins_[index], offset);
  if (text.find(kAttributeMark) != kNone) allBegins_ = false;
  const std::size_t place = begins_[index] + offset;
  if (place == whole_.size() && whole_.size() + marks + text.size() <= whole_.capacity()) {
    // Nothing moves, so that the text may be a part of the array.
    whole_.append(marks, kValueMark).append(text);
    return;
  }
  whole_.replace(place, size, text);
  whole_.insert(place, marks, kValueMark);
}

void DynamicArray::spliceInside(std::size_t index, std::size_t offset, std::size_t size,
                                std::string_view text, std::size_t marks) {
  if (index < valueBegins_.size()) forgetAfter(valueBegins_[index], offset);
  const bool separates = text.find(kAttributeMark) != kNone;
  const std::size_t place = begins_[index] + offset;
  const std::size_t put = text.size() + marks;
  whole_.replace(place, size, text);
  whole_.insert(place, marks, kValueMark);
  if (separates) {
    begins_.clear();
    valueBegins_.clear();
    return;
  }
  for (std::size_t i = index + 1; i < begins_.size(); ++i) begins_[i] = begins_[i] + put - size;
}

void DynamicArray::spliceApart(std::size_t index, std::size_t offset, std::size_t size,
                               std::string_view text, std::size_t marks) {
  const auto place = attributes_.begin() + static_cast<std::ptrdiff_t>(index);
  const bool separates = text.find(kAttributeMark) != kNone;
  forgetAfter(place->begins, offset);
  place->text.replace(offset, size, text);
  place->text.insert(offset, marks, kValueMark);
  if (!separates) return;
  std::vector<Attribute> parts = split(place->text);
  *place = std::move(parts.front());
  attributes_.insert(place + 1, std::make_move_iterator(parts.begin() + 1),
                     std::make_move_iterator(parts.end()));
}

void DynamicArray::forgetAfter(Begins& begins, std::size_t offset) {
  begins.erase(std::upper_bound(begins.begin(), begins.end(), offset), begins.end());
}

// --- What is offered

std::string_view DynamicArray::get(int attribute) const {
  requirePosition(attribute);
  const auto past = static_cast<std::size_t>(attribute);
  if (!apart_ && attribute == 1 && begins_.empty() && whole_.size() < kLongText) {
    return std::string_view(whole_).substr(0, whole_.find(kAttributeMark));
  }
  if (apart_ || past >= begins_.size()) return find(attribute).text;
  return {whole_.data() + begins_[past - 1], begins_[past] - 1 - begins_[past - 1]};
}

std::string_view DynamicArray::get(int attribute, int value) const {
  requirePosition(value);
  std::string_view left = get(attribute);
  if (left.size() < kLongText) {
    for (; value > 1 && !left.empty(); --value) takeValue(left);
    return takeValue(left);
  }
  const Found found = find(attribute);
  const std::size_t begin = placeOf(found, value).begin;
  if (begin == kNone) return {};
  return found.text.substr(begin, endOfValue(found.text, begin) - begin);
}

// What is there already changes nothing, and takes nothing apart.
void DynamicArray::set(int attribute, std::string_view text) {
  std::string kept;
  text = reach(attribute, text, kept);
  const std::string_view held = find(attribute).text;
  if (held != text) splice(attribute, 0, held.size(), text);
}

void DynamicArray::set(int attribute, int value, std::string_view text) {
  requirePosition(value);
  std::string kept;
  text = reach(attribute, text, kept);
  const Found target = find(attribute);
  const Place place = placeOf(target, value);
  if (place.begin == kNone) {
    splice(attribute, target.text.size(), 0, text, static_cast<std::size_t>(value) - place.present);
    return;
  }
  const std::size_t size = endOfValue(target.text, place.begin) - place.begin;
  if (target.text.substr(place.begin, size) != text) splice(attribute, place.begin, size, text);
}

int DynamicArray::DCount() const {
  const std::size_t count = reached();
  const bool none = count == 1 && (apart_ ? attributes_.front().text.empty() : whole_.empty());
  return none ? 0 : static_cast<int>(count);
}

int DynamicArray::DCount(int attribute) const {
  return static_cast<int>(valuesIn(find(attribute)));
}

void DynamicArray::Insert(int attribute, int value, std::string_view text) {
  requirePosition(value);
  const Found found = find(attribute);
  const std::size_t begin = found.text.empty() ? kNone : placeOf(found, value).begin;
  if (begin == kNone) {
    set(attribute, value, text);
  } else {
    splice(attribute, begin, 0, std::string(text) + kValueMark);
  }
}

void DynamicArray::Delete(int attribute, int value) {
  requirePosition(value);
  const Found found = find(attribute);
  const std::size_t begin = placeOf(found, value).begin;
  if (found.text.empty() || begin == kNone) return;
  const std::size_t end = endOfValue(found.text, begin);
  if (end < found.text.size()) {
    splice(attribute, begin, end + 1 - begin, {});
  } else if (begin > 0) {
    splice(attribute, begin - 1, end + 1 - begin, {});
  } else {
    splice(attribute, 0, end, {});
  }
}

void DynamicArray::dropEmptyEnd(int kept) {
  if (apart_) {
    while (std::ssize(attributes_) > kept && attributes_.back().text.empty())
      attributes_.pop_back();
    return;
  }
  for (auto left = static_cast<int>(reached()); left > std::max(kept, 1); --left) {
    if (begins_.back() < whole_.size()) return;
    whole_.pop_back();
    begins_.pop_back();
  }
}

std::string DynamicArray::text() const {
  if (!apart_) return whole_;
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

void DynamicArray::setText(std::string_view text) { *this = DynamicArray(text); }

bool DynamicArray::empty() const { return apart_ ? DCount() == 0 : whole_.empty(); }

bool DynamicArray::operator==(const DynamicArray& other) const {
  if (!apart_ && !other.apart_) return whole_ == other.whole_;
  return text() == other.text();
}

}  // namespace store
