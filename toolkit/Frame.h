// Frame and label.
#pragma once

#include "toolkit/Control.h"

namespace toolkit {

class Frame : public Container {
 public:
  Frame(Container* parent, std::string name, std::string_view caption = {});
};

// Its mnemonic belongs to the control created after it in the same container.
class Label : public Control {
 public:
  Label(Container* parent, std::string name, std::string_view caption = {});
  bool centered() const { return centered_; }
  void setCentered(bool centered);

 private:
  bool centered_ = false;
};

}  // namespace toolkit
