#include "pages/NumberZone.h"

#include "store/Amounts.h"
#include "text/Utf8.h"
#include "toolkit/Keys.h"

namespace pages {

void lierZoneDeNombre(const screen::Handlers& handlers, toolkit::TextBox& zone,
                      const std::function<void()>& illisible) {
  zone.onKeyPress = [](char32_t& key) { key = store::decimalKey(key); };
  zone.onLostFocus = handlers.on([&zone, illisible] {
    const std::string reformatted = store::reformatted(zone.text());
    if (!reformatted.empty()) {
      zone.setText(reformatted);
    } else if (pages::illisible(zone)) {
      illisible();
    }
  });
}

bool illisible(const toolkit::TextBox& zone) {
  return !text::trim(zone.text()).empty() && !store::hundredths(zone.text());
}

void filtrerDate(char32_t& key) {
  const bool digit = key >= U'0' && key <= U'9';
  if (digit || key == toolkit::kBackspace) return;
  key = key == toolkit::kEnter ? 0 : U'/';
}

}  // namespace pages
