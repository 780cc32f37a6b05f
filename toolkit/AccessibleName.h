// What a screen reader says a control is.
#pragma once

#include <string>

#include "toolkit/Control.h"

namespace toolkit {

// Of a button or check box its caption, of an option its group's and its own; of a field, list or
// scroll bar the label that it is said to have, else the label before it in its container, else the
// caption of the group around it. Its remark follows, after a comma. As it is read on screen:
// without mnemonic, a blank between words. "" when there is none of them.
std::string accessibleName(const Control& control);

}  // namespace toolkit
