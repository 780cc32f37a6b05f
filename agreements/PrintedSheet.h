#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "toolkit/Printer.h"

namespace agreements {

inline constexpr int kTwipsPerCentimetre = 567;

// A document on its way to a printer. Each call is trapped by itself, under the procedure's name:
// what the printer refuses is left out and the next call goes on. The printer and the name must
// outlive it.
class PrintedSheet {
 public:
  PrintedSheet(toolkit::Printer& printer, std::string_view procedure)
      : printer_(printer), procedure_(procedure) {}

  void font(std::string_view name, int points);
  void bold(bool bold);
  void underline(bool underline);

  // The next text begins there; whole centimetres from the upper left corner.
  void place(int leftCm, int topCm);
  void left(int leftCm);
  void leftTwips(int twips);
  void topTwips(int twips);

  // A text that would pass the right edge of the page is broken at the last blank that fits; the
  // rest goes on in the next line, at the margin. Without such a blank it stays whole.
  void margin(int leftCm) { margin_ = leftCm * kTwipsPerCentimetre; }
  void write(std::string_view text);  // the next text follows on the same line
  void line(std::string_view text);   // the next text begins on the next line, at the left edge
  // On a line of its own, in the middle of the page.
  void centred(std::string_view text);

  void newPage();
  void endDoc();

  // Has the position reached this distance from the bottom of the page? False when the printer
  // cannot tell.
  bool reached(int twipsFromBottom);
  // Twips of a text, or of the page; 0 when the printer cannot tell.
  int widthOf(std::string_view text);
  int pageWidth();

 private:
  void trapped(const std::function<void()>& call);
  std::string_view brokenOff(std::string_view text);

  toolkit::Printer& printer_;
  std::string_view procedure_;
  int margin_ = 0;
};

}  // namespace agreements
