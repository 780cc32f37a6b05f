#include "toolkit/win32/FormWindow.h"

#include <algorithm>
#include <system_error>

#include "toolkit/win32/Border.h"
#include "toolkit/win32/ObjectTable.h"
#include "toolkit/win32/Scale.h"
#include "toolkit/win32/WideText.h"
#include "toolkit/win32/WindowClasses.h"

namespace toolkit::win32 {

namespace {

// A dialog template without controls: menu, class and title are empty.
struct alignas(4) EmptyTemplate {
  DLGTEMPLATE dialog{};
  WORD menu = 0;
  WORD windowClass = 0;
  WORD title = 0;

  explicit EmptyTemplate(bool closable) {
    dialog.style = WS_POPUP | WS_CAPTION | DS_MODALFRAME | (closable ? WS_SYSMENU : DWORD{0});
    dialog.cx = 10;
    dialog.cy = 10;
  }
};

ObjectTable<HWND, FormWindow>& forms() {
  static ObjectTable<HWND, FormWindow> table;
  return table;
}

// The form that a thread opens, until its dialog is there.
ObjectTable<DWORD, FormWindow>& opening() {
  static ObjectTable<DWORD, FormWindow> table;
  return table;
}

RECT centred(SIZE size, HWND owner) {
  RECT around{};
  if (!owner || !GetWindowRect(owner, &around)) {
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &around, 0);
  }
  const LONG left = std::max(0L, around.left + (around.right - around.left - size.cx) / 2);
  const LONG top = std::max(0L, around.top + (around.bottom - around.top - size.cy) / 2);
  return {left, top, left + size.cx, top + size.cy};
}

}  // namespace

FormWindow::~FormWindow() {
  surface_.reset();
  if (dialog_) {
    forms().remove(dialog_);
    DestroyWindow(dialog_);
  }
}

void FormWindow::runModal(HWND owner) {
  modal_ = true;
  const EmptyTemplate plan(window_.closable());
  opening().add(GetCurrentThreadId(), this);
  DialogBoxIndirectParamW(moduleInstance(), &plan.dialog, owner, &FormWindow::procedure, 0);
  opening().remove(GetCurrentThreadId());
  requireOpened();
}

void FormWindow::showModeless(HWND owner) {
  const EmptyTemplate plan(window_.closable());
  opening().add(GetCurrentThreadId(), this);
  HWND dialog =
      CreateDialogIndirectParamW(moduleInstance(), &plan.dialog, owner, &FormWindow::procedure, 0);
  opening().remove(GetCurrentThreadId());
  requireOpened();
  ShowWindow(dialog, SW_SHOWNA);
  RedrawWindow(dialog, nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

void FormWindow::close() {
  closed_ = true;
  window_.setOpen(false);
  if (!dialog_) return;
  if (modal_) {
    EndDialog(dialog_, 0);
  } else {
    DestroyWindow(dialog_);
  }
}

INT_PTR CALLBACK FormWindow::procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
  return windowBorder("FormWindow", INT_PTR{FALSE}, [=]() -> INT_PTR {
    FormWindow* form = forms().find(dialog);
    if (message == WM_INITDIALOG) {
      if (form) return FALSE;  // not the system's
      form = opening().find(GetCurrentThreadId());
      if (!form) return FALSE;
      opening().remove(GetCurrentThreadId());
      forms().add(dialog, form);
      form->dialog_ = dialog;
    }
    if (!form) return FALSE;
    const std::shared_ptr<void> entry = form->keepAlive_();
    return form->message(message, wParam);
  });
}

INT_PTR FormWindow::message(UINT message, WPARAM wParam) {
  switch (message) {
    case WM_INITDIALOG:
      open();
      if (opened_ && modal_) surface_->takeFocus();
      return FALSE;  // the keyboard is where the surface has put it
    case WM_ACTIVATE:
      if (LOWORD(wParam) != WA_INACTIVE && surface_) surface_->takeFocus();
      return TRUE;
    case WM_SETFOCUS:
      if (surface_) surface_->takeFocus();
      return TRUE;
    case WM_CLOSE:
      closeAsked();
      return TRUE;
    case WM_COMMAND:
      return TRUE;  // Enter and Escape that nobody wanted
    case WM_DESTROY:
      surface_.reset();
      forms().remove(dialog_);
      dialog_ = nullptr;
      window_.setOpen(false);
      return TRUE;
    default:
      return FALSE;
  }
}

// An error does not pass the system's own procedure: whoever opens the form hears of it after.
void FormWindow::open() {
  try {
    build();
    opened_ = true;
  } catch (const std::exception&) {
    failure_ = std::current_exception();
    window_.setOpen(false);
    if (modal_) EndDialog(dialog_, 0);
  }
}

void FormWindow::requireOpened() const {
  if (failure_) std::rethrow_exception(failure_);
  if (opened_) return;
  throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "form");
}

void FormWindow::build() {
  SetWindowTextW(dialog_, wide(window_.caption()).c_str());
  window_.setOpen(true);
  fit();
  RECT client{};
  GetClientRect(dialog_, &client);
  surface_ = std::make_unique<SurfaceWindow>(window_.surface(), dialog_, client, Ambience{});
  surface_->onEntry = keepAlive_;
  surface_->keepTabs();
  surface_->show(true);
}

// The frame around a given client area is what the system makes of it at this dpi.
void FormWindow::fit() {
  const Scale scale(dpiOf(dialog_));
  RECT outside{};
  RECT inside{};
  GetWindowRect(dialog_, &outside);
  GetClientRect(dialog_, &inside);
  const SIZE size{scale.across(window_.width()) + (outside.right - outside.left) - inside.right,
                  scale.down(window_.height()) + (outside.bottom - outside.top) - inside.bottom};
  const RECT place = centred(size, GetWindow(dialog_, GW_OWNER));
  SetWindowPos(dialog_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::closeAsked() {
  if (!surface_) return;
  Window& window = window_;  // what is called from here on may end this form
  surface_->deliver();
  window.userClose();
}

}  // namespace toolkit::win32
