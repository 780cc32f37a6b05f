// Lines moved between a list of what is possible and a list of what is chosen.
#pragma once

#include <string_view>

#include "toolkit/ListBox.h"

namespace pages {

// Does the text equal one of the lines exactly?
bool Est_DansListe(std::string_view text, const toolkit::ListBox& list);

// Appends the selected lines of `possible` that `chosen` does not hold yet, in order, each with its
// item data, and deselects them; they stay in `possible`. Nothing while `possible` is disabled.
void ajouterSelection(toolkit::ListBox& possible, toolkit::ListBox& chosen);

// Removes the selected lines. Nothing while the list is disabled.
void retirerSelection(toolkit::ListBox& list);

}  // namespace pages
