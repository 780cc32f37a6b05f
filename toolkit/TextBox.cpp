#include "toolkit/TextBox.h"

#include <algorithm>
#include <utility>

#include "text/Utf8.h"
#include "toolkit/FieldText.h"

namespace toolkit {

TextBox::TextBox(Container* parent, std::string name)
    : Control(parent, Kind::TextBox, std::move(name)) {}

void TextBox::setText(std::string_view text) {
  if (text == text_) return;
  if (holdsMarkBytes(text)) return setText(withoutMarkBytes(text));
  text_ = text;
  selectionStart_ = 0;
  selectionLength_ = 0;
  changed(Aspect::Text);
  fire(onChange);
}

void TextBox::renewText(std::string_view text) {
  if (text == text_ || holdsMarkBytes(text)) setText("");
  setText(text);
}

void TextBox::setMaxLength(int characters) {
  if (characters == maxLength_) return;
  maxLength_ = characters;
  changed(Aspect::Style);
}

void TextBox::setRightAligned(bool right) {
  if (right == rightAligned_) return;
  rightAligned_ = right;
  changed(Aspect::Style);
}

void TextBox::placeSelection(int start, int length) {
  const int end = static_cast<int>(text::length(text_));
  selectionStart_ = std::clamp(start, 0, end);
  selectionLength_ = std::clamp(length, 0, end - selectionStart_);
}

void TextBox::select(int start, int length) {
  placeSelection(start, length);
  changed(Aspect::Selection);
}

// A selection that is left from an earlier visit is none of the click's.
void TextBox::arriving(By how) {
  if (how == By::Keyboard) {
    select(0, static_cast<int>(text::length(text_)));
  } else if (selectionLength_ > 0) {
    select(selectionStart_ + selectionLength_, 0);
  }
}

char32_t TextBox::keyPressed(char32_t key) {
  if (isMark(key) || (isKeyPress(key) && !mayChange())) return 0;
  if (onKeyPress && isKeyPress(key)) onKeyPress(key);
  return isMark(key) ? 0 : key;
}

char32_t TextBox::userKeyPress(char32_t key) {
  char32_t kept = 0;
  userDoes(FocusFirst::No, [&] { kept = keyPressed(key); });
  return kept;
}

bool TextBox::userEdit(std::string_view text, int caret) {
  bool done = false;
  userDoes(FocusFirst::No, [&] {
    if (!mayChange()) return;
    done = true;
    std::string accepted = acceptedEdit(text, text_, maxLength_);
    const bool differs = accepted != text_;
    const bool asGiven = accepted == text;
    text_ = std::move(accepted);
    placeSelection(caret < 0 ? selectionStart_ : caret, 0);
    if (!asGiven) changed(Aspect::Text);
    if (differs) fire(onChange);
  });
  if (!done) changed(Aspect::Text);
  return done;
}

bool TextBox::userSelect(int start, int length) {
  return userDoes(FocusFirst::No, [&] { placeSelection(start, length); });
}

}  // namespace toolkit
