// The ambient properties that the host offers its control.
#pragma once

#include <ole2.h>

#include "com/Variant.h"

namespace host {

// com::Error with DISP_E_MEMBERNOTFOUND for one that the host does not have.
com::Variant ambient(DISPID id);

}  // namespace host
