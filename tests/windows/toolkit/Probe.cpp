// The toolkit under Windows, for what is looked at from outside:
//   toolkit_probe show SECONDS       a window with a control of every kind
//   toolkit_probe print PRINTER      two pages through the GDI printer
//   toolkit_probe fill               filling a list of 999 against a bare loop of messages
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "tests/windows/toolkit/TestHost.h"
#include "toolkit/Buttons.h"
#include "toolkit/ComboBox.h"
#include "toolkit/Frame.h"
#include "toolkit/ListBox.h"
#include "toolkit/SSTab.h"
#include "toolkit/ScrollBar.h"
#include "toolkit/TextBox.h"
#include "toolkit/win32/WideText.h"
#include "toolkit/win32/WindowsDesktop.h"

namespace {

using toolkit::test::TestHost;

class NoHost final : public toolkit::win32::ModalHost {
 public:
  HWND owner() const override { return nullptr; }
  bool closed() const override { return false; }
  void enableModeless(bool) override {}
  void restoreFocus() override {}
  HWND surfaceWindow() const override { return nullptr; }
};

struct Showcase {
  toolkit::Surface surface{"Showcase"};
  toolkit::Label label{&surface, "Etq_Code", "&Code :"};
  toolkit::TextBox code{&surface, "Txt_Code"};
  toolkit::Label warning{&surface, "Etq_Warning", "Code inconnu"};
  toolkit::ComboBox acronym{&surface, "Cbo_Sigle"};
  toolkit::CommandButton add{&surface, "Cmd_Ajouter", "&Ajouter"};
  toolkit::CommandButton remove{&surface, "Cmd_Supprimer", "&Supprimer"};
  toolkit::SSTab tabs{&surface,
                      "Ong_Tabs",
                      {"Coordonn\u00E9es", "R\u00E8gles de gestion", "Prise en charge",
                       "Bar\u00E8me de participation", "Bordereaux", "Activit\u00E9s"}};
  toolkit::Frame frame{&tabs.page(0), "Cdr_Frame", "Type de &relance"};
  toolkit::OptionButton monthly{&frame, "Opt_Mois", "Mensuelle"};
  toolkit::OptionButton yearly{&frame, "Opt_An", "Annuelle"};
  toolkit::CheckBox check{&tabs.page(0), "Cac_Check", "Avec envoi d'une lettre"};
  toolkit::CheckBox disabledCheck{&tabs.page(0), "Cac_Disabled", "Case grise"};
  toolkit::ComboBox fixed{&tabs.page(0), "Cbo_Fixed", toolkit::ComboBox::Style::ListOnly};
  toolkit::TextBox amount{&tabs.page(0), "Txt_Montant"};
  toolkit::TextBox disabledBox{&tabs.page(0), "Txt_Disabled"};
  toolkit::ListBox dates{&tabs.page(0), "Lst_Dates"};
  toolkit::ListBox several{&tabs.page(0), "Lst_Several", toolkit::ListBox::Selection::Extended};
  toolkit::ScrollBar bar{&tabs.page(0), "Bdv_Bar", toolkit::ScrollBar::Direction::Vertical};
  toolkit::ScrollBar horizontal{&tabs.page(0), "Bdh_Bar",
                                toolkit::ScrollBar::Direction::Horizontal};

  Showcase() {
    surface.setPlace({0, 0, 10500, 6600});
    label.setPlace({150, 180, 700, 240});
    code.setPlace({900, 150, 900, 315});
    warning.setPlace({900, 480, 1800, 240});
    warning.setColor(toolkit::kRed);
    acronym.setPlace({1950, 150, 2700, 315});
    add.setPlace({5000, 120, 1500, 375});
    remove.setPlace({6600, 120, 1500, 375});
    remove.setEnabled(false);
    tabs.setPlace({150, 900, 10200, 5500});
    tabs.setTabEnabled(3, false);
    frame.setPlace({150, 150, 2700, 1200});
    monthly.setPlace({150, 300, 2000, 285});
    yearly.setPlace({150, 660, 2000, 285});
    monthly.setValue(true);
    check.setPlace({3000, 300, 2800, 285});
    check.setValue(true);
    disabledCheck.setPlace({3000, 660, 2800, 285});
    disabledCheck.setEnabled(false);
    fixed.setPlace({6000, 300, 2700, 315});
    amount.setPlace({6000, 750, 1200, 315});
    amount.setRightAligned(true);
    disabledBox.setPlace({7400, 750, 1300, 315});
    disabledBox.setEnabled(false);
    dates.setPlace({150, 1600, 2400, 2400});
    dates.setFont({"Courier New", 9, false});
    several.setPlace({2700, 1600, 2400, 2400});
    bar.setPlace({5250, 1600, 255, 2400});
    horizontal.setPlace({150, 4200, 4950, 255});
    code.setText("001");
    amount.setText("1 234,50");
    disabledBox.setText("gris\u00E9");
    acronym.setItems({{"CD01", 1}, {"CD02", 2}});
    acronym.setListIndex(1);
    fixed.setItems({{"Principal", 1}, {"Compl\u00E9mentaire", 2}});
    fixed.setListIndex(1);
    for (int i = 10; i < 40; ++i) {
      dates.addItem("01/" + std::to_string(i) + "/2026");
      several.addItem("ligne " + std::to_string(i));
    }
    dates.setListIndex(2);
    several.setSelected(1, true);
    several.setSelected(3, true);
    bar.setRange(0, 20);
    bar.setValue(5);
    horizontal.setRange(0, 20);
  }
};

int show(int seconds) {
  Showcase showcase;
  TestHost host(showcase.surface);
  host.surface().takeFocus();
  const DWORD end = GetTickCount() + static_cast<DWORD>(seconds) * 1000;
  while (GetTickCount() < end) {
    host.pump();
    Sleep(10);
  }
  return 0;
}

int print(const std::string& name) {
  NoHost none;
  const auto desktop = toolkit::win32::makeWindowsDesktop(none);
  const std::vector<toolkit::PrinterInfo> printers = desktop->printers();
  for (const toolkit::PrinterInfo& printer : printers) {
    std::printf("printer %s on %s\n", printer.deviceName.c_str(), printer.port.c_str());
  }
  std::printf("current %d\n", desktop->currentPrinter());
  const auto chosen =
      std::find_if(printers.begin(), printers.end(),
                   [&](const toolkit::PrinterInfo& p) { return p.deviceName == name; });
  if (chosen == printers.end()) return 1;
  desktop->setCurrentPrinter(static_cast<int>(chosen - printers.begin()));
  toolkit::Printer& page = desktop->printer();
  page.setFontName("Courier New");
  page.setFontSize(12);
  std::printf("width of ten characters %d, page %d x %d\n", page.textWidth("0123456789"),
              page.pageWidth(), page.pageHeight());
  page.setCurrentX(2880);
  page.setCurrentY(1440);
  page.print("Premi\u00E8re page");
  page.setBold(true);
  page.print("gras ", toolkit::Printer::LineEnd::Stay);
  page.setBold(false);
  page.setUnderline(true);
  page.print("soulign\u00E9");
  page.setUnderline(false);
  page.newPage();
  page.print("Deuxi\u00E8me page");
  page.endDoc();
  page.endDoc();
  std::printf("printed\n");
  return 0;
}

double milliseconds() {
  LARGE_INTEGER now{};
  LARGE_INTEGER perSecond{};
  QueryPerformanceCounter(&now);
  QueryPerformanceFrequency(&perSecond);
  return 1000.0 * static_cast<double>(now.QuadPart) / static_cast<double>(perSecond.QuadPart);
}

template <class Act>
double fastest(Act act) {
  double best = 1e9;
  for (int i = 0; i < 25; ++i) {
    const double start = milliseconds();
    act();
    best = std::min(best, milliseconds() - start);
  }
  return best;
}

int fill() {
  Showcase showcase;
  TestHost host(showcase.surface);
  std::vector<toolkit::ListItem> items;
  std::vector<std::wstring> lines;
  for (int i = 0; i < 999; ++i) {
    items.push_back({"ORG" + std::to_string(1000 + i), i});
    lines.push_back(toolkit::win32::wide(items.back().text));
  }
  HWND bare =
      CreateWindowExW(0, L"COMBOBOX", L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL | CBS_DROPDOWN, 1000,
                      300, 150, 300, host.handle(), nullptr, nullptr, nullptr);
  HWND window = host.find("Cbo_Sigle");
  const double loop = fastest([&] {
    SendMessageW(bare, WM_SETREDRAW, FALSE, 0);
    SendMessageW(bare, CB_RESETCONTENT, 0, 0);
    SendMessageW(bare, CB_INITSTORAGE, lines.size(), LPARAM{999} * 32);
    for (const std::wstring& line : lines) {
      SendMessageW(bare, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    }
    SendMessageW(bare, WM_SETREDRAW, TRUE, 0);
  });
  const double peer = fastest([&] {
    showcase.acronym.setItems(items);
    SendMessageW(window, CB_GETCOUNT, 0, 0);  // brought up to date before it answers
  });
  const auto thousandths = static_cast<long>(1000.0 * peer / loop);
  std::printf("bare loop %ld us, control %ld us, ratio %ld.%03ld\n",
              static_cast<long>(1000.0 * loop), static_cast<long>(1000.0 * peer),
              thousandths / 1000, thousandths % 1000);
  return SendMessageW(window, CB_GETCOUNT, 0, 0) == 999 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string what = argc > 1 ? argv[1] : "";
  if (what == "show") return show(argc > 2 ? std::atoi(argv[2]) : 5);
  if (what == "print" && argc > 2) return print(argv[2]);
  if (what == "fill") return fill();
  std::printf("toolkit_probe show SECONDS | print PRINTER | fill\n");
  return 2;
}
