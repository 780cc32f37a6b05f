#include "toolkit/win32/Scale.h"

#include <algorithm>
#include <bit>
#include <iterator>

#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

using DpiForWindow = UINT(WINAPI*)(HWND);
using MetricsForDpi = int(WINAPI*)(int, UINT);

// Null on a system that has no such function.
template <class Function>
Function ofUser(const char* name) {
  const HMODULE user = GetModuleHandleW(L"user32.dll");
  return user ? std::bit_cast<Function>(GetProcAddress(user, name)) : nullptr;
}

constexpr int kDrawnFor = 800;  // hundredths of a point

// Of a face, measured large, where no rounding to pixels shows.
SIZE charactersOf(const std::wstring& face, bool bold) {
  constexpr int kLarge = 200;
  constexpr wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  constexpr int kCount = static_cast<int>(std::size(kLetters)) - 1;
  const OwnedContext context(CreateCompatibleDC(nullptr));
  const OwnedFont font = makeFont(face, kLarge, bold);
  const Selected selected(context.get(), font.get());
  SIZE size{};
  GetTextExtentPoint32W(context.get(), kLetters, kCount, &size);
  return size;
}

// A size counts as the whole number of points that has as many pixels at 96 dpi: what is asked for
// as 8 points comes from many hosts as 8.25.
int nominal(int size) {
  constexpr int kHundredths = 100;
  const auto pixels = [](int hundredths) { return MulDiv(hundredths, 96, 7200); };
  const int whole = MulDiv(size, 1, kHundredths) * kHundredths;
  return pixels(whole) == pixels(size) ? whole : size;
}

// Of what the face of the layout takes, in thousandths.
int share(LONG face, LONG drawn) {
  return std::max(1000, MulDiv(1000, static_cast<int>(face), std::max(1, static_cast<int>(drawn))));
}

}  // namespace

Growth growthOf(const Ambience& ambience) {
  const Ambience drawn;
  const SIZE reference = charactersOf(drawn.fontName, drawn.fontBold);
  const SIZE face = charactersOf(ambience.fontName, ambience.fontBold);
  const int size = nominal(ambience.fontSize);
  return {MulDiv(share(face.cx, reference.cx), size, kDrawnFor),
          MulDiv(share(face.cy, reference.cy), size, kDrawnFor)};
}

unsigned dpiOf(HWND window) {
  static const DpiForWindow dpiForWindow = ofUser<DpiForWindow>("GetDpiForWindow");
  if (dpiForWindow) {
    if (const UINT dpi = dpiForWindow(window)) return dpi;
  }
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return dpi > 0 ? static_cast<unsigned>(dpi) : 96;
}

int metricOf(int index, unsigned dpi) {
  static const auto metricsForDpi = ofUser<MetricsForDpi>("GetSystemMetricsForDpi");
  return metricsForDpi ? metricsForDpi(index, dpi) : GetSystemMetrics(index);
}

OwnedFont makeFont(const std::wstring& name, int height, bool bold, bool underline) {
  LOGFONTW face{};
  face.lfHeight = -height;
  face.lfWeight = bold ? FW_BOLD : FW_NORMAL;
  face.lfUnderline = underline ? 1 : 0;
  face.lfCharSet = DEFAULT_CHARSET;
  name.copy(face.lfFaceName, LF_FACESIZE - 1);
  return OwnedFont(CreateFontIndirectW(&face));
}

OwnedFont Scale::font(const Font& font, const Ambience& ambience) const {
  const std::wstring name = font.name.empty() ? ambience.fontName : wide(font.name);
  const bool bold = font.bold || (font.name.empty() && ambience.fontBold);
  return makeFont(name, MulDiv(sizeIn(ambience, font), dpi_, 7200), bold);
}

int sizeIn(const Ambience& ambience, const Font& font) {
  constexpr int kHundredths = 100;
  return font.size > 0 ? MulDiv(font.size * kHundredths, nominal(ambience.fontSize), kDrawnFor)
                       : ambience.fontSize;
}

}  // namespace toolkit::win32
