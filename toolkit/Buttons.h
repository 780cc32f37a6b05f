// Command button, option button and check box.
#pragma once

#include "toolkit/Control.h"

namespace toolkit {

class CommandButton : public Control {
 public:
  CommandButton(Container* parent, std::string name, std::string_view caption = {});
  Handler onClick;
  void userClick();
};

class OptionButton : public Control {
 public:
  OptionButton(Container* parent, std::string name, std::string_view caption = {});
  bool value() const { return value_; }
  // Becoming set clears the other options of its frame silently and fires Click.
  void setValue(bool value);
  Handler onClick;
  void userClick();

 private:
  bool value_ = false;
};

class CheckBox : public Control {
 public:
  CheckBox(Container* parent, std::string name, std::string_view caption = {});
  bool value() const { return value_; }
  // Another value fires Click.
  void setValue(bool value);
  Handler onClick;
  void userClick();

 private:
  bool value_ = false;
};

}  // namespace toolkit
