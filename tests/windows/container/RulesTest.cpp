// The container is strict: each rule is broken once, and noticed.
#include <gtest/gtest.h>

#include "tests/windows/container/Container.h"
#include "tests/windows/container/FakeControl.h"
#include "tests/windows/container/HostWindow.h"

namespace container {
namespace {

// A whole life: activation, a box, a property change, leaving and closing.
std::string liveOnce(const Profile& profile, Fault fault) {
  HostWindow window;
  FakeSource source(fault);
  Container container(profile, window, source);
  container.open();
  container.controlInfo();
  DISPPARAMS none = {};
  auto automation = container.automation();
  const auto invoke = [&](DISPID member) {
    const Rules::HostCall call(container.rules(), "Invoke");
    automation->Invoke(member, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr);
  };
  invoke(1);
  container.pumpUntil([&] { return container.properties().changes() > 0; }, 1000);
  invoke(2);
  automation.Reset();
  return container.finish();
}

class EveryProfile : public testing::TestWithParam<Profile> {};

TEST_P(EveryProfile, AcceptsAControlThatKeepsTheRules) {
  EXPECT_EQ(liveOnce(GetParam(), Fault::None), "");
}

INSTANTIATE_TEST_SUITE_P(Container, EveryProfile, testing::ValuesIn(allProfiles()),
                         [](const auto& given) { return given.param.name; });

struct Broken {
  const char* name;
  Fault fault;
  const char* noticed;  // part of the report
};

void PrintTo(const Broken& broken, std::ostream* out) { *out << broken.name; }

class StrictContainer : public testing::TestWithParam<Broken> {};

TEST_P(StrictContainer, Notices) {
  const Broken& broken = GetParam();
  const std::string report = liveOnce(
      broken.fault == Fault::ForgetsDocument ? documentProfile() : formProfile(), broken.fault);
  EXPECT_NE(report.find(broken.noticed), std::string::npos) << "report: " << report;
}

const Broken kBroken[] = {
    {"ActivationWithoutAsking", Fault::ActivatesUnasked,
     "OnInPlaceActivate before CanInPlaceActivate"},
    {"WindowContextTooEarly", Fault::ContextTooEarly, "GetWindowContext before CanInPlaceActivate"},
    {"WindowContextWithoutSize", Fault::ContextWithoutSize, "without the size of its info"},
    {"WindowlessActivation", Fault::WindowlessActivation, "windowless activation"},
    {"UIActivationFirst", Fault::UIActivatesFirst, "OnUIActivate before OnInPlaceActivate"},
    {"ActiveObjectFirst", Fault::ActiveObjectFirst, "Frame.SetActiveObject before OnUIActivate"},
    {"BorderSpaceFirst", Fault::BorderSpaceFirst, "Frame.SetBorderSpace before SetActiveObject"},
    {"BorderSpaceAskedFor", Fault::WantsBorderSpace, "asks for space"},
    {"FocusFirst", Fault::FocusFirst, "OnFocus(TRUE) before SetBorderSpace(null)"},
    {"FocusTwice", Fault::FocusTwice, "OnFocus(TRUE) twice"},
    {"DocumentForgotten", Fault::ForgetsDocument, "before the document's SetActiveObject"},
    {"FocusKept", Fault::KeepsFocus, "OnUIDeactivate before OnFocus(FALSE)"},
    {"ActiveObjectKept", Fault::KeepsActiveObject, "OnUIDeactivate before SetActiveObject(null)"},
    {"InPlaceDeactivationFirst", Fault::InPlaceDeactivatesFirst,
     "OnInPlaceDeactivate before OnUIDeactivate"},
    {"UndoableDeactivation", Fault::Undoable, "can be undone"},
    {"ModelessUnpaired", Fault::ModelessUnpaired, "without an EnableModeless(TRUE) after it"},
    {"ModelessTwice", Fault::ModelessTwice, "without an EnableModeless(FALSE) before it"},
    {"SiteLeaked", Fault::LeaksSite, "site is still held 1 times"},
    {"FrameLeaked", Fault::LeaksFrame, "frame is still held 1 times"},
    {"SinkLeaked", Fault::LeaksSink, "property sink is still held 1 times"},
    {"AdviseSinkLeaked", Fault::LeaksAdvise, "advise sink is still held 1 times"},
    {"ReleasedTwice", Fault::ReleasesTwice, "site released more often than it was held"},
    {"CallAfterClose", Fault::CallsAfterClose, "ShowObject after Close"},
    {"CallFromAThread", Fault::CallsFromAThread, "OnControlInfoChanged from another thread"},
    {"NotificationWithinACall", Fault::NotifiesWithinACall, "OnChanged(1) from within Invoke"},
    {"NotificationInABox", Fault::NotifiesInABox, "OnChanged(1) while a box is open"},
    {"InfoChangedWithin", Fault::InfoChangedWithin, "from within GetControlInfo"},
    {"PositionWhilePassive", Fault::PositionWhilePassive,
     "OnPosRectChange while not in-place active"},
    {"AmbientAsMethod", Fault::AmbientAsMethod, "not read but called"},
    {"WindowLeft", Fault::LeavesItsWindow, "1 windows are left"},
    {"ControlKept", Fault::KeepsItself, "the last Release gives 1"},
    {"LibraryInUse", Fault::LibraryInUse, "DllCanUnloadNow does not answer S_OK"},
};

INSTANTIATE_TEST_SUITE_P(Container, StrictContainer, testing::ValuesIn(kBroken),
                         [](const auto& given) { return given.param.name; });

TEST(EventRules, NoticeAnEventThatComesWhileSomethingRuns) {
  Rules rules{Offer{}};
  rules.connected();
  rules.onEvent("event 1");
  EXPECT_EQ(rules.report(), "");
  {
    const Rules::HostCall call(rules, "Invoke");
    rules.onEvent("event 2");
  }
  rules.enableModeless(false);
  rules.onEvent("event 3");
  EXPECT_EQ(rules.report(), "event 2 from within Invoke\nevent 3 while a box is open\n");
}

// finish() deactivates first; a host that only closes sees what Close leaves behind.
TEST(StrictContainerOnClose, NoticesACloseThatTakesNothingDown) {
  HostWindow window;
  FakeSource source(Fault::StaysActive);
  Container container(formProfile(), window, source);
  container.open();
  container.close();
  EXPECT_NE(container.rules().report().find("Close without OnInPlaceDeactivate"),
            std::string::npos);
}

}  // namespace
}  // namespace container
