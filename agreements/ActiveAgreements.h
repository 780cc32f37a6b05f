#pragma once

#include "screen/EditSession.h"

namespace agreements {

// Selects the agreements of the body in hand that are not closed and end on or after the first day
// of the current pay period (record "1" of PERIODESPAIE, attribute 1: yyyymm), into
// EditSession::accordsActifs. Without a readable period every agreement that is not closed counts.
// Throws what its store calls throw; the list is then as before.
void RechercheAccord(screen::EditSession& session);

}  // namespace agreements
