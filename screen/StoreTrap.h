// The traps of procedures that work with the store: a failure of the store that ends in one is
// announced to the host (Announcements::echec), for the control itself shows nothing of it.
#pragma once

#include <functional>
#include <initializer_list>
#include <string_view>

#include "screen/EditSession.h"

namespace screen {

// As toolkit::quietly.
bool quietly(EditSession& session, std::string_view procedure,
             const std::function<void()>& handler);

// As toolkit::resumeNext.
bool resumeNext(EditSession& session, std::string_view procedure,
                std::initializer_list<std::function<void()>> steps);

// As toolkit::tracing: for a user's command that traps nothing, and ends with the failure.
void tracing(EditSession& session, std::string_view procedure,
             const std::function<void()>& handler);

}  // namespace screen
