// A desktop without windows: answers message boxes from a script and keeps a journal of all that
// was shown, beeped and printed. For tests, benchmarks and unattended use.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>

#include "toolkit/Desktop.h"
#include "toolkit/headless/HeadlessPrinter.h"

namespace toolkit::headless {

struct Entry {
  enum class What { Box, Beep, Pointer, Events, Shown, Closed };
  What what = What::Box;
  // Of a box; of a form, its name and caption.
  std::string text;
  std::string title;
  Buttons buttons = Buttons::Ok;
  Icon icon = Icon::None;
  Answer answer = Answer::Ok;
  std::optional<Answer> proposed;  // the answer that Enter gives, when it is not the first
  std::string where;               // what HeadlessDesktop::whereabouts said as it opened
  // Of a pointer.
  Pointer pointer = Pointer::Normal;
};

class HeadlessDesktop : public Desktop {
 public:
  // The next question gets this answer. A box with an OK button alone needs none.
  // A question without an answer left throws std::logic_error, as does an answer it does not offer.
  void answer(Answer next) { answers_.push_back(next); }
  // Called when the script does not fit what is asked, before the exception, which a trap may hold.
  std::function<void(const std::string& fault)> onFault;
  // Where the user is, for those who read the journal.
  std::function<std::string()> whereabouts;
  // Called while a box is open, before its answer; it may throw ControlClosed.
  std::function<void(const Entry& box)> onBox;
  // Called by doEvents.
  std::function<void()> onEvents;
  // Called while a modal form is open; the form must close itself in it.
  std::function<void(Window&)> onModal;

  const std::vector<Entry>& journal() const { return journal_; }
  std::vector<Entry> boxes() const;  // of the journal, the boxes alone
  // The boxes since the last call.
  std::vector<Entry> takeBoxes();
  int beeps() const;
  bool answersLeft() const { return !answers_.empty(); }
  void clearJournal() {
    journal_.clear();
    taken_ = 0;
  }

  void setToday(CalendarDate today) { today_ = today; }
  void setPrinters(std::vector<PrinterInfo> printers, int current);
  HeadlessPrinter& page(int position);  // the printer at that position

  Answer messageBox(std::string_view text, std::string_view title, Buttons buttons,
                    Icon icon) override;
  Answer messageBox(std::string_view text, std::string_view title, Buttons buttons, Icon icon,
                    Answer proposed) override;
  void beep() override;
  void setPointer(Pointer pointer) override;
  Pointer pointer() const override { return pointer_; }
  void doEvents() override;
  CalendarDate today() const override { return today_; }
  std::vector<PrinterInfo> printers() override { return printers_; }
  int currentPrinter() override { return currentPrinter_; }
  void setCurrentPrinter(int position) override;
  Printer& printer() override;
  void showModal(Window& window) override;
  void show(Window& window) override;
  void close(Window& window) override;

 private:
  [[noreturn]] void fault(const std::string& what);

  std::deque<Answer> answers_;
  std::vector<Entry> journal_;
  std::size_t taken_ = 0;
  std::optional<Answer> proposed_;  // of the next box
  Pointer pointer_ = Pointer::Normal;
  CalendarDate today_{2026, 1, 15};
  std::vector<PrinterInfo> printers_;
  int currentPrinter_ = -1;
  std::map<int, HeadlessPrinter> pages_;
};

}  // namespace toolkit::headless
