#pragma once

#include <chrono>
#include <ostream>

namespace storetool {

// A bar on one line of a terminal, for work that lasts: nothing is shown of work that is done
// within a third of a second.
class ProgressBar {
 public:
  // Shows nothing at all when not enabled.
  ProgressBar(std::ostream& terminal, bool enabled);
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  // Takes the bar off the line again.
  ~ProgressBar();

  // From 0 to 1.
  void show(double done);

 private:
  std::ostream& terminal_;
  bool enabled_;
  int percent_ = -1;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace storetool
