// The desktop of Windows with a host's window around a field.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

#include "tests/unit/toolkit/Layout.h"
#include "tests/windows/toolkit/TestHost.h"
#include "toolkit/TextBox.h"
#include "toolkit/win32/WindowsDesktop.h"

namespace toolkit::test {

class Desktops : public ::testing::Test, public win32::ModalHost {
 protected:
  Surface surface{"Form"};
  TextBox box{&surface, "Txt_Box"};
  std::optional<TestHost> host_;
  bool closed_ = false;
  bool windowless_ = false;
  std::vector<bool> modeless_;
  int restored_ = 0;
  std::unique_ptr<Desktop> desktop = win32::makeWindowsDesktop(*this);

  TestHost& host(TestHost::TopLevel topLevel = TestHost::TopLevel::Shared) {
    if (!host_) {
      layOut(surface);
      host_.emplace(surface, win32::Ambience{}, topLevel);
      host_->click(host_->find("Txt_Box"));
    }
    return *host_;
  }
  void TearDown() override {
    desktop.reset();
    host_.reset();
  }

  HWND owner() const override {
    return windowless_ || !host_ ? nullptr : host_->surface().handle();
  }
  bool closed() const override { return closed_; }
  void enableModeless(bool enable) override { modeless_.push_back(enable); }
  void restoreFocus() override {
    ++restored_;
    if (host_ && host_->hasSurface()) host_->surface().takeFocus();
  }
  HWND surfaceWindow() const override {
    return host_ && host_->hasSurface() ? host_->surface().handle() : nullptr;
  }
};

}  // namespace toolkit::test
