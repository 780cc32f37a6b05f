#include "host/Menu.h"

#include <shellapi.h>

#include <string>

#include "com/Module.h"
#include "com/Variant.h"
#include "host/HostWindow.h"
#include "host/Library.h"
#include "host/StoreChoice.h"
#include "text/Version.h"

namespace host {

namespace {

enum Command : WORD { kOpen = 100, kGuide, kAbout };

bool started(HWND owner, const std::wstring& file, const std::wstring& arguments) {
  constexpr INT_PTR kLastError = 32;
  const HINSTANCE answer =
      ShellExecuteW(owner, L"open", file.c_str(), arguments.c_str(), nullptr, SW_SHOWNORMAL);
  return reinterpret_cast<INT_PTR>(answer) > kLastError;
}

// In a window of its own: what is being typed in this one stays.
void openAnother(HWND owner) {
  const StoreChoice choice = chooseStore(owner);
  if (choice.path.empty()) return;
  std::wstring arguments = L"--store \"" + choice.path + L"\"";
  if (choice.isNew) arguments += L" --create";
  started(owner, com::modulePath(), arguments);
}

void showGuide(HWND owner) {
  const std::wstring guide = besideProgram(L"documents\\guide-utilisateur.html");
  if (started(owner, guide, L"")) return;
  MessageBoxW(owner, (L"Le guide n'a pas pu être ouvert : " + guide).c_str(), kTitle,
              MB_OK | MB_ICONWARNING);
}

void showVersion(HWND owner) {
  const std::wstring text = L"Tessaline " + com::wide(text::kVersion) + L", démonstration";
  MessageBoxW(owner, text.c_str(), kTitle, MB_OK | MB_ICONINFORMATION);
}

}  // namespace

HMENU makeMenu() {
  HMENU stores = CreatePopupMenu();
  AppendMenuW(stores, MF_STRING, kOpen, L"&Ouvrir ou créer un autre magasin...");
  HMENU help = CreatePopupMenu();
  AppendMenuW(help, MF_STRING, kGuide, L"&Guide de l'utilisateur");
  AppendMenuW(help, MF_STRING, kAbout, L"À &propos de Tessaline");
  HMENU bar = CreateMenu();
  AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(stores), L"Magasin (&Z)");
  AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(help), L"&?");
  return bar;
}

bool runMenuCommand(WORD command, HWND owner) {
  switch (command) {
    case kOpen:
      openAnother(owner);
      return true;
    case kGuide:
      showGuide(owner);
      return true;
    case kAbout:
      showVersion(owner);
      return true;
    default:
      return false;
  }
}

}  // namespace host
