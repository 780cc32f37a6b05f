// Sees the forms of the system's own of this thread while they are open: what is no message box.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <set>
#include <string>
#include <utility>

namespace container {

// Is this dialog a message box?
bool isMessageBox(HWND dialog);

class FormWatcher {
 public:
  FormWatcher();
  FormWatcher(const FormWatcher&) = delete;
  FormWatcher& operator=(const FormWatcher&) = delete;
  ~FormWatcher();

  // The next form has this caption; `then` is called once when it is visible, from within its
  // message loop or whatever lets pending events run.
  void expect(std::wstring caption, std::function<void(HWND form)> then);
  // A form of this caption may come and go unseen.
  void letPass(std::wstring caption) { passing_ = std::move(caption); }
  // Forms that were not expected, and expected ones that did not come; empty when all is well.
  std::string report() const;

 private:
  static void CALLBACK tick(HWND window, UINT message, UINT_PTR id, DWORD time);
  void look();
  void meet(HWND form);

  UINT_PTR timer_ = 0;
  std::set<HWND> met_;
  std::wstring passing_;
  std::deque<std::pair<std::wstring, std::function<void(HWND)>>> expected_;
  std::string errors_;
};

}  // namespace container
