// Copies of a store that is in use, and a store from such a copy. Paths are UTF-8.
#pragma once

#include <string>

namespace localstore {

// Copies the store as it is at one moment, all that was confirmed before included, while others
// read and write it. The copy is a store in one file. readOnly: as Options::readOnly. Throws
// StoreError (kIoFailure), and leaves nothing, when there is a file of that name already, the copy
// cannot be written or is not whole.
void backUp(const std::string& path, const std::string& target, bool readOnly = false);

// Puts a copy in the place of a store, or where there is none yet. What the store held is gone.
// Throws StoreError, and leaves the store as it was: kBusy when it is open elsewhere, kIoFailure
// when the copy is not whole or cannot be written.
void restore(const std::string& backup, const std::string& path);

}  // namespace localstore
