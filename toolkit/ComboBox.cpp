#include "toolkit/ComboBox.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "text/Utf8.h"
#include "toolkit/Completion.h"
#include "toolkit/FieldText.h"
#include "toolkit/Keys.h"
#include "toolkit/Surface.h"

namespace toolkit {

ComboBox::ComboBox(Container* parent, std::string name, Style style)
    : Control(parent, Kind::ComboBox, std::move(name)), style_(style) {}

void ComboBox::addItem(std::string_view text, long data) {
  items_.insert(items_.count(), {std::string(text), data});
  changed(Aspect::Items);
}

void ComboBox::setItems(std::vector<ListItem> items) {
  items_.assign(std::move(items));
  pointed_ = -1;
  const bool hadText = choose(-1);
  changed(Aspect::Items);
  if (items_.count() == 0) closeList(false);
  if (hadText) fire(onChange);
}

void ComboBox::clear() { setItems({}); }

void ComboBox::removeItem(int line) {
  items_.erase(line);
  pointed_ = -1;
  if (line == listIndex_) {
    listIndex_ = -1;
    if (style_ == Style::ListOnly) text_.clear();
  } else if (line < listIndex_) {
    --listIndex_;
  }
  changed(Aspect::Items);
}

void ComboBox::setText(std::string_view text) {
  if (holdsMarkBytes(text)) return setText(withoutMarkBytes(text));
  if (text == text_) return;
  if (style_ == Style::ListOnly) {
    setListIndex(items_.find(text));
    return;
  }
  text_ = text;
  listIndex_ = -1;
  placeSelection(length(), 0);
  changed(Aspect::Text);
  fire(onChange);
}

bool ComboBox::choose(int line) {
  const bool hadText = !text_.empty();
  listIndex_ = line;
  text_ = items_.text(line);
  placeSelection(length(), 0);
  return hadText;
}

int ComboBox::length() const { return static_cast<int>(text::length(text_)); }

void ComboBox::placeSelection(int start, int length) {
  const int end = this->length();
  selectionStart_ = std::clamp(start, 0, end);
  selectionLength_ = std::clamp(length, 0, end - selectionStart_);
  completed_ = -1;
}

// Nothing is completed in the middle of a text.
bool ComboBox::complete() {
  const int typed = length();
  if (!completes_ || selectionStart_ != typed) return false;
  const int line = lineBegunBy(items_, text_);
  if (line < 0) return false;
  text_ += text::mid(items_.text(line), static_cast<std::size_t>(typed) + 1);
  placeSelection(typed, length() - typed);
  completed_ = line;
  return true;
}

void ComboBox::takeCompletion() {
  if (completed_ < 0) return;
  const std::string line = items_.text(std::exchange(completed_, -1));
  setText(line);
}

void ComboBox::select(int start, int length) {
  if (style_ == Style::ListOnly) return;
  placeSelection(start, length);
  changed(Aspect::Caret);
}

void ComboBox::arriving(By how) {
  takeCompletion();
  if (how == By::Keyboard) {
    select(0, length());
  } else if (selectionLength_ > 0) {
    select(length(), 0);
  }
}

// Of windows that are not in use none is marked.
void ComboBox::leaving() {
  takeCompletion();
  if (selectionLength_ > 0) select(length(), 0);
}

void ComboBox::setListIndex(int line) {
  if (line != -1 && !items_.has(line)) throw std::invalid_argument("no such line in the combo box");
  if (line == listIndex_ && (line != -1 || text_.empty())) return;
  const bool hadText = choose(line);
  changed(Aspect::Selection);
  if (line != -1) {
    fire(onClick);
  } else if (hadText) {
    fire(onChange);
  }
}

void ComboBox::setMaxLength(int characters) {
  if (characters == maxLength_) return;
  maxLength_ = characters;
  changed(Aspect::Style);
}

char32_t ComboBox::keyPressed(char32_t key) {
  if (isMark(key) || (isKeyPress(key) && !mayChange())) return 0;
  if (key == kEnter) {
    closeList(false);
    takeCompletion();
  }
  if (onKeyPress && isKeyPress(key)) onKeyPress(key);
  return isMark(key) ? 0 : key;
}

char32_t ComboBox::userKeyPress(char32_t key) {
  if (style_ == Style::ListOnly) return key;
  char32_t kept = 0;
  userDoes(FocusFirst::No, [&] { kept = keyPressed(key); });
  return kept;
}

bool ComboBox::userEdit(std::string_view text, int caret) {
  if (style_ == Style::ListOnly) return false;
  bool done = false;
  userDoes(FocusFirst::No, [&] {
    if (!mayChange()) return;
    done = true;
    std::string accepted = acceptedEdit(text, text_, maxLength_);
    const bool differs = accepted != text_;
    const bool asGiven = accepted == text;
    const int before = length();
    text_ = std::move(accepted);
    pointed_ = -1;
    browsing_ = false;
    if (differs) listIndex_ = -1;
    // Backspace takes the rest away, and may be meant so.
    const bool longer = length() > (selectionLength_ > 0 ? selectionStart_ : before);
    placeSelection(caret < 0 ? length() : caret, 0);
    const bool completed = longer && complete();
    if (!asGiven || completed) changed(Aspect::Text);
    if (completed) changed(Aspect::Caret);
    if (differs) fire(onChange);
  });
  if (!done) changed(Aspect::Text);
  return done;
}

bool ComboBox::userSelect(int start, int length) {
  if (style_ == Style::ListOnly) return false;
  return userDoes(FocusFirst::No, [&] {
    takeCompletion();
    placeSelection(start, length);
  });
}

bool ComboBox::userChoose(int line) {
  bool done = false;
  if (items_.has(line)) {
    userDoes(FocusFirst::Yes, [&] {
      done = mayChange();
      if (!done || !items_.has(line)) return;
      choose(line);
      closeList(false);
      changed(Aspect::Selection);
      fire(onClick);
    });
  }
  if (!done) {
    closeList(false);
    changed(Aspect::Selection);
  }
  return done;
}

bool ComboBox::userDropDown() {
  bool done = false;
  userDoes(FocusFirst::Yes, [&] {
    done = mayChange();
    if (!done || opened_) return;
    fire(onDropDown);
    if (hasFocus()) open(true);
  });
  if (!done) changed(Aspect::Value);
  return done;
}

void ComboBox::openList() {
  if (items_.count() == 0) return;
  // What is being typed there goes on.
  if (!hasFocus() || surface()->focusGoal()) setFocus();
  open(false);
}

void ComboBox::open(bool browsing) {
  if (opened_ || !usable() || readOnly()) return;
  opened_ = true;
  browsing_ = browsing;
  changed(Aspect::Value);
}

bool ComboBox::userPoint(int line) {
  return opened_ && items_.has(line) && userDoes(FocusFirst::No, [this, line] { pointed_ = line; });
}

bool ComboBox::userCloseUp(bool confirmed) {
  return opened_ && userDoes(FocusFirst::No, [this, confirmed] { closeList(confirmed); });
}

// Whoever points at a line means that line; whoever typed a text, or had it searched, means that.
bool ComboBox::listTakesEnter() const {
  return style_ == Style::ListOnly || pointed_ >= 0 || browsing_;
}

void ComboBox::closeList(bool confirmed) {
  if (!opened_) return;
  const int line = confirmed ? pointed_ : -1;
  const bool chosen = items_.has(line);
  opened_ = false;
  pointed_ = -1;
  browsing_ = false;
  if (chosen) choose(line);
  changed(Aspect::Value);
  if (!chosen) return;
  changed(Aspect::Selection);
  fire(onClick);
}

}  // namespace toolkit
