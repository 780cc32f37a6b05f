// TessalineHost: opens a store, holds the control, closes when the user has left it.
#include <ole2.h>

#include <commctrl.h>
#include <shellapi.h>

#include <string>
#include <vector>

#include "com/ComBorder.h"
#include "com/LateBound.h"
#include "com/Module.h"
#include "host/Arguments.h"
#include "host/HostWindow.h"
#include "host/Journal.h"
#include "host/Library.h"

namespace com {
const wchar_t* errorSource() { return L"TessalineHost"; }
}  // namespace com

namespace host {

namespace {

using Microsoft::WRL::ComPtr;

constexpr const wchar_t* kTitle = L"Organismes de prise en charge";
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

void start(const Arguments& arguments, const Libraries& libraries, HostWindow& window,
           Journal& journal) {
  const ComPtr<IDispatch> client = automationOf(libraries.stores.create(L"Client"));
  const ComPtr<IDispatch> database = com::LateBound(client).callForObject(
      L"OpenDatabase", words(com::Variant::ofText(com::wide(arguments.store))));
  journal.write("opened " + arguments.store);

  const ComPtr<IUnknown> created = libraries.controls.create(L"Ctr_OrgPriseCharge");
  window.hold(created);
  com::LateBound control(automationOf(created));
  control.put(L"TheClient", object(client));
  control.put(L"TheDatabase", object(database));
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
    {
      HostWindow window(journal);
      start(arguments, libraries, window, journal);
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
