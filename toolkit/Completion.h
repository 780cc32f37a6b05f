// What a typed beginning is completed with.
#pragma once

#include <string_view>

#include "toolkit/ListItems.h"

namespace toolkit {

// First line that begins with the text, without regard to capitals and accents, and goes on after
// it; -1 when none does. An empty text begins none.
int lineBegunBy(const ListItems& items, std::string_view text);

}  // namespace toolkit
