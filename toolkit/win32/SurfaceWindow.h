// A surface in a real window: one child window a control, each with its peer.
#pragma once

#include <windows.h>

#include <memory>

#include "toolkit/Surface.h"
#include "toolkit/win32/Ambience.h"

namespace toolkit::win32 {

class SurfaceWindow {
 public:
  // Creates the window as a child of `parent` at `place` (client pixels of the parent), hidden,
  // with all its children. The surface must outlive it. Throws std::system_error.
  SurfaceWindow(Surface& surface, HWND parent, const RECT& place, const Ambience& ambience);
  SurfaceWindow(const SurfaceWindow&) = delete;
  SurfaceWindow& operator=(const SurfaceWindow&) = delete;
  // Detaches the peers, then destroys the windows. May be called from within any handler.
  ~SurfaceWindow();

  HWND handle() const;               // null once the window has been destroyed from outside
  void setPlace(const RECT& place);  // rereads the dpi
  void show(bool visible);
  void setAmbience(const Ambience& ambience);

  // Delivers what the user has done and the windows have only noted so far.
  void deliver();

  // Gives one key message (WM_KEYDOWN, WM_SYSKEYDOWN, WM_SYSCHAR, WM_CHAR) to the surface first.
  // True: used up, or discarded while the surface takes no input. Anything else is false. A host
  // that never forwards keys reaches the same through the windows; there Tab wraps around.
  bool translate(const MSG& message);
  // The keyboard comes to this surface: the control that had the focus, or the first.
  void takeFocus();
  // The user has come or gone on by the keyboard, which the host knows: the focus shall be marked.
  void showCues();
  // The host has used up the letter of a mnemonic, and says so: as if it had been pressed here.
  bool mnemonic(char32_t letter);
  bool hasKeyboard() const;  // the focus of the thread is in the window or one below it

  // Paints what the windows would show into a device context, without windows (design mode,
  // metafiles, printers); bounds in the context's logical units.
  static void draw(const Surface& surface, HDC context, const RECT& bounds,
                   const Ambience& ambience);

  // Called when the keyboard came to a window of this surface, or left it for one outside.
  std::function<void(bool inside)> onKeyboard;

  // Called when the user presses a mouse button in a surface that has the keyboard already.
  std::function<void()> onPress;

  // Called when a window procedure of this surface is entered; what it gives is held until that
  // procedure has unwound. It keeps the surface and its owner alive meanwhile. May be empty.
  std::function<std::shared_ptr<void>()> onEntry;

  // A form of ours, with a dialog's message loop: Tab wraps around within it.
  void keepTabs();

  // Keeps the hourglass over the surface's windows, or gives them their own pointers back.
  static void keepHourglass(HWND surfaceWindow, bool keep);

  class Implementation;

 private:
  std::shared_ptr<Implementation> implementation_;
};

}  // namespace toolkit::win32
