#pragma once

#include "toolkit/Control.h"

namespace toolkit {

// Takes the focus when it is clicked; Tab passes it by unless setTabStop says otherwise.
class ScrollBar : public Control {
 public:
  enum class Direction { Vertical, Horizontal };
  ScrollBar(Container* parent, std::string name, Direction direction);

  Direction direction() const { return direction_; }
  int value() const { return value_; }
  // Another value fires Change. Throws std::invalid_argument outside the range (any value is
  // outside an empty one, but the one it has).
  void setValue(int value);
  // The same without an event.
  void resetValue(int value);
  int min() const { return min_; }
  int max() const { return max_; }
  // Pulls the value in silently; a maximum below the minimum (an empty list) is allowed.
  void setRange(int min, int max);
  int largeChange() const { return largeChange_; }
  void setLargeChange(int change);

  Handler onChange;
  // The user scrolls; a value outside the range is pulled in. Moves the focus there first, as a
  // click on a scroll bar does; false when it was dropped.
  bool userScroll(int value);

 private:
  int pulledIn(int value) const;

  Direction direction_;
  int value_ = 0;
  int min_ = 0;
  int max_ = 0;
  int largeChange_ = 1;
};

}  // namespace toolkit
