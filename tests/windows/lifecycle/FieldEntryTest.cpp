// What is typed into a field that the keys lead to, and into one that is clicked; row after row,
// and into a fixed list. Nothing is emptied first.
#include "host/input/Input.h"
#include "tests/windows/lifecycle/PagesTest.h"

namespace lifecycle {
namespace {

class FieldEntry : public PagesTest {
 protected:
  // A rate, and a scale of three rows.
  void SetUp() override {
    PagesTest::SetUp();
    put(attribut::DebRevSeulOrgChg, L"0", L"10000", L"20000");
    put(attribut::FinRevSeulOrgChg, L"10000", L"20000", L"30000");
    put(attribut::DebRevMenOrgChg, L"0", L"10000", L"20000");
    put(attribut::FinRevMenOrgChg, L"10000", L"20000", L"30000");
    put(attribut::BaremCoursOrgChg, L"100", L"200", L"300");
    put(attribut::DatBaremCours, L"21186", L"", L"");
  }
  void put(int attribute, const wchar_t* first, const wchar_t* second, const wchar_t* third) {
    std::wstring text = first;
    if (*second) text += container::kValueMark + std::wstring(second) + container::kValueMark;
    store_.set(L"ORGPRISECHARGE", L"001", static_cast<size_t>(attribute), text + third);
  }
  void tab(bool back = false) { user().key(VK_TAB, back); }
  std::wstring shown(const wchar_t* name) { return user().text(name); }
};

INSTANTIATE_TEST_SUITE_P(In, FieldEntry, everywhere(), nameOfParam);

TEST_P(FieldEntry, ReachedByTabIsTypedOver) {
  show(L"001", kCoordonnees);
  user().click(L"Txt_RaisonOrgChg");
  tab();
  user().type(L"Escalier 2");
  EXPECT_EQ(shown(L"Txt_Complement"), L"Escalier 2");
  tab(true);
  user().type(L"Domus");
  EXPECT_EQ(shown(L"Txt_RaisonOrgChg"), L"Domus");
}

TEST_P(FieldEntry, ReachedByItsLetterIsTypedOver) {
  show(L"001", kCoordonnees);
  user().alt(L'l');
  ASSERT_EQ(user().focused(), L"Txt_RaisonOrgChg");
  user().type(L"Domus");
  EXPECT_EQ(shown(L"Txt_RaisonOrgChg"), L"Domus");
  user().alt(L'l');
  user().type(L"Caritas");
  EXPECT_EQ(shown(L"Txt_RaisonOrgChg"), L"Caritas");
}

TEST_P(FieldEntry, OfAComboBoxIsTypedOverToo) {
  show(L"001", kCoordonnees);
  user().click(L"Txt_NumVoie");
  tab();
  ASSERT_EQ(user().focused(), L"Cbo_NatureVoie");
  user().type(L"Quai");
  EXPECT_EQ(shown(L"Cbo_NatureVoie"), L"Quai");
  tab();
  tab(true);
  user().type(L"Cours");
  EXPECT_EQ(shown(L"Cbo_NatureVoie"), L"Cours");
}

TEST_P(FieldEntry, ClickedHasTheCaretWhereItWasClicked) {
  show(L"001", kCoordonnees);
  user().alt(L'l');
  user().type(L"Caisse");
  user().click(L"Txt_Ville");
  user().click(L"Txt_RaisonOrgChg");
  user().key(VK_HOME);
  user().type(L"1");
  EXPECT_EQ(shown(L"Txt_RaisonOrgChg"), L"1Caisse");
  user().click(L"Txt_Ville");
  user().click(L"Txt_RaisonOrgChg");
  user().type(L"2");
  EXPECT_EQ(shown(L"Txt_RaisonOrgChg").size(), 8U);
}

TEST_P(FieldEntry, RefusedIsTypedOver) {
  show(L"001", kCoordonnees);
  user().alt(L'l');
  user().type(L"é");
  user().key(VK_BACK);
  boxes().expect(kNoName, kExclamation, L"OK", IDOK);
  user().alt(L'o');
  EXPECT_EQ(user().focused(), L"Txt_RaisonOrgChg");
  user().type(L"Domus");
  user().alt(L'o');
  EXPECT_EQ(stored(L"001", attribut::RaisonOrgChg), L"Domus");
  EXPECT_EQ(user().focused(), L"Txt_CodOrgChg");
}

TEST_P(FieldEntry, OfAnOpenedRowIsTypedOver) {
  show(L"001", kParticipation);
  user().doubleClickLine(L"Lst_DebRevSeulOrgChg", 1);
  ASSERT_EQ(user().focused(), L"Txt_DebRevSeulOrgChg");
  user().type(L"150");
  EXPECT_EQ(shown(L"Txt_DebRevSeulOrgChg"), L"150");
  tab();
  user().type(L"250");
  EXPECT_EQ(shown(L"Txt_FinRevSeulOrgChg"), L"250");
}

// Enter, the value, Enter: the amounts of a new scale.
TEST_P(FieldEntry, GoesFromRowToRowByEnter) {
  show(L"001", kParticipation);
  boxes().expect(kNewScale, kQuestion, L"YESNO", IDYES);
  user().alt(L'm');
  user().type(L"01022026");
  user().clickLine(L"Lst_BaremCoursOrgChg", 0);
  for (const wchar_t* amount : {L"1,5", L"2,5", L"3,5"}) {
    user().key(VK_RETURN);
    ASSERT_EQ(user().focused(), L"Txt_BaremCoursOrgChg") << container::narrow(amount);
    user().type(amount);
    user().key(VK_RETURN);
    ASSERT_EQ(user().focused(), L"Lst_BaremCoursOrgChg") << container::narrow(amount);
  }
  EXPECT_EQ(user().lines(L"Lst_BaremCoursOrgChg"), (Lines{L"1,50", L"2,50", L"3,50"}));
  EXPECT_EQ(user().selected(L"Lst_BaremCoursOrgChg"), (std::vector<int>{2}));
}

TEST_P(FieldEntry, OfARowThatIsAddedEndsAtTheAddButton) {
  show(L"002", kParticipation);
  user().alt(L'j');
  ASSERT_EQ(user().focused(), L"Txt_DebRevSeulOrgChg");
  for (const wchar_t* value : {L"300", L"400", L"300", L"400", L"4,5"}) {
    user().type(value);
    if (user().focused() != L"Txt_BaremCoursOrgChg") tab();
  }
  user().key(VK_RETURN);
  EXPECT_EQ(user().focused(), L"Cmd_AjoutPart");
  EXPECT_EQ(user().lines(L"Lst_BaremCoursOrgChg"), (Lines{L"4,50"}));
}

// Enter pressed once too often destroys nothing.
TEST_P(FieldEntry, GoesOnAfterEnterInABoxThatAsksWhetherToLeaveIt) {
  user().alt(L'a');
  user().type(L"CPAM");
  const auto enter = [](HWND) { input::send(input::stroke(VK_RETURN)); };
  boxes().expect(kLeaveCreation, kQuestion, L"YESNO", enter);
  user().alt(L'n');
  EXPECT_EQ(boxes().report(), "");
  EXPECT_EQ(shown(L"Txt_SigleOrgChg"), L"CPAM");
  EXPECT_FALSE(user().enabled(L"Txt_CodOrgChg"));
}

// Fixed lists ---------------------------------------------------------------------------------

TEST_P(FieldEntry, OfAFixedListIsCompleted) {
  show(L"001", kRegles);
  user().click(L"Cbo_RenouvOrgChg");
  tab();
  while (user().focused() != L"Cbo_PeriodFactOrgChg") tab();
  user().type(L"t");
  EXPECT_EQ(shown(L"Cbo_PeriodFactOrgChg"), L"trimestrielle");
  user().type(L"r");
  EXPECT_EQ(shown(L"Cbo_PeriodFactOrgChg"), L"trimestrielle");
  tab();
  EXPECT_EQ(shown(L"Cbo_PeriodFactOrgChg"), L"Trimestrielle");
  user().alt(L'o');
  EXPECT_EQ(stored(L"001", attribut::PeriodFactOrgChg), L"T");
}

// In capitals and accents of its own it is a line of its own.
TEST_P(FieldEntry, OfAFixedListTypedInFullMustBeTheLine) {
  show(L"001", kRegles);
  user().click(L"Cbo_RenouvOrgChg");
  while (user().focused() != L"Cbo_PeriodFactOrgChg") tab();
  user().type(L"mensuelle");
  boxes().expect(L"La période de facturation saisie n'existe pas, veuillez la ressaisir.",
                 kExclamation, L"OK", IDOK);
  tab();
  EXPECT_EQ(user().focused(), L"Cbo_PeriodFactOrgChg");
  EXPECT_EQ(shown(L"Cbo_PeriodFactOrgChg"), L"");
}

TEST_P(FieldEntry, OfAFixedListThatWasLeftShowsNoSelection) {
  show(L"001", kRegles);
  user().click(L"Cbo_RenouvOrgChg");
  while (user().focused() != L"Cbo_PeriodFactOrgChg") tab();
  user().type(L"t");
  tab();
  DWORD from = 0;
  DWORD to = 0;
  const HWND field = FindWindowExW(user().find(L"Cbo_PeriodFactOrgChg"), nullptr, L"Edit", nullptr);
  ASSERT_NE(field, nullptr);
  SendMessageW(field, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
  EXPECT_EQ(from, to);
}

TEST_P(FieldEntry, F4AndAltDownOpenAFixedList) {
  show(L"001", kRegles);
  user().click(L"Cbo_PeriodFactOrgChg");
  user().key(VK_F4);
  EXPECT_TRUE(user().opened(L"Cbo_PeriodFactOrgChg"));
  user().key(VK_F4);
  EXPECT_FALSE(user().opened(L"Cbo_PeriodFactOrgChg"));
  user().key(VK_DOWN, false, false, true);
  EXPECT_TRUE(user().opened(L"Cbo_PeriodFactOrgChg"));
  user().key(VK_ESCAPE);
  EXPECT_FALSE(user().opened(L"Cbo_PeriodFactOrgChg"));
}

}  // namespace
}  // namespace lifecycle
