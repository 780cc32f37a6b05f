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
// GetSystemMetricsForDpi where the system has it, else those of the screen.
int metricOf(int index, unsigned dpi);

// How much larger than drawn a layout becomes in the ambient font, in thousandths. Layouts are
// drawn for the dialogs' font of 8 points. A narrower face makes none smaller: the lists of fixed
// pitch have a face of their own.
struct Growth {
  int across = 1000;
  int down = 1000;
};
Growth growthOf(const Ambience& ambience);

class Scale {
 public:
  explicit Scale(unsigned dpi = 96, Growth growth = {})
      : dpi_(static_cast<int>(dpi)), across_(dpi_ * growth.across), down_(dpi_ * growth.down) {}
  int dpi() const { return dpi_; }
  int across(int twips) const { return MulDiv(twips, across_, kTwips); }
  int down(int twips) const { return MulDiv(twips, down_, kTwips); }
  SIZE pixels(Extent twips) const { return {across(twips.width), down(twips.height)}; }
  Extent twips(SIZE pixels) const {
    return {MulDiv(pixels.cx, kTwips, across_), MulDiv(pixels.cy, kTwips, down_)};
  }
  int ofPixelsAt96(int pixels) const { return MulDiv(pixels, dpi_, 96); }
  // Edges, not sizes, are rounded: what touches in twips touches in pixels.
  RECT rectangle(int left, int top, int width, int height) const {
    return {across(left), down(top), across(left + width), down(top + height)};
  }
  // The control's font, what it leaves open being the ambience's. A size of its own, given for a
  // layout of 8 points, grows with the ambient one.
  OwnedFont font(const Font& font, const Ambience& ambience) const;

 private:
  static constexpr int kTwips = 1440 * 1000;  // to the inch, in thousandths

  int dpi_;
  int across_;
  int down_;
};

// A font of `height` pixels or logical units (of the characters alone).
OwnedFont makeFont(const std::wstring& name, int height, bool bold, bool underline = false);

// The size in hundredths of a point that a control's font has in this ambience.
int sizeIn(const Ambience& ambience, const Font& font);

}  // namespace toolkit::win32
