#pragma once

#include "toolkit/TextBox.h"
#include "toolkit/win32/LinePeer.h"

namespace toolkit::win32 {

class TextPeer final : public LinePeer {
 public:
  TextPeer(Host& host, TextBox& box) : LinePeer(host, box), box_(box) {}
  void commanded(WORD code) override;
  HBRUSH colors(HDC context, UINT message) override;
  void applyPlace() override;
  void applyFont() override;

 protected:
  Blueprint blueprint() const override;
  void copy(Aspect what) override;
  LRESULT message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT leftKey(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT character(HWND window, WPARAM wParam, LPARAM lParam) override;
  LRESULT dialogCode() const override;
  void reportSilent() override;

 private:
  void copyText();
  void copySelection();
  void copyStyle();

  TextBox& box_;
  wchar_t highSurrogate_ = 0;
};

}  // namespace toolkit::win32
