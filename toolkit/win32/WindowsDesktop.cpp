#include "toolkit/win32/WindowsDesktop.h"

#include <algorithm>
#include <map>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

#include "toolkit/ControlClosed.h"
#include "toolkit/Window.h"
#include "toolkit/win32/FormWindow.h"
#include "toolkit/win32/PrinterList.h"
#include "toolkit/win32/SurfaceWindow.h"
#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

// The host's own windows are out of reach while a box or a modal form is open.
class ModalSpell {
 public:
  explicit ModalSpell(ModalHost& host) : host_(host) { host_.enableModeless(false); }
  ModalSpell(const ModalSpell&) = delete;
  ModalSpell& operator=(const ModalSpell&) = delete;
  ~ModalSpell() { host_.enableModeless(true); }

 private:
  ModalHost& host_;
};

UINT styleOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::YesNo:
      return MB_YESNO;
    case Buttons::YesNoCancel:
      return MB_YESNOCANCEL;
    default:
      return MB_OK;
  }
}

UINT styleOf(Icon icon) {
  switch (icon) {
    case Icon::Information:
      return MB_ICONINFORMATION;
    case Icon::Exclamation:
      return MB_ICONEXCLAMATION;
    case Icon::Question:
      return MB_ICONQUESTION;
    default:
      return 0;
  }
}

// Yes or OK stand first, No and Cancel after them, in this order.
UINT styleOf(Answer proposed) {
  switch (proposed) {
    case Answer::No:
      return MB_DEFBUTTON2;
    case Answer::Cancel:
      return MB_DEFBUTTON3;
    default:
      return MB_DEFBUTTON1;
  }
}

std::optional<Answer> offeredAnswer(int result, Buttons buttons) {
  switch (result) {
    case IDOK:
      if (buttons == Buttons::Ok) return Answer::Ok;
      break;
    case IDYES:
      if (buttons != Buttons::Ok) return Answer::Yes;
      break;
    case IDNO:
      if (buttons != Buttons::Ok) return Answer::No;
      break;
    case IDCANCEL:
      if (buttons == Buttons::YesNoCancel) return Answer::Cancel;
      break;
    default:
      break;
  }
  return std::nullopt;
}

bool isInput(UINT message) {
  return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
         (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
         (message >= WM_NCMOUSEMOVE && message <= WM_NCXBUTTONDBLCLK);
}

class WindowsDesktop final : public Desktop {
 public:
  explicit WindowsDesktop(ModalHost& host) : host_(host) {}
  WindowsDesktop(const WindowsDesktop&) = delete;
  WindowsDesktop& operator=(const WindowsDesktop&) = delete;
  ~WindowsDesktop() override {
    if (pointer_ != Pointer::Normal) SurfaceWindow::keepHourglass(host_.surfaceWindow(), false);
  }

  Answer messageBox(std::string_view text, std::string_view title, Buttons buttons,
                    Icon icon) override {
    return ask(text, title, buttons, styleOf(icon));
  }

  Answer messageBox(std::string_view text, std::string_view title, Buttons buttons, Icon icon,
                    Answer proposed) override {
    return ask(text, title, buttons, styleOf(icon) | styleOf(proposed));
  }

  Answer ask(std::string_view text, std::string_view title, Buttons buttons, UINT look) {
    requireOpen();
    HWND owner = this->owner();
    const UINT style = styleOf(buttons) | look | (owner ? 0U : MB_TASKMODAL);
    int result = 0;
    {
      const ModalSpell modal(host_);
      result = MessageBoxW(owner, wide(text).c_str(), wide(title).c_str(), style);
    }
    requireOpen();
    restoreFocus();
    const std::optional<Answer> answer = offeredAnswer(result, buttons);
    if (!answer) throw ControlClosed();
    return *answer;
  }

  void beep() override { MessageBeep(MB_OK); }

  void setPointer(Pointer pointer) override {
    pointer_ = pointer;
    SurfaceWindow::keepHourglass(host_.surfaceWindow(), pointer != Pointer::Normal);
    showPointer();
  }
  Pointer pointer() const override { return pointer_; }

  void doEvents() override {
    requireOpen();
    std::optional<int> quit;
    // Bounded: a window that never validates itself is repainted for ever.
    constexpr int kMost = 10000;
    MSG message{};
    for (int i = 0; i < kMost && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i) {
      if (message.message == WM_QUIT) {
        quit = static_cast<int>(message.wParam);
        break;
      }
      if (isInput(message.message) && isOurs(message.hwnd)) continue;
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    if (quit) PostQuitMessage(*quit);
    requireOpen();
  }

  CalendarDate today() const override {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay};
  }

  std::vector<PrinterInfo> printers() override {
    listed_ = systemPrinters();
    return *listed_;
  }

  int currentPrinter() override {
    const std::string name = currentPrinterName();
    const std::vector<PrinterInfo>& all = listed();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const PrinterInfo& p) { return p.deviceName == name; });
    return found == all.end() ? -1 : static_cast<int>(found - all.begin());
  }

  void setCurrentPrinter(int position) override {
    const std::vector<PrinterInfo>& all = listed();
    if (position < 0 || position >= static_cast<int>(all.size())) {
      throw std::invalid_argument("no such printer");
    }
    chosenPrinter_ = all[static_cast<std::size_t>(position)].deviceName;
    openPrinters_.erase(chosenPrinter_);
  }

  Printer& printer() override {
    requireOpen();
    const std::string name = currentPrinterName();
    if (name.empty()) throw std::runtime_error("there is no printer");
    std::unique_ptr<Printer>& printer = openPrinters_[name];
    if (!printer) printer = makeGdiPrinter(name);
    return *printer;
  }

  void showModal(Window& window) override {
    requireOpen();
    bool closedItself = false;
    {
      const ModalSpell modal(host_);
      closedItself = runModal(window);
    }
    requireOpen();
    restoreFocus();
    if (!closedItself) throw ControlClosed();
  }

  void show(Window& window) override {
    requireOpen();
    if (window.open()) return;
    OpenForm form(*this, window);
    form->showModeless(owner());
    form.keep();
  }

  void close(Window& window) override {
    const auto form = std::find_if(forms_.begin(), forms_.end(),
                                   [&](const auto& f) { return &f->window() == &window; });
    if (form == forms_.end()) return;
    const bool modal = std::find(modal_.begin(), modal_.end(), form->get()) != modal_.end();
    (*form)->close();
    if (!modal) {
      removeForm(window);
      restoreFocus();
    }
  }

 private:
  // A form is open for as long as this lives, or until it is closed when it is kept.
  class OpenForm {
   public:
    OpenForm(WindowsDesktop& desktop, Window& window) : desktop_(desktop), window_(&window) {
      desktop.forms_.push_back(std::make_unique<FormWindow>(
          window, [&host = desktop.host_] { return host.keepAlive(); }));
      form_ = desktop.forms_.back().get();
    }
    OpenForm(const OpenForm&) = delete;
    OpenForm& operator=(const OpenForm&) = delete;
    ~OpenForm() {
      if (!window_) return;
      std::erase(desktop_.modal_, form_);
      desktop_.removeForm(*window_);
    }
    FormWindow* operator->() const { return form_; }
    FormWindow* get() const { return form_; }
    void keep() { window_ = nullptr; }

   private:
    WindowsDesktop& desktop_;
    Window* window_;
    FormWindow* form_ = nullptr;
  };

  // Did it close itself?
  bool runModal(Window& window) {
    const OpenForm form(*this, window);
    modal_.push_back(form.get());
    form->runModal(ownerBelow(form.get()));
    return form->closed();
  }

  const std::vector<PrinterInfo>& listed() {
    if (!listed_) listed_ = systemPrinters();
    return *listed_;
  }

  void requireOpen() const {
    if (host_.closed()) throw ControlClosed();
  }

  void restoreFocus() {
    if (modal_.empty()) host_.restoreFocus();
  }

  // A box belongs to the modal form that it came from.
  HWND owner() const { return ownerBelow(nullptr); }
  HWND ownerBelow(const FormWindow* form) const {
    for (auto f = modal_.rbegin(); f != modal_.rend(); ++f) {
      if (*f != form && (*f)->handle()) return (*f)->handle();
    }
    HWND owner = host_.owner();
    if (!owner || !IsWindow(owner)) return nullptr;
    return GetAncestor(owner, GA_ROOT);
  }

  bool isOurs(HWND window) const {
    HWND surface = host_.surfaceWindow();
    return surface && window && (window == surface || IsChild(surface, window));
  }

  void showPointer() const {
    if (pointer_ != Pointer::Normal) {
      SetCursor(LoadCursorW(nullptr, IDC_WAIT));
      return;
    }
    POINT at{};
    GetCursorPos(&at);
    HWND below = WindowFromPoint(at);
    if (below && GetWindowThreadProcessId(below, nullptr) == GetCurrentThreadId()) {
      SendMessageW(below, WM_SETCURSOR, reinterpret_cast<WPARAM>(below),
                   MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    } else {
      SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    }
  }

  std::string currentPrinterName() const {
    return chosenPrinter_.empty() ? narrow(defaultPrinterName()) : chosenPrinter_;
  }

  void removeForm(Window& window) {
    std::erase_if(forms_, [&](const auto& form) { return &form->window() == &window; });
  }

  ModalHost& host_;
  Pointer pointer_ = Pointer::Normal;
  std::optional<std::vector<PrinterInfo>> listed_;
  std::string chosenPrinter_;
  std::map<std::string, std::unique_ptr<Printer>> openPrinters_;
  std::vector<std::unique_ptr<FormWindow>> forms_;
  std::vector<FormWindow*> modal_;
};

}  // namespace

std::unique_ptr<Desktop> makeWindowsDesktop(ModalHost& host) {
  return std::make_unique<WindowsDesktop>(host);
}

}  // namespace toolkit::win32
