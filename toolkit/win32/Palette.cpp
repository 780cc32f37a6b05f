#include "toolkit/win32/Palette.h"

#include "toolkit/Contrast.h"

namespace toolkit::win32 {

namespace {

bool underHighContrast() {
  HIGHCONTRASTW state{};
  state.cbSize = sizeof state;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof state, &state, 0) != FALSE &&
         (state.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

COLORREF shade(COLORREF text, COLORREF ground, double least) {
  return colorRefOf(readable(colorOf(text), colorOf(ground), least));
}

}  // namespace

Color colorOf(COLORREF color) {
  return Color{GetRValue(color)} << 16 | Color{GetGValue(color)} << 8 | Color{GetBValue(color)};
}

COLORREF colorRefOf(Color color) {
  return RGB((color >> 16) & 0xFF, (color >> 8) & 0xFF, color & 0xFF);
}

Palette::Palette(const Ambience& ambience)
    : back_(ambience.backColor.now()), fore_(ambience.foreColor.now()) {
  if (!underHighContrast()) return;
  back_ = GetSysColor(COLOR_BTNFACE);
  fore_ = GetSysColor(COLOR_BTNTEXT);
}

COLORREF Palette::text(Color own, bool enabled) const {
  if (!enabled) return shade(GetSysColor(COLOR_GRAYTEXT), back_, kDiscernible);
  return shade(own == kBlack ? fore_ : colorRefOf(own), back_, kReadable);
}

COLORREF Palette::field(Color own) const {
  return shade(colorRefOf(own), GetSysColor(COLOR_WINDOW), kReadable);
}

}  // namespace toolkit::win32
