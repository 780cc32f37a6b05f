#pragma once

#include "toolkit/ScrollBar.h"
#include "toolkit/win32/ControlPeer.h"

namespace toolkit::win32 {

class ScrollPeer final : public ControlPeer {
 public:
  ScrollPeer(Host& host, ScrollBar& bar) : ControlPeer(host, bar), bar_(bar) {}
  void scrolled(WORD code) override;
  HBRUSH colors(HDC, UINT) override { return nullptr; }

 protected:
  Blueprint blueprint() const override;
  void copy(Aspect what) override;
  LRESULT dialogCode() const override { return DLGC_WANTARROWS; }

 private:
  ScrollBar& bar_;
};

}  // namespace toolkit::win32
