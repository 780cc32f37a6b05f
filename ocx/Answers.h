// How a COM method hands over its answer.
#pragma once

#include <ole2.h>

namespace ocx {

// E_POINTER for a null `out`; otherwise `result`, with the value given.
template <class Value>
HRESULT give(Value* out, Value value, HRESULT result = S_OK) {
  if (out == nullptr) return E_POINTER;
  *out = value;
  return result;
}

// The same for an object, with a reference for the caller; null stays null.
template <class Interface>
HRESULT giveObject(Interface** out, Interface* object) {
  if (out != nullptr && object != nullptr) object->AddRef();
  return give(out, object);
}

inline VARIANT_BOOL truth(bool value) { return value ? VARIANT_TRUE : VARIANT_FALSE; }

}  // namespace ocx
