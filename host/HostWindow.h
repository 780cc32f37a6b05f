// The demo host's window: it holds one control and nothing else.
#pragma once

#include <ocidl.h>
#include <oleidl.h>
#include <wrl/client.h>

#include "host/Events.h"
#include "host/Journal.h"
#include "host/Settings.h"
#include "host/Site.h"

namespace host {

// Of the window, and of every box of the host's own.
inline constexpr const wchar_t* kTitle = L"Organismes de prise en charge";

// As large as its control wants to be, and to be enlarged at will; in a smaller window the control
// keeps its size and can be scrolled. The window closes by itself when the control's `W_Sortir`
// becomes true. What the control tells by events stands in the status bar below it. Errors are
// com::Error.
class HostWindow final : private Holder {
 public:
  // The journal and the settings, which keep the window's place, must outlive the window.
  HostWindow(Journal& journal, Settings& settings);
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;
  ~HostWindow() override;

  // Takes the control in, places it and shows the window.
  void hold(const Microsoft::WRL::ComPtr<IUnknown>& control);
  // Gives the control the focus.
  void enterControl();
  // Runs until the window is closed.
  void run();

  HWND window() const override { return window_; }

 private:
  RECT place() const override;
  RECT room() const override;
  void setActiveObject(IOleInPlaceActiveObject* object) override;
  void placed(const RECT& place) override;
  void mnemonicsChanged() override;
  void leftByTab(const MSG& message) override;
  void enableModeless(bool enable) override;
  void propertyChanged(DISPID property) override;

  static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
  void create();
  void show(const std::wstring& status);
  void warn(const std::wstring& text);
  void connect();
  void listen();
  SIZE naturalSize() const;
  void fitToControl();
  void putWhereItWas();
  void keepPlace();
  void placeControl();
  void updateScrollBars();
  void scroll(int bar, WORD request);
  bool translate(MSG& message);
  bool isMnemonic(MSG& message);
  void enterControl(MSG* message);
  bool wantsToLeave();
  void leaveWhenAsked();
  void release();

  Journal& journal_;
  Settings& settings_;
  HWND window_ = nullptr;
  Frame* frame_;
  Site* site_;
  Events* events_;
  HWND status_ = nullptr;
  Microsoft::WRL::ComPtr<IUnknown> control_;
  Microsoft::WRL::ComPtr<IOleObject> object_;
  Microsoft::WRL::ComPtr<IOleInPlaceActiveObject> active_;
  Microsoft::WRL::ComPtr<IConnectionPoint> changes_;
  DWORD cookie_ = 0;
  CONTROLINFO mnemonics_{};
  SIZE extent_{};  // HIMETRIC, as the control wants it
  SIZE scrolled_{};
  int modal_ = 0;  // boxes and forms of the control that are open
};

}  // namespace host
