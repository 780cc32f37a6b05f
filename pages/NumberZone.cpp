#include "pages/NumberZone.h"

#include "pages/Columns.h"
#include "store/Conversions.h"
#include "text/Utf8.h"

namespace pages {
namespace {

constexpr char32_t kRetourArriere = 8;
constexpr char32_t kEntree = 13;

}  // namespace

void lierZoneDeNombre(const screen::Handlers& handlers, toolkit::TextBox& zone) {
  zone.onKeyPress = [](char32_t& key) { key = store::decimalKey(key); };
  zone.onLostFocus = handlers.on([&zone] {
    if (!text::trim(zone.text()).empty()) zone.setText(deuxDecimales(zone.text()));
  });
}

void filtrerDate(char32_t& key) {
  const bool digit = key >= U'0' && key <= U'9';
  if (digit || key == kRetourArriere) return;
  key = key == kEntree ? 0 : U'/';
}

}  // namespace pages
