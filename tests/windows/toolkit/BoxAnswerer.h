#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace toolkit::test {

// Answers the message boxes that open while it lives, from a timer, as somebody at the screen
// would.
class BoxAnswerer {
 public:
  struct Seen {
    std::wstring title;
    std::wstring text;
    HWND owner = nullptr;
    bool ownerEnabled = true;
    std::vector<int> buttons;  // ids
  };
  // `answer` is the button pressed; `instead` runs in its place when it is given.
  explicit BoxAnswerer(int answer, std::function<void(HWND box)> instead = {});
  BoxAnswerer(const BoxAnswerer&) = delete;
  BoxAnswerer& operator=(const BoxAnswerer&) = delete;
  ~BoxAnswerer();

  const std::vector<Seen>& seen() const { return seen_; }

 private:
  static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD);
  void look();

  int answer_;
  std::function<void(HWND)> instead_;
  UINT_PTR timer_;
  std::vector<Seen> seen_;
  HWND last_ = nullptr;
};

}  // namespace toolkit::test
