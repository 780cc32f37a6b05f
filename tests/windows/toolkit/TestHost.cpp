#include "tests/windows/toolkit/TestHost.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "toolkit/win32/WideText.h"

namespace toolkit::test {

namespace {

INPUT keyInput(WORD virtualKey, bool up) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = virtualKey;
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC));
  input.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0U;
  if (virtualKey >= VK_PRIOR && virtualKey <= VK_DELETE) input.ki.dwFlags |= KEYEVENTF_EXTENDEDKEY;
  return input;
}

INPUT characterInput(wchar_t unit, bool up) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wScan = unit;
  input.ki.dwFlags = KEYEVENTF_UNICODE | (up ? KEYEVENTF_KEYUP : 0U);
  return input;
}

INPUT mouseInput(POINT at, DWORD flags) {
  const int width = GetSystemMetrics(SM_CXSCREEN);
  const int height = GetSystemMetrics(SM_CYSCREEN);
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dx = (static_cast<int>(at.x) * 65536 + width - 1) / width;
  input.mi.dy = (static_cast<int>(at.y) * 65536 + height - 1) / height;
  input.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE | flags;
  return input;
}

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
  for (INPUT input : inputs) {
    SendInput(1, &input, sizeof input);
    pump();
  }
}

void TestHost::key(WORD virtualKey, bool shift, bool control, bool alt) {
  std::vector<INPUT> inputs;
  const std::vector<WORD> held = [&] {
    std::vector<WORD> keys;
    if (control) keys.push_back(VK_CONTROL);
    if (shift) keys.push_back(VK_SHIFT);
    if (alt) keys.push_back(VK_MENU);
    return keys;
  }();
  for (const WORD each : held) inputs.push_back(keyInput(each, false));
  inputs.push_back(keyInput(virtualKey, false));
  inputs.push_back(keyInput(virtualKey, true));
  for (const WORD each : held) inputs.push_back(keyInput(each, true));
  // All at once: what the display tells of its own keyboard in between would release those held.
  requireForeground();
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
  pump();
}

void TestHost::type(std::wstring_view text) {
  for (const wchar_t unit : text) {
    const SHORT code = VkKeyScanW(unit);
    if (code != -1 && (code & 0x600) == 0 && unit < 128) {
      key(static_cast<WORD>(code & 0xFF), (code & 0x100) != 0);
    } else {
      send({characterInput(unit, false), characterInput(unit, true)});
    }
  }
}

POINT TestHost::onScreen(HWND window, POINT at) {
  ClientToScreen(window, &at);
  return at;
}

void TestHost::click(HWND window, POINT at, Button button, bool control, bool shift) {
  const POINT where = onScreen(window, at);
  const bool left = button == Button::Left;
  std::vector<INPUT> inputs{mouseInput(where, 0)};
  if (control) inputs.push_back(keyInput(VK_CONTROL, false));
  if (shift) inputs.push_back(keyInput(VK_SHIFT, false));
  inputs.push_back(mouseInput(where, left ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN));
  inputs.push_back(mouseInput(where, left ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP));
  if (shift) inputs.push_back(keyInput(VK_SHIFT, true));
  if (control) inputs.push_back(keyInput(VK_CONTROL, true));
  send(inputs);
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

void TestHost::drag(HWND window, POINT from, POINT to) {
  requireForeground();
  const POINT start = onScreen(window, from);
  const POINT end = onScreen(window, to);
  // All at once: a scroll bar handles the whole movement in a loop of its own.
  std::vector<INPUT> inputs{mouseInput(start, 0), mouseInput(start, MOUSEEVENTF_LEFTDOWN),
                            mouseInput(end, 0), mouseInput(end, MOUSEEVENTF_LEFTUP)};
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
  pump();
}

}  // namespace toolkit::test
