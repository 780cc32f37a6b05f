#pragma once

#include <string>

#include "toolkit/Desktop.h"

namespace agreements {

// "01 janvier 2026". "" for a month that is none.
std::string dateEnLettres(const toolkit::CalendarDate& date);

}  // namespace agreements
