// Option buttons and check boxes.
#pragma once

#include "toolkit/win32/ButtonPeer.h"

namespace toolkit::win32 {

// Painted here but for the mark, which is the theme's: themes give captions a colour of their own,
// which cannot be read on every ground.
class ChoicePeer final : public ButtonPeer {
 public:
  using ButtonPeer::ButtonPeer;

 protected:
  LRESULT message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void paint(HDC context);
  void paintMark(HDC context, const RECT& client, int side);
  void paintCaption(HDC context, RECT area);
};

// Pixels from the left edge of an option or check box to its caption.
int captionLeft(int dpi);

}  // namespace toolkit::win32
