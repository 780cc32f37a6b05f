// The two printed documents without the control around them: a screen, what is in hand, a store in
// memory and a printer that writes down what it gets.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "agreements/AgreementContext.h"
#include "tests/support/MemoryStore.h"
#include "tests/support/Same.h"
#include "tests/support/TestDesktop.h"
#include "text/Utf8.h"

namespace behaviour {

using testing_support::CallKind;
using testing_support::same;

// Passes everything on to a page, but refuses one call, or all from there on.
class FailingPrinter : public toolkit::Printer {
 public:
  explicit FailingPrinter(toolkit::Printer& page) : page_(page) {}

  int failingCall = 0;  // counted from 1; 0: none
  bool andAllAfter = false;
  int calls = 0;
  int width = 0;  // of the page when not 0

  int currentX() const override { return page_.currentX(); }
  int currentY() const override { return page_.currentY(); }
  void setCurrentX(int twips) override { asked().setCurrentX(twips); }
  void setCurrentY(int twips) override { asked().setCurrentY(twips); }
  std::string fontName() const override { return page_.fontName(); }
  void setFontName(std::string_view name) override { asked().setFontName(name); }
  int fontSize() const override { return page_.fontSize(); }
  void setFontSize(int points) override { asked().setFontSize(points); }
  void setBold(bool bold) override { asked().setBold(bold); }
  void setUnderline(bool underline) override { asked().setUnderline(underline); }
  void setTitle(std::string_view title) override { asked().setTitle(title); }
  int textWidth(std::string_view text) override { return asked().textWidth(text); }
  int textHeight() override { return asked().textHeight(); }
  int pageWidth() override {
    const int whole = asked().pageWidth();
    return width == 0 ? whole : width;
  }
  int pageHeight() override { return asked().pageHeight(); }
  std::optional<Margins> margins() override { return asked().margins(); }
  void print(std::string_view text, LineEnd end = LineEnd::Break) override {
    asked().print(text, end);
  }
  void newPage() override { asked().newPage(); }
  void endDoc() override { asked().endDoc(); }

 private:
  toolkit::Printer& asked() {
    ++calls;
    if (calls == failingCall || (andAllAfter && failingCall != 0 && calls > failingCall)) {
      throw std::runtime_error("the printer refuses");
    }
    return page_;
  }

  toolkit::Printer& page_;
};

class PrintingDesktop : public testing_support::TestDesktop {
 public:
  toolkit::Printer& printer() override { return onPaper; }

  FailingPrinter onPaper{onlyPage()};

 private:
  toolkit::Printer& onlyPage() {
    setPrinters({{"A4", "LPT1:"}}, 0);
    return page(0);
  }
};

// A text as it stands on paper; bold and underlined texts begin with "[b]" and "[u]".
struct Printed {
  int x = 0;
  int y = 0;
  std::string text;
  bool operator==(const Printed&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Printed& printed) {
  return out << "(" << printed.x << ", " << printed.y << ") \"" << printed.text << "\"";
}

class PrintTest : public testing::Test {
 protected:
  static constexpr int kCm = 567;
  static constexpr int kCharacter = 144;  // at 12 points
  static constexpr int kLine = 288;

  PrintTest() {
    desktop_.page(0).setFontName("Arial");
    session_.TheDatabase = store_.connect();
    screen_.bar.Txt_SigleOrgChg.setText("CRAM");
    screen_.participation.Txt_DatBaremCours.setText("01/02/2026");
  }

  static int twips(int millimetres) { return millimetres * 1440 * 10 / 254; }
  // Blanks at the end do not show.
  static std::string withoutStyle(std::string text) {
    for (const char* style : {"[b]", "[u]"}) {
      if (text.starts_with(style)) text.erase(0, 3);
    }
    return text.substr(0, text.find_last_not_of(' ') + 1);
  }

  // What stands on a page of the job that was ended last, or of the one that is not ended.
  static std::vector<Printed> onPage(const toolkit::headless::HeadlessPrinter::Job& job,
                                     int page = 1) {
    std::vector<Printed> all;
    for (const auto& piece : job.pieces) {
      EXPECT_EQ(piece.fontName, "Courier New") << piece.text;
      EXPECT_EQ(piece.fontSize, 12) << piece.text;
      if (piece.page != page) continue;
      const std::string style =
          std::string(piece.bold ? "[b]" : "") + (piece.underline ? "[u]" : "");
      all.push_back({piece.x, piece.y, style + piece.text});
    }
    return all;
  }

  // A4 with these margins on all four sides.
  void setMargins(int millimetres) {
    desktop_.page(0).setPrintableSize(twips(210 - 2 * millimetres), twips(297 - 2 * millimetres));
  }
  // Of what does not stand within the printable area.
  std::vector<Printed> outside(const toolkit::headless::HeadlessPrinter::Job& job) {
    std::vector<Printed> all;
    const int width = desktop_.page(0).pageWidth();
    const int height = desktop_.page(0).pageHeight();
    for (int page = 1; page <= job.pages; ++page) {
      for (const Printed& printed : onPage(job, page)) {
        const std::string text = withoutStyle(printed.text);
        const int right = printed.x + kCharacter * static_cast<int>(text::length(text));
        const bool within =
            printed.x >= 0 && printed.y >= 0 && right <= width && printed.y + kLine <= height;
        if (!within) all.push_back(printed);
      }
    }
    return all;
  }

  testing_support::MemoryStore store_;
  PrintingDesktop desktop_;
  toolkit::Surface surface_{"Surface"};
  screen::Screen screen_{surface_};
  screen::EditSession session_;
  agreements::AgreementContext context_{desktop_, surface_, screen_, session_};
};

}  // namespace behaviour
