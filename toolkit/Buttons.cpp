#include "toolkit/Buttons.h"

#include <utility>

namespace toolkit {

CommandButton::CommandButton(Container* parent, std::string name, std::string_view caption)
    : Control(parent, Kind::CommandButton, std::move(name)) {
  setCaption(caption);
}

void CommandButton::pressed() { fire(onClick); }

bool CommandButton::userClick() {
  return userDoes(FocusFirst::Yes, [this] { pressed(); });
}

OptionButton::OptionButton(Container* parent, std::string name, std::string_view caption)
    : Control(parent, Kind::OptionButton, std::move(name)) {
  setCaption(caption);
}

void OptionButton::setValue(bool value) {
  if (value == value_) return;
  if (value && parent()) {
    for (Control* sibling : parent()->children()) {
      if (sibling == this || sibling->kind() != Kind::OptionButton) continue;
      static_cast<OptionButton*>(sibling)->setValue(false);
    }
  }
  value_ = value;
  changed(Aspect::Value);
  if (value) fire(onClick);
}

void OptionButton::pressed() {
  if (mayChange()) setValue(true);
}

bool OptionButton::userClick() {
  return userDoes(FocusFirst::Yes, [this] { pressed(); });
}

CheckBox::CheckBox(Container* parent, std::string name, std::string_view caption)
    : Control(parent, Kind::CheckBox, std::move(name)) {
  setCaption(caption);
}

void CheckBox::setValue(bool value) {
  if (value == value_) return;
  value_ = value;
  changed(Aspect::Value);
  fire(onClick);
}

void CheckBox::pressed() {
  if (mayChange()) setValue(!value_);
}

bool CheckBox::userClick() {
  return userDoes(FocusFirst::Yes, [this] { pressed(); });
}

}  // namespace toolkit
