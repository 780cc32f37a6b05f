// A new object and the one reference to it.
#pragma once

#include <wrl/client.h>

namespace com {

// Takes over the reference that `made` already counts. ComPtr::Attach does not: with mingw it adds
// one of its own.
template <class Interface>
Microsoft::WRL::ComPtr<Interface> owned(Interface* made) {
  Microsoft::WRL::ComPtr<Interface> object;
  *object.GetAddressOf() = made;
  return object;
}

}  // namespace com
