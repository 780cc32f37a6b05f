#include "storetool/ProgressBar.h"

#include <string>

namespace storetool {

namespace {

constexpr int kWidth = 40;
constexpr std::chrono::milliseconds kPatience(333);

}  // namespace

ProgressBar::ProgressBar(std::ostream& terminal, bool enabled)
    : terminal_(terminal), enabled_(enabled) {}

ProgressBar::~ProgressBar() {
  if (percent_ >= 0) terminal_ << '\r' << std::string(kWidth + 8, ' ') << '\r' << std::flush;
}

void ProgressBar::show(double done) {
  if (!enabled_ || std::chrono::steady_clock::now() - start_ < kPatience) return;
  const int percent = static_cast<int>(done * 100);
  if (percent == percent_) return;
  percent_ = percent;
  const int filled = percent * kWidth / 100;
  terminal_ << "\r[" << std::string(static_cast<std::size_t>(filled), '#')
            << std::string(static_cast<std::size_t>(kWidth - filled), ' ') << "] " << percent
            << " %" << std::flush;
}

}  // namespace storetool
