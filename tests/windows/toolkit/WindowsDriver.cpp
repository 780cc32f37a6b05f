// The user of a surface in real windows.
#include "tests/unit/toolkit/UserDriver.h"
#include "tests/windows/toolkit/TestHost.h"
#include "toolkit/win32/WideText.h"

#include <commctrl.h>

#include <stdexcept>
#include <string>

namespace toolkit::test {

namespace {

WORD virtualKeyOf(const KeyStroke& stroke) {
  switch (stroke.key) {
    case Key::Character:
      return static_cast<WORD>(VkKeyScanW(static_cast<wchar_t>(stroke.character)) & 0xFF);
    case Key::Tab:
      return VK_TAB;
    case Key::Enter:
      return VK_RETURN;
    case Key::Escape:
      return VK_ESCAPE;
    case Key::Space:
      return VK_SPACE;
    case Key::Left:
      return VK_LEFT;
    case Key::Right:
      return VK_RIGHT;
    case Key::Up:
      return VK_UP;
    case Key::Down:
      return VK_DOWN;
    case Key::PageUp:
      return VK_PRIOR;
    case Key::PageDown:
      return VK_NEXT;
    case Key::Home:
      return VK_HOME;
    case Key::End:
      return VK_END;
    case Key::F4:
      return VK_F4;
  }
  return 0;
}

void putOnClipboard(HWND owner, const std::wstring& text) {
  // Others on the desktop look into it as well.
  for (int tries = 0; !OpenClipboard(owner); ++tries) {
    if (tries == 100) throw std::runtime_error("the clipboard stays closed");
    Sleep(10);
  }
  EmptyClipboard();
  const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
  if (HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size)) {
    text.copy(static_cast<wchar_t*>(GlobalLock(memory)), text.size());
    static_cast<wchar_t*>(GlobalLock(memory))[text.size()] = L'\0';
    GlobalUnlock(memory);
    GlobalUnlock(memory);
    SetClipboardData(CF_UNICODETEXT, memory);
  }
  CloseClipboard();
}

// What cannot be seen cannot be clicked.
class WindowsDriver final : public UserDriver {
 public:
  explicit WindowsDriver(Surface& surface) : host_(surface) {}

  // A field that a plain click would change is given the focus with the other button.
  void go(Control& control) override {
    HWND window = windowOf(control);
    if (!window) return;
    if (control.kind() == Kind::TextBox) {
      host_.click(window);
    } else if (control.kind() == Kind::ComboBox &&
               static_cast<ComboBox&>(control).style() == ComboBox::Style::Editable) {
      host_.click(window, {10, 8});
    } else {
      host_.click(window, TestHost::Button::Right);
    }
  }

  void type(std::string_view keys) override {
    for (const wchar_t unit : win32::wide(keys)) {
      if (unit == L'\b') {
        host_.key(VK_BACK);
      } else if (unit == L'\r') {
        host_.key(VK_RETURN);
      } else if (unit == L'\t') {
        host_.key(VK_TAB);
      } else {
        host_.type(std::wstring(1, unit));
      }
    }
  }
  void press(const KeyStroke& stroke) override {
    host_.key(virtualKeyOf(stroke), stroke.shift, stroke.control, stroke.alt);
  }
  void tab(bool backwards) override { host_.key(VK_TAB, backwards); }
  void alt(char32_t letter) override { press({Key::Character, letter, false, false, true}); }
  void selectAll() override {
    host_.key(VK_HOME);
    host_.key(VK_END, true);
  }
  void paste(std::string_view text) override {
    putOnClipboard(host_.handle(), win32::wide(text));
    host_.key('V', false, true);
  }

  void click(CommandButton& button) override { clickOn(button); }
  void click(OptionButton& option) override { clickOn(option); }
  void click(CheckBox& box) override { clickOn(box); }
  void click(SSTab& tabs, int tab) override {
    HWND window = windowOf(tabs);
    if (!window) return;
    RECT area{};
    SendMessageW(window, TCM_GETITEMRECT, static_cast<WPARAM>(tab),
                 reinterpret_cast<LPARAM>(&area));
    host_.click(window, middleOf(area));
  }
  void click(ListBox& list, int line, bool control, bool shift) override {
    HWND window = windowOf(list);
    if (window) host_.click(window, lineIn(window, line), TestHost::Button::Left, control, shift);
  }
  void dblClick(ListBox& list, int line) override {
    HWND window = windowOf(list);
    if (window) host_.doubleClick(window, lineIn(window, line));
  }
  void dblClickBeside(ListBox& list) override {
    HWND window = windowOf(list);
    if (!window) return;
    RECT area{};
    SendMessageW(window, LB_GETITEMRECT, static_cast<WPARAM>(list.listCount() - 1),
                 reinterpret_cast<LPARAM>(&area));
    host_.doubleClick(window, {area.left + 10, area.bottom + 5});
  }
  void open(ComboBox& combo) override {
    HWND window = windowOf(combo);
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (window && GetComboBoxInfo(window, &info)) host_.click(window, middleOf(info.rcButton));
  }
  void choose(ComboBox& combo, int line) override {
    open(combo);
    HWND window = windowOf(combo);
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (!window || !SendMessageW(window, CB_GETDROPPEDSTATE, 0, 0)) return;
    GetComboBoxInfo(window, &info);
    host_.click(info.hwndList, lineIn(info.hwndList, line));
  }
  void wheel(ComboBox& combo) override {
    if (HWND window = windowOf(combo)) host_.wheel(window);
  }
  void scroll(ScrollBar& bar, int value) override {
    HWND window = windowOf(bar);
    SCROLLBARINFO info{};
    info.cbSize = sizeof info;
    if (!window || !GetScrollBarInfo(window, OBJID_CLIENT, &info)) return;
    const int thumb = info.xyThumbBottom - info.xyThumbTop;
    const int length =
        info.rcScrollBar.bottom - info.rcScrollBar.top - 2 * GetSystemMetrics(SM_CYVSCROLL);
    const int middle = (info.xyThumbTop + info.xyThumbBottom) / 2;
    const int steps = bar.max() - bar.min();
    const int away = steps > 0 ? MulDiv(value - bar.value(), length - thumb, steps) : 0;
    host_.drag(window, {8, middle}, {8, middle + away});
  }

 private:
  HWND windowOf(const Control& control) const {
    HWND window = host_.find(control.name());
    return window && IsWindowVisible(window) ? window : nullptr;
  }
  void clickOn(const Control& control) {
    if (HWND window = windowOf(control)) host_.click(window);
  }
  static POINT middleOf(const RECT& area) {
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
  }
  // Two clicks on one line, made one by one, are no double click.
  POINT lineIn(HWND list, int line) {
    RECT area{};
    SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&area));
    const LONG shift = (lines_++ % 2) * 20;
    return {area.left + 10 + shift, (area.top + area.bottom) / 2};
  }

  TestHost host_;
  int lines_ = 0;
};

}  // namespace

std::unique_ptr<UserDriver> makeDriver(Surface& surface) {
  return std::make_unique<WindowsDriver>(surface);
}

}  // namespace toolkit::test
