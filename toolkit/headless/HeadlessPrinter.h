#pragma once

#include <vector>

#include "toolkit/Printer.h"

namespace toolkit::headless {

// Writes down what is printed. A fixed-pitch page: every character is 0.6 times the font size wide,
// a line is 1.2 times the font size high; A4 without margins unless said otherwise.
class HeadlessPrinter : public Printer {
 public:
  struct Piece {
    int page = 1;
    int x = 0;  // twips
    int y = 0;
    std::string text;
    std::string fontName;
    int fontSize = 0;
    bool bold = false;
    bool underline = false;
  };
  struct Job {
    std::string title;
    std::vector<Piece> pieces;
    int pages = 0;
  };

  int currentX() const override { return x_; }
  int currentY() const override { return y_; }
  void setCurrentX(int twips) override { x_ = twips; }
  void setCurrentY(int twips) override { y_ = twips; }
  std::string fontName() const override { return fontName_; }
  void setFontName(std::string_view name) override { fontName_ = name; }
  int fontSize() const override { return fontSize_; }
  void setFontSize(int points) override { fontSize_ = points; }
  void setBold(bool bold) override { bold_ = bold; }
  void setUnderline(bool underline) override { underline_ = underline; }
  int textWidth(std::string_view text) override;
  int textHeight() override;
  void setTitle(std::string_view title) override { title_ = title; }
  int pageWidth() override { return width_; }
  int pageHeight() override { return height_; }
  std::optional<Margins> margins() override { return margins_; }
  void print(std::string_view text, LineEnd end = LineEnd::Break) override;
  void newPage() override;
  void endDoc() override;

  // Twips that can be printed on a page from now on.
  void setPrintableSize(int width, int height) {
    width_ = width;
    height_ = height;
  }

  // It tells of no margins unless it is given some.
  void setMargins(const Margins& margins) { margins_ = margins; }

  const std::vector<Job>& jobs() const { return jobs_; }  // those ended
  const Job& current() const { return job_; }             // the one not ended yet

 private:
  void openPage(int page);

  int width_ = 11906;
  int height_ = 16838;
  std::optional<Margins> margins_;
  int x_ = 0;
  int y_ = 0;
  std::string title_;
  std::string fontName_ = "Courier New";
  int fontSize_ = 10;
  bool bold_ = false;
  bool underline_ = false;
  Job job_;
  std::vector<Job> jobs_;
};

}  // namespace toolkit::headless
