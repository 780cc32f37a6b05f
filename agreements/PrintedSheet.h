#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/Printer.h"

namespace agreements {

inline constexpr int kTwipsPerCentimetre = 567;

// A document on its way to a printer. Each call is trapped by itself, under the procedure's name:
// what the printer refuses is left out and the next call goes on. The printer and the name must
// outlive it.
class PrintedSheet {
 public:
  // Texts of one style follow each other on a line.
  struct Passage {
    std::string text;
    bool bold = false;
    bool underline = false;
  };
  using Line = std::vector<Passage>;

  PrintedSheet(toolkit::Printer& printer, std::string_view procedure)
      : printer_(printer), procedure_(procedure) {}

  // The name of the print job that the next text begins.
  void title(std::string_view title);
  void font(std::string_view name, int points);
  // Of the texts that come without a style of their own.
  void bold(bool bold) { style_.bold = bold; }
  void underline(bool underline) { style_.underline = underline; }

  // Leaves that much of the paper free on the left and on the right, where the printer would print
  // nearer to its edges. From then on the sheet ends there.
  void keepOffEdges(int twips);

  // The next text begins there; whole centimetres from the upper left corner.
  void place(int leftCm, int topCm);
  void left(int leftCm);
  void leftTwips(int twips);
  void topTwips(int twips);

  // Where a paragraph's lines begin, but the first.
  void margin(int leftCm) { margin_ = leftCm * kTwipsPerCentimetre; }
  // Lines that stand as they are while they fit. What would pass the right edge of the page goes on
  // in the next line, before its text; at the end, in lines of its own. A word that fits in no line
  // stays whole. The next text begins below.
  void paragraph(const std::vector<Line>& lines);
  // A paragraph of one line.
  void line(std::string_view text);
  void write(std::string_view text);  // the next text follows on the same line
  // A paragraph of one line, in the middle of the page.
  void centred(std::string_view text);

  void newPage();
  void endDoc();

  // Has the position reached this distance from the bottom of the page? False when the printer
  // cannot tell.
  bool reached(int twipsFromBottom);
  // Twips of a text, or of the sheet; 0 when the printer cannot tell.
  int widthOf(std::string_view text);
  int pageWidth();

 private:
  struct Style {
    bool bold = false;
    bool underline = false;
  };
  // Where a line is broken: at a blank of one of its passages.
  struct Cut {
    std::size_t passage = 0;
    std::size_t blank = 0;
  };

  void trapped(const std::function<void()>& call);
  void apply(Style style);
  Line printed(const Line& line);
  std::optional<Cut> cutOf(const Line& line);
  std::optional<std::size_t> blankThatFits(std::string_view text, std::size_t first, int room);

  toolkit::Printer& printer_;
  std::string_view procedure_;
  int margin_ = 0;
  // Left free of what the printer could print.
  int freeLeft_ = 0;
  int freeRight_ = 0;
  Style style_;
  // What the printer is known to have.
  std::optional<bool> printerBold_;
  std::optional<bool> printerUnderline_;
};

}  // namespace agreements
