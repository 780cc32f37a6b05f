// Edit zones for numbers with two decimals and for dates.
#pragma once

#include <functional>

#include "screen/Handlers.h"
#include "toolkit/TextBox.h"

namespace pages {

// Takes what a decimal number is typed with, and shows it with two decimals when it is left. Blanks
// stay, and count as none. What is no number stays too, and `illisible` is told.
void lierZoneDeNombre(const screen::Handlers& handlers, toolkit::TextBox& zone,
                      const std::function<void()>& illisible);
// Does the zone hold something that is no number?
bool illisible(const toolkit::TextBox& zone);

// Digits and Backspace pass, Enter is dropped, any other key separates: it becomes "/".
void filtrerDate(char32_t& key);

}  // namespace pages
