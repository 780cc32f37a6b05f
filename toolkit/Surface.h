// What holds the child controls of one window: focus, tab order, keys, mnemonics, look-up by name,
// and the rule that one user action runs at a time.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "toolkit/Control.h"

namespace toolkit {

class CommandButton;

enum class Key {
  Character,  // with Alt: a mnemonic
  Tab,
  Enter,
  Escape,
  Space,
  Left,
  Right,
  Up,
  Down,
  PageUp,
  PageDown,
  Home,
  End
};

struct KeyStroke {
  Key key = Key::Character;
  char32_t character = 0;  // of Key::Character
  bool shift = false;
  bool control = false;
  bool alt = false;
};

class Surface : public Container {
 public:
  explicit Surface(std::string name);
  ~Surface() override;

  // The control that has the focus within this surface, kept while another window is active;
  // null before any had it.
  Control* focus() const { return focus_; }

  // The user moves the focus (mouse, mnemonic, Tab): the old control's LostFocus, then the new
  // one's GotFocus. False when it did not arrive: the target takes none, input is not accepted
  // now, or a LostFocus handler sent it back or elsewhere; whatever caused the move is then
  // dropped. Moving to the control that has it is true and fires nothing.
  bool moveFocus(Control* target);
  // Tab enters the surface from the host: the first or the last control that takes the focus.
  bool enter(bool last);

  // One stroke, looked at before the focused window sees it. True: used up. False: it is left to
  // the focused window (characters, arrows in an edit) or, when that has no use for it (Tab past
  // the ends, Escape without a cancel button), to the host.
  //   Tab, Shift+Tab        next, previous in tab order; left at the ends
  //   Alt+letter            mnemonic, next in tab order from the focus when several share it: a
  //                         label's goes to the control after it; a button is clicked; an option
  //                         is set; a check box toggled; a tab brought forward; a frame's goes to
  //                         its first control
  //   Ctrl+PageUp/PageDown, Ctrl+Tab    previous, next enabled page
  //   Enter                 key press 13 of a text or combo box; click of a focused button
  //   Space                 click of a focused button, option or check box
  //   arrows                in a group of options; pages, when the tabs have the focus
  //   Escape                clicks the cancel button when there is one that takes input
  bool key(const KeyStroke& stroke);
  // Would key() use the stroke? Fires nothing.
  bool wouldUse(const KeyStroke& stroke) const;

  // Clicked by Escape while it takes input; null for none.
  void setCancelButton(CommandButton* button) { cancelButton_ = button; }
  bool cancelable() const;

  // Upper-case letters whose mnemonic would do something now, in tab order, without repetition.
  std::vector<char32_t> mnemonics() const;

  // Any control below by its name, null when there is none.
  Control* find(std::string_view name);

  // Called when page, visibility, enabling or captions have changed what mnemonics() gives.
  std::function<void()> onInfoChanged;
  // Called when focus() has changed, for the windows behind.
  std::function<void()> onFocusMoved;

  // True while a user action or a call of the host runs: input is dropped meanwhile.
  bool busy() const { return actions_ > 0; }
  // Input is discarded as well while it is false (the host's UIDead, or design mode).
  void setAcceptsInput(bool accepts) { acceptsInput_ = accepts; }

  // One user action or host call. `accepted()` is false when another runs, the surface is
  // disabled, or it accepts no input: the caller then does nothing.
  class Action {
   public:
    enum class By { User, Host };  // a host's call is accepted on a disabled surface
    Action(Surface& surface, By by);
    Action(const Action&) = delete;
    Action& operator=(const Action&) = delete;
    // Ends the action. When the control with the focus became disabled or hidden meanwhile, the
    // focus goes to the next in tab order that can take it (its GotFocus fires, the other's
    // LostFocus does not).
    ~Action();
    bool accepted() const { return accepted_; }

   private:
    Surface& surface_;
    bool accepted_;
  };

 private:
  friend class Control;

  void giveFocus(Control* target);                // by code
  bool transfer(Control* target);                 // LostFocus, GotFocus
  void infoChanged();
  void forget(Control* control);                  // it is being destroyed
  std::vector<Control*> tabOrder() const;         // all focusable tab stops that take input
  Control* neighbour(bool backwards) const;

  Control* focus_ = nullptr;
  Control* wanted_ = nullptr;    // asked for while the surface was disabled
  Control* override_ = nullptr;  // asked for within a LostFocus handler
  bool leaving_ = false;
  bool acceptsInput_ = true;
  int actions_ = 0;
  CommandButton* cancelButton_ = nullptr;
};

}  // namespace toolkit
