// The keyboard in containers that forward keys, and in those that never do.
#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {
namespace {

class Keyboard : public ProfileTest {
 protected:
  bool forwards() const { return GetParam().keys != container::Keys::Dialog; }
};

INSTANTIATE_TEST_SUITE_P(In, Keyboard, testing::ValuesIn(container::allProfiles()),
                         [](const auto& given) { return given.param.name; });

TEST_P(Keyboard, TabWalksInOrder) {
  const wchar_t* const order[] = {L"Cbo_SigleOrgChg", L"Cmd_Ajouter", L"Cmd_Sortir"};
  for (const wchar_t* name : order) {
    user().key(VK_TAB);
    EXPECT_EQ(user().focused(), name);
  }
}

TEST_P(Keyboard, ShiftTabWalksBack) {
  user().key(VK_TAB);
  user().key(VK_TAB);
  ASSERT_EQ(user().focused(), L"Cmd_Ajouter");
  user().key(VK_TAB, true);
  EXPECT_EQ(user().focused(), L"Cbo_SigleOrgChg");
  user().key(VK_TAB, true);
  EXPECT_EQ(user().focused(), L"Txt_CodOrgChg");
}

TEST_P(Keyboard, TabReachesEveryFieldOfThePage) {
  load(L"001");
  user().click(L"Txt_RaisonOrgChg");
  const wchar_t* const order[] = {L"Txt_Complement",
                                  L"Txt_NumVoie",
                                  L"Cbo_NatureVoie",
                                  L"Txt_NomVoie",
                                  L"Txt_Localite",
                                  L"Txt_CodePostal",
                                  L"Txt_Ville",
                                  L"Txt_Telephone",
                                  L"Txt_Fax",
                                  L"Txt_Email",
                                  L"Txt_InterlocDossOrgChg",
                                  L"Txt_InterlocFactOrgChg"};
  for (const wchar_t* name : order) {
    user().key(VK_TAB);
    EXPECT_EQ(user().focused(), name);
  }
}

TEST_P(Keyboard, MnemonicsGoToFieldsAndPressButtons) {
  user().alt(L'i');
  EXPECT_EQ(user().focused(), L"Cbo_SigleOrgChg");
  user().alt(L'e');
  EXPECT_EQ(user().focused(), L"Txt_CodOrgChg");
  user().alt(L'a');
  EXPECT_EQ(user().focused(), L"Txt_SigleOrgChg");
  EXPECT_FALSE(user().enabled(L"Txt_CodOrgChg"));
  user().alt(L'l');
  EXPECT_EQ(user().focused(), L"Txt_RaisonOrgChg");
}

TEST_P(Keyboard, AMnemonicTypesNothing) {
  user().alt(L'i');
  user().alt(L'e');
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"");
  EXPECT_EQ(user().text(L"Cbo_SigleOrgChg"), L"");
}

// Whether the host lets the letter through or uses it up itself.
TEST_P(Keyboard, AMnemonicLeavesNoMenuModeWhicheverKeyGoesUpFirst) {
  for (int round = 0; round < 3; ++round) {
    user().crossed(VK_MENU, L'I');
    EXPECT_EQ(user().focused(), L"Cbo_SigleOrgChg") << round;
    user().alt(L'e');
    EXPECT_EQ(user().focused(), L"Txt_CodOrgChg") << round;
  }
  user().crossed(VK_MENU, L'A');
  EXPECT_EQ(user().focused(), L"Txt_SigleOrgChg");
  EXPECT_EQ(control().window.menus(), 0);
}

TEST_P(Keyboard, ADisabledButtonsMnemonicDoesNothing) {
  user().alt(L'o');
  EXPECT_EQ(user().focused(), L"Txt_CodOrgChg");
  EXPECT_EQ(control().state().count("DBWrite"), 0);
}

TEST_P(Keyboard, ArrowsMoveTheCaretInAField) {
  load(L"001");
  user().fill(L"Txt_RaisonOrgChg", L"ab");
  user().key(VK_LEFT);
  user().type(L"c");
  user().key(VK_HOME);
  user().type(L"d");
  user().key(VK_RIGHT);
  user().key(VK_DELETE);
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"dab");
  EXPECT_EQ(user().focused(), L"Txt_RaisonOrgChg");
}

TEST_P(Keyboard, BackspaceDeletes) {
  load(L"001");
  user().fill(L"Txt_RaisonOrgChg", L"abc");
  user().key(VK_BACK);
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"ab");
}

TEST_P(Keyboard, SpaceAndEnterPressAButton) {
  user().key(VK_TAB);
  user().key(VK_TAB);
  ASSERT_EQ(user().focused(), L"Cmd_Ajouter");
  user().key(VK_SPACE);
  EXPECT_EQ(user().focused(), L"Txt_SigleOrgChg");
  boxes().expect(kLeaveCreation, kQuestion, L"YESNO", IDYES);
  user().alt(L'n');
  ASSERT_EQ(user().focused(), L"Txt_CodOrgChg");
  user().key(VK_TAB);
  user().key(VK_TAB);
  ASSERT_EQ(user().focused(), L"Cmd_Ajouter");
  user().key(VK_RETURN);
  EXPECT_EQ(user().focused(), L"Txt_SigleOrgChg");
}

TEST_P(Keyboard, EscapeIsLeftToTheHostAndChangesNothing) {
  user().type(L"00");
  user().key(VK_ESCAPE);
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"00");
  EXPECT_EQ(user().focused(), L"Txt_CodOrgChg");
}

TEST_P(Keyboard, MarkCharactersCannotBeTyped) {
  load(L"001");
  user().fill(L"Txt_RaisonOrgChg", L"aþbýc");
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"abc");
}

TEST_P(Keyboard, AnyOtherCharacterCan) {
  load(L"001");
  user().fill(L"Txt_RaisonOrgChg", L"Œuvre d'été, n° 5 (€)");
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"Œuvre d'été, n° 5 (€)");
  user().click(L"Cmd_OK");
  EXPECT_EQ(control().stored(L"001", attribut::RaisonOrgChg), L"Œuvre d'été, n° 5 (€)");
}

class ForwardedKeys : public ControlTest {};

TEST_F(ForwardedKeys, TabPastTheLastButtonGoesToTheHost) {
  user().click(L"Cbo_SigleOrgChg");
  for (int i = 0; i < 3; ++i) user().key(VK_TAB);
  EXPECT_EQ(GetFocus(), control().window.after());
}

TEST_F(ForwardedKeys, TabAtTheEndGoesToTheHost) {
  user().key(VK_TAB, true);
  EXPECT_EQ(GetFocus(), control().window.before());
  control().host.uiDeactivate();
  MSG tab = {};
  tab.hwnd = control().window.before();
  tab.message = WM_KEYDOWN;
  tab.wParam = VK_TAB;
  control().host.uiActivate(&tab);
  control().host.pump();
  EXPECT_EQ(user().focused(), L"Txt_CodOrgChg");
}

TEST_F(ForwardedKeys, TheListOfMnemonicsHasBothCases) {
  HRESULT result = S_OK;
  const CONTROLINFO info = control().host.controlInfo(&result);
  ASSERT_TRUE(SUCCEEDED(result));
  EXPECT_EQ(info.dwFlags & CTRLINFO_EATS_RETURN, DWORD{CTRLINFO_EATS_RETURN});
  ASSERT_NE(info.hAccel, nullptr);
  std::vector<ACCEL> keys(info.cAccel);
  CopyAcceleratorTableW(info.hAccel, keys.data(), static_cast<int>(keys.size()));
  std::wstring letters;
  for (const ACCEL& key : keys) letters += static_cast<wchar_t>(key.key);
  for (const wchar_t letter : std::wstring(L"AaSsIiEe"))
    EXPECT_NE(letters.find(letter), std::wstring::npos) << static_cast<char>(letter);
  EXPECT_EQ(letters.find(L'O'), std::wstring::npos) << "a disabled button's mnemonic is listed";
}

TEST_F(ForwardedKeys, AChangeOfTheMnemonicsIsTold) {
  const int before = control().host.site().controlInfoChanges();
  load(L"001");
  EXPECT_GT(control().host.site().controlInfoChanges(), before);
}

TEST_F(ForwardedKeys, TheFocusReturnsToTheFieldThatHadIt) {
  load(L"001");
  user().click(L"Txt_Ville");
  user().click(control().window.after());
  EXPECT_EQ(GetFocus(), control().window.after());
  control().host.uiDeactivate();
  control().host.uiActivate();
  control().host.pump();
  EXPECT_EQ(user().focused(), L"Txt_Ville");
}

}  // namespace
}  // namespace lifecycle
