#pragma once

#include <utility>
#include <vector>

#include "toolkit/Desktop.h"

namespace toolkit::test {

// Another desktop with printers of its own, whatever the machine has.
class ListedPrinters final : public Desktop {
 public:
  ListedPrinters(Desktop& desktop, std::vector<PrinterInfo> printers, int current)
      : desktop_(desktop), printers_(std::move(printers)), current_(current) {}

  Answer messageBox(std::string_view text, std::string_view title, Buttons buttons,
                    Icon icon) override {
    return desktop_.messageBox(text, title, buttons, icon);
  }
  void beep() override { desktop_.beep(); }
  void setPointer(Pointer pointer) override { desktop_.setPointer(pointer); }
  Pointer pointer() const override { return desktop_.pointer(); }
  void doEvents() override { desktop_.doEvents(); }
  CalendarDate today() const override { return desktop_.today(); }
  std::vector<PrinterInfo> printers() override { return printers_; }
  int currentPrinter() override { return current_; }
  void setCurrentPrinter(int position) override { current_ = position; }
  Printer& printer() override { return desktop_.printer(); }
  void showModal(Window& window) override { desktop_.showModal(window); }
  void show(Window& window) override { desktop_.show(window); }
  void close(Window& window) override { desktop_.close(window); }

 private:
  Desktop& desktop_;
  std::vector<PrinterInfo> printers_;
  int current_;
};

}  // namespace toolkit::test
