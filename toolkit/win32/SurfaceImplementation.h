// The window behind a SurfaceWindow, as its peers see it.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <tuple>
#include <vector>

#include "toolkit/Surface.h"
#include "toolkit/win32/Scale.h"
#include "toolkit/win32/SurfaceWindow.h"

namespace toolkit::win32 {

class ControlPeer;

// The stroke that a key message stands for, with the shift keys as they are now; none for keys
// that a surface has no use for.
std::optional<KeyStroke> strokeOf(UINT message, WPARAM wParam);

// Shared by all entries: whoever calls into the portable side holds a reference to it, since a
// handler may destroy the SurfaceWindow.
class SurfaceWindow::Implementation final : public Peer,
                                            public std::enable_shared_from_this<Implementation> {
 public:
  Implementation(Surface& surface, SurfaceWindow& face, const Ambience& ambience);
  Implementation(const Implementation&) = delete;
  Implementation& operator=(const Implementation&) = delete;
  ~Implementation() override;

  void create(HWND parent, const RECT& place);
  // Peers first, then the windows.
  void destroy();
  // False once the windows are gone; the surface must not be touched any more then.
  bool attached() const { return surface_ != nullptr; }

  Surface& surface() const { return *surface_; }
  HWND window() const { return window_; }
  const Scale& scale() const { return scale_; }
  const Ambience& ambience() const { return ambience_; }
  HFONT font(const Font& font);
  HBRUSH background() const { return background_.get(); }
  bool contains(HWND window) const;  // it, or a window below it
  bool hasKeyboard() const { return contains(GetFocus()); }
  bool takesInput() const { return attached() && surface_->takesUserInput(); }

  void setPlace(const RECT& place);
  void setAmbience(const Ambience& ambience);
  void keepTabs() { keepsTabs_ = true; }

  // What the user did to a standard window, to be told to the object outside of that window's own
  // procedure. A mergeable note replaces the peer's own one before it, being newer.
  enum class Merge { Yes, No };
  void note(ControlPeer& peer, Merge merge, std::function<void()> tell);
  void deliver();

  bool translate(const MSG& message);
  // A key message on its way to a window. True: it must not reach it.
  bool key(UINT message, WPARAM wParam);
  // The answer to WM_GETDLGCODE: what the window itself needs, and what the surface would use.
  LRESULT dialogCode(LRESULT own, LPARAM message) const;

  void takeFocus();
  // The keyboard goes to where the surface has its focus.
  void bringKeyboard();
  // Keeps the keyboard on the surface while the window that has it is hidden or disabled.
  void parkKeyboard();
  // The control with the focus may have become usable again while the keyboard was parked.
  void resumeKeyboard(const Control& control);
  void keyboardCame(ControlPeer* peer, HWND from);
  void keyboardLeft(HWND to);

  // What a window procedure holds until it has unwound.
  std::shared_ptr<void> entered() const {
    return face_ && face_->onEntry ? face_->onEntry() : nullptr;
  }

  // Of the surface's window and the pages' alike.
  LRESULT containerMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK containerProcedure(HWND window, UINT message, WPARAM wParam,
                                             LPARAM lParam);
  // A window of our class that knows this object.
  HWND createContainer(HWND parent, const RECT& place);

  // The window that holds the control's, and where the control's origin is in it, in twips.
  struct Site {
    HWND window = nullptr;
    int left = 0;
    int top = 0;
  };
  Site siteOf(const Control& control) const;
  void placeWithin(const Container& container);

  void update(Aspect what) override;

 private:
  void createPeers(Container& container);
  void sinkFrames(const Container& container);
  std::shared_ptr<ControlPeer> peerOf(HWND window) const;
  std::shared_ptr<ControlPeer> peerOf(const Control& control) const;
  void detach();
  void reread();  // dpi and fonts
  void focusMoved();
  std::optional<LRESULT> reflected(UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> surfaceMessage(UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> keyMessage(UINT message, WPARAM wParam);
  void tellKeyboard(bool inside);
  void refreshPeers();

  using FontKey = std::tuple<std::string, int, bool>;
  struct Note {
    std::shared_ptr<ControlPeer> peer;
    Merge merge;
    std::function<void()> tell;
  };

  Surface* surface_;
  SurfaceWindow* face_;  // null once it has been destroyed
  Ambience ambience_;
  HWND window_ = nullptr;
  Scale scale_;
  OwnedBrush background_;
  std::map<FontKey, OwnedFont> fonts_;
  std::vector<std::shared_ptr<ControlPeer>> peers_;
  std::vector<HWND> containers_;
  std::deque<Note> notes_;
  bool delivering_ = false;
  bool bringing_ = false;  // our own SetFocus runs
  bool coming_ = false;    // the keyboard is on its way here: the surface's focus may take it
  bool keepsTabs_ = false;
};

}  // namespace toolkit::win32
