// The host's late-bound rights object: its default property with a right's name gives the entry,
// whose `Level` is a number. Anything but a whole number is a level that allows consultation only.
#pragma once

#include <ole2.h>

#include <memory>

#include "screen/Rights.h"

namespace ocx {

// Null for a null object. A failing call is a store::StoreError with the object's code.
std::shared_ptr<screen::Rights> rightsOf(IDispatch* object);

}  // namespace ocx
