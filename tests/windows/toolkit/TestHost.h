// A host's window around a surface, and the user in front of it: keys and mouse come from
// SendInput, so they take the way that a user's do.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/win32/SurfaceWindow.h"

namespace toolkit::test {

// How the host's message loop treats keys: gives each to the control first; knows nothing of
// controls; runs IsDialogMessage. The environment variable TESSALINE_TEST_LOOP chooses
// ("forwarding", "plain", "dialog"); plain by default.
enum class Loop { Forwarding, Plain, Dialog };

class TestHost {
 public:
  // The tests share one top-level window, which keeps the display quiet; one that is to be
  // destroyed in a test is the test's own.
  enum class TopLevel { Shared, Own };
  explicit TestHost(Surface& surface, const win32::Ambience& ambience = {},
                    TopLevel topLevel = TopLevel::Shared);
  TestHost(const TestHost&) = delete;
  TestHost& operator=(const TestHost&) = delete;
  ~TestHost();

  HWND handle() const { return window_; }
  // A control of the host's own, beside the surface.
  HWND field() const { return field_; }
  win32::SurfaceWindow& surface() const { return *surface_; }
  bool hasSurface() const { return surface_ != nullptr; }
  void dropSurface() { surface_.reset(); }
  void destroyWindow() { DestroyWindow(window_); }

  // The window of a control by its name; null when there is none.
  HWND find(std::string_view name) const;

  // Handles every message that is waiting.
  void pump();
  // Waits until the condition holds, for at most two seconds; false when it never did.
  bool pumpUntil(const std::function<bool()>& condition);

  void key(WORD virtualKey, bool shift = false, bool control = false, bool alt = false);
  void type(std::wstring_view text);
  enum class Button { Left, Right };
  void click(HWND window, POINT at, Button button = Button::Left, bool control = false,
             bool shift = false);
  void click(HWND window, Button button = Button::Left);  // its middle
  void doubleClick(HWND window, POINT at);
  void drag(HWND window, POINT from, POINT to);
  void wheel(HWND window);  // a notch towards the user, over its middle

 private:
  void send(const std::vector<INPUT>& inputs);  // one after the other
  void sendTogether(const std::vector<INPUT>& inputs);
  void requireForeground();
  void handle(MSG& message);
  POINT onScreen(HWND window, POINT at);

  TopLevel topLevel_;
  HWND window_ = nullptr;
  HWND field_ = nullptr;
  Loop loop_;
  std::unique_ptr<win32::SurfaceWindow> surface_;
  int clicks_ = 0;
};

std::wstring textOf(HWND window);
std::wstring classOf(HWND window);
std::string controlNameOf(HWND window);

}  // namespace toolkit::test
