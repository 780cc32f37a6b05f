// The desktop of Windows: boxes, pointer, pending events, forms.
#include <gtest/gtest.h>

#include "tests/windows/toolkit/BoxAnswerer.h"
#include "tests/windows/toolkit/Desktops.h"
#include "tests/windows/toolkit/FormUser.h"
#include "toolkit/Buttons.h"
#include "toolkit/ControlClosed.h"
#include "toolkit/Frame.h"
#include "toolkit/Window.h"

namespace toolkit::test {
namespace {

TEST_F(Desktops, ABoxHasItsTextTitleAndButtonsAndBelongsToTheRootWindow) {
  host();
  BoxAnswerer answerer(IDNO);
  EXPECT_EQ(desktop->messageBox("Été ?", "Message VALDRIS", Buttons::YesNo, Icon::Question),
            Answer::No);
  ASSERT_EQ(answerer.seen().size(), 1U);
  const BoxAnswerer::Seen& seen = answerer.seen().front();
  EXPECT_EQ(seen.text, L"\u00C9t\u00E9 ?");
  EXPECT_EQ(seen.title, L"Message VALDRIS");
  EXPECT_EQ(seen.owner, host().handle());
  EXPECT_FALSE(seen.ownerEnabled);
  EXPECT_EQ(seen.buttons, (std::vector<int>{IDYES, IDNO}));
  EXPECT_EQ(modeless_, (std::vector<bool>{false, true}));
  EXPECT_EQ(restored_, 1);
  EXPECT_EQ(GetFocus(), host().find("Txt_Box"));
}

TEST_F(Desktops, TheAnswersAreThoseOffered) {
  host();
  const auto ask = [this](int button, Buttons buttons) {
    BoxAnswerer answerer(button);
    return desktop->messageBox("text", "title", buttons, Icon::Exclamation);
  };
  EXPECT_EQ(ask(IDOK, Buttons::Ok), Answer::Ok);
  EXPECT_EQ(ask(IDYES, Buttons::YesNo), Answer::Yes);
  EXPECT_EQ(ask(IDCANCEL, Buttons::YesNoCancel), Answer::Cancel);
}

TEST_F(Desktops, EnterGivesTheAnswerThatABoxProposes) {
  const auto asked = [this](Answer proposed) {
    BoxAnswerer answerer(0, [](HWND) { press(VK_RETURN); });
    return desktop->messageBox("text", "title", Buttons::YesNoCancel, Icon::Question, proposed);
  };
  for (const Answer proposed : {Answer::Yes, Answer::No, Answer::Cancel}) {
    EXPECT_EQ(asked(proposed), proposed);
  }
  BoxAnswerer answerer(0, [](HWND) { press(VK_RETURN); });
  EXPECT_EQ(desktop->messageBox("text", "title", Buttons::YesNo, Icon::Question), Answer::Yes);
}

TEST_F(Desktops, ABoxWithoutAWindowHasNoOwner) {
  windowless_ = true;
  BoxAnswerer answerer(IDOK);
  EXPECT_EQ(desktop->messageBox("text", "title", Buttons::Ok, Icon::None), Answer::Ok);
  EXPECT_EQ(answerer.seen().front().owner, nullptr);
}

TEST_F(Desktops, ABoxWhoseOwnerIsDestroyedIsNoAnswer) {
  host(TestHost::TopLevel::Own);
  BoxAnswerer answerer(0, [this](HWND) { host().destroyWindow(); });
  EXPECT_THROW(desktop->messageBox("text", "title", Buttons::YesNo, Icon::Question), ControlClosed);
  EXPECT_EQ(modeless_, (std::vector<bool>{false, true}));
}

TEST_F(Desktops, AClosedControlAsksNothing) {
  closed_ = true;
  Window form("Frm", "Form", 3000, 1500);
  EXPECT_THROW(desktop->messageBox("text", "title", Buttons::Ok, Icon::None), ControlClosed);
  EXPECT_THROW(desktop->doEvents(), ControlClosed);
  EXPECT_THROW(desktop->showModal(form), ControlClosed);
  EXPECT_THROW(desktop->show(form), ControlClosed);
  EXPECT_TRUE(modeless_.empty());
}

TEST_F(Desktops, AnAnswerGivenAfterClosingIsNone) {
  host();
  BoxAnswerer answerer(0, [this](HWND window) {
    closed_ = true;
    PostMessageW(window, WM_COMMAND, IDYES, 0);
  });
  EXPECT_THROW(desktop->messageBox("text", "title", Buttons::YesNo, Icon::None), ControlClosed);
}

TEST_F(Desktops, PendingEventsRunWithoutTheUsersInput) {
  host();
  INPUT key{};
  key.type = INPUT_KEYBOARD;
  key.ki.wVk = 'A';
  SendInput(1, &key, sizeof key);
  key.ki.dwFlags = KEYEVENTF_KEYUP;
  SendInput(1, &key, sizeof key);
  InvalidateRect(host().find("Txt_Box"), nullptr, TRUE);
  desktop->doEvents();
  host().pump();
  EXPECT_EQ(box.text(), "");
  EXPECT_FALSE(GetUpdateRect(host().find("Txt_Box"), nullptr, FALSE));
}

TEST_F(Desktops, PendingEventsPassTheEndOfTheProgramOn) {
  host();
  PostQuitMessage(7);
  desktop->doEvents();
  MSG message{};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7U);
}

TEST_F(Desktops, AControlClosedByAPendingEventIsNoticed) {
  host();
  struct Flag {
    static void CALLBACK set(HWND, UINT, UINT_PTR id, DWORD) {
      KillTimer(nullptr, id);
      *closed() = true;
    }
    static bool*& closed() {
      static bool* flag = nullptr;
      return flag;
    }
  };
  Flag::closed() = &closed_;
  SetTimer(nullptr, 0, 10, &Flag::set);
  Sleep(60);
  EXPECT_THROW(desktop->doEvents(), ControlClosed);
}

TEST_F(Desktops, TheHourglassStaysWhileItIsSet) {
  host();
  HWND window = host().find("Txt_Box");
  const auto pointerAfterMove = [&] {
    SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window),
                 MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    return GetCursor();
  };
  desktop->setPointer(Pointer::Hourglass);
  EXPECT_EQ(desktop->pointer(), Pointer::Hourglass);
  EXPECT_EQ(pointerAfterMove(), LoadCursorW(nullptr, IDC_WAIT));
  desktop->setPointer(Pointer::Normal);
  EXPECT_NE(pointerAfterMove(), LoadCursorW(nullptr, IDC_WAIT));
}

TEST_F(Desktops, TodayIsTheLocalDate) {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  const CalendarDate today = desktop->today();
  EXPECT_EQ(today.year, now.wYear);
  EXPECT_EQ(today.month, now.wMonth);
}

class Form {
 public:
  Window window{"Frm_Form", "Un formulaire", 4500, 2100};
  TextBox field{&window.surface(), "Txt_Field"};
  CommandButton ok{&window.surface(), "Cmd_Ok", "&OK"};
  CommandButton cancel{&window.surface(), "Cmd_Cancel", "Annuler"};

  Form() {
    field.setPlace({150, 150, 2400, 330});
    ok.setPlace({150, 600, 1500, 375});
    cancel.setPlace({1800, 600, 1500, 375});
  }
};

TEST_F(Desktops, AModalFormIsTypedIntoAndReturnsWhenItHasClosedItself) {
  host();
  Form form;
  form.ok.onClick = [&] { desktop->close(form.window); };
  bool ownerWasEnabled = true;
  const FormUser user(L"Un formulaire", {[&](HWND) {
                        ownerWasEnabled = IsWindowEnabled(host().handle()) != FALSE;
                        for (const WORD key : {WORD{'A'}, WORD{VK_TAB}, WORD{VK_RETURN}})
                          press(key);
                      }});
  desktop->showModal(form.window);
  EXPECT_EQ(form.field.text(), "a");
  EXPECT_FALSE(ownerWasEnabled);
  EXPECT_FALSE(form.window.open());
  EXPECT_EQ(modeless_, (std::vector<bool>{false, true}));
  EXPECT_EQ(form.field.peer(), nullptr);
  EXPECT_EQ(GetFocus(), host().find("Txt_Box"));
}

TEST_F(Desktops, TabWrapsAroundInAFormAndEscapeClicksItsCancelButton) {
  host();
  Form form;
  std::vector<std::string> focus;
  form.field.onGotFocus = [&] { focus.emplace_back("field"); };
  form.ok.onGotFocus = [&] { focus.emplace_back("ok"); };
  form.cancel.onGotFocus = [&] { focus.emplace_back("cancel"); };
  form.window.surface().setCancelButton(&form.cancel);
  form.cancel.onClick = [&] { desktop->close(form.window); };
  const FormUser user(L"Un formulaire", {[&](HWND) {
                        for (const int key : {VK_TAB, VK_TAB, VK_TAB, VK_ESCAPE})
                          press(static_cast<WORD>(key));
                      }});
  desktop->showModal(form.window);
  EXPECT_EQ(focus, (std::vector<std::string>{"field", "ok", "cancel", "field"}));
}

TEST_F(Desktops, AFormIsClosedByItsTitleBarOnlyIfItWants) {
  host();
  Form form;
  int asked = 0;
  form.window.onCloseAsked = [&] {
    if (++asked == 2) desktop->close(form.window);
  };
  const FormUser user(L"Un formulaire", {[&](HWND window) {
                        PostMessageW(window, WM_CLOSE, 0, 0);
                        PostMessageW(window, WM_CLOSE, 0, 0);
                      }});
  desktop->showModal(form.window);
  EXPECT_EQ(asked, 2);
}

TEST_F(Desktops, AFormWhoseOwnerIsDestroyedIsControlClosed) {
  host(TestHost::TopLevel::Own);
  Form form;
  const FormUser user(L"Un formulaire", {[&](HWND) { host().destroyWindow(); }});
  EXPECT_THROW(desktop->showModal(form.window), ControlClosed);
  EXPECT_FALSE(form.window.open());
}

TEST_F(Desktops, AModelessFormIsPaintedBeforeShowReturnsAndStaysUntilClosed) {
  host();
  Form form;
  desktop->show(form.window);
  EXPECT_TRUE(form.window.open());
  HWND window = FindWindowW(L"#32770", L"Un formulaire");
  ASSERT_NE(window, nullptr);
  EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
  EXPECT_TRUE(IsWindowEnabled(host().handle()));
  RECT client{};
  GetClientRect(window, &client);
  EXPECT_EQ(client.right, 300);
  EXPECT_EQ(client.bottom, 140);
  desktop->close(form.window);
  EXPECT_FALSE(form.window.open());
  EXPECT_FALSE(IsWindow(window));
}

}  // namespace
}  // namespace toolkit::test
