// A surface in a real window: one child window a control, each with its peer.
#pragma once

#include <windows.h>

#include <memory>

#include "toolkit/Surface.h"

namespace toolkit::win32 {

// What the look of the windows takes from the container around them.
struct Ambience {
  std::wstring fontName = L"MS Shell Dlg";
  int fontSize = 8;  // points
  COLORREF backColor = GetSysColor(COLOR_BTNFACE);
};

class SurfaceWindow {
 public:
  // Creates the window as a child of `parent` at `place` (client pixels of the parent), hidden,
  // with all its children. The surface must outlive it. Throws std::system_error.
  SurfaceWindow(Surface& surface, HWND parent, const RECT& place, const Ambience& ambience);
  SurfaceWindow(const SurfaceWindow&) = delete;
  SurfaceWindow& operator=(const SurfaceWindow&) = delete;
  // Detaches the peers, then destroys the windows. May be called from within any handler.
  ~SurfaceWindow();

  HWND handle() const;  // null once the window has been destroyed from outside
  void setPlace(const RECT& place);  // rereads the dpi
  void show(bool visible);
  void setAmbience(const Ambience& ambience);

  // Delivers what the user has done and the windows have only noted so far.
  void deliver();

  // Gives one key message (WM_KEYDOWN, WM_SYSKEYDOWN, WM_SYSCHAR, WM_CHAR) to the surface first.
  // True: used up. Anything else is false.
  bool translate(const MSG& message);
  // The keyboard comes to this surface: the control that had the focus, or the first.
  void takeFocus();
  bool hasKeyboard() const;  // the focus of the thread is in the window or one below it

  // Paints what the windows would show into a device context, without windows (design mode,
  // metafiles, printers); bounds in the context's logical units.
  static void draw(const Surface& surface, HDC context, const RECT& bounds,
                   const Ambience& ambience);

  // Removes the window classes; for the last control that dies.
  static void unregisterClasses();

  // Called when the keyboard came to a window of this surface, or left it for one outside.
  std::function<void(bool inside)> onKeyboard;
  // A host that never forwards keys: what key() left of Tab wraps around within the surface.

  class Implementation;

 private:
  std::shared_ptr<Implementation> implementation_;
};

}  // namespace toolkit::win32
