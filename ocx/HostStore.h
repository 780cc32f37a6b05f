// The host's late-bound store objects as the store port.
//   database       OpenFile(name) -> file; ExecuteSentence(request) -> dynamic array
//   file           ReadRecord(id) -> dynamic array; DeleteRecord(id)
//   dynamic array  default property: the full text, read and assigned; DBWrite(); Status, optional
// Text is UTF-16 there and the marks are the characters U+00FE and U+00FD. A text of ours that
// holds one of these characters would be taken for a mark: it is refused with StoreError
// (kBadValue).
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include <memory>

#include "store/Database.h"

namespace ocx {

// Null for a null object.
std::shared_ptr<store::Database> databaseOf(IDispatch* object);

}  // namespace ocx
