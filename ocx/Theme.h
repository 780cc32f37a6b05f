// The look of the host's common controls.
#pragma once

#include <windows.h>

namespace ocx {

// While it lives, the library's own manifest decides about the common controls: the themed ones
// when the host has them too, else whatever the host has.
class Theme {
 public:
  Theme();
  Theme(const Theme&) = delete;
  Theme& operator=(const Theme&) = delete;
  ~Theme();

 private:
  ULONG_PTR cookie_ = 0;
  bool active_ = false;
};

}  // namespace ocx
