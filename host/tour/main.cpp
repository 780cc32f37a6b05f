// TessalineTour DESKTOP: works on the windows of a TessalineHost that runs on that desktop as a
// user would. Reads one command a line from standard input and answers each with one line, "ok ..."
// or "error ...":
//
//   wait NAME          until the control NAME is visible and enabled ("host": the host's window)
//   gone               until the host's window is closed
//   at NAME            where the middle of a control is that can be used: "X Y" in pixels
//   line NAME N        the same of the N-th line of a list, from 1, scrolled into view
//   window NAME        the place of a window, "host", "form" or "box": "WIDTHxHEIGHT+X+Y" in pixels
//
//   type TEXT          the text, key by key
//   key KEY            one key: Tab, Enter, Escape, Alt+A ...
//
//   read NAME          what a control shows
//   lines NAME         how many lines a list has
//   await NAME TEXT    until the control shows the text
//   host TITLE         the window of another host, by its title, is the host's from now on
//   focus              what has the keyboard: a name, or "=TEXT" for a window of the host's own
//   surface            the size of the control's window: "WIDTHxHEIGHT"
//   size WIDTH HEIGHT  the host's window is made so large, in pixels
//   state NAME         "shown" or "hidden", then "enabled" or "disabled"
//   dialog TITLE       waits until the window with that title has the keyboard
//   box                waits for a message box: its title, text and buttons, separated by "|"
//   button CAPTION     where the middle of a button of the box is
//   closed             until that box is closed; another may have followed
//   quiet              that there is no box
//   close              asks the host's window to close, as the task bar does, whatever is open
//   end                ends the host, whatever it is doing
//
// Line breaks in texts are answered as " / ".
#include <windows.h>

#include <cstdio>
#include <functional>
#include <map>
#include <string>

#include "com/ComBorder.h"
#include "com/Module.h"
#include "com/Variant.h"
#include "host/tour/HostWindows.h"
#include "host/tour/Input.h"

namespace com {
const wchar_t* errorSource() { return L"TessalineTour"; }
}  // namespace com

namespace tour {

namespace {

constexpr DWORD kPatience = 15000;  // milliseconds
constexpr DWORD kPause = 50;

HostWindows windows;

// The thread's windows and input belong to the desktop from now on; it may not be there yet.
bool enterDesktop(const std::wstring& name) {
  for (DWORD waited = 0; waited < kPatience; waited += kPause) {
    const HDESK desktop = OpenDesktopW(name.c_str(), 0, FALSE, GENERIC_ALL);
    if (desktop != nullptr) return SetThreadDesktop(desktop) != FALSE;
    Sleep(kPause);
  }
  return false;
}

bool until(const std::function<bool()>& holds) {
  for (DWORD waited = 0; waited < kPatience; waited += kPause) {
    if (holds()) return true;
    Sleep(kPause);
  }
  return holds();
}

void require(bool holds, const std::wstring& otherwise) {
  if (!holds) throw std::runtime_error(com::utf8(otherwise));
}

HWND controlNamed(const std::wstring& name) {
  const HWND window = windows.control(name);
  require(window != nullptr, L"no control " + name);
  return window;
}

bool ready(const std::wstring& name) {
  const HWND window = name == L"host" ? windows.frame() : windows.control(name);
  return window != nullptr && IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE;
}

std::wstring wait(const std::wstring& name) {
  require(until([&] { return ready(name); }), name + L" is not there to be used");
  return {};
}

std::wstring gone(const std::wstring&) {
  require(until([] { return windows.frame() == nullptr; }), L"the host's window is still open");
  return {};
}

std::wstring middleOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return std::to_wstring((place.left + place.right) / 2) + L" " +
         std::to_wstring((place.top + place.bottom) / 2);
}

std::wstring at(const std::wstring& name) {
  wait(name);
  return middleOf(controlNamed(name));
}

std::wstring line(const std::wstring& argument) {
  const std::size_t blank = argument.find(L' ');
  require(blank != std::wstring::npos, L"line NAME N");
  const std::wstring name = argument.substr(0, blank);
  const int number = std::stoi(argument.substr(blank + 1));
  wait(name);
  const RECT place = placeOfLine(controlNamed(name), number - 1);
  require(place.bottom > place.top, name + L" has no such line");
  return std::to_wstring((place.left + place.right) / 2) + L" " +
         std::to_wstring((place.top + place.bottom) / 2);
}

std::wstring window(const std::wstring& name) {
  HWND found = nullptr;
  require(until([&] {
            found = name == L"form"  ? windows.form()
                    : name == L"box" ? windows.box().window
                                     : windows.frame();
            return found != nullptr;
          }),
          L"no " + name);
  RECT place{};
  GetWindowRect(found, &place);
  return std::to_wstring(place.right - place.left) + L"x" +
         std::to_wstring(place.bottom - place.top) + L"+" + std::to_wstring(place.left) + L"+" +
         std::to_wstring(place.top);
}

// A user who sees the pointer of a busy program waits; not for ever.
void waitWhileBusy() {
  constexpr DWORD kLong = 2000;
  for (DWORD waited = 0; waited < kLong && windows.parked(); waited += kPause) Sleep(kPause);
}

// Key by key, each taken in before the next is sent: what a key does may change what has the focus.
std::wstring type(const std::wstring& text) {
  for (const wchar_t character : text) {
    waitWhileBusy();
    typeText({&character, 1});
    settle(windows.frame());
  }
  return {};
}

std::wstring key(const std::wstring& name) {
  waitWhileBusy();
  pressKey(name);
  settle(windows.frame());
  return {};
}

std::wstring read(const std::wstring& name) { return textOf(controlNamed(name)); }

std::wstring lines(const std::wstring& name) {
  return std::to_wstring(linesOf(controlNamed(name)).size());
}

std::wstring await(const std::wstring& argument) {
  const std::size_t blank = argument.find(L' ');
  const std::wstring name = argument.substr(0, blank);
  std::wstring wanted = blank == std::wstring::npos ? std::wstring() : argument.substr(blank + 1);
  require(until([&] { return textOf(controlNamed(name)) == wanted; }),
          name + L" shows \"" + read(name) + L"\" instead of \"" + wanted + L"\"");
  return wanted;
}

std::wstring state(const std::wstring& name) {
  const HWND window = controlNamed(name);
  return std::wstring(IsWindowVisible(window) != FALSE ? L"shown" : L"hidden") +
         (IsWindowEnabled(window) != FALSE ? L" enabled" : L" disabled");
}

std::wstring host(const std::wstring& title) {
  windows.workOn(title);
  return {};
}

std::wstring focus(const std::wstring&) {
  settle(windows.frame());
  return windows.focused();
}

std::wstring surface(const std::wstring&) {
  RECT place{};
  require(GetClientRect(windows.surface(), &place) != FALSE, L"no window of the control");
  return std::to_wstring(place.right) + L"x" + std::to_wstring(place.bottom);
}

std::wstring size(const std::wstring& argument) {
  const std::size_t blank = argument.find(L' ');
  require(blank != std::wstring::npos, L"size WIDTH HEIGHT");
  require(SetWindowPos(windows.frame(), nullptr, 0, 0, std::stoi(argument.substr(0, blank)),
                       std::stoi(argument.substr(blank + 1)),
                       SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE) != FALSE,
          L"no host");
  settle(windows.frame());
  return {};
}

std::wstring box(const std::wstring&) {
  Box found;
  require(until([&] {
            found = windows.box();
            // Before, what is pressed would still go to the host.
            return found.window != nullptr && GetForegroundWindow() == found.window;
          }),
          L"no message box");
  std::wstring told = found.title + L"|" + found.text + L"|";
  for (const std::wstring& button : found.buttons) {
    told += (told.back() == L'|' ? L"" : L",") + button;
  }
  return told;
}

HWND askedBox = nullptr;  // the box that `button` was last asked of

// The system's own, whoever it belongs to.
std::wstring dialog(const std::wstring& title) {
  const auto inFront = [&title] {
    const HWND front = GetForegroundWindow();
    return front != nullptr && textOf(front) == title;
  };
  require(until(inFront), L"no dialog " + title);
  return {};
}

std::wstring boxButton(const std::wstring& caption) {
  const Box box = windows.box();
  const HWND button = windows.button(box, caption);
  askedBox = box.window;
  require(button != nullptr, L"no box with a button " + caption);
  return middleOf(button);
}

std::wstring closed(const std::wstring&) {
  require(until([] { return IsWindow(askedBox) == FALSE; }), L"the box stays");
  return {};
}

std::wstring quiet(const std::wstring&) {
  settle(windows.frame());
  const Box found = windows.box();
  require(found.window == nullptr, L"a box says: " + found.text);
  return {};
}

std::wstring close(const std::wstring&) {
  require(PostMessageW(windows.frame(), WM_CLOSE, 0, 0) != FALSE, L"no host");
  return {};
}

std::wstring end(const std::wstring&) {
  DWORD process = 0;
  GetWindowThreadProcessId(windows.frame(), &process);
  const HANDLE handle = OpenProcess(PROCESS_TERMINATE, FALSE, process);
  require(handle != nullptr, L"no host");
  TerminateProcess(handle, 1);
  CloseHandle(handle);
  return {};
}

using Command = std::wstring (*)(const std::wstring& argument);

const std::map<std::string, Command> kCommands = {
    {"wait", wait},        {"gone", gone},     {"at", at},       {"line", line},
    {"window", window},    {"type", type},     {"key", key},     {"read", read},
    {"lines", lines},      {"await", await},   {"state", state}, {"box", box},
    {"button", boxButton}, {"closed", closed}, {"quiet", quiet}, {"close", close},
    {"end", end},          {"host", host},     {"focus", focus}, {"surface", surface},
    {"size", size},        {"dialog", dialog},
};

std::string onOneLine(std::string text) {
  for (std::size_t at = 0; (at = text.find_first_of("\r\n", at)) != std::string::npos;) {
    const std::size_t end = std::min(text.find_first_not_of("\r\n", at), text.size());
    text.replace(at, end - at, " / ");
    at += 3;
  }
  return text;
}

std::string run(const std::string& line) {
  const std::size_t blank = line.find(' ');
  const auto command = kCommands.find(line.substr(0, blank));
  if (command == kCommands.end()) return "error no such command";
  try {
    const std::string argument = blank == std::string::npos ? "" : line.substr(blank + 1);
    return onOneLine("ok " + com::utf8(command->second(com::wide(argument))));
  } catch (const std::exception& failure) {
    return onOneLine(std::string("error ") + failure.what());
  }
}

bool readLine(std::string& line) {
  line.clear();
  for (int character = std::getchar(); character != EOF; character = std::getchar()) {
    if (character == '\n') return true;
    if (character != '\r') line += static_cast<char>(character);
  }
  return !line.empty();
}

}  // namespace

int runTour(const std::wstring& desktop) {
  if (!enterDesktop(desktop)) {
    std::fputs("error no such desktop\n", stdout);
    return 1;
  }
  for (std::string line; readLine(line);) {
    std::puts(run(line).c_str());
    std::fflush(stdout);
  }
  return 0;
}

}  // namespace tour

int main(int count, char** words) {
  SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
  if (count != 2) {
    std::fputs("usage: TessalineTour DESKTOP\n", stderr);
    return 2;
  }
  return tour::runTour(com::wide(words[1]));
}
