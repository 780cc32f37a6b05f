// The mnemonics that a container is given, and how long they serve it.
#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {
namespace {

class ControlInfo : public ControlTest {
 protected:
  bool meant(const CONTROLINFO& information, wchar_t letter) {
    MSG message{};
    message.hwnd = control().host.controlWindow();
    message.message = WM_SYSCHAR;
    message.wParam = letter;
    message.lParam = KF_ALTDOWN << 16;
    WORD command = 0;
    return IsAccelerator(information.hAccel, information.cAccel, &message, &command) != FALSE;
  }
};

// A container may still look keys up in what it was given before, whoever else has asked since.
TEST_F(ControlInfo, GivenBeforeStaysValid) {
  const CONTROLINFO first = control().host.controlInfo();
  ASSERT_TRUE(meant(first, L'A'));
  user().click(L"Cmd_Ajouter");
  const CONTROLINFO second = control().host.controlInfo();
  EXPECT_NE(first.hAccel, second.hAccel);
  EXPECT_FALSE(meant(second, L'A'));
  EXPECT_TRUE(meant(first, L'A'));
}

TEST_F(ControlInfo, OfTheSameMnemonicsIsTheSame) {
  const CONTROLINFO first = control().host.controlInfo();
  const CONTROLINFO second = control().host.controlInfo();
  EXPECT_EQ(first.hAccel, second.hAccel);
  EXPECT_EQ(first.cAccel, second.cAccel);
}

}  // namespace
}  // namespace lifecycle
