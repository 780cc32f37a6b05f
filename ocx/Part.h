// A part of the control that has some of its interfaces.
#pragma once

#include <ole2.h>

#include "com/ComBorder.h"
#include "ocx/Lifetime.h"

namespace ocx {

// References and identity are those of the whole, which outlives it.
template <class... Interfaces>
class Part : public Interfaces... {
 public:
  Part(const Part&) = delete;
  Part& operator=(const Part&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    return com::comBorder([&] { return whole_.query(wanted, object); });
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return com::comBorder<ULONG>([&] { return whole_.addReference(); });
  }
  ULONG STDMETHODCALLTYPE Release() override {
    return com::comBorder<ULONG>([&] { return whole_.releaseReference(); });
  }

 protected:
  explicit Part(Lifetime& whole) : whole_(whole) {}
  ~Part() = default;

  Lifetime& whole() { return whole_; }

  // The border, with a reference to the control and the host's theme until the call has unwound.
  template <class Body>
  HRESULT enter(const Body& body) noexcept {
    return com::comBorder([&] {
      const Lifetime::Entry entry(whole_);
      return body();
    });
  }

 private:
  Lifetime& whole_;
};

}  // namespace ocx
