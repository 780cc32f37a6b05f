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
  // The heading of a column of numbers: ends where they end, not at the edge. Set before it is
  // shown; not of one that is centred.
  bool rightAligned() const { return rightAligned_; }
  void setRightAligned() { rightAligned_ = true; }

 private:
  bool centered_ = false;
  bool rightAligned_ = false;
};

}  // namespace toolkit
