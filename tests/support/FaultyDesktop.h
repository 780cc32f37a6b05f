// A desktop in front of another one: it counts the calls that reach printers and forms, and fails
// at one of them.
#pragma once

#include <stdexcept>

#include "toolkit/Desktop.h"

namespace testing_support {

class FaultyDesktop : public toolkit::Desktop {
 public:
  // The other one must outlive it.
  explicit FaultyDesktop(toolkit::Desktop& inner) : inner_(inner), printer_(*this) {}

  // The n-th call from now, counted from 1, fails once, without any effect.
  void failAt(int nthCall) {
    calls_ = 0;
    failAt_ = nthCall;
  }
  int calls() const { return calls_; }

  toolkit::Answer messageBox(std::string_view text, std::string_view title,
                             toolkit::Buttons buttons, toolkit::Icon icon) override {
    return inner_.messageBox(text, title, buttons, icon);
  }
  void beep() override { inner_.beep(); }
  void setPointer(toolkit::Pointer pointer) override { inner_.setPointer(pointer); }
  toolkit::Pointer pointer() const override { return inner_.pointer(); }
  void doEvents() override { inner_.doEvents(); }
  toolkit::CalendarDate today() const override { return inner_.today(); }

  std::vector<toolkit::PrinterInfo> printers() override { return counted().printers(); }
  int currentPrinter() override { return counted().currentPrinter(); }
  void setCurrentPrinter(int position) override { counted().setCurrentPrinter(position); }
  toolkit::Printer& printer() override {
    counted().printer();
    return printer_;
  }
  void showModal(toolkit::Window& window) override { counted().showModal(window); }
  void show(toolkit::Window& window) override { counted().show(window); }
  void close(toolkit::Window& window) override { inner_.close(window); }

 private:
  toolkit::Desktop& counted() {
    if (++calls_ == failAt_) throw std::runtime_error("the desktop was told to fail");
    return inner_;
  }

  // The current printer of the desktop behind.
  class Device : public toolkit::Printer {
   public:
    explicit Device(FaultyDesktop& owner) : owner_(owner) {}

    int currentX() const override { return quiet().currentX(); }
    int currentY() const override { return quiet().currentY(); }
    void setCurrentX(int twips) override { counted().setCurrentX(twips); }
    void setCurrentY(int twips) override { counted().setCurrentY(twips); }
    std::string fontName() const override { return quiet().fontName(); }
    void setFontName(std::string_view name) override { counted().setFontName(name); }
    int fontSize() const override { return quiet().fontSize(); }
    void setFontSize(int points) override { counted().setFontSize(points); }
    void setBold(bool bold) override { counted().setBold(bold); }
    void setUnderline(bool underline) override { counted().setUnderline(underline); }
    int textWidth(std::string_view text) override { return counted().textWidth(text); }
    int textHeight() override { return counted().textHeight(); }
    int pageWidth() override { return counted().pageWidth(); }
    int pageHeight() override { return counted().pageHeight(); }
    void print(std::string_view text, LineEnd end) override { counted().print(text, end); }
    void newPage() override { counted().newPage(); }
    void endDoc() override { counted().endDoc(); }

   private:
    toolkit::Printer& quiet() const { return owner_.inner_.printer(); }
    toolkit::Printer& counted() { return owner_.counted().printer(); }

    FaultyDesktop& owner_;
  };

  toolkit::Desktop& inner_;
  Device printer_;
  int calls_ = 0;
  int failAt_ = 0;
};

}  // namespace testing_support
