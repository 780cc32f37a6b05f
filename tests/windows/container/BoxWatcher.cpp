#include "tests/windows/container/BoxWatcher.h"

#include <commctrl.h>

#include <utility>

#include "tests/windows/container/FormWatcher.h"
#include "tests/windows/container/Typist.h"

namespace container {

namespace {

BoxWatcher* current = nullptr;
constexpr UINT kInterval = 15;

std::wstring classOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  return name;
}

std::wstring textOf(HWND window) {
  const LRESULT length = SendMessageW(window, WM_GETTEXTLENGTH, 0, 0);
  std::wstring text(static_cast<size_t>(length) + 1, L'\0');
  SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<size_t>(length));
  return text;
}

std::wstring iconNamed(HICON icon) {
  const std::pair<LPCWSTR, const wchar_t*> known[] = {{IDI_EXCLAMATION, L"exclamation"},
                                                      {IDI_QUESTION, L"question"},
                                                      {IDI_INFORMATION, L"information"},
                                                      {IDI_ERROR, L"error"}};
  for (const auto& [resource, name] : known)
    if (icon == LoadIconW(nullptr, resource)) return name;
  return L"unknown";
}

BOOL CALLBACK readPart(HWND part, LPARAM where) {
  Box& box = *reinterpret_cast<Box*>(where);
  const LONG_PTR style = GetWindowLongPtrW(part, GWL_STYLE);
  const std::wstring type = classOf(part);
  if (type == L"Static" && (style & SS_TYPEMASK) == SS_ICON) {
    const auto icon = reinterpret_cast<HICON>(SendMessageW(part, STM_GETICON, 0, 0));
    if (icon != nullptr) box.icon = iconNamed(icon);
  } else if (type == L"Static") {
    if (box.text.empty()) box.text = textOf(part);
  } else if (type == L"Button" && (style & WS_VISIBLE) != 0) {
    const int id = GetDlgCtrlID(part);
    box.buttons += id == IDOK       ? L"OK"
                   : id == IDYES    ? L"YES"
                   : id == IDNO     ? L"NO"
                   : id == IDCANCEL ? L"CANCEL"
                                    : L"?";
  }
  return TRUE;
}

std::wstring tabInFront(HWND owner) {
  const HWND tabs = owner == nullptr ? nullptr : childOf(owner, L"Ong_OrgPriseChg");
  if (tabs == nullptr) return L"";
  wchar_t caption[64] = {};
  TCITEMW item = {};
  item.mask = TCIF_TEXT;
  item.pszText = caption;
  item.cchTextMax = 64;
  const auto tab = static_cast<WPARAM>(SendMessageW(tabs, TCM_GETCURSEL, 0, 0));
  SendMessageW(tabs, TCM_GETITEMW, tab, reinterpret_cast<LPARAM>(&item));
  return caption;
}

// "«text», exclamation, OK, tab "Prise en charge""
std::string told(const Box& box) {
  std::wstring all =
      L"«" + box.text + L"», " + (box.icon.empty() ? L"no icon" : box.icon) + L", " + box.buttons;
  if (!box.tab.empty()) all += L", tab \"" + box.tab + L"\"";
  return narrow(all);
}

Box read(HWND window) {
  Box box;
  box.title = textOf(window);
  box.owner = GetWindow(window, GW_OWNER);
  box.tab = tabInFront(box.owner);
  EnumChildWindows(window, &readPart, reinterpret_cast<LPARAM>(&box));
  return box;
}

BOOL CALLBACK findBox(HWND window, LPARAM where) {
  if (classOf(window) != L"#32770" || IsWindowVisible(window) == FALSE) return TRUE;
  if (!isMessageBox(window)) return TRUE;
  *reinterpret_cast<HWND*>(where) = window;
  return FALSE;
}

HWND openBox() {
  HWND found = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), &findBox, reinterpret_cast<LPARAM>(&found));
  return found;
}

int lastAnswer(const Box& box) {
  if (box.buttons.ends_with(L"CANCEL")) return IDCANCEL;
  return box.buttons.ends_with(L"NO") ? IDNO : IDOK;
}

}  // namespace

void press(HWND box, int answer) {
  const HWND button = GetDlgItem(box, answer);
  if (button != nullptr) PostMessageW(button, BM_CLICK, 0, 0);
}

std::string narrow(const std::wstring& text) {
  const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                         nullptr, 0, nullptr, nullptr);
  std::string out(static_cast<size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(), length,
                      nullptr, nullptr);
  return out;
}

BoxWatcher::BoxWatcher() {
  current = this;
  timer_ = SetTimer(nullptr, 0, kInterval, &BoxWatcher::tick);
}

BoxWatcher::~BoxWatcher() {
  KillTimer(nullptr, timer_);
  current = nullptr;
}

void BoxWatcher::expect(std::wstring text, std::wstring icon, std::wstring buttons, int answer) {
  expected_.push_back({std::move(text), std::move(icon), std::move(buttons), answer, {}});
}

void BoxWatcher::expect(std::wstring text, std::wstring icon, std::wstring buttons,
                        std::function<void(HWND box)> instead) {
  expected_.push_back(
      {std::move(text), std::move(icon), std::move(buttons), 0, std::move(instead)});
}

void CALLBACK BoxWatcher::tick(HWND, UINT, UINT_PTR, DWORD) {
  if (current != nullptr) current->look();
}

void BoxWatcher::look() {
  const HWND box = openBox();
  if (box == nullptr) {
    met_ = nullptr;
    return;
  }
  if (box == met_) return;
  met_ = box;
  meet(box);
}

void BoxWatcher::meet(HWND window) {
  const Box box = read(window);
  seen_.push_back(box);
  if (onBox) onBox();
  if (all_ != 0) {
    press(window, GetDlgItem(window, all_) != nullptr ? all_ : lastAnswer(box));
    return;
  }
  if (expected_.empty()) {
    errors_ += "unexpected box: " + told(box) + "\n";
    press(window, lastAnswer(box));
    return;
  }
  const Expected expected = std::move(expected_.front());
  expected_.pop_front();
  Box wanted = box;
  wanted.text = expected.text;
  wanted.icon = expected.icon;
  wanted.buttons = expected.buttons;
  if (told(box) != told(wanted))
    errors_ += "box: " + told(box) + "\n  instead of: " + told(wanted) + "\n";
  if (box.title != L"Message VALDRIS")
    errors_ += "the box is titled " + narrow(box.title) + ": " + told(box) + "\n";
  if (owner_ != nullptr && box.owner != owner_)
    errors_ += "the box is not owned by the host's window: " + told(box) + "\n";
  if (expected.instead)
    expected.instead(window);
  else
    press(window,
          GetDlgItem(window, expected.answer) != nullptr ? expected.answer : lastAnswer(box));
}

std::string BoxWatcher::report() const {
  std::string all = errors_;
  for (const Expected& missing : expected_)
    all += "a box did not come: " + narrow(missing.text) + "\n";
  return all;
}

}  // namespace container
