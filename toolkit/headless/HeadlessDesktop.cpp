#include "toolkit/headless/HeadlessDesktop.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "toolkit/Window.h"

namespace toolkit::headless {

namespace {

bool offers(Buttons buttons, Answer answer) {
  switch (buttons) {
    case Buttons::Ok:
      return answer == Answer::Ok;
    case Buttons::YesNo:
      return answer == Answer::Yes || answer == Answer::No;
    case Buttons::YesNoCancel:
      return answer != Answer::Ok;
  }
  return false;
}

Entry entryOf(Entry::What what, std::string_view text) {
  Entry entry;
  entry.what = what;
  entry.text = text;
  return entry;
}

}  // namespace

std::vector<Entry> HeadlessDesktop::boxes() const {
  std::vector<Entry> boxes;
  std::copy_if(journal_.begin(), journal_.end(), std::back_inserter(boxes),
               [](const Entry& entry) { return entry.what == Entry::What::Box; });
  return boxes;
}

std::vector<Entry> HeadlessDesktop::takeBoxes() {
  std::vector<Entry> fresh = boxes();
  const std::size_t all = fresh.size();
  fresh.erase(fresh.begin(), fresh.begin() + static_cast<std::ptrdiff_t>(taken_));
  taken_ = all;
  return fresh;
}

int HeadlessDesktop::beeps() const {
  return static_cast<int>(std::count_if(journal_.begin(), journal_.end(), [](const Entry& entry) {
    return entry.what == Entry::What::Beep;
  }));
}

void HeadlessDesktop::setPrinters(std::vector<PrinterInfo> printers, int current) {
  printers_ = std::move(printers);
  pages_.clear();
  currentPrinter_ = -1;
  if (current != -1) setCurrentPrinter(current);
}

HeadlessPrinter& HeadlessDesktop::page(int position) {
  if (position < 0 || position >= static_cast<int>(printers_.size())) {
    throw std::invalid_argument("no such printer");
  }
  return pages_[position];
}

Answer HeadlessDesktop::messageBox(std::string_view text, std::string_view title, Buttons buttons,
                                   Icon icon) {
  Entry box = entryOf(Entry::What::Box, text);
  box.title = title;
  box.buttons = buttons;
  box.icon = icon;
  box.proposed = std::exchange(proposed_, std::nullopt);
  if (whereabouts) box.where = whereabouts();
  const std::size_t position = journal_.size();
  journal_.push_back(box);
  if (onBox) onBox(box);
  if (buttons == Buttons::Ok) return Answer::Ok;
  if (answers_.empty()) fault("No answer left for: " + box.text);
  const Answer answer = answers_.front();
  answers_.pop_front();
  if (!offers(buttons, answer)) fault("Answer not offered by: " + box.text);
  if (position < journal_.size()) journal_[position].answer = answer;
  return answer;
}

Answer HeadlessDesktop::messageBox(std::string_view text, std::string_view title, Buttons buttons,
                                   Icon icon, Answer proposed) {
  if (!offers(buttons, proposed)) throw std::invalid_argument("the box does not offer its answer");
  proposed_ = proposed;
  return messageBox(text, title, buttons, icon);
}

void HeadlessDesktop::fault(const std::string& what) {
  if (onFault) onFault(what);
  throw std::logic_error(what);
}

void HeadlessDesktop::beep() { journal_.push_back(entryOf(Entry::What::Beep, {})); }

void HeadlessDesktop::setPointer(Pointer pointer) {
  pointer_ = pointer;
  Entry entry = entryOf(Entry::What::Pointer, {});
  entry.pointer = pointer;
  journal_.push_back(entry);
}

void HeadlessDesktop::doEvents() {
  journal_.push_back(entryOf(Entry::What::Events, {}));
  if (onEvents) onEvents();
}

void HeadlessDesktop::setCurrentPrinter(int position) {
  page(position);
  currentPrinter_ = position;
}

Printer& HeadlessDesktop::printer() {
  if (currentPrinter_ == -1) throw std::runtime_error("there is no printer");
  return pages_[currentPrinter_];
}

void HeadlessDesktop::showModal(Window& window) {
  show(window);
  if (onModal) onModal(window);
  if (window.open()) fault("Nobody closes the form: " + window.surface().name());
}

void HeadlessDesktop::show(Window& window) {
  window.setOpen(true);
  Entry entry = entryOf(Entry::What::Shown, window.surface().name());
  entry.title = window.caption();
  journal_.push_back(entry);
}

void HeadlessDesktop::close(Window& window) {
  if (!window.open()) return;
  window.setOpen(false);
  Entry entry = entryOf(Entry::What::Closed, window.surface().name());
  entry.title = window.caption();
  journal_.push_back(entry);
}

}  // namespace toolkit::headless
