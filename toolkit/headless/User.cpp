#include "toolkit/headless/User.h"

#include <algorithm>
#include <string>
#include <utility>

#include "text/Utf8.h"
#include "toolkit/Keys.h"

namespace toolkit::headless {

namespace {

bool takesInput(const Surface& surface, const Control& control) {
  return !surface.busy() && control.usable();
}

bool full(std::string_view text, int limit) {
  return limit > 0 && text::length(text) >= static_cast<std::size_t>(limit);
}

// What the selection of a text or combo box is replaced by.
template <class Field>
std::string replaced(const Field& field, int start, int length, std::string_view by) {
  const std::string& whole = field.text();
  return text::left(whole, static_cast<std::size_t>(start)) + std::string(by) +
         text::mid(whole, static_cast<std::size_t>(start + length) + 1);
}

// What its window does with a key that it keeps.
template <class Field>
bool typedInto(Field& field, char32_t key) {
  const char32_t kept = field.userKeyPress(key);
  if (!kept || !field.hasFocus()) return true;
  int start = field.selectionStart();
  int length = field.selectionLength();
  std::string inserted;
  if (kept == kBackspace) {
    if (length == 0 && start == 0) return true;
    if (length == 0) {
      --start;
      length = 1;
    }
  } else {
    if (length == 0 && full(field.text(), field.maxLength())) return true;
    inserted = text::encode(kept);
  }
  const int caret = start + (inserted.empty() ? 0 : 1);
  return field.userEdit(replaced(field, start, length, inserted), caret);
}

}  // namespace

bool User::go(Control& control, Caller at) {
  caller_ = at;
  return surface_.moveFocus(&control);
}

bool User::type(std::string_view keys, Caller at) {
  caller_ = at;
  bool all = true;
  for (const char32_t key : text::decode(keys)) all = typeKey(key) && all;
  return all;
}

bool User::typeKey(char32_t key) {
  if (key == U'\t') return tab(false, caller_);
  if (key == U'\r') return press(Key::Enter, caller_);
  if (key == U' ' && press(Key::Space, caller_)) return true;
  Control* focus = surface_.focus();
  if (!focus || !takesInput(surface_, *focus)) return false;
  if (focus->kind() == Kind::TextBox) return typedInto(static_cast<TextBox&>(*focus), key);
  if (focus->kind() != Kind::ComboBox) return false;
  auto& combo = static_cast<ComboBox&>(*focus);
  return combo.style() == ComboBox::Style::Editable && typedInto(combo, key);
}

bool User::press(const KeyStroke& stroke, Caller at) {
  caller_ = at;
  Control* focus = surface_.focus();
  if (surface_.key(stroke)) return true;
  if (!focus || focus->kind() != Kind::ComboBox || !takesInput(surface_, *focus)) return false;
  return pressIn(static_cast<ComboBox&>(*focus), stroke);
}

// What a combo box's window does with the keys that the surface leaves to it.
bool User::pressIn(ComboBox& combo, const KeyStroke& stroke) {
  const bool arrow = stroke.key == Key::Up || stroke.key == Key::Down;
  if (stroke.key != Key::F4 && !arrow) return false;
  if (stroke.alt || !arrow) return combo.opened() ? combo.userCloseUp(true) : combo.userDropDown();
  const int from = combo.pointedLine() >= 0 ? combo.pointedLine() : combo.listIndex();
  const int line = stroke.key == Key::Down ? from + 1 : from - 1;
  return combo.opened() ? combo.userPoint(line) : combo.userChoose(line);
}

bool User::press(Key key, Caller at) {
  KeyStroke stroke;
  stroke.key = key;
  return press(stroke, at);
}

bool User::tab(bool backwards, Caller at) {
  KeyStroke stroke;
  stroke.key = Key::Tab;
  stroke.shift = backwards;
  return press(stroke, at);
}

bool User::alt(char32_t letter, Caller at) {
  KeyStroke stroke;
  stroke.character = letter;
  stroke.alt = true;
  return press(stroke, at);
}

bool User::fill(Control& field, std::string_view keys, Caller at) {
  if (!go(field, at)) return false;
  if (field.kind() == Kind::TextBox) {
    auto& box = static_cast<TextBox&>(field);
    box.userSelect(0, static_cast<int>(text::length(box.text())));
  }
  if (field.kind() == Kind::ComboBox) {
    auto& combo = static_cast<ComboBox&>(field);
    combo.userSelect(0, static_cast<int>(text::length(combo.text())));
  }
  return type(keys.empty() ? "\b" : keys, at);
}

bool User::paste(std::string_view text, Caller at) {
  caller_ = at;
  Control* focus = surface_.focus();
  if (!focus || focus->kind() != Kind::TextBox || !takesInput(surface_, *focus)) return false;
  auto& box = static_cast<TextBox&>(*focus);
  const int start = box.selectionStart();
  const int length = box.selectionLength();
  std::string pasted(text);
  if (box.maxLength() > 0) {
    const int room = box.maxLength() - static_cast<int>(text::length(box.text())) + length;
    pasted = text::left(pasted, static_cast<std::size_t>(std::max(0, room)));
  }
  return box.userEdit(replaced(box, start, length, pasted),
                      start + static_cast<int>(text::length(pasted)));
}

bool User::click(CommandButton& button, Caller at) {
  caller_ = at;
  return button.userClick();
}

bool User::click(OptionButton& option, Caller at) {
  caller_ = at;
  return option.userClick();
}

bool User::click(CheckBox& box, Caller at) {
  caller_ = at;
  return box.userClick();
}

bool User::click(SSTab& tabs, int tab, Caller at) {
  caller_ = at;
  return tabs.userSelectTab(tab);
}

bool User::click(ListBox& list, int line, bool control, bool shift, Caller at) {
  caller_ = at;
  const bool extended = list.selection() == ListBox::Selection::Extended;
  return extended ? select(list, line, control, shift) : list.userSelect(line);
}

bool User::select(ListBox& list, int line, bool control, bool shift) {
  std::vector<int> lines;
  if (control) {
    for (int i = 0; i < list.listCount(); ++i) {
      if (list.selected(i) && (shift || i != line)) lines.push_back(i);
    }
  }
  if (shift) {
    const int from = anchored_ == &list ? anchor_ : std::max(0, list.listIndex());
    for (int i = std::min(from, line); i <= std::max(from, line); ++i) lines.push_back(i);
  } else {
    anchored_ = &list;
    anchor_ = line;
    if (!control || !list.selected(line)) lines.push_back(line);
  }
  return list.userSelect(line, lines);
}

bool User::dblClick(ListBox& list, int line, Caller at) {
  caller_ = at;
  return list.userDblClick(line);
}

bool User::dblClickBeside(ListBox& list, Caller at) {
  caller_ = at;
  return list.userDblClick(-1);
}

bool User::scroll(ListBox& list, int line, Caller at) {
  caller_ = at;
  if (!takesInput(surface_, list)) return false;
  list.userScroll(line);
  return true;
}

bool User::open(ComboBox& combo, Caller at) {
  caller_ = at;
  if (combo.opened()) combo.userCloseUp(false);
  return combo.userDropDown();
}

bool User::choose(ComboBox& combo, int line, Caller at) {
  caller_ = at;
  return (combo.opened() || (open(combo, at) && combo.opened())) && combo.userChoose(line);
}

bool User::scroll(ScrollBar& bar, int value, Caller at) {
  caller_ = at;
  return bar.userScroll(value);
}

// An open list scrolls, which chooses nothing.
bool User::wheel(ComboBox& combo, Caller at) {
  caller_ = at;
  return combo.opened() && takesInput(surface_, combo);
}

}  // namespace toolkit::headless
