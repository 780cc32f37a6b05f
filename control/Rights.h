#pragma once

#include <string_view>

#include "control/Context.h"

namespace control {

inline constexpr std::string_view kDroit = "CONSULTATIONORGCHARGE";

// screen::droitsComplets, asked by those who cannot go on without: throws AccessDenied below level
// 2, NotReady without a rights entry, or what the host's entry throws.
void exigerDroitsComplets(const screen::EditSession& session);

// Hides the editing buttons from a user without full rights.
void Appliquer_Droits(Context& context);

}  // namespace control
