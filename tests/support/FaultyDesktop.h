// A desktop in front of another one: it counts the calls that reach printers and forms, and those
// of each other kind by themselves, and fails at one of them.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/Desktop.h"
#include "toolkit/Window.h"

namespace testing_support {

class FaultyDesktop : public toolkit::Desktop {
 public:
  // The other one must outlive it.
  explicit FaultyDesktop(toolkit::Desktop& inner) : inner_(inner), printer_(*this) {}

  // Of printers and opened forms: the n-th call from now, counted from 1, fails once, without any
  // effect.
  void failAt(int nthCall) {
    told_.clear();
    failAt_ = nthCall;
  }
  int calls() const { return static_cast<int>(told_.size()); }
  // Those calls by name, a form's with its form: "newPage", "show Frm_Anim".
  const std::vector<std::string>& told() const { return told_; }

  // Of the other calls: the n-th of that kind from now fails once, without any effect.
  enum class Kind { MessageBox, Beep, SetPointer, DoEvents, Today, Close };
  void failAt(Kind kind, int nthCall) { others_[kind] = {0, nthCall}; }
  int calls(Kind kind) const { return others_[kind].calls; }

  toolkit::Answer messageBox(std::string_view text, std::string_view title,
                             toolkit::Buttons buttons, toolkit::Icon icon) override {
    return counted(Kind::MessageBox).messageBox(text, title, buttons, icon);
  }
  toolkit::Answer messageBox(std::string_view text, std::string_view title,
                             toolkit::Buttons buttons, toolkit::Icon icon,
                             toolkit::Answer proposed) override {
    return counted(Kind::MessageBox).messageBox(text, title, buttons, icon, proposed);
  }
  void beep() override { counted(Kind::Beep).beep(); }
  void setPointer(toolkit::Pointer pointer) override {
    counted(Kind::SetPointer).setPointer(pointer);
  }
  toolkit::Pointer pointer() const override { return inner_.pointer(); }
  void doEvents() override { counted(Kind::DoEvents).doEvents(); }
  toolkit::CalendarDate today() const override { return counted(Kind::Today).today(); }

  std::vector<toolkit::PrinterInfo> printers() override { return counted("printers").printers(); }
  int currentPrinter() override { return counted("currentPrinter").currentPrinter(); }
  void setCurrentPrinter(int position) override {
    counted("setCurrentPrinter").setCurrentPrinter(position);
  }
  toolkit::Printer& printer() override {
    counted("printer").printer();
    return printer_;
  }
  void showModal(toolkit::Window& window) override {
    counted("showModal " + window.surface().name()).showModal(window);
  }
  void show(toolkit::Window& window) override {
    counted("show " + window.surface().name()).show(window);
  }
  void close(toolkit::Window& window) override { counted(Kind::Close).close(window); }

 private:
  struct Fault {
    int calls = 0;
    int failAt = 0;
  };

  toolkit::Desktop& counted(std::string call) {
    told_.push_back(std::move(call));
    if (calls() == failAt_) throw std::runtime_error("the desktop was told to fail");
    return inner_;
  }
  toolkit::Desktop& counted(Kind kind) const {
    Fault& fault = others_[kind];
    if (++fault.calls == fault.failAt) throw std::runtime_error("the desktop was told to fail");
    return inner_;
  }

  // The current printer of the desktop behind.
  class Device : public toolkit::Printer {
   public:
    explicit Device(FaultyDesktop& owner) : owner_(owner) {}

    int currentX() const override { return quiet().currentX(); }
    int currentY() const override { return quiet().currentY(); }
    void setCurrentX(int twips) override { counted("setCurrentX").setCurrentX(twips); }
    void setCurrentY(int twips) override { counted("setCurrentY").setCurrentY(twips); }
    std::string fontName() const override { return quiet().fontName(); }
    void setFontName(std::string_view name) override { counted("setFontName").setFontName(name); }
    int fontSize() const override { return quiet().fontSize(); }
    void setFontSize(int points) override { counted("setFontSize").setFontSize(points); }
    void setBold(bool bold) override { counted("setBold").setBold(bold); }
    void setUnderline(bool underline) override { counted("setUnderline").setUnderline(underline); }
    void setTitle(std::string_view title) override { counted("setTitle").setTitle(title); }
    int textWidth(std::string_view text) override { return counted("textWidth").textWidth(text); }
    int textHeight() override { return counted("textHeight").textHeight(); }
    int pageWidth() override { return counted("pageWidth").pageWidth(); }
    int pageHeight() override { return counted("pageHeight").pageHeight(); }
    void print(std::string_view text, LineEnd end) override { counted("print").print(text, end); }
    void newPage() override { counted("newPage").newPage(); }
    void endDoc() override { counted("endDoc").endDoc(); }

   private:
    toolkit::Printer& quiet() const { return owner_.inner_.printer(); }
    toolkit::Printer& counted(std::string call) {
      return owner_.counted(std::move(call)).printer();
    }

    FaultyDesktop& owner_;
  };

  toolkit::Desktop& inner_;
  Device printer_;
  std::vector<std::string> told_;
  int failAt_ = 0;
  mutable std::map<Kind, Fault> others_;
};

}  // namespace testing_support
