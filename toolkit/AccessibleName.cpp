#include "toolkit/AccessibleName.h"

#include <algorithm>

namespace toolkit {

namespace {

std::string words(const std::string& caption) {
  std::string read;
  for (const char character : withoutMnemonic(caption)) {
    if (character != ' ') {
      read += character;
    } else if (!read.empty() && read.back() != ' ') {
      read += ' ';
    }
  }
  if (!read.empty() && read.back() == ' ') read.pop_back();
  return read;
}

std::string group(const Control& control) {
  const Container* parent = control.parent();
  return parent && parent->kind() == Kind::Frame ? words(parent->caption()) : std::string();
}

// The last one before it among the controls of its container.
const Control* labelBefore(const Control& control) {
  const Control* label = nullptr;
  if (!control.parent()) return label;
  for (const Control* sibling : control.parent()->children()) {
    if (sibling == &control) break;
    if (sibling->kind() == Kind::Label) label = sibling;
  }
  return label;
}

std::string nameOf(const Control& control) {
  switch (control.kind()) {
    case Kind::TextBox:
    case Kind::ComboBox:
    case Kind::ListBox:
    case Kind::ScrollBar: {
      const Control* label = control.label() ? control.label() : labelBefore(control);
      return label ? words(label->caption()) : group(control);
    }
    case Kind::OptionButton: {
      const std::string around = group(control);
      const std::string own = words(control.caption());
      return around.empty() ? own : around + ", " + own;
    }
    default:
      return words(control.caption());
  }
}

}  // namespace

std::string accessibleName(const Control& control) {
  const std::string name = nameOf(control);
  return control.remark().empty() ? name : name + ", " + control.remark();
}

}  // namespace toolkit
