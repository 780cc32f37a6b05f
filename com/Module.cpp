#include "com/Module.h"

#include "com/ComBorder.h"

namespace com {

namespace {

LONG& count() {
  static LONG alive = 0;
  return alive;
}

HMODULE moduleBy(DWORD flags) {
  HMODULE found = nullptr;
  const auto* here = reinterpret_cast<const wchar_t*>(&count);
  if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | flags, here, &found) == 0) {
    throw Error(HRESULT_FROM_WIN32(GetLastError()), "the library's own module");
  }
  return found;
}

}  // namespace

Alive::Alive() { InterlockedIncrement(&count()); }
Alive::~Alive() { InterlockedDecrement(&count()); }

long objectsAlive() { return count(); }

void lockModule(bool lock) {
  if (lock) {
    InterlockedIncrement(&count());
  } else {
    InterlockedDecrement(&count());
  }
}

HMODULE module() { return moduleBy(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT); }

void pinModule() { moduleBy(GET_MODULE_HANDLE_EX_FLAG_PIN); }

std::wstring modulePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(module(), path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) throw Error(HRESULT_FROM_WIN32(GetLastError()), "the library's own path");
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

}  // namespace com
