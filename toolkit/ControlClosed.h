#pragma once

namespace toolkit {

// Thrown by message boxes, forms and the pending-events call when the control was taken down by its
// host meanwhile. Deliberately no std::exception: the helpers that trap errors let it pass, so that
// nothing more is asked, written or printed.
class ControlClosed {};

}  // namespace toolkit
