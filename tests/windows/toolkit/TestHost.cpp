#include "tests/windows/toolkit/TestHost.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "host/input/Input.h"
#include "toolkit/win32/WideText.h"

namespace toolkit::test {

namespace {

Loop loopFromEnvironment() {
  const char* name = std::getenv("TESSALINE_TEST_LOOP");
  if (name && std::strcmp(name, "forwarding") == 0) return Loop::Forwarding;
  if (name && std::strcmp(name, "dialog") == 0) return Loop::Dialog;
  return Loop::Plain;
}

constexpr int kFieldId = 100;

// Without a frame: Wine's driver then asks no window manager, and Alt opens no system menu.
HWND makeTopLevel() {
  HWND window =
      CreateWindowExW(WS_EX_CONTROLPARENT, WC_DIALOG, L"Host", WS_POPUP | WS_CLIPCHILDREN, 0, 0,
                      1200, 1000, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 1050, 10, 100, 20, window,
                  reinterpret_cast<HMENU>(INT_PTR{kFieldId}), GetModuleHandleW(nullptr), nullptr);
  ShowWindow(window, SW_SHOW);
  SetForegroundWindow(window);
  // What the display has to say about a new window comes late, and disturbs held keys.
  for (int i = 0; i < 20; ++i) {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    Sleep(10);
  }
  return window;
}

struct Search {
  std::string_view name;
  HWND found;
};

BOOL CALLBACK compareName(HWND window, LPARAM search) {
  auto& wanted = *reinterpret_cast<Search*>(search);
  if (controlNameOf(window) != wanted.name) return TRUE;
  wanted.found = window;
  return FALSE;
}

}  // namespace

std::wstring textOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)), L'\0');
  SendMessageW(window, WM_GETTEXT, text.size() + 1, reinterpret_cast<LPARAM>(text.data()));
  return text;
}

std::wstring classOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  return name;
}

std::string controlNameOf(HWND window) {
  static const UINT message = RegisterWindowMessageW(L"WM_GETCONTROLNAME");
  wchar_t name[128] = {};
  const LRESULT copied = SendMessageW(window, message, 128, reinterpret_cast<LPARAM>(name));
  return copied > 0 ? win32::narrow(name) : std::string();
}

TestHost::TestHost(Surface& surface, const win32::Ambience& ambience, TopLevel topLevel)
    : topLevel_(topLevel), loop_(loopFromEnvironment()) {
  static HWND shared = makeTopLevel();
  window_ = topLevel == TopLevel::Shared ? shared : makeTopLevel();
  field_ = GetDlgItem(window_, kFieldId);
  const RECT place{0, 0, 1000, 1000};
  surface_ = std::make_unique<win32::SurfaceWindow>(surface, window_, place, ambience);
  surface_->show(true);
  SetForegroundWindow(window_);
  SetFocus(window_);
  pump();
}

TestHost::~TestHost() {
  surface_.reset();
  if (topLevel_ == TopLevel::Own && IsWindow(window_)) DestroyWindow(window_);
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

HWND TestHost::find(std::string_view name) const {
  Search search{name, nullptr};
  EnumChildWindows(window_, &compareName, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

void TestHost::handle(MSG& message) {
  if (loop_ == Loop::Forwarding && surface_ && surface_->translate(message)) return;
  if (loop_ == Loop::Dialog && IsDialogMessageW(window_, &message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

void TestHost::pump() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) handle(message);
}

bool TestHost::pumpUntil(const std::function<bool()>& condition) {
  for (int tries = 0; tries < 200; ++tries) {
    pump();
    if (condition()) return true;
    Sleep(10);
  }
  return false;
}

void TestHost::requireForeground() {
  if (GetForegroundWindow() != window_) SetForegroundWindow(window_);
  if (!pumpUntil([this] { return GetForegroundWindow() == window_; })) {
    throw std::runtime_error("the host's window does not come to the foreground");
  }
  if (!GetFocus()) throw std::runtime_error("no window has the keyboard");
}

void TestHost::send(const std::vector<INPUT>& inputs) {
  requireForeground();
  for (const INPUT& each : inputs) {
    input::send({each});
    pump();
  }
}

void TestHost::sendTogether(const std::vector<INPUT>& inputs) {
  requireForeground();
  input::send(inputs);
  pump();
}

// Together: what the display tells of its own keyboard in between would release those held.
void TestHost::key(WORD virtualKey, bool shift, bool control, bool alt) {
  std::vector<WORD> held;
  if (control) held.push_back(VK_CONTROL);
  if (shift) held.push_back(VK_SHIFT);
  if (alt) held.push_back(VK_MENU);
  sendTogether(input::stroke(virtualKey, held));
}

void TestHost::type(std::wstring_view text) {
  for (const wchar_t unit : text) sendTogether(input::typed(unit));
}

POINT TestHost::onScreen(HWND window, POINT at) {
  ClientToScreen(window, &at);
  return at;
}

void TestHost::click(HWND window, POINT at, Button button, bool control, bool shift) {
  const POINT where = onScreen(window, at);
  const bool left = button == Button::Left;
  const INPUT down = input::mouse(where, left ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN);
  const INPUT up = input::mouse(where, left ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP);
  send({input::mouse(where, 0)});
  if (!control && !shift) {
    send({down, up});
    return;
  }
  // Together, as the keys of a stroke are.
  std::vector<INPUT> inputs;
  if (control) inputs.push_back(input::key(VK_CONTROL, false));
  if (shift) inputs.push_back(input::key(VK_SHIFT, false));
  inputs.push_back(down);
  inputs.push_back(up);
  if (shift) inputs.push_back(input::key(VK_SHIFT, true));
  if (control) inputs.push_back(input::key(VK_CONTROL, true));
  sendTogether(inputs);
}

void TestHost::click(HWND window, Button button) {
  RECT area{};
  GetClientRect(window, &area);
  // Not twice in the same place, which would be a double click.
  const LONG shift = (clicks_++ % 2) * 10 - 5;
  click(window, {area.right / 2 + shift, area.bottom / 2}, button);
}

void TestHost::doubleClick(HWND window, POINT at) {
  click(window, at);
  click(window, at);
}

void TestHost::wheel(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  const POINT where = onScreen(window, {area.right / 2, area.bottom / 2});
  INPUT notch = input::mouse(where, MOUSEEVENTF_WHEEL);
  notch.mi.mouseData = static_cast<DWORD>(-WHEEL_DELTA);
  send({input::mouse(where, 0), notch});
}

void TestHost::drag(HWND window, POINT from, POINT to) {
  const POINT start = onScreen(window, from);
  const POINT end = onScreen(window, to);
  // Together: a scroll bar handles the whole movement in a loop of its own.
  sendTogether({input::mouse(start, 0), input::mouse(start, MOUSEEVENTF_LEFTDOWN),
                input::mouse(end, 0), input::mouse(end, MOUSEEVENTF_LEFTUP)});
}

}  // namespace toolkit::test
