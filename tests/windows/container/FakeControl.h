// A control that does what a container expects, but for one fault that can be asked for: it shows
// that the container notices each.
#pragma once

#include <windows.h>

#include <memory>

#include "tests/windows/container/Source.h"

namespace container {

enum class Fault {
  None,
  ActivatesUnasked,    // no CanInPlaceActivate
  ContextTooEarly,     // GetWindowContext before CanInPlaceActivate
  ContextWithoutSize,  // GetWindowContext whose info has no size
  WindowlessActivation,
  UIActivatesFirst,   // OnUIActivate before OnInPlaceActivate
  ActiveObjectFirst,  // SetActiveObject before OnUIActivate
  BorderSpaceFirst,   // SetBorderSpace(null) before SetActiveObject
  WantsBorderSpace,
  FocusFirst,  // OnFocus(TRUE) before SetBorderSpace(null)
  FocusTwice,
  ForgetsDocument,          // no SetActiveObject on the document window
  KeepsFocus,               // no OnFocus(FALSE)
  KeepsActiveObject,        // no SetActiveObject(null)
  InPlaceDeactivatesFirst,  // OnInPlaceDeactivate before OnUIDeactivate
  Undoable,
  StaysActive,       // Close takes nothing down
  ModelessUnpaired,  // no EnableModeless(TRUE)
  ModelessTwice,     // EnableModeless(TRUE) once too often
  LeaksSite,
  LeaksFrame,
  LeaksSink,
  LeaksAdvise,
  ReleasesTwice,
  CallsAfterClose,
  CallsFromAThread,
  NotifiesWithinACall,  // OnChanged from within the call that changed the property
  NotifiesInABox,
  InfoChangedWithin,     // OnControlInfoChanged from within GetControlInfo
  PositionWhilePassive,  // OnPosRectChange while not active
  AmbientAsMethod,
  LeavesItsWindow,
  KeepsItself,  // a reference to itself
  LibraryInUse  // DllCanUnloadNow says no for ever
};

// W_Sortir is member 1 of the control's automation; assigning it notifies from a posted message,
// and member 2, Demander, opens a pair of EnableModeless.
class FakeSource final : public Source {
 public:
  explicit FakeSource(Fault fault) : fault_(fault) {}
  Microsoft::WRL::ComPtr<IUnknown> create() override;
  HRESULT canUnloadNow() override;

 private:
  Fault fault_;
  std::shared_ptr<int> alive_ = std::make_shared<int>(0);
};

}  // namespace container
