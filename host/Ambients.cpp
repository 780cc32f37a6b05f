#include "host/Ambients.h"

#include <olectl.h>

#include <cstdlib>

#include "com/ComBorder.h"

namespace host {

namespace {

constexpr long kSystemColour = static_cast<long>(0x80000000UL);

// The one that the user has chosen for messages, at its size.
com::Variant font() {
  constexpr int kUnitsPerInch = 72 * 10000;  // of a CY, which counts ten-thousandths of a point
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  std::wstring name = L"Tahoma";
  LONGLONG size = 82500;
  if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0) != 0) {
    name = metrics.lfMessageFont.lfFaceName;
    size = MulDiv(std::abs(metrics.lfMessageFont.lfHeight), kUnitsPerInch,
                  static_cast<int>(GetDpiForSystem()));
  }
  FONTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.lpstrName = name.data();
  description.cySize.int64 = size;
  description.sWeight = FW_NORMAL;
  description.sCharset = DEFAULT_CHARSET;
  Microsoft::WRL::ComPtr<IDispatch> created;
  com::check(OleCreateFontIndirect(&description, IID_PPV_ARGS(&created)), "OleCreateFontIndirect");
  return com::Variant::ofObject(created.Get());
}

}  // namespace

com::Variant ambient(DISPID id) {
  switch (id) {
    case DISPID_AMBIENT_USERMODE:
    case DISPID_AMBIENT_SUPPORTSMNEMONICS:
    case DISPID_AMBIENT_AUTOCLIP:
      return com::Variant::ofBoolean(true);
    case DISPID_AMBIENT_UIDEAD:
    case DISPID_AMBIENT_SHOWGRABHANDLES:
    case DISPID_AMBIENT_SHOWHATCHING:
    case DISPID_AMBIENT_DISPLAYASDEFAULT:
    case DISPID_AMBIENT_MESSAGEREFLECT:
      return com::Variant::ofBoolean(false);
    case DISPID_AMBIENT_BACKCOLOR:
      return com::Variant::ofNumber(kSystemColour | COLOR_BTNFACE);
    case DISPID_AMBIENT_FORECOLOR:
      return com::Variant::ofNumber(kSystemColour | COLOR_BTNTEXT);
    case DISPID_AMBIENT_FONT:
      return font();
    case DISPID_AMBIENT_LOCALEID:
      return com::Variant::ofNumber(static_cast<long>(GetUserDefaultLCID()));
    case DISPID_AMBIENT_DISPLAYNAME:
      return com::Variant::ofText(L"Ctr_OrgPriseCharge");
    case DISPID_AMBIENT_SCALEUNITS:
      return com::Variant::ofText(L"Twip");
    default:
      throw com::Error(DISP_E_MEMBERNOTFOUND, "no such ambient property");
  }
}

}  // namespace host
