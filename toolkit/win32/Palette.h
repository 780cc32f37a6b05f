// The colours to paint with.
#pragma once

#include <windows.h>

#include "toolkit/Control.h"
#include "toolkit/win32/Ambience.h"

namespace toolkit::win32 {

Color colorOf(COLORREF color);
COLORREF colorRefOf(Color color);

// As they are when it is made: the system's change while a window is open. Under high contrast they
// are the system's alone. Whatever the container gives, text can be read on its ground.
class Palette {
 public:
  explicit Palette(const Ambience& ambience);

  COLORREF back() const { return back_; }
  // Of a control's caption, by the control's own colour, or when it is disabled.
  COLORREF text(Color own, bool enabled) const;
  // Of what stands in a field.
  COLORREF field(Color own) const;

 private:
  COLORREF back_;
  COLORREF fore_;
};

}  // namespace toolkit::win32
