#include "toolkit/win32/WindowClasses.h"

#include <system_error>

extern "C" IMAGE_DOS_HEADER __ImageBase;  // the linker's name for the module's first byte

namespace toolkit::win32 {

namespace {
constexpr const wchar_t* kSurfaceClass = L"TessalineSurface";
}

HINSTANCE moduleInstance() { return reinterpret_cast<HINSTANCE>(&__ImageBase); }

const wchar_t* surfaceClass(WNDPROC procedure) {
  WNDCLASSEXW known{};
  known.cbSize = sizeof known;
  if (GetClassInfoExW(moduleInstance(), kSurfaceClass, &known)) return kSurfaceClass;
  WNDCLASSEXW kind{};
  kind.cbSize = sizeof kind;
  kind.lpfnWndProc = procedure;
  kind.hInstance = moduleInstance();
  kind.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  kind.lpszClassName = kSurfaceClass;
  if (!RegisterClassExW(&kind)) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                            "RegisterClassEx");
  }
  return kSurfaceClass;
}

void unregisterSurfaceClass() { UnregisterClassW(kSurfaceClass, moduleInstance()); }

}  // namespace toolkit::win32
