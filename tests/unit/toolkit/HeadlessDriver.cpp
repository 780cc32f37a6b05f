// The user of a surface without windows.
#include "tests/unit/toolkit/UserDriver.h"
#include "text/Utf8.h"
#include "toolkit/headless/User.h"

namespace toolkit::test {

namespace {

class HeadlessDriver : public UserDriver {
 public:
  explicit HeadlessDriver(Surface& surface) : surface_(surface), user_(surface) {}

  void go(Control& control) override { user_.go(control); }
  void type(std::string_view keys) override { user_.type(keys); }
  void press(const KeyStroke& stroke) override { user_.press(stroke); }
  void tab(bool backwards) override { user_.tab(backwards); }
  void alt(char32_t letter) override { user_.alt(letter); }
  void selectAll() override {
    Control* focus = surface_.focus();
    if (!focus || focus->kind() != Kind::TextBox) return;
    auto& box = static_cast<TextBox&>(*focus);
    box.userSelect(0, static_cast<int>(text::length(box.text())));
  }
  void paste(std::string_view text) override { user_.paste(text); }
  void click(CommandButton& button) override { user_.click(button); }
  void click(OptionButton& option) override { user_.click(option); }
  void click(CheckBox& box) override { user_.click(box); }
  void click(SSTab& tabs, int tab) override { user_.click(tabs, tab); }
  void click(ListBox& list, int line, bool control, bool shift) override {
    user_.click(list, line, control, shift);
  }
  void dblClick(ListBox& list, int line) override { user_.dblClick(list, line); }
  void dblClickBeside(ListBox& list) override { user_.dblClickBeside(list); }
  void open(ComboBox& combo) override { user_.open(combo); }
  void choose(ComboBox& combo, int line) override { user_.choose(combo, line); }
  void wheel(ComboBox& combo) override { user_.wheel(combo); }
  void scroll(ScrollBar& bar, int value) override { user_.scroll(bar, value); }

 private:
  Surface& surface_;
  headless::User user_;
};

}  // namespace

std::unique_ptr<UserDriver> makeDriver(Surface& surface) {
  return std::make_unique<HeadlessDriver>(surface);
}

}  // namespace toolkit::test
