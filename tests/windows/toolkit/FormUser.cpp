#include "tests/windows/toolkit/FormUser.h"

#include <utility>

#include "host/input/Input.h"

namespace toolkit::test {

namespace {

FormUser* current = nullptr;
constexpr UINT kPause = 30;     // milliseconds
constexpr int kPatience = 100;  // pauses

}  // namespace

HWND openForm(const std::wstring& caption) {
  HWND form = FindWindowW(L"#32770", caption.c_str());
  const bool ours = form && GetWindowThreadProcessId(form, nullptr) == GetCurrentThreadId();
  return ours && IsWindowVisible(form) ? form : nullptr;
}

void press(WORD key, WORD held) {
  input::send(input::stroke(key, held ? std::vector<WORD>{held} : std::vector<WORD>{}));
}

FormUser::FormUser(std::wstring caption, std::vector<Step> steps)
    : caption_(std::move(caption)),
      steps_(steps.begin(), steps.end()),
      timer_(SetTimer(nullptr, 0, kPause, &FormUser::tick)) {
  current = this;
}

FormUser::~FormUser() {
  KillTimer(nullptr, timer_);
  current = nullptr;
}

void FormUser::tick(HWND, UINT, UINT_PTR, DWORD) {
  if (current) current->look();
}

void FormUser::look() {
  HWND form = openForm(caption_);
  if (!form) return;
  if (steps_.empty()) {
    if (++idle_ == kPatience) EndDialog(form, 0);
    return;
  }
  const Step step = std::move(steps_.front());
  steps_.pop_front();
  step(form);
}

}  // namespace toolkit::test
