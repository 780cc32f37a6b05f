// The control as a COM object: its parts, and what happens between them.
#pragma once

#include <ole2.h>

#include <memory>

#include "com/Module.h"
#include "control/Ctr_OrgPriseCharge.h"
#include "ocx/Automation.h"
#include "ocx/ConnectionPoints.h"
#include "ocx/Description.h"
#include "ocx/EmbeddedObject.h"
#include "ocx/HostedControl.h"
#include "ocx/InPlace.h"
#include "ocx/Lifetime.h"
#include "ocx/Notices.h"
#include "ocx/Persistence.h"
#include "ocx/PlacedObject.h"
#include "ocx/View.h"
#include "toolkit/Desktop.h"

namespace ocx {

class ControlObject final : private Lifetime {
 public:
  // The new object has one reference, the caller's.
  static IUnknown* make();

 private:
  ControlObject();
  ControlObject(const ControlObject&) = delete;
  ControlObject& operator=(const ControlObject&) = delete;
  ~ControlObject() override;

  void* find(REFIID wanted) override;
  void abandoned() noexcept override;
  void idle() noexcept override;

  com::Alive alive_;
  InPlace place_;
  std::unique_ptr<toolkit::Desktop> desktop_;
  control::Ctr_OrgPriseCharge control_;

  Automation automation_;
  Description description_;
  ConnectionPoints points_;
  Notices notices_;
  Persistence kept_;
  View view_;
  PlacedObject placed_;
  EmbeddedObject embedded_;
  HostedControl hosted_;
};

}  // namespace ocx
