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
  End,
  F4  // left to combo boxes
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

  // The control that has the focus within this surface, kept while another window is active;
  // null before any had it.
  Control* focus() const { return focus_; }
  // While a LostFocus handler runs, the control that the focus is being moved to; else null.
  const Control* focusGoal() const { return goal_; }

  // The user's click moves the focus: the old control's LostFocus, then the new one's GotFocus. In
  // a field it places the caret, while a field reached by a key has its text selected. False when
  // it did not arrive: the target takes none, input is not accepted now, or a LostFocus handler
  // sent it back or elsewhere; whatever caused the move is then dropped. Moving to the control that
  // has it is true and fires nothing.
  bool moveFocus(Control* target);
  // Tab enters the surface from the host: the first or the last control that takes the focus.
  bool enter(bool last);

  // One stroke, looked at before the focused window sees it. True: used up. False: it is left to
  // the focused window (characters, arrows in an edit) or, when that has no use for it (Tab past
  // the ends, Escape without a cancel button), to the host.
  //   Tab, Shift+Tab        next, previous in tab order; left at the ends. An open list is closed
  //                         first, and the line pointed at chosen
  //   Alt+letter            mnemonic, next in tab order from the focus when several share it: a
  //                         label's goes to the control after it; a button is clicked; an option
  //                         is set; a check box toggled; a tab brought forward; a frame's goes to
  //                         its first control, of options to the one that is set
  //   Ctrl+PageUp/PageDown, Ctrl+Tab    previous, next enabled page, wrapping around; the focus
  //                         goes to the tabs first, then to the page's first stop of Tab
  //   Enter                 of an open list: closes it, and the line pointed at is chosen;
  //                         key press 13 of a text or combo box; click of a focused button;
  //                         double-click of a list with a chosen line; else, click of the default
  //                         button when there is one that takes input
  //   Space                 click of a focused button, option or check box
  //   arrows                in a group of options (those of one container); pages, when the tabs
  //                         have the focus
  //   Escape                closes an open list, nothing being chosen; else, clicks the cancel
  //                         button when there is one that takes input; the focus stays where it is
  // Tab stops once in a group of options: at the one that is set, or at its first.
  bool key(const KeyStroke& stroke);
  // Would key() use the stroke? Fires nothing.
  bool wouldUse(const KeyStroke& stroke) const;

  // Clicked by Escape while it takes input; null for none.
  void setCancelButton(CommandButton* button) { cancelButton_ = button; }
  bool cancelable() const;
  // Clicked by Enter, while it takes input, when the control with the focus has no use for Enter;
  // null for none.
  void setDefaultButton(CommandButton* button) { defaultButton_ = button; }
  const CommandButton* defaultButton() const { return defaultButton_; }

  // Upper-case letters whose mnemonic would do something now, in tab order, without repetition.
  std::vector<char32_t> mnemonics() const;

  // Any control below by its name, null when there is none.
  Control* find(std::string_view name);

  // The room that the layout needs, and what the windows around it have, in twips: where they have
  // more, `onRoom` may lay the controls out anew. A surface that says nothing needs none.
  void setLeast(Extent least) { least_ = least; }
  Extent least() const { return least_; }
  void setRoom(Extent room);
  std::function<void(Extent room)> onRoom;

  // Called when page, visibility, enabling or captions have changed what mnemonics() gives.
  std::function<void()> onInfoChanged;
  // The user is about to change what a control holds, or to try, where it is read-only: the last
  // moment to make it so, or to make it no longer so.
  std::function<void(const Control&)> onAttempt;
  // Called when focus() has changed, for the windows behind.
  std::function<void()> onFocusMoved;

  // True while a user action or a call of the host runs: input is dropped meanwhile.
  bool busy() const { return acting_; }
  // Input is discarded as well while it is false (the host's UIDead, or design mode).
  void setAcceptsInput(bool accepts) { acceptsInput_ = accepts; }
  // Would a user's action be accepted now?
  bool takesUserInput() const { return !acting_ && acceptsInput_ && enabled(); }

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
    // LostFocus does not). An error of that GotFocus passes on, or is traced when the action ends
    // by another one.
    ~Action() noexcept(false);
    bool accepted() const { return accepted_; }

   private:
    Surface& surface_;
    bool accepted_;
    int exceptions_;
  };

 private:
  friend class Control;
  friend class Container;

  // What a stroke would do.
  struct Deed {
    enum class What {
      None,
      Focus,
      Click,
      Cancel,
      Enter,
      Page,      // in front
      IntoPage,  // the same, and the focus into it
      ConfirmList,
      CancelList,
      Nothing
    };
    What what = What::None;
    Control* control = nullptr;
    int page = 0;
  };
  struct Mnemonic {
    char32_t letter = 0;
    Deed deed;
    std::size_t position = 0;  // of the deed's control in walk()
  };

  void giveFocus(Control* target);           // by code
  bool bringFocus(Control* target, By how);  // by the user, within an action: did it arrive
  bool transfer(Control* target, By how);    // LostFocus, GotFocus: did it arrive
  // LostFocus: where its handler sends the focus, or null.
  Control* leave(const Control* target);
  void arrive(Control* target, By how);  // GotFocus

  void usabilityChanged();
  void infoChanged();
  void finish();                  // what waits for the end of an action
  void repairFocus();             // away from a control that takes no input any more
  void forget(Control* control);  // it, or what holds it, is being destroyed
  // Before a Tab. False: the choice has moved the focus.
  bool confirmOpenList();

  std::vector<Control*> walk() const;      // all below, in order of creation, containers first
  std::vector<Control*> tabOrder() const;  // all focusable tab stops that take input
  Control* neighbour(bool backwards) const;
  Control* stopAfter(const Control* control) const;  // wraps around

  Deed deedOf(const KeyStroke& stroke) const;
  Deed deedOfMnemonic(char32_t letter) const;
  Deed deedOfEnter() const;
  Deed deedOfArrow(bool backwards) const;
  Deed pageDeed(bool backwards) const;
  void perform(const Deed& deed);
  std::vector<Mnemonic> liveMnemonics() const;

  Extent least_;
  Control* focus_ = nullptr;
  bool left_ = false;            // focus_ has had its LostFocus already
  Control* wanted_ = nullptr;    // asked for while the surface was disabled
  Control* diverted_ = nullptr;  // asked for within a LostFocus handler
  const Control* goal_ = nullptr;
  bool leaving_ = false;
  int transfers_ = 0;
  bool acceptsInput_ = true;
  bool acting_ = false;
  CommandButton* cancelButton_ = nullptr;
  CommandButton* defaultButton_ = nullptr;
  bool infoChanged_ = false;
  std::vector<char32_t> toldMnemonics_;
  bool toldCancelable_ = false;
};

}  // namespace toolkit
