// The message boxes of the system, all under one title.
#pragma once

#include <functional>
#include <string_view>

#include "toolkit/Desktop.h"

namespace screen {

inline constexpr std::string_view kTitre = "Message VALDRIS";
inline constexpr std::string_view kMinusculeAccentuee =
    "La saisie de minuscule accentuée est interdite sur cette zone.";

// A refusal: exclamation icon, OK button.
void avertir(toolkit::Desktop& desktop, std::string_view text);
// Information icon, OK button.
void informer(toolkit::Desktop& desktop, std::string_view text);
// Asks Yes/No. True for Yes.
bool demander(toolkit::Desktop& desktop, std::string_view text, toolkit::Icon icon);
// Beeps, then asks with the question icon, for what destroys: Enter answers No.
bool confirmer(toolkit::Desktop& desktop, std::string_view text);

// Runs the deed. A failure of the store that ends it is told by a beep, and passes on.
void signalerEchec(toolkit::Desktop& desktop, const std::function<void()>& deed);

// Key filter of the search fields: a key of code 123 or above is refused with its message and
// dropped (becomes 0); Enter and the others pass.
void filtrerRecherche(toolkit::Desktop& desktop, char32_t& key);

}  // namespace screen
