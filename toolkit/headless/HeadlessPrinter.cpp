#include "toolkit/headless/HeadlessPrinter.h"

#include <algorithm>
#include <utility>

#include "text/Utf8.h"

namespace toolkit::headless {

namespace {

// Twips for each point of the font size; a point is 20 twips.
constexpr int kCharacterWidth = 12;  // 0.6 times 20
constexpr int kLineHeight = 24;      // 1.2 times 20

}  // namespace

int HeadlessPrinter::textWidth(std::string_view text) {
  return static_cast<int>(text::length(text)) * kCharacterWidth * fontSize_;
}

int HeadlessPrinter::textHeight() { return kLineHeight * fontSize_; }

// A job that is open has that page at least.
void HeadlessPrinter::openPage(int page) {
  if (job_.pages == 0) job_.title = title_;
  job_.pages = std::max(job_.pages, page);
}

void HeadlessPrinter::print(std::string_view text, LineEnd end) {
  openPage(1);
  if (!text.empty()) {
    job_.pieces.push_back(
        {job_.pages, x_, y_, std::string(text), fontName_, fontSize_, bold_, underline_});
  }
  if (end == LineEnd::Stay) {
    x_ += textWidth(text);
  } else {
    x_ = 0;
    y_ += textHeight();
  }
}

void HeadlessPrinter::newPage() {
  openPage(job_.pages == 0 ? 2 : job_.pages + 1);
  x_ = 0;
  y_ = 0;
}

void HeadlessPrinter::endDoc() {
  if (job_.pages > 0) jobs_.push_back(std::exchange(job_, {}));
  x_ = 0;
  y_ = 0;
}

}  // namespace toolkit::headless
