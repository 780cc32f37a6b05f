// One of the system's own forms on the screen: an empty dialog that holds a surface.
#pragma once

#include <windows.h>

#include <exception>
#include <functional>
#include <memory>
#include <utility>

#include "toolkit/Window.h"
#include "toolkit/win32/SurfaceWindow.h"

namespace toolkit::win32 {

class FormWindow {
 public:
  // `keepAlive`: what each window procedure of the form holds until it has unwound. It keeps the
  // window and its owner alive meanwhile.
  FormWindow(Window& window, std::function<std::shared_ptr<void>()> keepAlive)
      : window_(window), keepAlive_(std::move(keepAlive)) {}
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;
  ~FormWindow();

  // Returns when the form has been closed, by itself or by the end of its owner. Throws
  // std::system_error when it could not be opened.
  void runModal(HWND owner);
  // Is painted before it returns. Throws std::system_error.
  void showModeless(HWND owner);
  void close();

  Window& window() const { return window_; }
  HWND handle() const { return dialog_; }
  // False: it ended with its owner, not by close().
  bool closed() const { return closed_; }

 private:
  static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR message(UINT message, WPARAM wParam);
  void open();
  void requireOpened() const;
  void build();
  void fit();
  void closeAsked();

  Window& window_;
  std::function<std::shared_ptr<void>()> keepAlive_;
  HWND dialog_ = nullptr;
  bool modal_ = false;
  bool closed_ = false;
  bool opened_ = false;
  std::exception_ptr failure_;  // of building it
  std::unique_ptr<SurfaceWindow> surface_;
};

}  // namespace toolkit::win32
