// What every child control has in common. A control's state lives here, in the portable object; a
// peer, when there is one, mirrors it on a window and passes the user's input back through the
// "user" entry points, the same that a test's user calls.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

class Container;
class Surface;

// Positions and sizes in twips: 1440 to the inch, 15 to the pixel at 96 dpi; left and top are
// relative to the parent container.
struct Place {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  bool operator==(const Place&) const = default;
};

struct Extent {
  int width = 0;
  int height = 0;
  bool operator==(const Extent&) const = default;
};

struct Font {
  std::string name;  // empty: the ambient font
  int size = 0;      // points; 0: the ambient size
  bool bold = false;
  bool operator==(const Font&) const = default;
};

// 0x00RRGGBB.
using Color = unsigned;
inline constexpr Color kBlack = 0x000000;
inline constexpr Color kRed = 0xFF0000;

enum class Kind {
  TextBox,
  ComboBox,
  ListBox,
  OptionButton,
  CheckBox,
  CommandButton,
  Frame,
  Label,
  ScrollBar,
  SSTab,
  TabPage,
  Surface
};

// What has changed in a control, for its peer.
//   Text       the text of a text or combo box
//   Items      the lines of a list or combo box
//   Selection  chosen line or lines; caret and selection of a text box
//   Caret      caret and selection of a combo box
//   Value      of an option, check box or scroll bar; page in front; first line in view of a list;
//              list of a combo box open or closed
//   Range      of a scroll bar, its large change included
//   Style      font, colour, paleness, alignment, limit of characters
//   ReadOnly   whether the user may change what it holds
enum class Aspect {
  Text,
  Items,
  Selection,
  Caret,
  Value,
  Range,
  Caption,
  Enabled,
  Visible,
  Place,
  Style,
  ReadOnly
};

// Mirrors one control on a window. Outlives nothing: it is detached before its window goes.
class Peer {
 public:
  Peer() = default;
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;
  virtual ~Peer() = default;
  // Called after the object's state has changed, from within the call that changed it.
  // Enabled and Visible are also told to every control inside a container whose own changed.
  virtual void update(Aspect what) = 0;
};

// "&Ajouter" shows "Ajouter" with the mnemonic A; "&&" is an ampersand.
char32_t mnemonicOf(std::string_view caption);          // upper case; 0 when there is none
std::string withoutMnemonic(std::string_view caption);  // the text as the user reads it

class Control {
 public:
  using Handler = std::function<void()>;

  // The parent keeps a pointer to the control until the control is destroyed. A control that
  // outlives its parent is on no surface any more and takes no input. Tab order is the order of
  // creation within the parent.
  Control(Container* parent, Kind kind, std::string name);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control();

  Kind kind() const { return kind_; }
  bool isContainer() const;  // by kind
  const std::string& name() const { return name_; }
  Container* parent() const { return parent_; }
  Surface* surface() const;

  bool enabled() const { return enabled_; }
  void setEnabled(bool enabled);
  bool visible() const { return visible_; }
  void setVisible(bool visible);
  // It and every frame, tab page and surface around it are enabled (a disabled single tab's page
  // counts as disabled).
  bool reachable() const;
  // It and everything around it are visible; a page that is not in front is not.
  bool shown() const;
  // Takes input: reachable and shown.
  bool usable() const { return reachable() && shown(); }

  // What a read-only control holds is changed by code alone: the user reads it, goes there, selects
  // and copies. A button or scroll bar, where there is nothing to be read, takes no input.
  bool readOnly() const { return readOnly_; }
  void setReadOnly(bool readOnly);
  // Takes no input by its own state, whatever is around it.
  bool closed() const;

  // Looks as if it took no input, and takes it all the same: what it is for is not there yet.
  bool pale() const { return pale_; }
  void setPale(bool pale);

  const Place& place() const { return place_; }
  void setPlace(const Place& place);
  const Font& font() const { return font_; }
  void setFont(const Font& font);
  Color color() const { return color_; }
  void setColor(Color color);
  // Text shown by the control itself; of a text or combo box it is unused.
  const std::string& caption() const { return caption_; }
  void setCaption(std::string_view caption);
  // What a screen reader says after its name: what is seen by a colour alone. "" for nothing.
  const std::string& remark() const { return remark_; }
  void setRemark(std::string_view remark);

  // The label that names it to a screen reader, where that is not the one before it; must outlive
  // it. Null: none is said.
  const Control* label() const { return label_; }
  void setLabel(const Control& label) { label_ = &label; }

  // Can it have the focus at all (by kind: all but frames, labels, pages and surfaces), and does
  // Tab stop at it (by default all but scroll bars, which take the focus when clicked).
  bool focusable() const;
  bool tabStop() const { return tabStop_; }
  void setTabStop(bool stop);

  // Gives the focus by code. Does nothing for a disabled or hidden control; asked for while only
  // the surface is disabled, it is remembered and given when the surface is enabled again. Within
  // a LostFocus handler it decides where the focus goes instead. The text of a field is selected,
  // of one that has the focus already too: what is typed replaces it.
  void setFocus();
  bool hasFocus() const;

  Handler onGotFocus;
  Handler onLostFocus;

  Peer* peer() const { return peer_; }
  void setPeer(Peer* peer) { peer_ = peer; }

 protected:
  void changed(Aspect what);
  static void fire(const Handler& handler);
  // What takes input has changed: the focus may have to move on.
  void usabilityChanged();

  // Runs what the user did to this control as one user action. Does nothing and gives back false
  // when the action is not accepted, the control takes no input, or (FocusFirst::Yes) the focus
  // did not arrive here.
  enum class FocusFirst { Yes, No };
  bool userDoes(FocusFirst focusFirst, const Handler& deed);
  // May the user change what it holds? The surface is told of the attempt first
  // (Surface::onAttempt). Within an action.
  bool mayChange();

  // What a click does once the focus is here, and what a key press gives; both within an action.
  virtual void pressed() {}
  virtual char32_t keyPressed(char32_t) { return 0; }
  virtual bool takesKeyPresses() const { return false; }
  // A list of its own that is open has the first say in Enter (unless what was typed is meant),
  // Escape and Tab. Closing it chooses the line pointed at, or leaves all as it was; within an
  // action.
  virtual bool hasOpenList() const { return false; }
  virtual bool listTakesEnter() const { return false; }
  virtual void closeList(bool /*confirmed*/) {}
  // The focus comes here, and is about to go; neither is for the system's handlers.
  enum class By { Keyboard, Pointer };  // by the keyboard or by code, or by a click
  virtual void arriving(By /*how*/) {}
  virtual void leaving() {}

 private:
  friend class Container;
  friend class Surface;

  virtual bool holdsInView(const Control&) const { return true; }
  void tellBelow(Aspect what);
  // Apart from the surface itself being disabled.
  bool usableButForSurface() const;

  Container* parent_;
  Kind kind_;
  std::string name_;
  bool enabled_ = true;
  bool visible_ = true;
  bool readOnly_ = false;
  bool pale_ = false;
  bool tabStop_ = true;
  Place place_;
  Font font_;
  Color color_ = kBlack;
  std::string caption_;
  std::string remark_;
  const Control* label_ = nullptr;
  Peer* peer_ = nullptr;
};

// A control that holds others: frame, tab page, surface, tab control.
class Container : public Control {
 public:
  using Control::Control;
  Container(const Container&) = delete;
  Container& operator=(const Container&) = delete;
  ~Container() override;
  const std::vector<Control*>& children() const { return children_; }
  // Tab comes to that child last, whenever it was created. Before it is shown.
  void moveLast(Control& child);

 protected:
  // Has been brought to the front, or put behind, with everything in it.
  static void viewChanged(Container& container) { container.tellBelow(Aspect::Visible); }

 private:
  friend class Control;
  std::vector<Control*> children_;
};

}  // namespace toolkit
