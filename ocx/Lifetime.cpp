#include "ocx/Lifetime.h"

namespace ocx {

ULONG Lifetime::releaseReference() {
  const ULONG left = --references_;
  if (left == 0 && !ending_) {
    const Entry last(*this);
    ending_ = true;
    abandoned();
    ending_ = false;
  }
  return left;
}

HRESULT Lifetime::query(REFIID wanted, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = find(wanted);
  if (*object == nullptr) return E_NOINTERFACE;
  addReference();
  return S_OK;
}

void Lifetime::left() noexcept {
  if (entries_ == 1) idle();
  if (entries_ == 1 && references_ == 0) {
    ending_ = true;  // what its members still call while they go changes nothing any more
    delete this;
    return;
  }
  --entries_;
}

}  // namespace ocx
