// What a text box and the edit inside a combo have in common: one line of text.
#pragma once

#include "toolkit/win32/ControlPeer.h"

namespace toolkit::win32 {

// An EDIT writes its only line at the top of its client area. Here the client area begins where the
// line must stand to be in the middle of the window; what is left above it is painted as if it
// belonged to it, and a press on it too is one on the text.
class LinePeer : public ControlPeer {
 public:
  using ControlPeer::ControlPeer;

 protected:
  // Handles a message to the edit; those that do not concern its frame go on to ControlPeer.
  LRESULT lineMessage(HWND edit, UINT message, WPARAM wParam, LPARAM lParam);
  // After the font or the size of the edit has changed.
  static void centreLine(HWND edit);
  int lineHeight(HWND window);
  // Where the line begins below the upper edge of an edit that has this place in its parent's
  // window.
  virtual int spareAbove(HWND edit, const RECT& place);

 private:
  void paintAbove(HWND edit);
};

}  // namespace toolkit::win32
