#pragma once

#include "screen/EditSession.h"
#include "screen/Screen.h"

namespace control {

enum class State { Empty, Existing, Creating };

State stateOf(const screen::EditSession& session);

// Enables code, buttons and pages and shows the acronym's field as the state asks for. Buttons that
// the rights have hidden stay hidden.
void applyState(screen::Screen& screen, State state);

// Until Init has succeeded what it needs of the bar looks as if it took no input: nothing would
// come of it. Leaving works.
void applyReady(screen::Screen& screen, bool ready);

}  // namespace control
