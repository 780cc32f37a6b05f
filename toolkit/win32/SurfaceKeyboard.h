// Keys and the keyboard's focus, between the windows of a surface and the surface.
#pragma once

#include <windows.h>

#include <optional>

#include "toolkit/Surface.h"
#include "toolkit/win32/SurfaceWindow.h"

namespace toolkit::win32 {

class ControlPeer;

// Who has the focus is known to the surface alone: the windows report, and the keyboard is brought
// to where the surface has it.
class SurfaceKeyboard {
 public:
  explicit SurfaceKeyboard(SurfaceWindow::Implementation& host) : host_(host) {}

  // The mark of the focus is shown, as are mnemonics, once the keyboard has been used to move,
  // unless the user wants to see them always.
  void hideCues();
  void showCues();
  // What WM_UPDATEUISTATE says, and the answer to WM_QUERYUISTATE, for all windows of the surface.
  void updateCues(WPARAM change);
  WPARAM hiddenCues() const { return hidden_; }

  // A form of ours, in which Tab goes round.
  void keepTabs() { keepsTabs_ = true; }

  bool translate(const MSG& message);
  // Alt has been used together with another key: whichever of the two goes up first, the system
  // must not take it for a call of the menu. Before what the keys do, which may open a box.
  void spendAlt();
  // A key message on its way to a window. True: it must not reach it.
  bool key(UINT message, WPARAM wParam);
  // The letter of a mnemonic that the host has used up.
  bool mnemonic(char32_t letter);
  // One to the surface's own window, which has the keyboard while no control can.
  std::optional<LRESULT> keyMessage(UINT message, WPARAM wParam);
  // The answer to WM_GETDLGCODE: what the window itself needs, and what the surface would use.
  LRESULT dialogCode(LRESULT own, LPARAM message) const;

  // The focus of the thread is in a window of the surface.
  bool isHere() const;
  void focusMoved();
  // From outside: to the control that had it, or the first.
  void take();
  // To where the surface has its focus.
  void bring();
  // On the surface itself, while the window that has it is hidden or disabled.
  void park();
  // The control with the focus may have become usable again while the keyboard was parked.
  void resume(const Control& control);
  // The user has pressed a mouse button in the surface: on a control, or where none takes it.
  void pressed();
  void pressedBeside();
  void came(ControlPeer* peer, HWND from);
  void left(HWND from, HWND to);

 private:
  Surface& surface() const;
  HWND window() const;
  void tell(bool inside);

  SurfaceWindow::Implementation& host_;
  bool bringing_ = false;  // our own SetFocus runs
  bool coming_ = false;    // the keyboard is on its way here: the surface's focus may take it
  bool keepsTabs_ = false;
  WPARAM hidden_ = 0;    // UISF_...
  HWND left_ = nullptr;  // had the keyboard when it left the surface
};

}  // namespace toolkit::win32
