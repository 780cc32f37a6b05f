// Where a store may lie.
#pragma once

#include <string>
#include <string_view>

namespace localstore {

// Does the path begin with a server and a share (\\\\server\\share), in any of the ways to write
// that?
bool namesShare(std::string_view path);

// Throws StoreError (kIoFailure) for a path of another machine's disk: there the locks that keep
// two writers apart do not hold.
void requireOwnDisk(const std::string& path);

}  // namespace localstore
