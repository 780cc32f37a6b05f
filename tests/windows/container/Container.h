// A strict ActiveX container for tests: hosts one control as a profile says, records every call
// that the control makes and tells of each broken rule.
#pragma once

#include <ocidl.h>
#include <ole2.h>
#include <wrl/client.h>

#include <memory>
#include <string>

#include "tests/windows/container/Bars.h"
#include "tests/windows/container/HostWindow.h"
#include "tests/windows/container/Profile.h"
#include "tests/windows/container/Rules.h"
#include "tests/windows/container/Sinks.h"
#include "tests/windows/container/Site.h"
#include "tests/windows/container/Source.h"

namespace container {

// Every call into the control gives back the control's HRESULT. The window and the source must
// outlive the container.
class Container {
 public:
  Container(const Profile& profile, HostWindow& window, Source& source);
  Container(const Container&) = delete;
  Container& operator=(const Container&) = delete;
  // Ends as finish() does, for tests that stopped half way; its findings are then lost.
  ~Container();

  // Site and initial state in the profile's order, and the sinks. Throws std::runtime_error when
  // the control lacks an interface that a container needs or refuses a step.
  void load();
  HRESULT setSite(bool set);
  HRESULT initialise();
  // Loading, then activation in the profile's order.
  HRESULT open();

  HRESULT doVerb(LONG verb, MSG* message = nullptr);
  HRESULT activate() { return doVerb(OLEIVERB_INPLACEACTIVATE); }
  HRESULT uiActivate(MSG* message = nullptr) { return doVerb(OLEIVERB_UIACTIVATE, message); }
  HRESULT uiDeactivate();
  HRESULT deactivate();
  HRESULT setRects(const RECT& place);
  HRESULT close();
  HRESULT ambientChanged(DISPID id);
  // Saves into the persistence of the profile and gives back what was written into a new control of
  // the same source, which is then released.
  HRESULT saveAndLoadAnother();

  // What the host's message loop does before it dispatches.
  bool translate(MSG& message);
  void pump();
  bool pumpUntil(const std::function<bool()>& done, DWORD milliseconds = 5000);

  // The window of the control; null while it has none.
  HWND controlWindow() const;
  Microsoft::WRL::ComPtr<IDispatch> automation() const;
  IUnknown* control() const { return control_.Get(); }
  CONTROLINFO controlInfo(HRESULT* result = nullptr);

  // What a host does that goes while a call into the control is still running: everything is let
  // go, the last reference included, and nothing is checked. finish() then only checks.
  void abandon();

  // Lets the sinks and all interfaces go, takes the control down and releases it; then checks that
  // nothing is left: no reference, no window, and a library that could be unloaded.
  // Gives back the report of broken rules, empty when there is none.
  std::string finish();

  Rules& rules() { return *rules_; }
  Site& site() { return *site_; }
  FrameObject& frame() { return *frame_; }
  PropertySink& properties() { return *properties_; }
  // Connected to the default source that the control's class names, as most hosts are; null where
  // it names none.
  EventSink* events() { return events_.get(); }
  AdviseSink& advises() { return *advises_; }
  HostWindow& window() { return window_; }
  const Profile& profile() const { return profile_; }

 private:
  template <class Interface>
  Microsoft::WRL::ComPtr<Interface> as() const;
  HRESULT initStorage();
  void adviseAll();
  void connectEvents();
  void unadviseAll();
  HRESULT keyLeftByControl(const MSG& message, DWORD modifiers);
  bool asAccelerator(MSG& message);
  IOleInPlaceActiveObject* activeObject() const;
  ULONG letGo();
  void check();
  void checkReferences();
  void checkWindows();

  Profile profile_;
  HostWindow& window_;
  Source& source_;
  std::shared_ptr<Rules> rules_;
  std::unique_ptr<FrameObject> frame_;
  std::unique_ptr<DocumentObject> document_;
  std::unique_ptr<Site> site_;
  std::unique_ptr<PropertySink> properties_;
  std::unique_ptr<EventSink> events_;
  std::unique_ptr<AdviseSink> advises_;
  std::unique_ptr<AdviseSink> views_;
  Microsoft::WRL::ComPtr<IUnknown> control_;
  Microsoft::WRL::ComPtr<IConnectionPoint> connection_;
  Microsoft::WRL::ComPtr<IConnectionPoint> eventSource_;
  Microsoft::WRL::ComPtr<IStorage> storage_;
  DWORD connectionCookie_ = 0;
  DWORD eventCookie_ = 0;
  DWORD adviseCookie_ = 0;
  int windowsBefore_ = 0;
  bool released_ = false;
  bool finished_ = false;
};

}  // namespace container
