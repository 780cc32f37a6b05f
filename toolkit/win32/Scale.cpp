#include "toolkit/win32/Scale.h"

#include <bit>

#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

using DpiForWindow = UINT(WINAPI*)(HWND);

DpiForWindow findDpiForWindow() {
  const HMODULE user = GetModuleHandleW(L"user32.dll");
  return user ? std::bit_cast<DpiForWindow>(GetProcAddress(user, "GetDpiForWindow")) : nullptr;
}

}  // namespace

unsigned dpiOf(HWND window) {
  static const DpiForWindow dpiForWindow = findDpiForWindow();
  if (dpiForWindow) {
    if (const UINT dpi = dpiForWindow(window)) return dpi;
  }
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return dpi > 0 ? static_cast<unsigned>(dpi) : 96;
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
  const int points = font.size > 0 ? font.size : ambience.fontSize;
  return makeFont(name, MulDiv(points, dpi_, 72), font.bold);
}

}  // namespace toolkit::win32
