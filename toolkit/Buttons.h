// Command button, option button and check box.
#pragma once

#include "toolkit/Control.h"

namespace toolkit {

// The user's click on each of them moves the focus there first; false when it was dropped.
// That is all it does to an option or check box that is read-only.

class CommandButton : public Control {
 public:
  CommandButton(Container* parent, std::string name, std::string_view caption = {});
  Handler onClick;
  bool userClick();

 private:
  void pressed() override;
};

class OptionButton : public Control {
 public:
  OptionButton(Container* parent, std::string name, std::string_view caption = {});
  bool value() const { return value_; }
  // Becoming set clears the other options of its frame (those with the same parent) silently and
  // fires Click; being cleared fires nothing.
  void setValue(bool value);
  Handler onClick;
  bool userClick();

 private:
  void pressed() override;

  bool value_ = false;
};

class CheckBox : public Control {
 public:
  CheckBox(Container* parent, std::string name, std::string_view caption = {});
  bool value() const { return value_; }
  // Another value fires Click.
  void setValue(bool value);
  Handler onClick;
  bool userClick();

 private:
  void pressed() override;

  bool value_ = false;
};

}  // namespace toolkit
