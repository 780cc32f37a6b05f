// The system's own two forms on the screen.

#include "forms/Frm_Anim.h"
#include "forms/Frm_ImpressionA4.h"
#include "forms/PrinterChoice.h"
#include "host/input/Input.h"
#include "tests/windows/toolkit/Desktops.h"
#include "tests/windows/toolkit/FormUser.h"
#include "tests/windows/toolkit/ListedPrinters.h"
#include "toolkit/ControlClosed.h"

namespace toolkit::test {
namespace {

constexpr const wchar_t* kWaiting = L"Mise \u00E0 jour des accords en cours...";

using Step = FormUser::Step;

Step keys(std::vector<WORD> codes) {
  return [codes = std::move(codes)](HWND) {
    for (const WORD code : codes) press(code);
  };
}

struct Below {
  std::string_view name;
  HWND found = nullptr;
};

BOOL CALLBACK compare(HWND window, LPARAM search) {
  auto& wanted = *reinterpret_cast<Below*>(search);
  if (controlNameOf(window) != wanted.name) return TRUE;
  wanted.found = window;
  return FALSE;
}

// A form's child window by its name.
HWND child(HWND form, std::string_view name) {
  Below search{name};
  EnumChildWindows(form, &compare, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

void clickOn(HWND window) {
  RECT area{};
  GetWindowRect(window, &area);
  const POINT middle{(area.left + area.right) / 2, (area.top + area.bottom) / 2};
  input::send({input::mouse(middle, 0), input::mouse(middle, MOUSEEVENTF_LEFTDOWN),
               input::mouse(middle, MOUSEEVENTF_LEFTUP)});
}

// The text of a window, in the font it is shown in, fits into it.
void expectTextFits(HWND window) {
  const std::wstring text = textOf(window);
  RECT client{};
  GetClientRect(window, &client);
  HDC context = GetDC(window);
  HGDIOBJ before =
      SelectObject(context, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
  RECT needed{};
  DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &needed,
            DT_CALCRECT | DT_SINGLELINE);
  SelectObject(context, before);
  ReleaseDC(window, context);
  EXPECT_LE(needed.right, client.right) << controlNameOf(window);
  EXPECT_LE(needed.bottom, client.bottom) << controlNameOf(window);
}

// Pixels of the window's client area that are not of the colour of its corner.
int pixelsDrawn(HWND window) {
  RECT client{};
  GetClientRect(window, &client);
  HDC context = GetDC(window);
  const COLORREF ground = GetPixel(context, 0, 0);
  int drawn = 0;
  for (int y = 0; y < client.bottom; ++y) {
    for (int x = 0; x < client.right; ++x) drawn += GetPixel(context, x, y) != ground ? 1 : 0;
  }
  ReleaseDC(window, context);
  return drawn;
}

class PrinterForm : public Desktops {
 protected:
  void SetUp() override {
    forms::imprimanteParDefaut() = {};
    host();
    modeless_.clear();
    restored_ = 0;
  }
  void TearDown() override {
    forms::imprimanteParDefaut() = {};
    Desktops::TearDown();
  }
  std::string choose(std::vector<Step> steps) {
    const FormUser user(L"Imprimer", std::move(steps));
    return forms::choisirImprimanteA4(listed);
  }

  ListedPrinters listed{
      *desktop, {{"LASER", "USB001"}, {"MATRICIELLE", "LPT1:"}, {"PDF_A4", "FILE:"}}, 0};
};

TEST_F(PrinterForm, TakesArrowsAndEnterAndGivesTheHostBack) {
  bool ownerWasEnabled = true;
  HWND owner = nullptr;
  std::string focus;
  EXPECT_EQ(choose({[&](HWND form) {
                      owner = GetWindow(form, GW_OWNER);
                      ownerWasEnabled = IsWindowEnabled(host().handle()) != FALSE;
                      focus = controlNameOf(GetFocus());
                      press(VK_DOWN);
                    },
                    keys({VK_RETURN})}),
            "2");
  EXPECT_EQ(listed.currentPrinter(), 2);
  EXPECT_EQ(owner, host().handle());
  EXPECT_FALSE(ownerWasEnabled);
  EXPECT_EQ(focus, "Cbo_Imprimante");
  EXPECT_TRUE(IsWindowEnabled(host().handle()));
  EXPECT_EQ(GetFocus(), host().find("Txt_Box"));
  EXPECT_EQ(GetForegroundWindow(), host().handle());
  EXPECT_EQ(modeless_, (std::vector<bool>{false, true}));
  EXPECT_EQ(openForm(L"Imprimer"), nullptr);
}

TEST_F(PrinterForm, OffersThePagePrintersAlone) {
  std::vector<std::wstring> lines;
  bool hidden = false;
  choose({[&](HWND form) {
            HWND combo = child(form, "Cbo_Imprimante");
            for (int i = 0; i < SendMessageW(combo, CB_GETCOUNT, 0, 0); ++i) {
              wchar_t line[64] = {};
              SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(i),
                           reinterpret_cast<LPARAM>(line));
              lines.emplace_back(line);
            }
            hidden = !IsWindowVisible(child(form, "Cbo_ImpSelect"));
          },
          keys({VK_ESCAPE})});
  EXPECT_EQ(lines, (std::vector<std::wstring>{L"LASER", L"PDF_A4"}));
  EXPECT_TRUE(hidden);
}

TEST_F(PrinterForm, ShowsPortAndStateOfWhatTheArrowsChoose) {
  std::vector<std::wstring> shown;
  const Step read = [&](HWND form) {
    shown.push_back(textOf(child(form, "Etq_Ou")));
    shown.push_back(textOf(child(form, "Etq_Etat")));
  };
  choose({read, keys({VK_DOWN}), read, keys({VK_UP}), read, keys({VK_ESCAPE})});
  const std::wstring isDefault = L"Imprimante par d\u00E9faut";
  EXPECT_EQ(shown,
            (std::vector<std::wstring>{L"USB001", isDefault, L"FILE:", L"", L"USB001", isDefault}));
}

TEST_F(PrinterForm, ALetterChoosesThePrinterThatStartsWithIt) {
  EXPECT_EQ(choose({keys({'P'}), keys({VK_RETURN})}), "2");
}

TEST_F(PrinterForm, EscapeAndTheTitleBarRefuse) {
  EXPECT_EQ(choose({keys({VK_DOWN}), keys({VK_ESCAPE})}), "-1");
  EXPECT_EQ(
      choose({keys({VK_DOWN}), [](HWND form) { PostMessageW(form, WM_SYSCOMMAND, SC_CLOSE, 0); }}),
      "-1");
  EXPECT_EQ(listed.currentPrinter(), 0);
}

TEST_F(PrinterForm, TheButtonsAreClicked) {
  EXPECT_EQ(choose({keys({VK_DOWN}), [](HWND form) { clickOn(child(form, "Cmd_Annuler")); }}),
            "-1");
  EXPECT_EQ(choose({keys({VK_DOWN}), [](HWND form) { clickOn(child(form, "Cmd_Ok")); }}), "2");
}

TEST_F(PrinterForm, MnemonicsReachTheListAndTheButtons) {
  const auto alt = [](WORD letter) { return [letter](HWND) { press(letter, VK_MENU); }; };
  std::string focus;
  EXPECT_EQ(choose({keys({VK_TAB, VK_TAB}), alt('N'),
                    [&](HWND) { focus = controlNameOf(GetFocus()); }, alt('A')}),
            "-1");
  EXPECT_EQ(focus, "Cbo_Imprimante");
  EXPECT_EQ(choose({keys({VK_DOWN}), alt('O')}), "2");
}

TEST_F(PrinterForm, EnterAndEscapeCloseAnOpenListFirst) {
  std::vector<bool> dropped;
  const Step look = [&](HWND form) {
    dropped.push_back(SendMessageW(child(form, "Cbo_Imprimante"), CB_GETDROPPEDSTATE, 0, 0) != 0);
  };
  const Step open = [](HWND) { press(VK_DOWN, VK_MENU); };
  EXPECT_EQ(choose({open, look, keys({VK_DOWN}), keys({VK_RETURN}), look, open, look,
                    keys({VK_ESCAPE}), look, keys({VK_RETURN})}),
            "2");
  EXPECT_EQ(dropped, (std::vector<bool>{true, false, true, false}));
}

TEST_F(PrinterForm, TheListHasRoomForLongNamesAndNoTextIsCut) {
  ListedPrinters long_{*desktop, {{"LASER", "192.168.100.200_PORT_9100"}}, 0};
  const FormUser user(L"Imprimer", {[](HWND form) {
                                      for (const char* name :
                                           {"Fra_Imprimante", "Etq_Nom", "Etq_LibEtat", "Etq_Etat",
                                            "Etq_LibOu", "Etq_Ou", "Cmd_Ok", "Cmd_Annuler"}) {
                                        expectTextFits(child(form, name));
                                      }
                                      RECT combo{};
                                      GetClientRect(child(form, "Cbo_Imprimante"), &combo);
                                      EXPECT_GE(combo.right, 250);
                                    },
                                    keys({VK_ESCAPE})});
  forms::choisirImprimanteA4(long_);
}

TEST_F(PrinterForm, WithoutAPagePrinterCanOnlyBeRefused) {
  ListedPrinters none{*desktop, {{"MATRICIELLE", "LPT1:"}}, 0};
  bool okEnabled = true;
  bool stillOpen = false;
  const FormUser user(L"Imprimer", {[&](HWND form) {
                                      okEnabled = IsWindowEnabled(child(form, "Cmd_Ok")) != FALSE;
                                      press(VK_RETURN);
                                    },
                                    [&](HWND) {
                                      stillOpen = true;
                                      press(VK_ESCAPE);
                                    }});
  EXPECT_EQ(forms::choisirImprimanteA4(none), "-1");
  EXPECT_FALSE(okEnabled);
  EXPECT_TRUE(stillOpen);
}

TEST_F(PrinterForm, AControlClosedMeanwhileChoosesNothing) {
  EXPECT_THROW(choose({[this](HWND) {
                 closed_ = true;
                 press(VK_DOWN);
                 press(VK_RETURN);
               }}),
               ControlClosed);
  EXPECT_EQ(listed.currentPrinter(), 0);
  EXPECT_EQ(modeless_, (std::vector<bool>{false, true}));
}

class LostHost : public Desktops {
 protected:
  void SetUp() override { host(TestHost::TopLevel::Own); }
};

TEST_F(LostHost, EndsTheChoiceOfAPrinter) {
  ListedPrinters listed{*desktop, {{"LASER", "USB001"}, {"PDF_A4", "FILE:"}}, 0};
  const FormUser user(L"Imprimer", {[this](HWND) {
                        press(VK_DOWN);
                        host().destroyWindow();
                      }});
  EXPECT_THROW(forms::choisirImprimanteA4(listed), ControlClosed);
  EXPECT_EQ(listed.currentPrinter(), 0);
  EXPECT_EQ(modeless_, (std::vector<bool>{false, true}));
  EXPECT_EQ(openForm(L"Imprimer"), nullptr);
}

TEST_F(LostHost, TakesTheWaitingWindowAlong) {
  std::optional<forms::Frm_Anim> waiting(*desktop);
  HWND form = openForm(kWaiting);
  ASSERT_NE(form, nullptr);
  host().destroyWindow();
  closed_ = true;
  EXPECT_FALSE(IsWindow(form));
  EXPECT_THROW(desktop->doEvents(), ControlClosed);
  EXPECT_NO_THROW(waiting.reset());
}

class WaitingForm : public Desktops {
 protected:
  void SetUp() override { host(); }
};

TEST_F(WaitingForm, IsPaintedBeforeTheWorkStarts) {
  const forms::Frm_Anim waiting(*desktop);
  HWND form = openForm(kWaiting);
  ASSERT_NE(form, nullptr);
  HWND label = child(form, "Label1");
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(textOf(label), L"Merci de patienter...");
  expectTextFits(label);
  EXPECT_FALSE(GetUpdateRect(form, nullptr, FALSE));
  EXPECT_FALSE(GetUpdateRect(label, nullptr, FALSE));
  EXPECT_GT(pixelsDrawn(label), 100);
}

TEST_F(WaitingForm, BelongsToTheHostAndLeavesItTheKeyboard) {
  std::optional<forms::Frm_Anim> waiting(*desktop);
  HWND form = openForm(kWaiting);
  EXPECT_EQ(GetWindow(form, GW_OWNER), host().handle());
  EXPECT_TRUE(IsWindowEnabled(host().handle()));
  EXPECT_EQ(GetForegroundWindow(), host().handle());
  EXPECT_EQ(GetFocus(), host().find("Txt_Box"));
  EXPECT_TRUE(modeless_.empty());
  waiting.reset();
  EXPECT_FALSE(IsWindow(form));
  EXPECT_EQ(GetFocus(), host().find("Txt_Box"));
}

TEST_F(WaitingForm, WhatIsTypedIntoTheDisabledControlMeanwhileIsLost) {
  {
    surface.setEnabled(false);
    const forms::Frm_Anim waiting(*desktop);
    press('A');
    clickOn(host().find("Txt_Box"));
    desktop->doEvents();
    EXPECT_NE(openForm(kWaiting), nullptr);
  }
  surface.setEnabled(true);
  host().pump();
  EXPECT_EQ(box.text(), "");
}

TEST_F(WaitingForm, HasNoCloseButtonAndStaysWhenItIsToldToClose) {
  const forms::Frm_Anim waiting(*desktop);
  HWND form = openForm(kWaiting);
  EXPECT_EQ(GetWindowLongW(form, GWL_STYLE) & WS_SYSMENU, 0);
  PostMessageW(form, WM_SYSCOMMAND, SC_CLOSE, 0);
  desktop->doEvents();
  EXPECT_TRUE(IsWindowVisible(form));
}

TEST_F(WaitingForm, GoesQuietlyOfAClosedControl) {
  std::optional<forms::Frm_Anim> waiting(*desktop);
  HWND form = openForm(kWaiting);
  closed_ = true;
  EXPECT_NO_THROW(waiting.reset());
  EXPECT_FALSE(IsWindow(form));
}

TEST_F(WaitingForm, IsNotShownOfAClosedControl) {
  closed_ = true;
  EXPECT_THROW(forms::Frm_Anim{*desktop}, ControlClosed);
  EXPECT_EQ(openForm(kWaiting), nullptr);
}

}  // namespace
}  // namespace toolkit::test
