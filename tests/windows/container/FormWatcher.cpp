#include "tests/windows/container/FormWatcher.h"

#include "tests/windows/container/BoxWatcher.h"

namespace container {

namespace {

FormWatcher* current = nullptr;
constexpr UINT kInterval = 15;
constexpr int kBoxText = 0xFFFF;

std::wstring captionOf(HWND window) {
  wchar_t caption[128] = {};
  GetWindowTextW(window, caption, 128);
  return caption;
}

BOOL CALLBACK addForm(HWND window, LPARAM where) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  const bool dialog = std::wstring(name) == L"#32770" && IsWindowVisible(window) != FALSE;
  if (dialog && !isMessageBox(window)) reinterpret_cast<std::set<HWND>*>(where)->insert(window);
  return TRUE;
}

}  // namespace

bool isMessageBox(HWND dialog) { return GetDlgItem(dialog, kBoxText) != nullptr; }

FormWatcher::FormWatcher() {
  current = this;
  timer_ = SetTimer(nullptr, 0, kInterval, &FormWatcher::tick);
}

FormWatcher::~FormWatcher() {
  KillTimer(nullptr, timer_);
  current = nullptr;
}

void FormWatcher::expect(std::wstring caption, std::function<void(HWND form)> then) {
  expected_.emplace_back(std::move(caption), std::move(then));
}

void CALLBACK FormWatcher::tick(HWND, UINT, UINT_PTR, DWORD) {
  if (current != nullptr) current->look();
}

void FormWatcher::look() {
  std::set<HWND> open;
  EnumThreadWindows(GetCurrentThreadId(), &addForm, reinterpret_cast<LPARAM>(&open));
  std::swap(open, met_);
  for (const HWND form : std::set<HWND>(met_)) {
    if (open.count(form) == 0) meet(form);
  }
}

void FormWatcher::meet(HWND form) {
  const std::wstring caption = captionOf(form);
  if (!expected_.empty() && expected_.front().first == caption) {
    const auto then = std::move(expected_.front().second);
    expected_.pop_front();
    then(form);
  } else if (caption != passing_) {
    errors_ += "unexpected form: " + narrow(caption) + "\n";
    PostMessageW(form, WM_CLOSE, 0, 0);
  }
}

std::string FormWatcher::report() const {
  std::string all = errors_;
  for (const auto& [caption, then] : expected_) {
    all += "a form did not come: " + narrow(caption) + "\n";
  }
  return all;
}

}  // namespace container
