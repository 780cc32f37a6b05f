// The system's dialog for a store in a file.
#pragma once

#include <windows.h>

#include <string>

namespace host {

struct StoreChoice {
  std::wstring path;   // "" when the user has given up
  bool isNew = false;  // there is no such file, and the user wants it to be made
};

// The owner may be null.
StoreChoice chooseStore(HWND owner);

}  // namespace host
