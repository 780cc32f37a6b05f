#include "pages/NumberZone.h"

#include "pages/Columns.h"
#include "store/Conversions.h"
#include "text/Utf8.h"
#include "toolkit/Keys.h"

namespace pages {

void lierZoneDeNombre(const screen::Handlers& handlers, toolkit::TextBox& zone) {
  zone.onKeyPress = [](char32_t& key) { key = store::decimalKey(key); };
  zone.onLostFocus = handlers.on([&zone] {
    if (!text::trim(zone.text()).empty()) zone.setText(deuxDecimales(zone.text()));
  });
}

void filtrerDate(char32_t& key) {
  const bool digit = key >= U'0' && key <= U'9';
  if (digit || key == toolkit::kBackspace) return;
  key = key == toolkit::kEnter ? 0 : U'/';
}

}  // namespace pages
