#include "tests/windows/toolkit/BoxAnswerer.h"

#include "tests/windows/toolkit/TestHost.h"

namespace toolkit::test {

namespace {

BoxAnswerer* current = nullptr;

BOOL CALLBACK findBox(HWND window, LPARAM found) {
  const bool box = classOf(window) == L"#32770" && GetDlgItem(window, 0xFFFF) != nullptr &&
                   IsWindowVisible(window);
  if (!box) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

}  // namespace

BoxAnswerer::BoxAnswerer(int answer, std::function<void(HWND)> instead)
    : answer_(answer),
      instead_(std::move(instead)),
      timer_(SetTimer(nullptr, 0, 20, &BoxAnswerer::tick)) {
  current = this;
}

BoxAnswerer::~BoxAnswerer() {
  KillTimer(nullptr, timer_);
  current = nullptr;
}

void BoxAnswerer::tick(HWND, UINT, UINT_PTR, DWORD) {
  if (current) current->look();
}

void BoxAnswerer::look() {
  HWND box = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), &findBox, reinterpret_cast<LPARAM>(&box));
  if (!box || box == last_) return;
  last_ = box;
  Seen seen;
  seen.title = textOf(box);
  seen.text = textOf(GetDlgItem(box, 0xFFFF));
  seen.owner = GetWindow(box, GW_OWNER);
  seen.ownerEnabled = seen.owner && IsWindowEnabled(seen.owner);
  for (const int id : {IDOK, IDCANCEL, IDYES, IDNO}) {
    if (GetDlgItem(box, id)) seen.buttons.push_back(id);
  }
  seen_.push_back(seen);
  if (instead_) {
    instead_(box);
  } else {
    PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(answer_), 0);
  }
}

}  // namespace toolkit::test
