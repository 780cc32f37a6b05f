#include "tests/windows/container/Typist.h"

#include <commctrl.h>

#include <algorithm>
#include <stdexcept>

#include "host/input/Input.h"
#include "tests/windows/container/BoxWatcher.h"

namespace container {

namespace {

std::wstring textOf(HWND window) {
  const LRESULT length = SendMessageW(window, WM_GETTEXTLENGTH, 0, 0);
  std::wstring text(static_cast<size_t>(length) + 1, L'\0');
  SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<size_t>(length));
  return text;
}

}  // namespace

std::wstring nameOf(HWND window) {
  static const UINT message = RegisterWindowMessageW(L"WM_GETCONTROLNAME");
  wchar_t name[128] = {};
  const LRESULT copied = SendMessageW(window, message, 128, reinterpret_cast<LPARAM>(name));
  return copied > 0 ? name : L"";
}

namespace {

struct Search {
  const std::wstring& name;
  HWND found;
};

BOOL CALLBACK findNamed(HWND window, LPARAM where) {
  Search& wanted = *reinterpret_cast<Search*>(where);
  if (nameOf(window) != wanted.name) return TRUE;
  wanted.found = window;
  return FALSE;
}

}  // namespace

HWND childOf(HWND parent, const std::wstring& name) {
  Search search{name, nullptr};
  EnumChildWindows(parent, &findNamed, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

std::vector<std::wstring> linesOf(HWND window) {
  wchar_t type[32] = {};
  GetClassNameW(window, type, 32);
  const bool combo = lstrcmpiW(type, L"COMBOBOX") == 0;
  std::vector<std::wstring> all;
  const LRESULT count = SendMessageW(window, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0);
  for (LRESULT i = 0; i < count; ++i) {
    const auto at = static_cast<WPARAM>(i);
    const LRESULT length = SendMessageW(window, combo ? CB_GETLBTEXTLEN : LB_GETTEXTLEN, at, 0);
    std::wstring line(static_cast<size_t>(length) + 1, L'\0');
    SendMessageW(window, combo ? CB_GETLBTEXT : LB_GETTEXT, at,
                 reinterpret_cast<LPARAM>(line.data()));
    line.resize(static_cast<size_t>(length));
    all.push_back(line);
  }
  return all;
}

void Typist::send(const std::vector<INPUT>& inputs) {
  if (GetForegroundWindow() != stage_.window.handle())
    throw std::runtime_error("the host's window is not in the foreground");
  // Held keys go in one piece, so that the display cannot release them in between.
  if (inputs.size() > 3) {
    input::send(inputs);
    stage_.pump();
    return;
  }
  for (const INPUT& each : inputs) {
    input::send({each});
    stage_.pump();
  }
}

void Typist::key(WORD code, bool shift, bool control, bool altHeld) {
  std::vector<WORD> held;
  if (control) held.push_back(VK_CONTROL);
  if (altHeld) held.push_back(VK_MENU);
  if (shift) held.push_back(VK_SHIFT);
  send(input::stroke(code, held));
}

void Typist::alt(wchar_t letter) {
  key(static_cast<WORD>(VkKeyScanW(letter) & 0xFF), false, false, true);
}

void Typist::crossed(WORD held, WORD code) {
  send({input::key(held, false), input::key(code, false), input::key(held, true),
        input::key(code, true)});
}

void Typist::type(std::wstring_view text) {
  for (const wchar_t character : text) send(input::typed(character));
}

void Typist::press(POINT at, Held held) {
  const WORD modifier = held == Held::Shift ? VK_SHIFT : VK_CONTROL;
  send({input::mouse(at, 0)});
  std::vector<INPUT> inputs = {input::mouse(at, MOUSEEVENTF_LEFTDOWN),
                               input::mouse(at, MOUSEEVENTF_LEFTUP)};
  if (held != Held::Nothing) {
    inputs.insert(inputs.begin(), input::key(modifier, false));
    inputs.push_back(input::key(modifier, true));
  }
  send(inputs);
}

void Typist::click(HWND window, int x, int y) {
  if (window == nullptr) throw std::runtime_error("nothing to click on");
  RECT place = {};
  GetClientRect(window, &place);
  POINT at = {x < 0 ? place.right / 2 : x, y < 0 ? place.bottom / 2 : y};
  ClientToScreen(window, &at);
  press(at);
}

HWND Typist::require(const std::wstring& name) const {
  const HWND window = find(name);
  if (window == nullptr) throw std::runtime_error("no control of that name: " + narrow(name));
  return window;
}

void Typist::click(const std::wstring& name) {
  const HWND window = require(name);
  const HWND edit = FindWindowExW(window, nullptr, L"Edit", nullptr);
  click(edit != nullptr ? edit : window);
}

void Typist::clickTab(int tab) {
  const HWND tabs = require(L"Ong_OrgPriseChg");
  RECT place = {};
  SendMessageW(tabs, TCM_GETITEMRECT, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&place));
  click(tabs, (place.left + place.right) / 2, (place.top + place.bottom) / 2);
}

// Never twice in the same place, which would be a double click.
POINT Typist::middleOfLine(HWND list, int line) {
  RECT place = {};
  const auto at = static_cast<WPARAM>(line);
  SendMessageW(list, LB_GETITEMRECT, at, reinterpret_cast<LPARAM>(&place));
  RECT seen = {};
  GetClientRect(list, &seen);
  if (place.top < 0 || place.bottom > seen.bottom) {
    SendMessageW(list, LB_SETTOPINDEX, at, 0);
    SendMessageW(list, LB_GETITEMRECT, at, reinterpret_cast<LPARAM>(&place));
  }
  constexpr int kFarEnough = 12;
  POINT middle = {place.left + 8 + kFarEnough * (clicks_++ % 3), (place.top + place.bottom) / 2};
  ClientToScreen(list, &middle);
  return middle;
}

void Typist::clickLine(const std::wstring& name, int line, Held held) {
  press(middleOfLine(require(name), line), held);
}

void Typist::doubleClickLine(const std::wstring& name, int line) {
  const POINT at = middleOfLine(require(name), line);
  press(at);
  press(at);
}

void Typist::clickArrow(const std::wstring& name) {
  const HWND combo = require(name);
  COMBOBOXINFO information = {};
  information.cbSize = sizeof information;
  GetComboBoxInfo(combo, &information);
  const RECT& arrow = information.rcButton;
  click(combo, (arrow.left + arrow.right) / 2, (arrow.top + arrow.bottom) / 2);
}

void Typist::clickOpenLine(const std::wstring& name, int line) {
  COMBOBOXINFO information = {};
  information.cbSize = sizeof information;
  GetComboBoxInfo(require(name), &information);
  press(middleOfLine(information.hwndList, line));
}

// In one piece: the scroll bar waits for the button's release in a loop of its own.
void Typist::clickScrollEnd(const std::wstring& name) {
  const HWND bar = require(name);
  RECT place = {};
  GetClientRect(bar, &place);
  constexpr int kInArrow = 6;
  POINT at = {place.right - kInArrow, place.bottom / 2};
  ClientToScreen(bar, &at);
  send({input::mouse(at, 0)});
  input::send({input::mouse(at, MOUSEEVENTF_LEFTDOWN), input::mouse(at, MOUSEEVENTF_LEFTUP)});
  stage_.pump();
}

void Typist::wheel(const std::wstring& name, int notches) {
  const HWND window = require(name);
  RECT place = {};
  GetClientRect(window, &place);
  POINT at = {place.right / 2, place.bottom / 2};
  ClientToScreen(window, &at);
  INPUT turned = input::mouse(at, MOUSEEVENTF_WHEEL);
  turned.mi.mouseData = static_cast<DWORD>(-notches) * WHEEL_DELTA;
  send({input::mouse(at, 0), turned});
}

void Typist::fill(const std::wstring& name, std::wstring_view newText) {
  click(name);
  retype(newText);
}

void Typist::retype(std::wstring_view newText) {
  key(VK_HOME);
  key(VK_END, true);
  key(VK_DELETE);
  type(newText);
}

HWND Typist::find(const std::wstring& name) const { return childOf(stage_.window.handle(), name); }

std::wstring Typist::text(const std::wstring& name) const {
  const HWND window = find(name);
  return window == nullptr ? L"<none>" : textOf(window);
}

bool Typist::enabled(const std::wstring& name) const {
  const HWND window = find(name);
  return window != nullptr && IsWindowEnabled(window) != FALSE;
}

bool Typist::visible(const std::wstring& name) const {
  const HWND window = find(name);
  return window != nullptr && IsWindowVisible(window) != FALSE;
}

std::wstring Typist::focused() const {
  const HWND inner = stage_.controlWindow();
  for (HWND window = GetFocus(); window != nullptr && window != inner; window = GetParent(window)) {
    const std::wstring name = nameOf(window);
    if (!name.empty()) return name;
  }
  return L"";
}

std::vector<std::wstring> Typist::lines(const std::wstring& name) const {
  return linesOf(find(name));
}

std::vector<int> Typist::selected(const std::wstring& name) const {
  const HWND list = require(name);
  std::vector<int> all;
  const LRESULT count = SendMessageW(list, LB_GETCOUNT, 0, 0);
  for (int line = 0; line < count; ++line) {
    if (SendMessageW(list, LB_GETSEL, static_cast<WPARAM>(line), 0) > 0) all.push_back(line);
  }
  return all;
}

bool Typist::opened(const std::wstring& name) const {
  return SendMessageW(require(name), CB_GETDROPPEDSTATE, 0, 0) != FALSE;
}

bool Typist::checked(const std::wstring& name) const {
  return SendMessageW(require(name), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

int Typist::tab() const {
  return static_cast<int>(SendMessageW(require(L"Ong_OrgPriseChg"), TCM_GETCURSEL, 0, 0));
}

}  // namespace container
