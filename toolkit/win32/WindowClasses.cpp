#include "toolkit/win32/WindowClasses.h"

#include <system_error>

extern "C" IMAGE_DOS_HEADER __ImageBase;  // the linker's name for the module's first byte

namespace toolkit::win32 {

namespace {

constexpr const wchar_t* kSurfaceClass = L"TessalineSurface";

ATOM registered(WNDPROC procedure) {
  WNDCLASSEXW kind{};
  kind.cbSize = sizeof kind;
  kind.lpfnWndProc = procedure;
  kind.hInstance = moduleInstance();
  kind.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  kind.lpszClassName = kSurfaceClass;
  const ATOM atom = RegisterClassExW(&kind);
  if (atom == 0) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                            "RegisterClassEx");
  }
  return atom;
}

}  // namespace

HINSTANCE moduleInstance() { return reinterpret_cast<HINSTANCE>(&__ImageBase); }

const wchar_t* surfaceClass(WNDPROC procedure) {
  // The static's own lock lets one thread register while others wait.
  static const ATOM atom = registered(procedure);
  return MAKEINTATOM(atom);
}

}  // namespace toolkit::win32
