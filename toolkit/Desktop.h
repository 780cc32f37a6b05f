// What the system asks of the desktop around it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "toolkit/Printer.h"

namespace toolkit {

class Window;

enum class Icon { None, Information, Exclamation, Question };
enum class Buttons { Ok, YesNo, YesNoCancel };
enum class Answer { Ok, Yes, No, Cancel };
enum class Pointer { Normal = 0, Hourglass = 11 };

struct PrinterInfo {
  std::string deviceName;
  std::string port;
};

struct CalendarDate {
  int year = 0;
  int month = 0;  // 1 to 12
  int day = 0;    // 1 to 31
};

// Message boxes, forms, doEvents and printer() throw ControlClosed when the control has been taken
// down meanwhile, or when a box ends with anything but an answer that it offers.
class Desktop {
 public:
  Desktop() = default;
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;
  virtual ~Desktop() = default;

  virtual Answer messageBox(std::string_view text, std::string_view title, Buttons buttons,
                            Icon icon) = 0;
  // The same, with the answer that Enter gives (above: the first). A desktop that knows of none
  // shows the box all the same.
  virtual Answer messageBox(std::string_view text, std::string_view title, Buttons buttons,
                            Icon icon, Answer /*proposed*/) {
    return messageBox(text, title, buttons, icon);
  }
  virtual void beep() = 0;
  virtual void setPointer(Pointer pointer) = 0;
  virtual Pointer pointer() const = 0;
  // Lets pending events run once, painting among them; the user's input is discarded meanwhile.
  virtual void doEvents() = 0;
  virtual CalendarDate today() const = 0;

  // The system's printers, in its order. A position is one in the list given last.
  virtual std::vector<PrinterInfo> printers() = 0;
  virtual int currentPrinter() = 0;                  // -1 when there is none
  virtual void setCurrentPrinter(int position) = 0;  // std::invalid_argument past the end
  virtual Printer& printer() = 0;  // the current one; std::runtime_error when there is none

  // A form of ours. Modal: returns when the form has closed itself. Modeless: painted before it
  // returns, stays until closed.
  virtual void showModal(Window& window) = 0;
  virtual void show(Window& window) = 0;
  virtual void close(Window& window) = 0;
};

}  // namespace toolkit
