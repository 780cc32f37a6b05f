#include "agreements/PrintedSheet.h"

#include <algorithm>
#include <utility>

#include "toolkit/Trap.h"

namespace agreements {

using LineEnd = toolkit::Printer::LineEnd;
using Line = PrintedSheet::Line;

namespace {

// Blanks at the end do not show.
std::string_view shown(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view withoutLeadingBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return text;
}

// What is left of a line, and the one that it goes on in.
Line joined(Line rest, const Line& line) {
  if (rest.empty() || line.empty()) return rest.empty() ? line : rest;
  PrintedSheet::Passage next = line.front();
  next.text = std::string(withoutLeadingBlanks(next.text));
  PrintedSheet::Passage& last = rest.back();
  last.text.resize(shown(last.text).size());
  const bool alike = last.bold == next.bold && last.underline == next.underline;
  // Between two styles the blank belongs to the plain one.
  const bool lastIsPlain = !last.bold && !last.underline;
  if (alike) {
    last.text += " " + next.text;
  } else {
    (lastIsPlain ? last.text : next.text).insert(lastIsPlain ? last.text.size() : 0, 1, ' ');
    rest.push_back(std::move(next));
  }
  rest.insert(rest.end(), line.begin() + 1, line.end());
  return rest;
}

// What stands before that place, and what after it; without the blanks there.
std::pair<Line, Line> broken(const Line& line, std::size_t passage, std::size_t blank) {
  const auto place = line.begin() + static_cast<std::ptrdiff_t>(passage);
  Line before(line.begin(), place + 1);
  Line after(place, line.end());
  before.back().text = shown(std::string_view(place->text).substr(0, blank));
  after.front().text = withoutLeadingBlanks(std::string_view(place->text).substr(blank));
  if (after.front().text.empty()) after.erase(after.begin());
  if (!after.empty()) after.front().text = std::string(withoutLeadingBlanks(after.front().text));
  return {before, after};
}

}  // namespace

void PrintedSheet::title(std::string_view title) {
  trapped([&] { printer_.setTitle(title); });
}

void PrintedSheet::font(std::string_view name, int points) {
  trapped([&] { printer_.setFontName(name); });
  trapped([&] { printer_.setFontSize(points); });
}

void PrintedSheet::keepOffEdges(int twips) {
  trapped([&] {
    const auto margins = printer_.margins();
    if (!margins) return;
    freeLeft_ = std::max(0, twips - margins->left);
    freeRight_ = std::max(0, twips - margins->right);
  });
}

void PrintedSheet::apply(Style style) {
  trapped([&] {
    if (printerBold_ == style.bold) return;
    printer_.setBold(style.bold);
    printerBold_ = style.bold;
  });
  trapped([&] {
    if (printerUnderline_ == style.underline) return;
    printer_.setUnderline(style.underline);
    printerUnderline_ = style.underline;
  });
}

void PrintedSheet::place(int leftCm, int topCm) {
  left(leftCm);
  topTwips(topCm * kTwipsPerCentimetre);
}

void PrintedSheet::left(int leftCm) { leftTwips(leftCm * kTwipsPerCentimetre); }

void PrintedSheet::leftTwips(int twips) {
  trapped([&] { printer_.setCurrentX(freeLeft_ + twips); });
}

void PrintedSheet::topTwips(int twips) {
  trapped([&] { printer_.setCurrentY(twips); });
}

void PrintedSheet::paragraph(const std::vector<Line>& lines) {
  Line rest;
  bool first = true;
  for (const Line& line : lines) {
    if (!std::exchange(first, false)) leftTwips(margin_);
    rest = printed(joined(std::move(rest), line));
  }
  while (!rest.empty()) {
    leftTwips(margin_);
    rest = printed(rest);
  }
}

void PrintedSheet::line(std::string_view text) {
  paragraph({{{std::string(text), style_.bold, style_.underline}}});
}

// Prints what fits of a line and gives what is left of it.
Line PrintedSheet::printed(const Line& line) {
  std::optional<Cut> cut;
  trapped([&] { cut = cutOf(line); });
  auto [now, rest] =
      cut ? broken(line, cut->passage, cut->blank) : std::pair<Line, Line>(line, Line());
  for (const Passage& passage : now) {
    const LineEnd end = &passage == &now.back() ? LineEnd::Break : LineEnd::Stay;
    apply({passage.bold, passage.underline});
    trapped([&] { printer_.print(passage.text, end); });
  }
  return rest;
}

// Nothing when the line fits, or cannot be broken.
std::optional<PrintedSheet::Cut> PrintedSheet::cutOf(const Line& line) {
  const int right = printer_.pageWidth() - freeRight_;
  int x = printer_.currentX();
  std::optional<Cut> last;  // the last blank that has been passed
  for (std::size_t i = 0; i < line.size(); ++i) {
    const std::string_view text = line[i].text;
    apply({line[i].bold, line[i].underline});
    if (x + printer_.textWidth(shown(text)) > right) {
      const std::size_t first = i == 0 ? 1 : 0;  // a line does not begin with a break
      if (const auto blank = blankThatFits(text, first, right - x)) return Cut{i, *blank};
      if (last) return last;
      // A word that is too wide stands alone.
      const std::size_t blank = text.find(' ', text.find_first_not_of(' '));
      if (blank < shown(text).size()) return Cut{i, blank};
    }
    const std::size_t blank = text.find_last_of(' ');
    if (blank != text.npos && (i > 0 || blank > 0)) last = Cut{i, blank};
    x += printer_.textWidth(text);
  }
  return std::nullopt;
}

// The last blank from `first` on before which the text is no wider than that.
std::optional<std::size_t> PrintedSheet::blankThatFits(std::string_view text, std::size_t first,
                                                       int room) {
  for (std::size_t blank = shown(text).size(); blank-- > first;) {
    if (text[blank] == ' ' && printer_.textWidth(shown(text.substr(0, blank))) <= room) {
      return blank;
    }
  }
  return std::nullopt;
}

void PrintedSheet::write(std::string_view text) {
  apply(style_);
  trapped([&] { printer_.print(text, LineEnd::Stay); });
}

void PrintedSheet::centred(std::string_view text) {
  apply(style_);
  trapped([&] {
    const int width = printer_.pageWidth() - freeLeft_ - freeRight_;
    printer_.setCurrentX(freeLeft_ + std::max(0, (width - printer_.textWidth(text)) / 2));
  });
  line(text);
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
  trapped([&] { width = printer_.pageWidth() - freeLeft_ - freeRight_; });
  return width;
}

void PrintedSheet::trapped(const std::function<void()>& call) {
  toolkit::quietly(procedure_, call);
}

}  // namespace agreements
