// Combo boxes that take nothing but one of their lines.
#pragma once

#include <optional>
#include <string_view>

#include "toolkit/ComboBox.h"
#include "toolkit/Desktop.h"

namespace pages {

// Does the text equal one of the lines exactly?
bool ExisteDansListe(const toolkit::ComboBox& combo);

// The user leaves the combo: a text that is no line goes, with the message when there is one, and
// the focus comes back. An empty text passes.
void quitterListeFixe(toolkit::Desktop& desktop, toolkit::ComboBox& combo,
                      std::optional<std::string_view> message = std::nullopt);

}  // namespace pages
