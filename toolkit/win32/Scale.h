// From twips and points to the pixels of a window.
#pragma once

#include <windows.h>

#include <string>

#include "toolkit/Control.h"
#include "toolkit/win32/Ambience.h"
#include "toolkit/win32/Handles.h"

namespace toolkit::win32 {

// GetDpiForWindow where the system has it, else the screen's.
unsigned dpiOf(HWND window);

class Scale {
 public:
  explicit Scale(unsigned dpi = 96) : dpi_(static_cast<int>(dpi)) {}
  int dpi() const { return dpi_; }
  int pixels(int twips) const { return MulDiv(twips, dpi_, 1440); }
  int ofPixelsAt96(int pixels) const { return MulDiv(pixels, dpi_, 96); }
  // Edges, not sizes, are rounded: what touches in twips touches in pixels.
  RECT rectangle(int left, int top, int width, int height) const {
    return {pixels(left), pixels(top), pixels(left + width), pixels(top + height)};
  }
  // The control's font, what it leaves open being the ambience's.
  OwnedFont font(const Font& font, const Ambience& ambience) const;

 private:
  int dpi_;
};

// A font of `height` pixels or logical units (of the characters alone).
OwnedFont makeFont(const std::wstring& name, int height, bool bold, bool underline = false);

}  // namespace toolkit::win32
