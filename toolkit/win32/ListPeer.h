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
  void drawItem(const DRAWITEMSTRUCT& item) override;
  void applyPlace() override;
  void applyFont() override;

 protected:
  Blueprint blueprint() const override;
  void copy(Aspect what) override;
  LRESULT message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT pressed(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT dialogCode() const override { return DLGC_WANTCHARS | DLGC_WANTARROWS; }
  void flush() override;

 private:
  bool extended() const { return list_.selection() == ListBox::Selection::Extended; }
  // What the window says may be what another program has made of it.
  bool holdsTheLines();
  int lineAt(LPARAM position);  // -1 for none
  void fitLines();
  COLORREF textColor() const;
  void countLines();
  std::vector<int> selectedLines();
  void fill();
  void flushLater(bool& changed);
  void selectRange(int first, int last, bool selected);
  void copySelection();
  void copyTop();

  ListBox& list_;
  // What the window does not show yet: it is brought up to date before it looks at a message, so
  // that a handler may change one line after the other.
  bool itemsChanged_ = true;
  bool selectionChanged_ = true;
  bool topChanged_ = false;
};

}  // namespace toolkit::win32
