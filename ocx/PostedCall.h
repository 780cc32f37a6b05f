// A call that comes from the message loop, after everything that runs now.
#pragma once

#include <windows.h>

#include <functional>

namespace ocx {

// Several posts before the call has come are one. Dropped when the object goes.
class PostedCall {
 public:
  // `call` gives back false when it cannot be made yet: it is tried again a moment later.
  explicit PostedCall(std::function<bool()> call) : call_(std::move(call)) {}
  PostedCall(const PostedCall&) = delete;
  PostedCall& operator=(const PostedCall&) = delete;
  ~PostedCall();

  // std::system_error when Windows gives no window for it.
  void post();

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  static LRESULT received(HWND window, UINT message, WPARAM first, LPARAM second);
  void attempt();

  std::function<bool()> call_;
  HWND window_ = nullptr;
  bool waiting_ = false;
};

}  // namespace ocx
