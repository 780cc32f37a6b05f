// What the host is told when nothing of the control runs.
#pragma once

#include <windows.h>

#include "ocx/ConnectionPoints.h"
#include "ocx/Lifetime.h"
#include "ocx/PostedCall.h"

namespace ocx {

class Notices {
 public:
  Notices(Lifetime& whole, ConnectionPoints& points) : whole_(whole), points_(points) {}
  Notices(const Notices&) = delete;
  Notices& operator=(const Notices&) = delete;

  void sortirChanged();
  // IOleControl::FreezeEvents: what is noted meanwhile is told afterwards.
  HRESULT freeze(bool frozen);
  // Nothing that has been noted is told any more.
  void forget() { pending_ = false; }

 private:
  bool tell();

  Lifetime& whole_;
  ConnectionPoints& points_;
  bool pending_ = false;
  bool frozen_ = false;
  PostedCall posted_{[this] { return tell(); }};
};

}  // namespace ocx
