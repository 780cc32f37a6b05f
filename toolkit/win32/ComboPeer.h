#pragma once

#include "toolkit/ComboBox.h"
#include "toolkit/win32/LinePeer.h"

namespace toolkit::win32 {

// Keys and focus of a combo that can be typed into are those of the edit inside it.
class ComboPeer final : public LinePeer {
 public:
  ComboPeer(Host& host, ComboBox& combo) : LinePeer(host, combo), combo_(combo) {}
  HWND focusWindow() const override { return edit_ ? edit_ : window(); }
  void commanded(WORD code) override;
  HBRUSH colors(HDC, UINT) override { return nullptr; }
  void applyPlace() override;
  void applyFont() override;
  void drawItem(const DRAWITEMSTRUCT& item) override;

 protected:
  Blueprint blueprint() const override;
  void created() override;
  void copy(Aspect what) override;
  LRESULT message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT leftKey(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT character(HWND window, WPARAM wParam, LPARAM lParam) override;
  LRESULT pressed(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT dialogCode() const override;
  void reportSilent() override;
  void flush() override;
  void lost(HWND window) override;
  int spareAbove(HWND edit, const RECT& place) override;

 private:
  bool dropped() { return pass(CB_GETDROPPEDSTATE) != 0; }
  int windowLine() { return static_cast<int>(pass(CB_GETCURSEL)); }
  bool holdsTheLines() { return pass(CB_GETCOUNT) == combo_.listCount(); }
  bool editable() const { return combo_.style() == ComboBox::Style::Editable; }
  // Asks the object whether the list may open, then lets the window open it by this message.
  LRESULT open(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  // The window's list has just been opened or closed: what stands in the field is the object's.
  void settle();
  void copyOpened();
  void closedUp();
  void lineChosen();
  void fitField(int height);
  void fill();
  void copyChoice();
  void copyCaret();
  void reportCaret();
  void showList();
  bool pointsAtNone();
  void pointAtFirst();

  ComboBox& combo_;
  HWND edit_ = nullptr;
  bool itemsChanged_ = true;
  bool choiceChanged_ = false;
  bool opening_ = false;    // the object has been asked, and the window is about to follow
  int known_ = -1;          // the window's line when the object last heard of it
  bool confirmed_ = false;  // the window says that a line of its open list is meant
  bool told_ = false;       // which one has been noted
  wchar_t highSurrogate_ = 0;
};

}  // namespace toolkit::win32
