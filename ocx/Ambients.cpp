#include "ocx/Ambients.h"

#include <olectl.h>
#include <wrl/client.h>

#include <optional>

#include "com/ComBorder.h"
#include "com/Variant.h"

namespace ocx {

using Microsoft::WRL::ComPtr;

namespace {

constexpr int kCurrencyUnits = 10000;  // CY counts ten-thousandths

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

void takeFont(const VARIANT& value, toolkit::win32::Ambience& look) {
  ComPtr<IFont> font;
  const ComPtr<IDispatch> object = com::objectOf(value);
  if (object == nullptr || FAILED(object.As(&font))) return;
  BSTR name = nullptr;
  CY size{};
  com::check(font->get_Name(&name), "the ambient font's name");
  look.fontName = com::viewOf(name);
  SysFreeString(name);
  com::check(font->get_Size(&size), "the ambient font's size");
  look.fontSize = static_cast<int>((size.int64 + kCurrencyUnits / 2) / kCurrencyUnits);
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
  take(*container.Get(), DISPID_AMBIENT_BACKCOLOR, [&](const VARIANT& value) {
    const auto color = static_cast<OLE_COLOR>(com::numberOf(value));
    com::check(OleTranslateColor(color, nullptr, &ambients.look.backColor), "the back colour");
  });
  take(*container.Get(), DISPID_AMBIENT_FONT,
       [&](const VARIANT& value) { takeFont(value, ambients.look); });
  return ambients;
}

}  // namespace ocx
