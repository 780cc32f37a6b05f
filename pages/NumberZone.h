// Edit zones for numbers with two decimals and for dates.
#pragma once

#include "screen/Handlers.h"
#include "toolkit/TextBox.h"

namespace pages {

// Takes what a decimal number is typed with, and shows it with two decimals when it is left. What
// is no number leaves the zone empty; blanks stay, and count as none.
void lierZoneDeNombre(const screen::Handlers& handlers, toolkit::TextBox& zone);

// Digits and Backspace pass, Enter is dropped, any other key separates: it becomes "/".
void filtrerDate(char32_t& key);

}  // namespace pages
