// What the control's members throw beside the errors of the store.
#pragma once

#include <stdexcept>

namespace control {

// A host calls a member that would create, change or delete something without full rights.
class AccessDenied : public std::runtime_error {
 public:
  AccessDenied() : std::runtime_error("the user's rights allow consultation only") {}
};

// A host's call while a user action or another call runs.
class Busy : public std::runtime_error {
 public:
  Busy() : std::runtime_error("the control is busy with another action") {}
};

// A host's call that needs what is not there: Init before TheDatabase or DroitsUtilisateur, a
// page's member before an Init that succeeded.
class NotReady : public std::runtime_error {
 public:
  explicit NotReady(const char* what) : std::runtime_error(what) {}
};

}  // namespace control
