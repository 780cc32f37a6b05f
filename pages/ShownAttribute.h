#pragma once

#include <string>
#include <string_view>

#include "store/DynamicArray.h"

namespace pages {

// Writes an attribute unless it holds that text already: a record saved unchanged keeps its text,
// and no empty attribute is put behind its last one.
inline void ecrireAttribut(store::DynamicArray& record, int attribute, std::string_view text) {
  if (record.get(attribute) != text) record.set(attribute, text);
}

// An attribute as it stands on screen. A field may show less than its attribute holds (value marks
// cannot stand in a field, and a code is shown by its label), so the attribute itself is written
// back while the field still shows what it was shown from.
class ShownAttribute {
 public:
  // The attribute has just been shown, and the field now holds `text`.
  void keep(std::string_view attribute, std::string_view text) {
    attribute_ = attribute;
    text_ = text;
  }
  bool stands(std::string_view text) const { return text == text_; }
  const std::string& attribute() const { return attribute_; }
  // What to write for a field that holds `text` now.
  std::string_view written(std::string_view text) const {
    return stands(text) ? std::string_view(attribute_) : text;
  }

 private:
  std::string attribute_;
  std::string text_;
};

}  // namespace pages
