#include "ocx/Ambients.h"

#include <olectl.h>
#include <wrl/client.h>

#include <cstdlib>
#include <optional>

#include "com/ComBorder.h"
#include "com/Variant.h"

namespace ocx {

using Microsoft::WRL::ComPtr;

namespace {

constexpr int kHundredthsPerInch = 7200;  // of a point

// A colour that names one of the system's keeps doing so. Throws com::Error for what is no colour.
toolkit::win32::AmbientColor colorOf(const VARIANT& value) {
  constexpr OLE_COLOR kSystem = 0x80000000;
  const auto color =
      value.vt == VT_UI4 ? value.ulVal : static_cast<OLE_COLOR>(com::numberOf(value));
  COLORREF own = 0;
  com::check(OleTranslateColor(color, nullptr, &own), "an ambient colour");
  if ((color & kSystem) == 0) return {own};
  return toolkit::win32::AmbientColor::ofSystem(static_cast<int>(color & 0xFF));
}

std::optional<com::Variant> ambient(IDispatch& container, DISPID property) {
  DISPPARAMS none{};
  com::Variant value;
  const HRESULT result =
      container.Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                       value.out(), nullptr, nullptr);
  if (FAILED(result) || value.get().vt == VT_EMPTY) return std::nullopt;
  return value;
}

// A property of another type than it should have counts as absent.
template <class Read>
void take(IDispatch& container, DISPID property, Read read) {
  if (const std::optional<com::Variant> value = ambient(container, property)) {
    try {
      read(value->get());
    } catch (const com::Error&) {
      return;
    }
  }
}

// What the font says of its size is that of the characters that Windows has found; what it asks
// Windows for is the host's own.
void takeFont(const VARIANT& value, toolkit::win32::Ambience& look) {
  ComPtr<IFont> font;
  const ComPtr<IDispatch> object = com::objectOf(value);
  if (object == nullptr || FAILED(object.As(&font))) return;
  HFONT asked = nullptr;
  com::check(font->get_hFont(&asked), "the ambient font");
  LOGFONTW face{};
  if (GetObjectW(asked, sizeof face, &face) == 0 || face.lfHeight == 0) return;
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  look.fontName = face.lfFaceName;
  look.fontSize = MulDiv(std::abs(face.lfHeight), kHundredthsPerInch, dpi);
  look.fontBold = face.lfWeight >= FW_SEMIBOLD;
}

}  // namespace

Ambients ambientsOf(IOleClientSite* site) {
  Ambients ambients;
  ComPtr<IDispatch> container;
  if (site == nullptr || FAILED(site->QueryInterface(IID_PPV_ARGS(&container)))) return ambients;
  take(*container.Get(), DISPID_AMBIENT_USERMODE,
       [&](const VARIANT& value) { ambients.userMode = com::booleanOf(value); });
  take(*container.Get(), DISPID_AMBIENT_UIDEAD,
       [&](const VARIANT& value) { ambients.uiDead = com::booleanOf(value); });
  take(*container.Get(), DISPID_AMBIENT_LOCALEID,
       [&](const VARIANT& value) { ambients.locale = static_cast<LCID>(com::numberOf(value)); });
  take(*container.Get(), DISPID_AMBIENT_BACKCOLOR,
       [&](const VARIANT& value) { ambients.look.backColor = colorOf(value); });
  take(*container.Get(), DISPID_AMBIENT_FORECOLOR,
       [&](const VARIANT& value) { ambients.look.foreColor = colorOf(value); });
  take(*container.Get(), DISPID_AMBIENT_FONT,
       [&](const VARIANT& value) { takeFont(value, ambients.look); });
  return ambients;
}

}  // namespace ocx
