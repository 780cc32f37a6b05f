// The window behind a SurfaceWindow, as its peers see it.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <tuple>
#include <vector>

#include "toolkit/Surface.h"
#include "toolkit/win32/AccessibleNames.h"
#include "toolkit/win32/Notes.h"
#include "toolkit/win32/Palette.h"
#include "toolkit/win32/Scale.h"
#include "toolkit/win32/SurfaceKeyboard.h"
#include "toolkit/win32/SurfaceScroll.h"
#include "toolkit/win32/SurfaceWindow.h"

namespace toolkit::win32 {

class ControlPeer;

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
  Palette palette() const { return Palette(ambience_); }
  // Of the palette's ground, as it is at this moment.
  HBRUSH background();
  // Where the surface's origin is scrolled to, left and above of the window's.
  POINT scrolled() const { return scroll_.origin(); }
  void reveal(HWND window) { scroll_.reveal(window_, window); }
  bool contains(HWND window) const;  // it, or a window below it
  bool takesInput() const { return attached() && surface_->takesUserInput(); }

  void setPlace(const RECT& place);
  void setAmbience(const Ambience& ambience);

  SurfaceKeyboard& keyboard() { return keyboard_; }
  // What hears of the keyboard coming and going; may be empty.
  std::function<void(bool inside)> keyboardListener() const;
  std::function<void()> pressListener() const;

  // What the user did to a standard window, to be told to the object outside of that window's own
  // procedure.
  using Merge = Notes::Merge;
  void note(ControlPeer& peer, Merge merge, std::function<void()> tell);
  void deliver();

  // A mouse button where no control takes it.
  void pressedBeside();

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

  // A caption has changed, and with it the names of what it stands for.
  void captionChanged();

  // Null where there is none.
  std::shared_ptr<ControlPeer> peerOf(HWND window) const;
  std::shared_ptr<ControlPeer> peerOf(const Control& control) const;

  void update(Aspect what) override;

 private:
  void createPeers(Container& container);
  void sinkFrames(const Container& container);
  void detach();
  void forgetContainers();
  void reread();  // dpi and fonts
  Scale scaleNow() const;
  // Scroll bars, and the layout for the room there is.
  void layOut();
  void colorsChanged();
  void nameWindows();
  std::optional<LRESULT> reflected(UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> surfaceMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void refreshPeers();

  using FontKey = std::tuple<std::string, int, bool>;

  Surface* surface_;
  SurfaceWindow* face_;  // null once it has been destroyed
  Ambience ambience_;
  HWND window_ = nullptr;
  Scale scale_;
  Growth growth_;
  SurfaceScroll scroll_;
  bool layingOut_ = false;
  OwnedBrush background_;
  COLORREF backgroundColor_ = CLR_INVALID;
  std::map<FontKey, OwnedFont> fonts_;
  std::vector<std::shared_ptr<ControlPeer>> peers_;
  std::vector<HWND> containers_;
  AccessibleNames names_;
  Notes notes_;
  SurfaceKeyboard keyboard_{*this};
};

}  // namespace toolkit::win32
