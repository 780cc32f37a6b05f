#include "toolkit/Surface.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "text/Utf8.h"
#include "toolkit/Buttons.h"
#include "toolkit/ControlClosed.h"
#include "toolkit/Keys.h"
#include "toolkit/ListBox.h"
#include "toolkit/SSTab.h"
#include "toolkit/Trace.h"

namespace toolkit {

namespace {

// Sets a variable for the length of a scope.
template <class T>
class Scoped {
 public:
  Scoped(T& variable, T value) : variable_(variable), before_(std::exchange(variable, value)) {}
  Scoped(const Scoped&) = delete;
  Scoped& operator=(const Scoped&) = delete;
  ~Scoped() { variable_ = before_; }

 private:
  T& variable_;
  T before_;
};

void collect(const Container& container, std::vector<Control*>& all) {
  for (Control* child : container.children()) {
    all.push_back(child);
    if (child->isContainer()) collect(static_cast<const Container&>(*child), all);
  }
}

std::size_t positionOf(const std::vector<Control*>& all, const Control* control) {
  return static_cast<std::size_t>(std::find(all.begin(), all.end(), control) - all.begin());
}

bool isWithin(const Control* control, const Control* outer) {
  while (control && control != outer) control = control->parent();
  return control != nullptr;
}

std::vector<const OptionButton*> usableOptions(const Control& option) {
  std::vector<const OptionButton*> options;
  for (const Control* sibling : option.parent()->children()) {
    if (sibling->kind() == Kind::OptionButton && sibling->usable()) {
      options.push_back(static_cast<const OptionButton*>(sibling));
    }
  }
  return options;
}

// Tab stops at one option of a group: the one that is set, or the first.
bool isStopOfItsGroup(const Control& option) {
  const std::vector<const OptionButton*> options = usableOptions(option);
  const auto set = std::find_if(options.begin(), options.end(),
                                [](const OptionButton* o) { return o->value(); });
  return &option == (set == options.end() ? options.front() : *set);
}

bool isTabStop(const Control& control) {
  if (!control.focusable() || !control.tabStop() || !control.usable()) return false;
  return control.kind() != Kind::OptionButton || isStopOfItsGroup(control);
}

bool inOneOptionGroup(const Control& a, const Control& b) {
  return a.kind() == Kind::OptionButton && b.kind() == Kind::OptionButton &&
         a.parent() == b.parent();
}

// The control that a label's mnemonic belongs to: the one created after it.
Control* labelled(const Control& label) {
  const std::vector<Control*>& siblings = label.parent()->children();
  const std::size_t next = positionOf(siblings, &label) + 1;
  return next < siblings.size() ? siblings[next] : nullptr;
}

// A list with a chosen line that a double-click would do something with.
bool opensOnEnter(const Control& control) {
  if (control.kind() != Kind::ListBox) return false;
  const auto& list = static_cast<const ListBox&>(control);
  return list.onDblClick && list.listIndex() >= 0;
}

// The option that is set, in the group of the one given; that one when none is.
Control* setOptionBeside(Control* option) {
  for (Control* sibling : option->parent()->children()) {
    if (sibling->kind() != Kind::OptionButton || !sibling->usable()) continue;
    if (static_cast<const OptionButton*>(sibling)->value()) return sibling;
  }
  return option;
}

Control* firstStop(const Container& container) {
  std::vector<Control*> all;
  collect(container, all);
  const auto found =
      std::find_if(all.begin(), all.end(), [](const Control* c) { return isTabStop(*c); });
  return found == all.end() ? nullptr : *found;
}

// In a group of options, where Tab would stop.
Control* firstThatTakesFocus(const Container& container) {
  std::vector<Control*> all;
  collect(container, all);
  const auto found = std::find_if(all.begin(), all.end(), [](const Control* control) {
    return control->focusable() && control->usable();
  });
  if (found == all.end()) return nullptr;
  return (*found)->kind() == Kind::OptionButton ? setOptionBeside(*found) : *found;
}

}  // namespace

Surface::Surface(std::string name) : Container(nullptr, Kind::Surface, std::move(name)) {}

void Surface::setRoom(Extent room) {
  if (onRoom) onRoom({std::max(room.width, least_.width), std::max(room.height, least_.height)});
}

// Focus ------------------------------------------------------------------------------------------

bool Surface::moveFocus(Control* target) {
  Action action(*this, Action::By::User);
  return action.accepted() && bringFocus(target, By::Pointer);
}

bool Surface::enter(bool last) {
  const Action action(*this, Action::By::User);
  if (!action.accepted()) return false;
  const std::vector<Control*> stops = tabOrder();
  return !stops.empty() && bringFocus(last ? stops.back() : stops.front(), By::Keyboard);
}

bool Surface::bringFocus(Control* target, By how) {
  if (leaving_ || !target || !target->focusable() || !target->usable()) return false;
  return transfer(target, how) && target->usable();
}

void Surface::giveFocus(Control* target) {
  if (!target->focusable() || !target->usableButForSurface()) return;
  wanted_ = nullptr;
  if (leaving_) {
    diverted_ = target;
  } else if (target->usable()) {
    transfer(target, By::Keyboard);
    if (!acting_ && transfers_ == 0) finish();
  } else {
    wanted_ = target;
  }
}

bool Surface::transfer(Control* target, By how) {
  if (target == focus_ && !left_) {
    if (how == By::Keyboard) target->arriving(how);
    return true;
  }
  const Scoped<int> inTransfer(transfers_, transfers_ + 1);
  Control* const old = focus_;
  Control* const diverted = leave(target);
  for (Control* goal : {diverted ? diverted : target, old, stopAfter(target)}) {
    if (!goal) continue;
    if (goal->usable()) {
      arrive(goal, goal == target ? how : By::Keyboard);
      return focus_ == target && !left_;
    }
    if (goal->usableButForSurface()) {
      wanted_ = goal;
      break;
    }
  }
  left_ = true;
  return false;
}

Control* Surface::leave(const Control* target) {
  if (!focus_ || left_ || !focus_->usable()) return nullptr;
  focus_->closeList(false);
  focus_->leaving();
  const Scoped<bool> leaving(leaving_, true);
  const Scoped<const Control*> goal(goal_, target);
  diverted_ = nullptr;
  fire(focus_->onLostFocus);
  return std::exchange(diverted_, nullptr);
}

void Surface::arrive(Control* target, By how) {
  if (focus_ && focus_ != target) focus_->closeList(false);
  focus_ = target;
  left_ = false;
  target->arriving(how);
  if (onFocusMoved) onFocusMoved();
  fire(target->onGotFocus);
}

void Surface::repairFocus() {
  if (!enabled() || !focus_ || focus_->usable()) return;
  // Each GotFocus may disable the next one; the number of controls bounds the search.
  for (std::size_t tries = walk().size(); tries > 0; --tries) {
    Control* next = stopAfter(focus_);
    if (!next) return;
    arrive(next, By::Keyboard);
    if (!focus_ || focus_->usable()) return;
  }
}

void Surface::usabilityChanged() {
  infoChanged_ = true;
  if (enabled() && wanted_) giveFocus(std::exchange(wanted_, nullptr));
  if (!acting_ && transfers_ == 0) finish();
}

void Surface::infoChanged() {
  infoChanged_ = true;
  if (!acting_ && transfers_ == 0) finish();
}

void Surface::finish() {
  const Scoped<bool> acting(acting_, true);
  repairFocus();
  if (!infoChanged_ || !onInfoChanged) return;
  infoChanged_ = false;
  std::vector<char32_t> now = mnemonics();
  if (now == toldMnemonics_ && cancelable() == toldCancelable_) return;
  toldMnemonics_ = std::move(now);
  toldCancelable_ = cancelable();
  onInfoChanged();
}

void Surface::forget(Control* control) {
  if (isWithin(focus_, control)) {
    focus_ = nullptr;
    left_ = false;
  }
  if (isWithin(wanted_, control)) wanted_ = nullptr;
  if (isWithin(diverted_, control)) diverted_ = nullptr;
  if (isWithin(cancelButton_, control)) cancelButton_ = nullptr;
  if (isWithin(defaultButton_, control)) defaultButton_ = nullptr;
}

// Order ------------------------------------------------------------------------------------------

std::vector<Control*> Surface::walk() const {
  std::vector<Control*> all;
  collect(*this, all);
  return all;
}

std::vector<Control*> Surface::tabOrder() const {
  std::vector<Control*> stops = walk();
  std::erase_if(stops, [](const Control* control) { return !isTabStop(*control); });
  return stops;
}

Control* Surface::neighbour(bool backwards) const {
  std::vector<Control*> all = walk();
  std::size_t from = positionOf(all, focus_);
  if (backwards) {
    std::reverse(all.begin(), all.end());
    if (focus_) from = all.size() - 1 - from;
  }
  const std::size_t start = focus_ ? from + 1 : 0;
  for (std::size_t i = start; i < all.size(); ++i) {
    if (focus_ && inOneOptionGroup(*focus_, *all[i])) continue;
    if (isTabStop(*all[i])) return all[i];
  }
  return nullptr;
}

Control* Surface::stopAfter(const Control* control) const {
  const std::vector<Control*> all = walk();
  const std::size_t from = positionOf(all, control);
  for (std::size_t i = 1; i < all.size(); ++i) {
    Control* candidate = all[(from + i) % all.size()];
    if (isTabStop(*candidate)) return candidate;
  }
  return nullptr;
}

Control* Surface::find(std::string_view name) {
  for (Control* control : walk()) {
    if (control->name() == name) return control;
  }
  return nullptr;
}

// Keys -------------------------------------------------------------------------------------------

bool Surface::key(const KeyStroke& stroke) {
  Action action(*this, Action::By::User);
  if (!action.accepted()) return false;
  const bool tab = stroke.key == Key::Tab && !stroke.control && !stroke.alt;
  if (tab && !confirmOpenList()) return true;
  const Deed deed = deedOf(stroke);
  perform(deed);
  return deed.what != Deed::What::None;
}

bool Surface::confirmOpenList() {
  const Control* const before = focus_;
  if (focus_ && focus_->hasOpenList()) focus_->closeList(true);
  return focus_ == before;
}

bool Surface::wouldUse(const KeyStroke& stroke) const {
  return takesUserInput() && deedOf(stroke).what != Deed::What::None;
}

bool Surface::cancelable() const { return cancelButton_ && cancelButton_->usable(); }

Surface::Deed Surface::deedOf(const KeyStroke& stroke) const {
  const Control* focused = focus_ && focus_->usable() ? focus_ : nullptr;
  if (stroke.key == Key::Character) {
    return stroke.alt && !stroke.control ? deedOfMnemonic(stroke.character) : Deed{};
  }
  if (stroke.alt) return {};
  if (stroke.control) {
    if (stroke.key == Key::Tab) return pageDeed(stroke.shift);
    if (stroke.key == Key::PageUp || stroke.key == Key::PageDown) {
      return pageDeed(stroke.key == Key::PageUp);
    }
    return {};
  }
  switch (stroke.key) {
    case Key::Tab:
      if (Control* next = neighbour(stroke.shift)) return {Deed::What::Focus, next};
      return {};
    case Key::Enter:
      return deedOfEnter();
    case Key::Space:
      if (focused && (focused->kind() == Kind::CommandButton ||
                      focused->kind() == Kind::OptionButton || focused->kind() == Kind::CheckBox)) {
        return {Deed::What::Click, focus_};
      }
      return {};
    case Key::Escape:
      if (focused && focused->hasOpenList()) return {Deed::What::CancelList, focus_};
      if (cancelable()) return {Deed::What::Cancel, cancelButton_};
      return {};
    case Key::Left:
    case Key::Up:
      return focused ? deedOfArrow(true) : Deed{};
    case Key::Right:
    case Key::Down:
      return focused ? deedOfArrow(false) : Deed{};
    default:
      return {};
  }
}

Surface::Deed Surface::deedOfEnter() const {
  if (focus_ && focus_->usable()) {
    if (focus_->hasOpenList() && focus_->listTakesEnter()) return {Deed::What::ConfirmList, focus_};
    if (focus_->takesKeyPresses() || opensOnEnter(*focus_)) return {Deed::What::Enter, focus_};
    if (focus_->kind() == Kind::CommandButton) return {Deed::What::Click, focus_};
  }
  if (defaultButton_ && defaultButton_->usable()) return {Deed::What::Click, defaultButton_};
  return {};
}

Surface::Deed Surface::deedOfArrow(bool backwards) const {
  if (focus_->kind() == Kind::OptionButton) {
    const std::vector<const OptionButton*> options = usableOptions(*focus_);
    const auto here = std::find(options.begin(), options.end(), focus_) - options.begin();
    const std::size_t count = options.size();
    const std::size_t next = (static_cast<std::size_t>(here) + (backwards ? count - 1 : 1)) % count;
    return {Deed::What::Click, const_cast<OptionButton*>(options[next])};
  }
  if (focus_->kind() == Kind::SSTab) {
    const auto& tabs = static_cast<const SSTab&>(*focus_);
    const int step = backwards ? -1 : 1;
    for (int page = tabs.tab() + step; page >= 0 && page < tabs.tabs(); page += step) {
      if (tabs.tabEnabled(page)) return {Deed::What::Page, focus_, page};
    }
    return {Deed::What::Nothing};
  }
  return {};
}

// Of the tabs around the focus, or the first on the surface.
Surface::Deed Surface::pageDeed(bool backwards) const {
  Control* around = focus_;
  while (around && around->kind() != Kind::SSTab) around = around->parent();
  if (!around) {
    const std::vector<Control*> all = walk();
    const auto first = std::find_if(all.begin(), all.end(), [](const Control* control) {
      return control->kind() == Kind::SSTab && control->usable();
    });
    if (first == all.end()) return {};
    around = *first;
  }
  if (!around->usable()) return {};
  const auto& tabs = static_cast<const SSTab&>(*around);
  const int count = tabs.tabs();
  for (int i = 1; i < count; ++i) {
    const int page = (tabs.tab() + (backwards ? count - i : i)) % count;
    if (tabs.tabEnabled(page)) return {Deed::What::IntoPage, around, page};
  }
  return {};
}

Surface::Deed Surface::deedOfMnemonic(char32_t letter) const {
  std::vector<Mnemonic> live = liveMnemonics();
  const char32_t wanted = text::upper(letter);
  std::erase_if(live, [wanted](const Mnemonic& m) { return m.letter != wanted; });
  if (live.empty()) return {};
  std::stable_sort(live.begin(), live.end(),
                   [](const Mnemonic& a, const Mnemonic& b) { return a.position < b.position; });
  const std::vector<Control*> all = walk();
  const std::size_t from = positionOf(all, focus_);
  for (const Mnemonic& mnemonic : live) {
    if (focus_ && mnemonic.position > from) return mnemonic.deed;
  }
  return live.front().deed;
}

std::vector<Surface::Mnemonic> Surface::liveMnemonics() const {
  std::vector<Mnemonic> live;
  const std::vector<Control*> all = walk();
  const auto add = [&](std::string_view caption, Deed::What what, Control* control, int page = 0) {
    const char32_t letter = mnemonicOf(caption);
    if (!letter || !control || !control->focusable() || !control->usable()) return;
    live.push_back({letter, {what, control, page}, positionOf(all, control)});
  };
  for (Control* control : all) {
    if (!control->usable()) continue;
    switch (control->kind()) {
      case Kind::Label:
        add(control->caption(), Deed::What::Focus, labelled(*control));
        break;
      case Kind::Frame:
        if (!mnemonicOf(control->caption())) break;
        add(control->caption(), Deed::What::Focus,
            firstThatTakesFocus(static_cast<const Container&>(*control)));
        break;
      case Kind::CommandButton:
      case Kind::OptionButton:
      case Kind::CheckBox:
        add(control->caption(), Deed::What::Click, control);
        break;
      case Kind::SSTab: {
        const auto& tabs = static_cast<const SSTab&>(*control);
        for (int page = 0; page < tabs.tabs(); ++page) {
          if (tabs.tabEnabled(page)) {
            add(tabs.page(page).caption(), Deed::What::Page, control, page);
          }
        }
        break;
      }
      default:
        break;
    }
  }
  return live;
}

std::vector<char32_t> Surface::mnemonics() const {
  std::vector<char32_t> letters;
  for (const Mnemonic& mnemonic : liveMnemonics()) {
    if (std::find(letters.begin(), letters.end(), mnemonic.letter) == letters.end()) {
      letters.push_back(mnemonic.letter);
    }
  }
  return letters;
}

void Surface::perform(const Deed& deed) {
  switch (deed.what) {
    case Deed::What::None:
    case Deed::What::Nothing:
      break;
    case Deed::What::Focus:
      bringFocus(deed.control, By::Keyboard);
      break;
    case Deed::What::Click:
      if (bringFocus(deed.control, By::Keyboard)) deed.control->pressed();
      break;
    case Deed::What::Cancel:
      deed.control->pressed();
      break;
    case Deed::What::Enter:
      deed.control->keyPressed(kEnter);
      break;
    case Deed::What::ConfirmList:
    case Deed::What::CancelList:
      deed.control->closeList(deed.what == Deed::What::ConfirmList);
      break;
    case Deed::What::Page:
    case Deed::What::IntoPage: {
      auto& tabs = static_cast<SSTab&>(*deed.control);
      if (!bringFocus(&tabs, By::Keyboard) || !tabs.tabEnabled(deed.page)) break;
      tabs.setTab(deed.page);
      Control* first =
          deed.what == Deed::What::IntoPage ? firstStop(tabs.page(deed.page)) : nullptr;
      if (first && focus_ == &tabs) bringFocus(first, By::Keyboard);
      break;
    }
  }
}

// Actions ----------------------------------------------------------------------------------------

Surface::Action::Action(Surface& surface, By by)
    : surface_(surface),
      accepted_(by == By::Host ? !surface.acting_ : surface.takesUserInput()),
      exceptions_(std::uncaught_exceptions()) {
  if (accepted_) surface_.acting_ = true;
}

Surface::Action::~Action() noexcept(false) {
  if (!accepted_) return;
  surface_.acting_ = false;
  if (std::uncaught_exceptions() == exceptions_) {
    surface_.finish();
    return;
  }
  try {
    surface_.finish();
  } catch (const std::exception& error) {
    trace("Surface", error);
  } catch (const ControlClosed&) {
    trace("Surface", "closed");
  }
}

}  // namespace toolkit
