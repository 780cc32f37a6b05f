// The system's own forms, for what is looked at from outside:
//   forms_probe print               chooses a printer by the keyboard and prints a line on it
//   forms_probe choice SECONDS      the choice of a printer, for a picture
//   forms_probe waiting SECONDS     the waiting window
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "forms/Frm_Anim.h"
#include "forms/PrinterChoice.h"
#include "tests/windows/toolkit/FormUser.h"
#include "tests/windows/toolkit/ListedPrinters.h"
#include "tests/windows/toolkit/TestHost.h"
#include "toolkit/win32/WideText.h"
#include "toolkit/win32/WindowsDesktop.h"

namespace {

using toolkit::test::FormUser;
using toolkit::test::TestHost;

class Host final : public toolkit::win32::ModalHost {
 public:
  HWND owner() const override { return host_.handle(); }
  bool closed() const override { return false; }
  void enableModeless(bool) override {}
  void restoreFocus() override {}
  HWND surfaceWindow() const override { return host_.surface().handle(); }

 private:
  toolkit::Surface surface_{"Probe"};
  TestHost host_{surface_};
};

BOOL CALLBACK tellLines(HWND window, LPARAM) {
  if (toolkit::test::controlNameOf(window) != "Cbo_Imprimante") return TRUE;
  const auto count = static_cast<WPARAM>(SendMessageW(window, CB_GETCOUNT, 0, 0));
  for (WPARAM i = 0; i < count; ++i) {
    wchar_t line[256] = {};
    SendMessageW(window, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(line));
    std::printf("offered %s\n", toolkit::win32::narrow(line).c_str());
  }
  return FALSE;
}

int print() {
  Host host;
  const auto desktop = toolkit::win32::makeWindowsDesktop(host);
  const FormUser user(L"Imprimer", {[](HWND form) {
                                      EnumChildWindows(form, &tellLines, 0);
                                      toolkit::test::press(VK_ESCAPE);
                                    },
                                    [](HWND) { toolkit::test::press(VK_RETURN); }});
  const int before = desktop->currentPrinter();
  const std::string refused = forms::choisirImprimanteA4(*desktop);
  const bool kept = desktop->currentPrinter() == before;
  std::printf("refused %s, current %s\n", refused.c_str(), kept ? "kept" : "changed");
  if (forms::choisirImprimanteA4(*desktop) == "-1") return 1;
  const auto chosen = static_cast<std::size_t>(desktop->currentPrinter());
  std::printf("chosen %s\n", desktop->printers()[chosen].deviceName.c_str());
  desktop->printer().setFontName("Courier New");
  desktop->printer().print("Imprimante choisie");
  desktop->printer().endDoc();
  return 0;
}

int choice(int seconds) {
  Host host;
  const auto desktop = toolkit::win32::makeWindowsDesktop(host);
  toolkit::test::ListedPrinters listed(
      *desktop, {{"Accueil", "USB001"}, {"Secr\u00E9tariat - laser couleur A4", "IP_192.168.1.20"}},
      1);
  const DWORD end = GetTickCount() + static_cast<DWORD>(seconds) * 1000;
  std::vector<FormUser::Step> steps(static_cast<std::size_t>(seconds) * 40, [end](HWND) {
    if (GetTickCount() > end) toolkit::test::press(VK_ESCAPE);
  });
  const FormUser user(L"Imprimer", steps);
  forms::choisirImprimanteA4(listed);
  return 0;
}

int waiting(int seconds) {
  Host host;
  const auto desktop = toolkit::win32::makeWindowsDesktop(host);
  const forms::Frm_Anim waiting(*desktop);
  const DWORD end = GetTickCount() + static_cast<DWORD>(seconds) * 1000;
  while (GetTickCount() < end) {
    desktop->doEvents();
    Sleep(10);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  SetConsoleOutputCP(CP_UTF8);
  const std::string what = argc > 1 ? argv[1] : "";
  const int seconds = argc > 2 ? std::atoi(argv[2]) : 5;
  if (what == "print") return print();
  if (what == "choice") return choice(seconds);
  if (what == "waiting") return waiting(seconds);
  std::printf("forms_probe print | choice SECONDS | waiting SECONDS\n");
  return 2;
}
