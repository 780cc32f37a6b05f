// Memory that a message points to. Any program can send a message with any address in it: what is
// not there is no fault here.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>

namespace toolkit::win32 {

// Nothing when it cannot be read.
template <class T>
std::optional<T> readGiven(LPARAM address) {
  T value{};
  SIZE_T read = 0;
  const bool done = ReadProcessMemory(GetCurrentProcess(), reinterpret_cast<const void*>(address),
                                      &value, sizeof value, &read) != FALSE;
  return done && read == sizeof value ? std::optional<T>(value) : std::nullopt;
}

// May as many bytes be written there?
inline bool isWritable(LPARAM address, std::size_t size) {
  constexpr DWORD kWritable =
      PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
  auto at = static_cast<std::size_t>(address);
  const std::size_t end = at + size;
  if (end < at) return false;
  while (at < end) {
    MEMORY_BASIC_INFORMATION region{};
    if (!VirtualQuery(reinterpret_cast<const void*>(at), &region, sizeof region)) return false;
    if (region.State != MEM_COMMIT || !(region.Protect & kWritable) ||
        (region.Protect & PAGE_GUARD)) {
      return false;
    }
    at = reinterpret_cast<std::size_t>(region.BaseAddress) + region.RegionSize;
  }
  return true;
}

}  // namespace toolkit::win32
