#include "ocx/Notices.h"

#include <system_error>

#include "ocx/Members.h"
#include "toolkit/Trace.h"

namespace ocx {

void Notices::sortirChanged() {
  if (points_.properties().empty()) return;
  pending_ = true;
  try {
    posted_.post();
  } catch (const std::system_error& failure) {
    toolkit::trace("W_Sortir", failure);
  }
}

HRESULT Notices::freeze(bool frozen) {
  frozen_ = frozen;
  if (!frozen_ && pending_) posted_.post();
  return S_OK;
}

bool Notices::tell() {
  if (whole_.entries() > 0) return false;
  const Lifetime::Entry entry(whole_);
  if (!frozen_ && pending_) {
    pending_ = false;
    points_.properties().tellChanged(kSortir);
  }
  return true;
}

}  // namespace ocx
