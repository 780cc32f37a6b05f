#include "toolkit/win32/ButtonPeer.h"

#include "toolkit/win32/Scoped.h"
#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

ControlPeer::Blueprint ButtonPeer::blueprint() const {
  switch (control().kind()) {
    case Kind::OptionButton:
      return {L"BUTTON", WS_TABSTOP | BS_RADIOBUTTON, 0};
    case Kind::CheckBox:
      return {L"BUTTON", WS_TABSTOP | BS_CHECKBOX, 0};
    default:
      return {L"BUTTON",
              WS_TABSTOP | (isDefault() ? DWORD{BS_DEFPUSHBUTTON} : DWORD{BS_PUSHBUTTON}), 0};
  }
}

bool ButtonPeer::isDefault() const {
  return control().surface() && control().surface()->defaultButton() == &control();
}

// Else Windows clicks an option when it is given the focus.
void ButtonPeer::created() {
  if (control().kind() == Kind::OptionButton) pass(BM_SETDONTCLICK, TRUE);
}

bool ButtonPeer::value() const {
  if (control().kind() == Kind::OptionButton) {
    return static_cast<const OptionButton&>(control()).value();
  }
  return control().kind() == Kind::CheckBox && static_cast<const CheckBox&>(control()).value();
}

void ButtonPeer::copy(Aspect what) {
  if (what == Aspect::Caption) setWindowText(wide(control().caption()));
  if (what == Aspect::Value && control().kind() != Kind::CommandButton) {
    const WPARAM check = value() ? BST_CHECKED : BST_UNCHECKED;
    if (static_cast<WPARAM>(pass(BM_GETCHECK)) != check) pass(BM_SETCHECK, check);
  }
  if (what == Aspect::Style) InvalidateRect(window(), nullptr, TRUE);
}

bool ButtonPeer::changesLook(UINT message) {
  switch (message) {
    case BM_SETCHECK:
    case BM_SETSTATE:
    case BM_SETSTYLE:
    case WM_ENABLE:
    case WM_SETTEXT:
    case WM_SETFONT:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED:
    case WM_UPDATEUISTATE:
      return true;
    default:
      return false;
  }
}

LRESULT ButtonPeer::message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (control().kind() != Kind::CommandButton || !control().pale()) {
    return ControlPeer::message(window, message, wParam, lParam);
  }
  if (message == WM_PAINT || message == WM_PRINTCLIENT) return paintPale(message, wParam, lParam);
  const bool ofThePainting = message == WM_STYLECHANGING || message == WM_STYLECHANGED;
  if (paintingPale_ && ofThePainting) return 0;
  const LRESULT result = ControlPeer::message(window, message, wParam, lParam);
  if (attached() && changesLook(message)) InvalidateRect(window, nullptr, FALSE);
  return result;
}

// The system paints the button, and as a disabled one: by the style that it finds while it paints.
LRESULT ButtonPeer::paintPale(UINT message, WPARAM wParam, LPARAM lParam) {
  const Scoped painting(paintingPale_);
  const LONG style = GetWindowLongW(window(), GWL_STYLE);
  SetWindowLongW(window(), GWL_STYLE, style | WS_DISABLED);
  const LRESULT result = pass(message, wParam, lParam);
  SetWindowLongW(window(), GWL_STYLE, style);
  return result;
}

void ButtonPeer::commanded(WORD code) {
  if (code != BN_CLICKED || copying()) return;
  host().note(*this, Host::Merge::No, [this] { click(); });
}

void ButtonPeer::click() {
  switch (control().kind()) {
    case Kind::OptionButton:
      static_cast<OptionButton&>(control()).userClick();
      break;
    case Kind::CheckBox:
      static_cast<CheckBox&>(control()).userClick();
      break;
    default:
      static_cast<CommandButton&>(control()).userClick();
  }
}

}  // namespace toolkit::win32
