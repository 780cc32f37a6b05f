// The host's late-bound store objects as the store port.
//   database       OpenFile(name) -> file; ExecuteSentence(request) -> dynamic array
//   file           ReadRecord(id) -> dynamic array; DeleteRecord(id)
//   dynamic array  default property: the full text, read and assigned; DBWrite(); Status, optional
// Null reads as an empty text or answer. Of a Status of any number type the low 32 bits count; one
// that is no number counts as absent. What DeleteRecord and DBWrite give back is left alone.
// Text is UTF-16 there and the marks are the characters U+00FE and U+00FD. A text of ours that
// holds one of these characters would be taken for a mark: it is refused with StoreError
// (kBadValue). StoreError is all that these objects throw: a call that cannot be made, or whose
// answer cannot be read, is one too.
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include <memory>

#include "store/Database.h"

namespace ocx {

// Null for a null object.
std::shared_ptr<store::Database> databaseOf(IDispatch* object);

// Is it what databaseOf gives for this very object of the host, by its IUnknown?
bool isDatabaseOf(const store::Database& database, IDispatch* object);

}  // namespace ocx
