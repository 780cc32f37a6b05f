// TessalineHost: opens a store, holds the control, closes when the user has left it.
#include <ole2.h>

#include <commctrl.h>
#include <shellapi.h>

#include <optional>
#include <string>
#include <vector>

#include "com/ComBorder.h"
#include "com/LateBound.h"
#include "com/Module.h"
#include "host/Arguments.h"
#include "host/HostWindow.h"
#include "host/Journal.h"
#include "host/Library.h"
#include "host/Settings.h"
#include "host/StoreChoice.h"

namespace com {
const wchar_t* errorSource() { return L"TessalineHost"; }
}  // namespace com

namespace host {

namespace {

using Microsoft::WRL::ComPtr;

constexpr const wchar_t* kRight = L"CONSULTATIONORGCHARGE";

// The words after the program's own name.
std::vector<std::string> commandLine() {
  int count = 0;
  LPWSTR* words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> result;
  for (int i = 1; i < count; ++i) result.push_back(com::utf8(words[i]));
  LocalFree(words);
  return result;
}

// On the console or the file that the program was started with, else in a box.
void tell(const std::string& message, UINT icon) {
  const HANDLE output = GetStdHandle(STD_ERROR_HANDLE);
  const DWORD type = output == nullptr ? FILE_TYPE_UNKNOWN : GetFileType(output);
  if (type == FILE_TYPE_DISK || type == FILE_TYPE_PIPE || type == FILE_TYPE_CHAR) {
    const std::string line = message + "\n";
    DWORD written = 0;
    WriteFile(output, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    return;
  }
  // What the closed window has left would close the box at once.
  MSG quit;
  PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
  MessageBoxW(nullptr, com::wide(message).c_str(), kTitle, MB_OK | icon);
}

ComPtr<IDispatch> automationOf(const ComPtr<IUnknown>& object) {
  ComPtr<IDispatch> automation;
  com::check(object.As(&automation), "IDispatch");
  return automation;
}

com::Variant object(const ComPtr<IDispatch>& automation) {
  return com::Variant::ofObject(automation.Get());
}

std::vector<com::Variant> words(com::Variant first) {
  std::vector<com::Variant> result;
  result.push_back(std::move(first));
  return result;
}

ComPtr<IDispatch> rightsOfLevel(const Library& library, long level) {
  ComPtr<IDispatch> rights = automationOf(library.create(L"Rights"));
  std::vector<com::Variant> values = words(com::Variant::ofText(kRight));
  values.push_back(com::Variant::ofNumber(level));
  com::LateBound(rights).call(L"SetLevel", values);
  return rights;
}

struct Libraries {
  Library stores{L"TessalineStore.dll"};
  Library controls{L"Tessaline.ocx"};
};

struct Opened {
  ComPtr<IDispatch> client;
  ComPtr<IDispatch> database;
};

Opened openStore(const Libraries& libraries, const std::wstring& address, bool create) {
  const ComPtr<IDispatch> client = automationOf(libraries.stores.create(L"Client"));
  const ComPtr<IDispatch> database = com::LateBound(client).callForObject(
      create ? L"CreateDatabase" : L"OpenDatabase", words(com::Variant::ofText(address)));
  return {client, database};
}

// The store that the command line names, else the last one, else what the user chooses; nothing
// when he gives up.
std::optional<Opened> openWanted(const Arguments& arguments, const Libraries& libraries,
                                 Settings& settings, Journal& journal) {
  const bool named = !arguments.store.empty();
  StoreChoice choice{named ? com::wide(arguments.store) : settings.store(), arguments.create};
  if (choice.path.empty()) choice = chooseStore(nullptr);
  while (!choice.path.empty()) {
    try {
      Opened opened = openStore(libraries, choice.path, choice.isNew);
      settings.setStore(choice.path);
      journal.write("opened " + com::utf8(choice.path));
      return opened;
    } catch (const std::exception& failure) {
      if (named) throw;
      tell(failure.what(), MB_ICONERROR);
    }
    choice = chooseStore(nullptr);
  }
  return std::nullopt;
}

void start(const Arguments& arguments, const Libraries& libraries, const Opened& opened,
           HostWindow& window, Journal& journal) {
  const ComPtr<IUnknown> created = libraries.controls.create(L"Ctr_OrgPriseCharge");
  window.hold(created);
  com::LateBound control(automationOf(created));
  control.put(L"TheClient", object(opened.client));
  control.put(L"TheDatabase", object(opened.database));
  control.put(L"DroitsUtilisateur", object(rightsOfLevel(libraries.stores, arguments.rights)));
  control.call(L"Init");
  window.enterControl();
  journal.write("ready");
}

int runHost() {
  try {
    const Arguments arguments = parseArguments(commandLine());
    Journal journal(arguments.record);
    const Libraries libraries;
    Settings settings;
    {
      const std::optional<Opened> opened = openWanted(arguments, libraries, settings, journal);
      if (!opened) return 0;
      HostWindow window(journal, settings);
      start(arguments, libraries, *opened, window, journal);
      window.run();
    }
    journal.write(libraries.controls.unused() ? "control released" : "control kept");
    journal.write(libraries.stores.unused() ? "store released" : "store kept");
    return 0;
  } catch (const NoStart& reason) {
    tell(reason.what(), reason.exitCode() == 0 ? MB_ICONINFORMATION : MB_ICONERROR);
    return reason.exitCode();
  } catch (const std::exception& failure) {
    tell(failure.what(), MB_ICONERROR);
    return 1;
  }
}

}  // namespace

}  // namespace host

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  INITCOMMONCONTROLSEX controls{sizeof controls,
                                ICC_STANDARD_CLASSES | ICC_TAB_CLASSES | ICC_BAR_CLASSES};
  InitCommonControlsEx(&controls);
  if (FAILED(OleInitialize(nullptr))) return 1;
  const int status = host::runHost();
  OleUninitialize();
  return status;
}
