#include "agreements/PrintedSheet.h"

#include "toolkit/Trap.h"

namespace agreements {

using LineEnd = toolkit::Printer::LineEnd;

void PrintedSheet::font(std::string_view name, int points) {
  trapped([&] { printer_.setFontName(name); });
  trapped([&] { printer_.setFontSize(points); });
}

void PrintedSheet::bold(bool bold) {
  trapped([&] { printer_.setBold(bold); });
}

void PrintedSheet::underline(bool underline) {
  trapped([&] { printer_.setUnderline(underline); });
}

void PrintedSheet::place(int leftCm, int topCm) {
  left(leftCm);
  topTwips(topCm * kTwipsPerCentimetre);
}

void PrintedSheet::left(int leftCm) { leftTwips(leftCm * kTwipsPerCentimetre); }

void PrintedSheet::leftTwips(int twips) {
  trapped([&] { printer_.setCurrentX(twips); });
}

void PrintedSheet::topTwips(int twips) {
  trapped([&] { printer_.setCurrentY(twips); });
}

void PrintedSheet::write(std::string_view text) {
  const std::string_view rest = brokenOff(text);
  trapped([&] { printer_.print(rest, LineEnd::Stay); });
}

void PrintedSheet::line(std::string_view text) {
  const std::string_view rest = brokenOff(text);
  trapped([&] { printer_.print(rest, LineEnd::Break); });
}

void PrintedSheet::centred(std::string_view text) {
  trapped([&] { printer_.setCurrentX((printer_.pageWidth() - printer_.textWidth(text)) / 2); });
  trapped([&] { printer_.print(text, LineEnd::Break); });
}

void PrintedSheet::newPage() {
  trapped([&] { printer_.newPage(); });
}

void PrintedSheet::endDoc() {
  trapped([&] { printer_.endDoc(); });
}

bool PrintedSheet::reached(int twipsFromBottom) {
  bool reached = false;
  trapped([&] { reached = printer_.currentY() >= printer_.pageHeight() - twipsFromBottom; });
  return reached;
}

int PrintedSheet::widthOf(std::string_view text) {
  int width = 0;
  trapped([&] { width = printer_.textWidth(text); });
  return width;
}

int PrintedSheet::pageWidth() {
  int width = 0;
  trapped([&] { width = printer_.pageWidth(); });
  return width;
}

void PrintedSheet::trapped(const std::function<void()>& call) {
  toolkit::quietly(procedure_, call);
}

// Prints the lines that the text fills up to the right edge and gives what is left of it.
std::string_view PrintedSheet::brokenOff(std::string_view text) {
  trapped([&] {
    const int right = printer_.pageWidth();
    const auto fits = [&](std::string_view part) {
      const std::size_t end = part.find_last_not_of(' ') + 1;  // blanks at the end do not show
      return printer_.currentX() + printer_.textWidth(part.substr(0, end)) <= right;
    };
    while (!fits(text)) {
      std::size_t blank = text.find_last_of(' ');
      while (blank != text.npos && blank > 0 && !fits(text.substr(0, blank))) {
        blank = text.find_last_of(' ', blank - 1);
      }
      if (blank == text.npos || blank == 0) return;
      printer_.print(text.substr(0, blank), LineEnd::Break);
      text.remove_prefix(blank + 1);
      printer_.setCurrentX(margin_);
    }
  });
  return text;
}

}  // namespace agreements
