#pragma once

#include "toolkit/Desktop.h"
#include "toolkit/Frame.h"
#include "toolkit/Window.h"

namespace forms {

// The waiting window: modeless, shown while it lives. The user cannot close it.
class Frm_Anim {
 public:
  // Painted when this returns. Throws what showing it throws, ControlClosed among it.
  explicit Frm_Anim(toolkit::Desktop& desktop);
  // Never throws, not even when the control was closed meanwhile.
  ~Frm_Anim();
  Frm_Anim(const Frm_Anim&) = delete;
  Frm_Anim& operator=(const Frm_Anim&) = delete;

 private:
  toolkit::Desktop& desktop_;
  toolkit::Window window_;
  struct Controles {
    toolkit::Label Label1;
  } controles_;
};

}  // namespace forms
