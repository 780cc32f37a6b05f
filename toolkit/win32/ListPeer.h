#pragma once

#include <vector>

#include "toolkit/ListBox.h"
#include "toolkit/win32/ControlPeer.h"

namespace toolkit::win32 {

class ListPeer final : public ControlPeer {
 public:
  ListPeer(Host& host, ListBox& list) : ControlPeer(host, list), list_(list) {}
  void commanded(WORD code) override;
  HBRUSH colors(HDC context, UINT message) override;

 protected:
  Blueprint blueprint() const override;
  void copy(Aspect what) override;
  LRESULT message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT dialogCode() const override { return DLGC_WANTCHARS | DLGC_WANTARROWS; }
  void flush() override;

 private:
  bool extended() const { return list_.selection() == ListBox::Selection::Extended; }
  std::vector<int> selectedLines();
  void fill();
  void copySelection();
  void copyTop();

  ListBox& list_;
  bool itemsChanged_ = true;
};

}  // namespace toolkit::win32
