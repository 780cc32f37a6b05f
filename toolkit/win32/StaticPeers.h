// What takes no input: frames and labels.
#pragma once

#include "toolkit/Frame.h"
#include "toolkit/win32/ControlPeer.h"

namespace toolkit::win32 {

// A group box beside its fields, not their parent. It lies below them and paints its own ground,
// which the window around it leaves out.
class FramePeer final : public ControlPeer {
 public:
  FramePeer(Host& host, Frame& frame) : ControlPeer(host, frame), frame_(frame) {}
  void applyPlace() override;

 protected:
  Blueprint blueprint() const override { return {L"BUTTON", BS_GROUPBOX, 0}; }
  void copy(Aspect what) override;
  LRESULT message(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void paintCaption();

  Frame& frame_;
};

class LabelPeer final : public ControlPeer {
 public:
  LabelPeer(Host& host, Label& label) : ControlPeer(host, label), label_(label) {}
  void drawItem(const DRAWITEMSTRUCT& item) override;

 protected:
  Blueprint blueprint() const override;
  void copy(Aspect what) override;

 private:
  Label& label_;
};

}  // namespace toolkit::win32
