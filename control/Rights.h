#pragma once

#include <stdexcept>

#include "control/Context.h"

namespace control {

inline constexpr std::string_view kDroit = "CONSULTATIONORGCHARGE";

// Reads the level. Throws NotReady without a rights entry, or what the host's entry throws.
bool fullRights(const screen::EditSession& session);

// Hides the editing buttons from a user without full rights.
void Appliquer_Droits(Context& context);

}  // namespace control
