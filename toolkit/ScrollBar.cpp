#include "toolkit/ScrollBar.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace toolkit {

ScrollBar::ScrollBar(Container* parent, std::string name, Direction direction)
    : Control(parent, Kind::ScrollBar, std::move(name)), direction_(direction) {}

int ScrollBar::pulledIn(int value) const {
  return max_ < min_ ? min_ : std::clamp(value, min_, max_);
}

void ScrollBar::setValue(int value) {
  if (value == value_) return;
  resetValue(value);
  fire(onChange);
}

void ScrollBar::resetValue(int value) {
  if (value == value_) return;
  if (value < min_ || value > max_) throw std::invalid_argument("outside the scroll bar's range");
  value_ = value;
  changed(Aspect::Value);
}

void ScrollBar::setRange(int min, int max) {
  if (min == min_ && max == max_) return;
  min_ = min;
  max_ = max;
  value_ = pulledIn(value_);
  changed(Aspect::Range);
}

void ScrollBar::setLargeChange(int change) {
  if (change == largeChange_) return;
  largeChange_ = change;
  changed(Aspect::Range);
}

bool ScrollBar::userScroll(int value) {
  const bool done = userDoes(FocusFirst::Yes, [&] {
    const int accepted = pulledIn(value);
    if (accepted != value) changed(Aspect::Value);
    setValue(accepted);
  });
  if (!done) changed(Aspect::Value);
  return done;
}

}  // namespace toolkit
