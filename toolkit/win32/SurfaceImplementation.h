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
#include "toolkit/win32/Notes.h"
#include "toolkit/win32/Scale.h"
#include "toolkit/win32/SurfaceKeyboard.h"
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
  HBRUSH background() const { return background_.get(); }
  bool contains(HWND window) const;  // it, or a window below it
  bool takesInput() const { return attached() && surface_->takesUserInput(); }

  void setPlace(const RECT& place);
  void setAmbience(const Ambience& ambience);

  SurfaceKeyboard& keyboard() { return keyboard_; }
  // What hears of the keyboard coming and going; may be empty.
  std::function<void(bool inside)> keyboardListener() const;

  // What the user did to a standard window, to be told to the object outside of that window's own
  // procedure.
  using Merge = Notes::Merge;
  void note(ControlPeer& peer, Merge merge, std::function<void()> tell);
  void deliver();

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
  std::optional<LRESULT> reflected(UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> surfaceMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void refreshPeers();

  using FontKey = std::tuple<std::string, int, bool>;

  Surface* surface_;
  SurfaceWindow* face_;  // null once it has been destroyed
  Ambience ambience_;
  HWND window_ = nullptr;
  Scale scale_;
  OwnedBrush background_;
  std::map<FontKey, OwnedFont> fonts_;
  std::vector<std::shared_ptr<ControlPeer>> peers_;
  std::vector<HWND> containers_;
  Notes notes_;
  SurfaceKeyboard keyboard_{*this};
};

}  // namespace toolkit::win32
