#include "host/tour/HostWindows.h"

#include <algorithm>
#include <functional>

#include "com/ComBorder.h"

namespace tour {

namespace {

constexpr const wchar_t* kFrameClass = L"TessalineHost";
constexpr const wchar_t* kSurfaceClass = L"TessalineSurface";
constexpr const wchar_t* kBoxClass = L"#32770";
constexpr int kBoxText = 0xFFFF;
constexpr UINT kPatience = 1000;  // milliseconds
constexpr std::size_t kLongestName = 128;

// The answer of a window of another process; nothing is sent to one that hangs.
LRESULT ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  DWORD_PTR answer = 0;
  SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, kPatience, &answer);
  return static_cast<LRESULT>(answer);
}

std::wstring classOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  return name;
}

using Visitor = std::function<bool(HWND)>;  // false ends the walk

BOOL CALLBACK visit(HWND window, LPARAM visitor) {
  return com::comBorder<BOOL>(
      [&] { return (*reinterpret_cast<const Visitor*>(visitor))(window) ? TRUE : FALSE; });
}

// The first that fits, null when none does.
HWND firstOf(HWND parent, const std::function<bool(HWND)>& fits) {
  HWND found = nullptr;
  const Visitor visitor = [&](HWND window) {
    if (fits(window)) found = window;
    return found == nullptr;
  };
  const auto argument = reinterpret_cast<LPARAM>(&visitor);
  if (parent == nullptr) {
    EnumWindows(visit, argument);
  } else {
    EnumChildWindows(parent, visit, argument);
  }
  return found;
}

// The visible dialog of a host: a message box, or a form of the control's own.
HWND dialog(HWND host, bool messageBox) {
  return firstOf(nullptr, [=](HWND window) {
    return IsWindowVisible(window) != FALSE && classOf(window) == kBoxClass &&
           GetWindow(window, GW_OWNER) == host &&
           (GetDlgItem(window, kBoxText) != nullptr) == messageBox;
  });
}

UINT nameMessage() { return RegisterWindowMessageW(L"WM_GETCONTROLNAME"); }

// A buffer in the process that a window belongs to: a registered message's pointer is not carried
// from one process to another.
class RemoteBuffer {
 public:
  explicit RemoteBuffer(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    process_ =
        OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, process);
    memory_ = VirtualAllocEx(process_, nullptr, kLongestName * sizeof(wchar_t), MEM_COMMIT,
                             PAGE_READWRITE);
  }
  RemoteBuffer(const RemoteBuffer&) = delete;
  RemoteBuffer& operator=(const RemoteBuffer&) = delete;
  ~RemoteBuffer() {
    VirtualFreeEx(process_, memory_, 0, MEM_RELEASE);
    CloseHandle(process_);
  }

  std::wstring nameOf(HWND window, UINT message) const {
    const LRESULT copied = ask(window, message, kLongestName, reinterpret_cast<LPARAM>(memory_));
    wchar_t name[kLongestName] = {};
    if (copied <= 1 || static_cast<std::size_t>(copied) > kLongestName ||
        ReadProcessMemory(process_, memory_, name, static_cast<SIZE_T>(copied) * sizeof(wchar_t),
                          nullptr) == 0) {
      return {};
    }
    return name;
  }

 private:
  HANDLE process_ = nullptr;
  void* memory_ = nullptr;
};

// As the desktop knows it, without asking a window that may be busy.
std::wstring titleOf(HWND window) {
  wchar_t title[128] = {};
  GetWindowTextW(window, title, 128);
  return title;
}

std::wstring withoutMnemonic(std::wstring caption) {
  caption.erase(std::remove(caption.begin(), caption.end(), L'&'), caption.end());
  return caption;
}

}  // namespace

HWND HostWindows::frame() const {
  return firstOf(nullptr, [this](HWND window) {
    if (IsWindowVisible(window) == FALSE) return false;
    return title_.empty() ? classOf(window) == kFrameClass : titleOf(window) == title_;
  });
}

HWND HostWindows::form() const {
  const HWND host = frame();
  return host != nullptr ? dialog(host, false) : nullptr;
}

HWND HostWindows::control(const std::wstring& name) const {
  const HWND host = frame();
  if (host == nullptr) return nullptr;
  if (name.starts_with(L'=')) {
    return firstOf(host, [&](HWND window) { return textOf(window) == name.substr(1); });
  }
  const UINT message = nameMessage();
  const RemoteBuffer buffer(host);
  HWND found = nullptr;
  for (const HWND parent : {dialog(host, false), host}) {
    if (parent != nullptr && found == nullptr) {
      found = firstOf(parent, [&](HWND window) { return buffer.nameOf(window, message) == name; });
    }
  }
  return found;
}

std::wstring HostWindows::focused() const {
  const HWND host = frame();
  GUITHREADINFO keyboard{};
  keyboard.cbSize = sizeof keyboard;
  if (host == nullptr ||
      GetGUIThreadInfo(GetWindowThreadProcessId(host, nullptr), &keyboard) == FALSE ||
      IsChild(host, keyboard.hwndFocus) == FALSE) {
    return {};
  }
  const RemoteBuffer buffer(host);
  // That of a combo box is a window within it.
  for (HWND window : {keyboard.hwndFocus, GetParent(keyboard.hwndFocus)}) {
    const std::wstring name = buffer.nameOf(window, nameMessage());
    if (!name.empty()) return name;
  }
  return L"=" + textOf(keyboard.hwndFocus);
}

bool HostWindows::parked() const {
  const HWND host = frame();
  GUITHREADINFO keyboard{};
  keyboard.cbSize = sizeof keyboard;
  return host != nullptr &&
         GetGUIThreadInfo(GetWindowThreadProcessId(host, nullptr), &keyboard) != FALSE &&
         ((keyboard.flags & GUI_INMENUMODE) != 0 || keyboard.hwndFocus == host ||
          classOf(keyboard.hwndFocus) == kSurfaceClass);
}

HWND HostWindows::surface() const {
  const HWND host = frame();
  if (host == nullptr) return nullptr;
  return firstOf(host, [](HWND window) { return classOf(window) == kSurfaceClass; });
}

Box HostWindows::box() const {
  const HWND host = frame();
  if (host == nullptr) return {};
  Box box;
  box.window = dialog(host, true);
  if (box.window == nullptr) return {};
  box.title = textOf(box.window);
  box.text = textOf(GetDlgItem(box.window, kBoxText));
  firstOf(box.window, [&box](HWND window) {
    if (classOf(window) == L"Button" && IsWindowVisible(window) != FALSE) {
      box.buttons.push_back(withoutMnemonic(textOf(window)));
    }
    return false;
  });
  return box;
}

HWND HostWindows::button(const Box& box, const std::wstring& caption) const {
  if (box.window == nullptr) return nullptr;
  return firstOf(box.window, [&caption](HWND window) {
    return classOf(window) == L"Button" && withoutMnemonic(textOf(window)) == caption;
  });
}

std::wstring textOf(HWND window) {
  const LRESULT length = ask(window, WM_GETTEXTLENGTH, 0, 0);
  std::wstring text(static_cast<std::size_t>(std::max<LRESULT>(length, 0)) + 1, L'\0');
  const LRESULT copied =
      ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(std::max<LRESULT>(copied, 0)));
  return text;
}

std::vector<std::wstring> linesOf(HWND window) {
  const bool combo = classOf(window) == L"ComboBox";
  const LRESULT count = ask(window, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0);
  std::vector<std::wstring> lines;
  for (LRESULT i = 0; i < count; ++i) {
    const auto line = static_cast<WPARAM>(i);
    const LRESULT length = ask(window, combo ? CB_GETLBTEXTLEN : LB_GETTEXTLEN, line, 0);
    std::wstring text(static_cast<std::size_t>(std::max<LRESULT>(length, 0)) + 1, L'\0');
    ask(window, combo ? CB_GETLBTEXT : LB_GETTEXT, line, reinterpret_cast<LPARAM>(text.data()));
    text.resize(text.size() - 1);
    lines.push_back(std::move(text));
  }
  return lines;
}

RECT placeOfLine(HWND list, int line) {
  RECT place{};
  const auto at = static_cast<WPARAM>(line);
  if (line < 0 || line >= ask(list, LB_GETCOUNT, 0, 0)) return place;
  RECT seen{};
  GetClientRect(list, &seen);
  ask(list, LB_GETITEMRECT, at, reinterpret_cast<LPARAM>(&place));
  if (place.top < seen.top || place.bottom > seen.bottom) {
    ask(list, LB_SETTOPINDEX, at, 0);
    ask(list, LB_GETITEMRECT, at, reinterpret_cast<LPARAM>(&place));
  }
  MapWindowPoints(list, nullptr, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

void settle(HWND window) { ask(window, WM_NULL, 0, 0); }

}  // namespace tour
