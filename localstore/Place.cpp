#include "localstore/Place.h"

#include <algorithm>

#include "store/StoreError.h"

#ifdef _WIN32
#include <windows.h>

#include "localstore/Paths.h"
#endif

namespace localstore {

bool namesShare(std::string_view path) {
  std::string plain(path.substr(0, std::min<std::size_t>(path.size(), 8)));
  std::replace(plain.begin(), plain.end(), '/', '\\');
  std::transform(plain.begin(), plain.end(), plain.begin(), [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  if (plain.starts_with("\\\\?\\") || plain.starts_with("\\\\.\\")) {
    return std::string_view(plain).substr(4).starts_with("UNC\\");
  }
  return plain.starts_with("\\\\");
}

#ifdef _WIN32
namespace {

bool onRemoteDrive(const std::string& path) {
  std::error_code ignored;
  const std::filesystem::path whole = std::filesystem::absolute(pathOf(path), ignored);
  const std::u8string text = whole.u8string();
  if (namesShare(std::string(text.begin(), text.end()))) return true;
  return GetDriveTypeW(whole.root_path().c_str()) == DRIVE_REMOTE;
}

}  // namespace

void requireOwnDisk(const std::string& path) {
  if (!namesShare(path) && !onRemoteDrive(path)) return;
  throw store::StoreError(
      store::kIoFailure,
      path +
          ": a store in a file cannot lie on a network drive, where two machines that write could "
          "destroy it; several machines work on the shared store");
}
#else
void requireOwnDisk(const std::string&) {}
#endif

}  // namespace localstore
