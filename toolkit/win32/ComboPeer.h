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

 protected:
  Blueprint blueprint() const override;
  void created() override;
  void copy(Aspect what) override;
  LRESULT message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT leftKey(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT character(HWND window, WPARAM wParam, LPARAM lParam) override;
  LRESULT pressed(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  bool ownsKey(WPARAM virtualKey) const override;
  void ownedKey(WPARAM virtualKey) override;
  LRESULT dialogCode() const override;
  void flush() override;

 private:
  bool dropped() const;
  bool editable() const { return combo_.style() == ComboBox::Style::Editable; }
  // Asks the object before the list opens. False: it must not.
  bool opens();
  void fitField(int height);
  void fill();
  void copyChoice();
  void copyListOpen();
  void showList();

  ComboBox& combo_;
  HWND edit_ = nullptr;
  bool itemsChanged_ = true;
  bool asked_ = false;  // the object has been told that the list opens
  wchar_t highSurrogate_ = 0;
};

}  // namespace toolkit::win32
