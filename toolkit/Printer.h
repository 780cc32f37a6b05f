#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace toolkit {

// The classic printer: a current position on a page, in twips from the upper left corner of what
// can be printed. The first print or page opens the job; endDoc sends it.
// Every function that reaches the device throws std::runtime_error when it refuses. A job that the
// device refuses to open (its driver may ask the user, who cancels) is not asked for again until
// the printer is made the current one anew.
class Printer {
 public:
  Printer() = default;
  Printer(const Printer&) = delete;
  Printer& operator=(const Printer&) = delete;
  virtual ~Printer() = default;

  virtual int currentX() const = 0;
  virtual int currentY() const = 0;
  virtual void setCurrentX(int twips) = 0;
  virtual void setCurrentY(int twips) = 0;

  virtual std::string fontName() const = 0;
  virtual void setFontName(std::string_view name) = 0;
  virtual int fontSize() const = 0;  // points
  virtual void setFontSize(int points) = 0;
  virtual void setBold(bool bold) = 0;
  virtual void setUnderline(bool underline) = 0;

  // The name under which the next job is shown in the printer's queue. One that shows none leaves
  // it alone.
  virtual void setTitle(std::string_view /*title*/) {}

  virtual int textWidth(std::string_view text) = 0;  // twips, in the current font
  virtual int textHeight() = 0;                      // twips, of one line
  virtual int pageWidth() = 0;                       // twips that can be printed
  virtual int pageHeight() = 0;
  // Twips of the paper left and right of what can be printed; nothing from a printer that does not
  // tell.
  struct Margins {
    int left = 0;
    int right = 0;
  };
  virtual std::optional<Margins> margins() { return std::nullopt; }

  // Prints at the current position. LineEnd::Break: the position goes to the left edge of the next
  // line; LineEnd::Stay: it goes to the end of the text, on the same line.
  enum class LineEnd { Break, Stay };
  virtual void print(std::string_view text, LineEnd end = LineEnd::Break) = 0;
  virtual void newPage() = 0;
  // Ends the job; a job without anything on it prints nothing.
  virtual void endDoc() = 0;
};

}  // namespace toolkit
