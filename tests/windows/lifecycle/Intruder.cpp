// Another program, which meddles with the control's windows.  intruder ATTACK WINDOW
// It sends what any program of the same desktop can send.
#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

LRESULT send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  DWORD_PTR result = 0;
  SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, 5000, &result);
  return static_cast<LRESULT>(result);
}

LRESULT send(HWND window, UINT message, WPARAM wParam, const wchar_t* text) {
  return send(window, message, wParam, reinterpret_cast<LPARAM>(text));
}

void notify(HWND window, WORD code) {
  send(GetParent(window), WM_COMMAND, MAKEWPARAM(0, code), reinterpret_cast<LPARAM>(window));
}

void lines(HWND list) {
  for (int i = 0; i < 200; ++i) send(list, LB_ADDSTRING, 0, L"Intrus");
  for (int i = 0; i < 200; ++i) {
    send(list, LB_SETSEL, TRUE, -1);
    send(list, LB_SETCURSEL, static_cast<WPARAM>(i));
    send(list, LB_SETCARETINDEX, static_cast<WPARAM>(i));
    notify(list, LBN_SELCHANGE);
  }
  notify(list, LBN_DBLCLK);
}

void choices(HWND combo) {
  // The control puts back what is taken: there is no end to it.
  for (int i = 0; i < 50 && send(combo, CB_DELETESTRING, 0) > 0; ++i) notify(combo, CBN_SELCHANGE);
  for (int i = 0; i < 50; ++i) send(combo, CB_ADDSTRING, 0, L"Intrus");
  const std::vector<WORD> codes{CBN_SELENDOK, CBN_SELCHANGE, CBN_CLOSEUP, CBN_EDITCHANGE};
  for (const WORD code : codes) {
    send(combo, CB_SETCURSEL, 49);
    notify(combo, code);
  }
}

// With halves of surrogate pairs.
void text(HWND field) {
  std::wstring text;
  while (text.size() < 64000) text += std::wstring(L"a\xD83D") + L"\xDE00\xDE00" + L"\xD800";
  send(field, WM_SETTEXT, 0, text.c_str());
  notify(field, EN_CHANGE);
}

BOOL CALLBACK overwrite(HWND window, LPARAM) {
  SetWindowLongPtrW(window, GWLP_USERDATA, 0x1234);
  return TRUE;
}

BOOL CALLBACK collect(HWND window, LPARAM all) {
  reinterpret_cast<std::vector<HWND>*>(all)->push_back(window);
  return TRUE;
}

// What ends a window or its program, and what a user does.
bool leftOut(UINT message) {
  return message == WM_QUIT || message == WM_CLOSE || message == WM_DESTROY ||
         message == WM_NCDESTROY || message == WM_SYSCOMMAND || message == WM_CONTEXTMENU ||
         message == WM_PASTE || message == WM_HELP ||
         (message >= WM_NCMOUSEMOVE && message <= WM_NCXBUTTONDBLCLK) ||
         (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
         (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST);
}

// Whose last parameter is code to be run: that of a timer is run by whoever takes the message from
// the queue, and a wrong one ends any program.
bool runsCode(UINT message) {
  constexpr UINT kSystemTimer = 0x0118;
  return message == WM_TIMER || message == kSystemTimer;
}

class Dice {
 public:
  std::uint32_t next(std::uint32_t sides) {
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<std::uint32_t>(state_ >> 33) % sides;
  }
  LPARAM parameter(const std::vector<HWND>& windows) {
    switch (next(4)) {
      case 0:
        return static_cast<LPARAM>(next(300)) - 2;
      case 1:
        return reinterpret_cast<LPARAM>(windows[next(static_cast<std::uint32_t>(windows.size()))]);
      case 2:
        return static_cast<LPARAM>(MAKELONG(next(8), next(12)));
      default:
        return static_cast<LPARAM>((static_cast<std::uint64_t>(next(0x8000)) << 32) |
                                   next(0x80000000U));
    }
  }

 private:
  std::uint64_t state_ = 11;
};

// Posted: the system does not post what carries pointers that it would have to make fit.
void random(HWND host) {
  std::vector<HWND> windows;
  EnumChildWindows(host, &collect, reinterpret_cast<LPARAM>(&windows));
  const UINT name = RegisterWindowMessageW(L"WM_GETCONTROLNAME");
  Dice dice;
  for (int i = 0; i < 10000;) {
    const UINT bound = dice.next(2) == 0 ? 0x0400 : 0x2400;
    const UINT message = dice.next(50) == 0 ? name : dice.next(bound);
    if (leftOut(message)) continue;
    HWND window = windows[dice.next(static_cast<std::uint32_t>(windows.size()))];
    const auto wParam = static_cast<WPARAM>(dice.parameter(windows));
    const LPARAM lParam = dice.parameter(windows);
    PostMessageW(window, message, wParam, runsCode(message) ? 0 : lParam);
    if (++i % 200 == 0) send(host, WM_NULL);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 1;
  const std::string_view attack = argv[1];
  const auto window =
      reinterpret_cast<HWND>(static_cast<std::uintptr_t>(std::strtoull(argv[2], nullptr, 10)));
  if (!IsWindow(window)) return 2;
  if (attack == "lines") {
    lines(window);
  } else if (attack == "choices") {
    choices(window);
  } else if (attack == "text") {
    text(window);
  } else if (attack == "overwrite") {
    EnumChildWindows(window, &overwrite, 0);
  } else if (attack == "random") {
    random(window);
  } else {
    return 3;
  }
  return 0;
}
