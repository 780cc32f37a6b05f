#pragma once

#include "toolkit/Desktop.h"
#include "toolkit/Window.h"

namespace forms {

// The waiting window: modeless, shown while it lives.
class Frm_Anim {
 public:
  // Painted when this returns.
  explicit Frm_Anim(toolkit::Desktop& desktop);
  ~Frm_Anim();
  Frm_Anim(const Frm_Anim&) = delete;
  Frm_Anim& operator=(const Frm_Anim&) = delete;

 private:
  toolkit::Desktop& desktop_;
  toolkit::Window window_;
};

}  // namespace forms
