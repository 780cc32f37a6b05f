// What the demo host remembers of its user: below HKEY_CURRENT_USER, so that each has his own.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace host {

// A registry that refuses is a host that remembers nothing.
class Settings {
 public:
  // The store that was opened last, "" without one.
  std::wstring store() const;
  void setStore(const std::wstring& address);
  // Where the window was when it was last closed.
  std::optional<WINDOWPLACEMENT> placement() const;
  void setPlacement(const WINDOWPLACEMENT& placement);
};

}  // namespace host
