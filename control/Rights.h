#pragma once

#include <string_view>

#include "control/Context.h"

namespace control {

inline constexpr std::string_view kDroit = "CONSULTATIONORGCHARGE";

// screen::droitsComplets, asked by those who cannot go on without: throws AccessDenied below level
// 2, NotReady without a rights entry, or what the host's entry throws.
void exigerDroitsComplets(const screen::EditSession& session);

// Shows the screen as the rights allow: to a user without full rights it has no editing buttons,
// the pages are read-only, and it says so. Throws what the host's entry throws.
void Appliquer_Droits(Context& context);

// The same; rights that cannot be read leave the screen as it is.
void relireDroits(Context& context);

// The user is about to change that control: when he begins to change the body in hand, and at each
// attempt that the rights forbid so far, they are read again.
void avantModification(Context& context, const toolkit::Control& control);

}  // namespace control
