#pragma once

#include "toolkit/Buttons.h"
#include "toolkit/win32/ControlPeer.h"

namespace toolkit::win32 {

// Command button, option button and check box. Their state is set from the object alone.
class ButtonPeer : public ControlPeer {
 public:
  ButtonPeer(Host& host, Control& button) : ControlPeer(host, button) {}
  void commanded(WORD code) override;

 protected:
  Blueprint blueprint() const override;
  void created() override;
  void copy(Aspect what) override;
  LRESULT message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  bool value() const;  // of an option or check box
  // After that message a button paints itself at once, without being asked to.
  static bool changesLook(UINT message);

 private:
  void click();
  bool isDefault() const;
  LRESULT paintPale(UINT message, WPARAM wParam, LPARAM lParam);

  bool paintingPale_ = false;
};

}  // namespace toolkit::win32
