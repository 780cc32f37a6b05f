#include "forms/Frm_Anim.h"

#include "toolkit/ControlClosed.h"
#include "toolkit/Trace.h"
#include "toolkit/Trap.h"

namespace forms {

namespace {

// Twips.
constexpr int kWidth = 5100;
constexpr int kHeight = 1125;
constexpr int kLineHeight = 225;

}  // namespace

Frm_Anim::Frm_Anim(toolkit::Desktop& desktop)
    : desktop_(desktop),
      window_("Frm_Anim", "Mise à jour des accords en cours...", kWidth, kHeight),
      controles_{{&window_.surface(), "Label1", "Merci de patienter..."}} {
  controles_.Label1.setPlace({0, (kHeight - kLineHeight) / 2, kWidth, kLineHeight});
  controles_.Label1.setCentered(true);
  desktop_.show(window_);
}

Frm_Anim::~Frm_Anim() {
  try {
    toolkit::quietly("Frm_Anim", [this] { desktop_.close(window_); });
  } catch (const toolkit::ControlClosed&) {
    // It has gone with the control.
    toolkit::trace("Frm_Anim", "closed");
  }
}

}  // namespace forms
