// The desktop of Windows: message boxes, pointer, pending events, printers, forms.
#pragma once

#include <windows.h>

#include <memory>

#include "toolkit/Desktop.h"

namespace toolkit::win32 {

// What the desktop must know of the control that it serves.
class ModalHost {
 public:
  ModalHost() = default;
  ModalHost(const ModalHost&) = delete;
  ModalHost& operator=(const ModalHost&) = delete;
  virtual ~ModalHost() = default;

  virtual HWND owner() const = 0;   // root window that owns boxes and forms; null: none
  virtual bool closed() const = 0;  // taken down: everything throws ControlClosed
  virtual void enableModeless(bool enable) = 0;  // paired around each box or form
  virtual void restoreFocus() = 0;               // a box or form has ended
  // The window whose children's input is discarded by doEvents; null: none.
  virtual HWND surfaceWindow() const = 0;
  // What the window procedures of a form hold while they run: it keeps the control alive.
  virtual std::shared_ptr<void> keepAlive() const { return nullptr; }
};

// The host must outlive the desktop.
std::unique_ptr<Desktop> makeWindowsDesktop(ModalHost& host);

}  // namespace toolkit::win32
