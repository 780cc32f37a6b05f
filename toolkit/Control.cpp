#include "toolkit/Control.h"

#include <algorithm>
#include <utility>

#include "text/Utf8.h"
#include "toolkit/Surface.h"

namespace toolkit {

char32_t mnemonicOf(std::string_view caption) {
  const std::vector<char32_t> characters = text::decode(caption);
  for (std::size_t i = 0; i + 1 < characters.size(); ++i) {
    if (characters[i] != U'&') continue;
    if (characters[i + 1] != U'&') return text::upper(characters[i + 1]);
    ++i;
  }
  return 0;
}

std::string withoutMnemonic(std::string_view caption) {
  std::string shown;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && i + 1 < caption.size()) ++i;
    shown += caption[i];
  }
  return shown;
}

Control::Control(Container* parent, Kind kind, std::string name)
    : parent_(parent), kind_(kind), name_(std::move(name)), tabStop_(kind != Kind::ScrollBar) {
  if (parent_) parent_->children_.push_back(this);
}

Control::~Control() {
  if (!parent_) return;
  if (Surface* top = surface()) top->forget(this);
  std::erase(parent_->children_, this);
}

bool Control::isContainer() const {
  switch (kind_) {
    case Kind::Frame:
    case Kind::TabPage:
    case Kind::SSTab:
    case Kind::Surface:
      return true;
    default:
      return false;
  }
}

Surface* Control::surface() const {
  const Control* top = this;
  while (top->parent_) top = top->parent_;
  if (top->kind_ != Kind::Surface) return nullptr;
  return static_cast<Surface*>(const_cast<Control*>(top));
}

void Control::setEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  tellBelow(Aspect::Enabled);
  usabilityChanged();
}

void Control::setVisible(bool visible) {
  if (visible == visible_) return;
  visible_ = visible;
  tellBelow(Aspect::Visible);
  usabilityChanged();
}

void Control::setReadOnly(bool readOnly) {
  if (readOnly == readOnly_) return;
  readOnly_ = readOnly;
  changed(Aspect::ReadOnly);
  usabilityChanged();
}

bool Control::closed() const {
  const bool readable = kind_ != Kind::CommandButton && kind_ != Kind::ScrollBar;
  return !enabled_ || (readOnly_ && !readable);
}

bool Control::usableButForSurface() const {
  for (const Control* c = this; c->kind_ != Kind::Surface; c = c->parent_) {
    if (c->closed() || !c->parent_) return false;
  }
  return shown();
}

bool Control::reachable() const {
  for (const Control* c = this; c; c = c->parent_) {
    if (c->closed()) return false;
  }
  return true;
}

bool Control::shown() const {
  for (const Control* c = this; c; c = c->parent_) {
    if (!c->visible_ || (c->parent_ && !c->parent_->holdsInView(*c))) return false;
  }
  return true;
}

void Control::setPale(bool pale) {
  if (pale == pale_) return;
  pale_ = pale;
  changed(Aspect::Style);
}

void Control::setPlace(const Place& place) {
  if (place == place_) return;
  place_ = place;
  changed(Aspect::Place);
}

void Control::setFont(const Font& font) {
  if (font == font_) return;
  font_ = font;
  changed(Aspect::Style);
}

void Control::setColor(Color color) {
  if (color == color_) return;
  color_ = color;
  changed(Aspect::Style);
}

void Control::setCaption(std::string_view caption) {
  if (caption == caption_) return;
  caption_ = caption;
  changed(Aspect::Caption);
  if (Surface* top = surface()) top->infoChanged();
}

void Control::setRemark(std::string_view remark) {
  if (remark == remark_) return;
  remark_ = remark;
  changed(Aspect::Caption);
}

bool Control::focusable() const {
  switch (kind_) {
    case Kind::Frame:
    case Kind::Label:
    case Kind::TabPage:
    case Kind::Surface:
      return false;
    default:
      return true;
  }
}

void Control::setTabStop(bool stop) { tabStop_ = stop; }

void Control::setFocus() {
  if (Surface* top = surface()) top->giveFocus(this);
}

bool Control::hasFocus() const {
  const Surface* top = surface();
  return top && top->focus() == this;
}

void Control::changed(Aspect what) {
  if (peer_) peer_->update(what);
}

void Control::fire(const Handler& handler) {
  if (handler) handler();
}

void Control::usabilityChanged() {
  if (Surface* top = surface()) top->usabilityChanged();
}

bool Control::userDoes(FocusFirst focusFirst, const Handler& deed) {
  Surface* top = surface();
  if (!top) return false;
  Surface::Action action(*top, Surface::Action::By::User);
  if (!action.accepted() || !usable()) return false;
  if (focusFirst == FocusFirst::Yes && !top->bringFocus(this, By::Pointer)) return false;
  deed();
  return true;
}

bool Control::mayChange() {
  const Surface* top = surface();
  if (top && top->onAttempt) top->onAttempt(*this);
  return !readOnly_;
}

void Control::tellBelow(Aspect what) {
  changed(what);
  if (!isContainer()) return;
  for (Control* child : static_cast<Container*>(this)->children_) child->tellBelow(what);
}

void Container::moveLast(Control& child) {
  const auto at = std::find(children_.begin(), children_.end(), &child);
  if (at != children_.end()) std::rotate(at, at + 1, children_.end());
}

Container::~Container() {
  Surface* top = kind() == Kind::Surface ? nullptr : surface();
  for (Control* child : children_) {
    if (top) top->forget(child);
    child->parent_ = nullptr;
  }
}

}  // namespace toolkit
