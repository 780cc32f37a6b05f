// TessalineAtl STORE: the least that shows the control. The window is of the ATL library's class,
// which makes the control that its first title names, places it and closes it; what the class does
// not do is in the message loop: keys go to the control first, the focus is passed on to it, and
// the window closes once the user has asked to leave. Control and store have to be registered.
#include <windows.h>

#include <ole2.h>
#include <shellapi.h>
#include <wrl/client.h>

#include <cstdio>
#include <stdexcept>
#include <string>

#include "TessalineTypes.h"  // made from Tessaline.idl

using Microsoft::WRL::ComPtr;

namespace {

constexpr long kFullRights = 2;
constexpr UINT kMilliseconds = 200;

void require(HRESULT result, const char* what) {
  if (FAILED(result)) throw std::runtime_error(what);
}

ComPtr<IDispatch> make(const wchar_t* name) {
  CLSID id{};
  ComPtr<IDispatch> object;
  require(CLSIDFromProgID(name, &id), "a library is not registered");
  require(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)),
          "an object is not made");
  return object;
}

// A method by its name; its arguments stand in the order of COM, the last one first.
ComPtr<IDispatch> call(const ComPtr<IDispatch>& object, const wchar_t* name, VARIANT* arguments,
                       UINT count) {
  std::wstring copy(name);
  LPOLESTR names = copy.data();
  DISPID id = 0;
  require(object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id), "no such method");
  DISPPARAMS parameters{arguments, nullptr, count, 0};
  VARIANT answer{};
  require(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &answer,
                         nullptr, nullptr),
          "a call of the store has failed");
  ComPtr<IDispatch> made;
  if (answer.vt == VT_DISPATCH) made.Attach(answer.pdispVal);
  return made;
}

VARIANT text(const wchar_t* characters) {
  VARIANT value{};
  value.vt = VT_BSTR;
  value.bstrVal = SysAllocString(characters);
  return value;
}

ComPtr<IDispatch> openStore(const ComPtr<IDispatch>& client, const wchar_t* path) {
  VARIANT argument = text(path);
  ComPtr<IDispatch> database = call(client, L"OpenDatabase", &argument, 1);
  VariantClear(&argument);
  return database;
}

ComPtr<IDispatch> fullRights() {
  ComPtr<IDispatch> rights = make(L"TessalineStore.Rights");
  VARIANT level{};
  level.vt = VT_I4;
  level.lVal = kFullRights;
  VARIANT arguments[] = {level, text(L"CONSULTATIONORGCHARGE")};
  call(rights, L"SetLevel", arguments, 2);
  VariantClear(&arguments[1]);
  return rights;
}

// The ATL library's window, and in it the control.
class Host {
 public:
  explicit Host(const wchar_t* path) {
    const HMODULE atl = LoadLibraryW(L"atl100.dll");
    if (atl == nullptr) throw std::runtime_error("atl100.dll is missing");
    exported<BOOL(WINAPI*)()>(atl, "AtlAxWinInit")();
    window_ = CreateWindowExW(0, L"AtlAxWin100", L"Tessaline.Ctr_OrgPriseCharge",
                              WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT,
                              900, 680, nullptr, nullptr, nullptr, nullptr);
    ComPtr<IUnknown> made;
    require(exported<HRESULT(WINAPI*)(HWND, IUnknown**)>(atl, "AtlAxGetControl")(window_, &made),
            "the control is not registered");
    require(made.As(&control_), "another control");
    require(made.As(&keys_), "a control without keyboard");
    SetWindowTextW(window_, L"Organismes");
    start(path);
  }

  void run() {
    ShowWindow(window_, SW_SHOW);
    SetTimer(window_, 0, kMilliseconds, nullptr);
    MSG message{};
    while (IsWindow(window_) && GetMessageW(&message, nullptr, 0, 0) > 0) {
      if (leaving()) DestroyWindow(window_);
      if (GetFocus() == window_) giveFocus();
      const bool key = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
      if (key && keys_->TranslateAccelerator(&message) == S_OK) continue;
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }

 private:
  template <class Function>
  static Function exported(HMODULE library, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
  }

  void start(const wchar_t* path) {
    const ComPtr<IDispatch> client = make(L"TessalineStore.Client");
    require(control_->putref_TheClient(client.Get()), "TheClient");
    require(control_->putref_TheDatabase(openStore(client, path).Get()), "TheDatabase");
    require(control_->putref_DroitsUtilisateur(fullRights().Get()), "DroitsUtilisateur");
    require(control_->Init(), "Init");
  }

  // To the field that had it last, or to the first one.
  void giveFocus() const {
    ComPtr<IOleObject> object;
    RECT area{};
    GetClientRect(window_, &area);
    require(control_.As(&object), "no OLE object");
    require(object->DoVerb(OLEIVERB_UIACTIVATE, nullptr, nullptr, 0, window_, &area),
            "the control could not be activated");
  }

  bool leaving() const {
    VARIANT_BOOL leave = VARIANT_FALSE;
    control_->get_W_Sortir(&leave);
    return leave != VARIANT_FALSE;
  }

  HWND window_ = nullptr;
  ComPtr<_Ctr_OrgPriseCharge> control_;
  ComPtr<IOleInPlaceActiveObject> keys_;
};

int runOn(const wchar_t* path) {
  try {
    Host(path).run();
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "error: %s\n", failure.what());
    return 1;
  }
}

}  // namespace

int main() {
  int count = 0;
  wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
  if (count != 2) {
    std::fputs("usage: TessalineAtl STORE\n", stderr);
    return 2;
  }
  OleInitialize(nullptr);
  const int status = runOn(words[1]);
  OleUninitialize();
  return status;
}
