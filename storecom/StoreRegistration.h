// What the store library's registration consists of.
#pragma once

#include <string>

#include "com/Registration.h"

namespace storecom {

// `file` is the full path of the library of that width.
com::RegistryTable storeTable(const std::wstring& file, com::Width width = com::kOwnWidth);

}  // namespace storecom
