// Owners of what GDI lends.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace toolkit::win32 {

struct DeleteGdiObject {
  void operator()(void* object) const { DeleteObject(object); }
};
struct DeleteContext {
  void operator()(HDC context) const { DeleteDC(context); }
};

using OwnedFont = std::unique_ptr<std::remove_pointer_t<HFONT>, DeleteGdiObject>;
using OwnedBrush = std::unique_ptr<std::remove_pointer_t<HBRUSH>, DeleteGdiObject>;
using OwnedContext = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteContext>;

// Selects an object into a device context for the length of a scope.
class Selected {
 public:
  Selected(HDC context, HGDIOBJ object)
      : context_(context), before_(SelectObject(context, object)) {}
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;
  ~Selected() { SelectObject(context_, before_); }

 private:
  HDC context_;
  HGDIOBJ before_;
};

}  // namespace toolkit::win32
