#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace toolkit::test {

// The user in front of a form of ours that opens while this lives: acts from a timer, one step at a
// time, each when the input of the step before has been handled. A modal form that stays open long
// after the last step is ended, as by the end of its owner.
class FormUser {
 public:
  using Step = std::function<void(HWND form)>;
  FormUser(std::wstring caption, std::vector<Step> steps);
  FormUser(const FormUser&) = delete;
  FormUser& operator=(const FormUser&) = delete;
  ~FormUser();

 private:
  static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD);
  void look();

  std::wstring caption_;
  std::deque<Step> steps_;
  UINT_PTR timer_;
  int idle_ = 0;
};

// The form with that caption, when it is on the screen; else null.
HWND openForm(const std::wstring& caption);

// A key as from the keyboard, while another is held.
void press(WORD key, WORD held = 0);

}  // namespace toolkit::test
