// The rows of rates, deductions and scales as a user opens, changes and leaves them, and what is
// locked meanwhile.
#include "tests/windows/lifecycle/PagesTest.h"

namespace lifecycle {
namespace {

constexpr const wchar_t* kDeleteRow = L"Etes-vous sûr de vouloir supprimer cette ligne ?";

std::wstring values(const std::vector<std::wstring>& all) {
  std::wstring text;
  for (const std::wstring& value : all) {
    if (!text.empty()) text += container::kValueMark;
    text += value;
  }
  return text;
}

// What is open beside a row: the bar's fields and buttons.
const std::vector<std::wstring> kBar = {L"Txt_CodOrgChg", L"Cbo_SigleOrgChg", L"Cmd_Ajouter",
                                        L"Cmd_Supprimer", L"Cmd_OK",          L"Cmd_Annuler",
                                        L"Cmd_Sortir"};

class RowEditor : public PagesTest {
 protected:
  void store(int attribute, const std::vector<std::wstring>& all) {
    store_.set(L"ORGPRISECHARGE", L"001", static_cast<size_t>(attribute), values(all));
  }
  void expectStored(int attribute, const std::vector<std::wstring>& all) {
    EXPECT_EQ(stored(L"001", attribute), values(all)) << attribute;
  }
  // Types the code and goes to a tab by its letter.
  void load(wchar_t letter, int tab) {
    user().type(L"001");
    ASSERT_EQ(user().text(L"Txt_CodOrgChg"), L"001");
    user().alt(letter);
    ASSERT_EQ(user().tab(), tab);
  }
  void save() {
    user().alt(L'o');
    EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"");
  }
  // One text a zone; Enter presses the button after the last.
  void enterZones(const Lines& texts, const wchar_t* button) {
    for (const std::wstring& text : texts) {
      user().retype(text);
      user().key(VK_TAB);
    }
    ASSERT_EQ(user().focused(), button);
    user().key(VK_RETURN);
  }
  // From the add button or from a list: a row chosen in the first list, and opened.
  void openRow(const wchar_t* list, int row) {
    if (user().focused() != list) user().key(VK_TAB, true);
    ASSERT_EQ(user().focused(), list);
    user().key(VK_HOME);
    for (int i = 0; i < row; ++i) user().key(VK_DOWN);
    user().key(VK_RETURN);
  }
  std::vector<bool> bar() {
    std::vector<bool> open;
    for (const std::wstring& name : kBar) open.push_back(user().enabled(name));
    return open;
  }
  // No way leads to another page while a row is open, and none to another body.
  void expectLocked(int tab) {
    EXPECT_EQ(bar(), std::vector<bool>(kBar.size(), false));
    for (const wchar_t letter : std::wstring(L"rgpfbv")) {
      user().alt(letter);
      EXPECT_EQ(user().tab(), tab) << static_cast<char>(letter);
    }
    user().key(VK_NEXT, false, true);
    EXPECT_EQ(user().tab(), tab);
    user().key(VK_PRIOR, false, true);
    EXPECT_EQ(user().tab(), tab);
    for (int other = kCoordonnees; other <= kActivites; ++other) {
      user().clickTab(other);
      EXPECT_EQ(user().tab(), tab) << other;
    }
  }
  void expectOpen(int tab, const std::vector<bool>& before) {
    EXPECT_EQ(bar(), before);
    for (int other = kCoordonnees; other <= kActivites; ++other) {
      user().clickTab(other);
      EXPECT_EQ(user().tab(), other);
    }
    user().clickTab(tab);
    user().key(VK_NEXT, false, true);
    EXPECT_EQ(user().tab(), tab + 1);
    user().key(VK_PRIOR, false, true);
    EXPECT_EQ(user().tab(), tab);
  }
};

// Rates -------------------------------------------------------------------------------------------

class Rates : public RowEditor {
 protected:
  void loadRates() {
    load(L'p', kPriseEnCharge);
    user().alt(L'x');
    ASSERT_EQ(user().focused(), L"Lst_DateRembOrgChg");
  }
  void add(const Lines& texts) {
    user().alt(L'j');
    ASSERT_EQ(user().focused(), L"Txt_DateRembOrgChg");
    enterZones(texts, L"Cmd_OKTaux");
  }
  // So many rates, of the years before 2026.
  void storeRates(int count) {
    std::vector<std::wstring> days;
    for (int i = 0; i < count; ++i) days.push_back(std::to_wstring(21186 - 400 * i));
    const auto all = static_cast<size_t>(count);
    store(25, days);
    store(26, std::vector<std::wstring>(all, L"2000"));
    store(27, std::vector<std::wstring>(all, L"2500"));
    store(28, std::vector<std::wstring>(all, L"1500"));
  }
  int width(const wchar_t* name) {
    RECT place = {};
    GetWindowRect(user().find(name), &place);
    return static_cast<int>(place.right - place.left);
  }
  int topLine(const wchar_t* name) {
    return static_cast<int>(SendMessageW(user().find(name), LB_GETTOPINDEX, 0, 0));
  }
  const std::vector<const wchar_t*> lists_ = {L"Lst_DateRembOrgChg", L"Lst_TxRembOrgChg",
                                              L"Lst_TxRembMajOrgChg", L"Lst_PrestServOrgChg"};
};

INSTANTIATE_TEST_SUITE_P(In, Rates, everywhere(), nameOfParam);

TEST_P(Rates, AreAddedByKeyboard) {
  loadRates();
  add({L"01012027", L"21,5", L"26", L"16"});
  EXPECT_EQ(user().focused(), L"Cmd_AjoutTaux");
  EXPECT_EQ(user().lines(L"Lst_DateRembOrgChg"), (Lines{L"01/01/2027", L"01/01/2026"}));
  EXPECT_EQ(user().lines(L"Lst_TxRembOrgChg"), (Lines{L"21,50", L"20,00"}));
  save();
  expectStored(attribut::DateRembOrgChg, {L"21551", L"21186"});
  expectStored(attribut::TxRembOrgChg, {L"2150", L"2000"});
  expectStored(attribut::TxRembMajOrgChg, {L"2600", L"2500"});
  expectStored(attribut::PrestServOrgChg, {L"1600", L"1500"});
}

TEST_P(Rates, AreOpenedByEnterInTheListAndChanged) {
  loadRates();
  add({L"01012027", L"21,5", L"26", L"16"});
  openRow(L"Lst_DateRembOrgChg", 0);
  EXPECT_EQ(user().focused(), L"Txt_DateRembOrgChg");
  EXPECT_EQ(user().text(L"Txt_DateRembOrgChg"), L"01/01/2027");
  EXPECT_EQ(user().text(L"Txt_TxRembOrgChg"), L"21,5");
  user().key(VK_TAB);
  user().retype(L"22");
  user().alt(L'k');
  EXPECT_EQ(user().focused(), L"Lst_DateRembOrgChg");
  EXPECT_EQ(user().lines(L"Lst_TxRembOrgChg"), (Lines{L"22,00", L"20,00"}));
  save();
  expectStored(attribut::DateRembOrgChg, {L"21551", L"21186"});
  expectStored(attribut::TxRembOrgChg, {L"2200", L"2000"});
}

TEST_P(Rates, AreDeletedByKeyboardAfterAQuestion) {
  loadRates();
  add({L"01012027", L"21,5", L"26", L"16"});
  openRow(L"Lst_DateRembOrgChg", 0);
  boxes().expect(kDeleteRow, kQuestion, L"YESNO", IDNO);
  user().alt(L'm');
  EXPECT_EQ(user().lines(L"Lst_DateRembOrgChg").size(), 2U);
  boxes().expect(kDeleteRow, kQuestion, L"YESNO", IDYES);
  user().alt(L'm');
  EXPECT_EQ(boxes().report(), "");
  EXPECT_EQ(user().lines(L"Lst_DateRembOrgChg"), (Lines{L"01/01/2026"}));
  EXPECT_EQ(user().focused(), L"Cmd_AjoutTaux");
  save();
  expectStored(attribut::DateRembOrgChg, {L"21186"});
  expectStored(attribut::TxRembOrgChg, {L"2000"});
}

TEST_P(Rates, BeingAddedAreLeftByEscapeAfterAQuestion) {
  loadRates();
  user().alt(L'j');
  user().type(L"0101");
  boxes().expect(kLeaveCreation, kQuestion, L"YESNO", IDNO);
  user().key(VK_ESCAPE);
  EXPECT_EQ(boxes().report(), "");
  EXPECT_TRUE(user().enabled(L"Txt_DateRembOrgChg"));
  EXPECT_EQ(user().focused(), L"Txt_DateRembOrgChg");
  boxes().expect(kLeaveCreation, kQuestion, L"YESNO", IDYES);
  user().key(VK_ESCAPE);
  EXPECT_EQ(boxes().report(), "");
  EXPECT_FALSE(user().enabled(L"Txt_DateRembOrgChg"));
  EXPECT_EQ(user().text(L"Txt_DateRembOrgChg"), L"");
  EXPECT_EQ(user().focused(), L"Cmd_AjoutTaux");
  EXPECT_EQ(user().lines(L"Lst_DateRembOrgChg"), (Lines{L"01/01/2026"}));
}

TEST_P(Rates, BeingChangedAreLeftByEscapeAtOnce) {
  loadRates();
  openRow(L"Lst_DateRembOrgChg", 0);
  ASSERT_EQ(user().focused(), L"Txt_DateRembOrgChg");
  user().retype(L"02022027");
  user().key(VK_ESCAPE);
  EXPECT_EQ(boxes().report(), "");
  EXPECT_FALSE(user().enabled(L"Txt_DateRembOrgChg"));
  EXPECT_EQ(user().focused(), L"Cmd_AjoutTaux");
  EXPECT_EQ(user().lines(L"Lst_DateRembOrgChg"), (Lines{L"01/01/2026"}));
}

TEST_P(Rates, FromTheThirteenthOnShowTheScrollBarBesideAWiderList) {
  storeRates(12);
  loadRates();
  const int before = width(L"Lst_PrestServOrgChg");
  EXPECT_FALSE(user().visible(L"Bdv_TauxOrgChg"));
  add({L"01012027", L"21,5", L"26", L"16"});
  EXPECT_EQ(user().lines(L"Lst_PrestServOrgChg").size(), 13U);
  EXPECT_TRUE(user().visible(L"Bdv_TauxOrgChg"));
  const auto dots = static_cast<int>(GetDpiForWindow(user().find(L"Lst_PrestServOrgChg")));
  constexpr int kTwips = 240;
  EXPECT_EQ(width(L"Lst_PrestServOrgChg") - before, MulDiv(kTwips, dots, 1440));
}

TEST_P(Rates, AreScrolledTogetherByTheWheelOverAnyList) {
  storeRates(30);
  loadRates();
  for (const wchar_t* turned : lists_) {
    user().clickLine(turned, 0);
    user().wheel(turned, 1);
    const int top = topLine(turned);
    EXPECT_GT(top, 0);
    for (const wchar_t* list : lists_) EXPECT_EQ(topLine(list), top);
    user().wheel(turned, -1);
    for (const wchar_t* list : lists_) EXPECT_EQ(topLine(list), 0);
  }
}

TEST_P(Rates, LockTheRestWhileOneIsOpen) {
  loadRates();
  const std::vector<bool> before = bar();
  openRow(L"Lst_DateRembOrgChg", 0);
  expectLocked(kPriseEnCharge);
  for (const wchar_t* name : {L"Cmd_AjoutTaux", L"Cmd_AjoutAbat", L"Lst_DateRembOrgChg"}) {
    EXPECT_FALSE(user().enabled(name));
  }
  user().click(L"Cmd_AnnulerTaux");
  expectOpen(kPriseEnCharge, before);
  EXPECT_TRUE(user().enabled(L"Cmd_AjoutTaux"));
  EXPECT_TRUE(user().enabled(L"Cmd_AjoutAbat"));
  EXPECT_TRUE(user().enabled(L"Lst_DateRembOrgChg"));
}

// Deductions --------------------------------------------------------------------------------------

class Deductions : public RowEditor {};

INSTANTIATE_TEST_SUITE_P(In, Deductions, everywhere(), nameOfParam);

TEST_P(Deductions, AreAddedChangedAndDeletedByKeyboard) {
  load(L'p', kPriseEnCharge);
  const std::vector<bool> before = bar();
  for (const Lines& row : {Lines{L"10", L"20,5", L"25"}, Lines{L"0", L"10", L"50"}}) {
    user().alt(L't');
    ASSERT_EQ(user().focused(), L"Txt_DebAbatHOrgChg");
    enterZones(row, L"Cmd_OKAbat");
    EXPECT_EQ(user().focused(), L"Cmd_AjoutAbat");
  }
  EXPECT_EQ(user().lines(L"Lst_DebAbatHOrgChg"), (Lines{L"0,00", L"10,00"}));
  openRow(L"Lst_DebAbatHOrgChg", 1);
  EXPECT_EQ(user().text(L"Txt_FinAbatHOrgChg"), L"20,5");
  expectLocked(kPriseEnCharge);
  user().click(L"Txt_FinAbatHOrgChg");
  user().retype(L"15");
  user().alt(L'k');
  expectOpen(kPriseEnCharge, before);
  user().clickLine(L"Lst_DebAbatHOrgChg", 0);
  openRow(L"Lst_DebAbatHOrgChg", 0);
  boxes().expect(kDeleteRow, kQuestion, L"YESNO", IDYES);
  user().alt(L'm');
  EXPECT_EQ(boxes().report(), "");
  user().alt(L't');
  boxes().expect(kLeaveCreation, kQuestion, L"YESNO", IDYES);
  user().key(VK_ESCAPE);
  EXPECT_EQ(boxes().report(), "");
  EXPECT_EQ(user().focused(), L"Cmd_AjoutAbat");
  save();
  expectStored(attribut::DebAbatHOrgChg, {L"1000"});
  expectStored(attribut::FinAbatHOrgChg, {L"1500"});
  expectStored(attribut::PourcentAbatOrgChg, {L"2500"});
}

// Scales ------------------------------------------------------------------------------------------

class Scale : public RowEditor {
 protected:
  void SetUp() override {
    RowEditor::SetUp();
    for (const int start : {attribut::DebRevSeulOrgChg, attribut::DebRevMenOrgChg})
      store(start, {L"0", L"10000"});
    for (const int end : {attribut::FinRevSeulOrgChg, attribut::FinRevMenOrgChg})
      store(end, {L"10000", L"20000"});
    store(37, {L"100", L"200"});
    store(39, {L"21186"});
  }
  void startNewScale() {
    boxes().expect(kNewScale, kQuestion, L"YESNO", IDYES);
    user().alt(L'm');
    ASSERT_EQ(boxes().report(), "");
    ASSERT_EQ(user().focused(), L"Txt_DatBaremCours");
    user().type(L"01022026");
    user().key(VK_TAB);
  }
  void changeFirstRow() {
    openRow(L"Lst_BaremCoursOrgChg", 0);
    ASSERT_EQ(user().focused(), L"Txt_BaremCoursOrgChg");
    EXPECT_FALSE(user().enabled(L"Txt_DebRevSeulOrgChg"));
    enterZones({L"1,25"}, L"Cmd_OKPart");
  }
};

INSTANTIATE_TEST_SUITE_P(In, Scale, everywhere(), nameOfParam);

TEST_P(Scale, OfAnotherDateIsEnteredByKeyboard) {
  load(L'f', kParticipation);
  startNewScale();
  EXPECT_EQ(user().text(L"Cmd_NouveauBareme"), L"Annuler barè&me");
  EXPECT_EQ(user().lines(L"Lst_BaremPrecOrgChg"), (Lines{L"1,00", L"2,00"}));
  changeFirstRow();
  EXPECT_EQ(user().lines(L"Lst_BaremCoursOrgChg"), (Lines{L"1,25", L"2,00"}));
  boxes().expect(kUpdate, kExclamation, L"YESNO", IDNO);
  save();
  expectStored(attribut::BaremPrecOrgChg, {L"100", L"200"});
  expectStored(attribut::BaremCoursOrgChg, {L"125", L"200"});
  expectStored(attribut::DatBaremPrec, {L"21186"});
  expectStored(attribut::DatBaremCours, {L"21217"});
}

TEST_P(Scale, ThatIsCancelledGivesBackTheOneBefore) {
  load(L'f', kParticipation);
  boxes().expect(kNewScale, kQuestion, L"YESNO", IDNO);
  user().alt(L'm');
  EXPECT_EQ(boxes().report(), "");
  EXPECT_EQ(user().text(L"Cmd_NouveauBareme"), L"Nouveau barè&me");
  startNewScale();
  changeFirstRow();
  user().alt(L'm');
  EXPECT_EQ(user().text(L"Cmd_NouveauBareme"), L"Nouveau barè&me");
  EXPECT_EQ(user().lines(L"Lst_BaremPrecOrgChg"), (Lines{L"", L""}));
  EXPECT_EQ(user().lines(L"Lst_BaremCoursOrgChg"), (Lines{L"1,00", L"2,00"}));
  EXPECT_EQ(user().text(L"Txt_DatBaremCours"), L"01/01/2026");
  EXPECT_FALSE(user().enabled(L"Txt_DatBaremCours"));
  save();
  expectStored(attribut::BaremCoursOrgChg, {L"100", L"200"});
  expectStored(attribut::DatBaremCours, {L"21186"});
}

TEST_P(Scale, LocksTheRestWhileARowIsOpen) {
  load(L'f', kParticipation);
  const std::vector<bool> before = bar();
  user().alt(L'l');
  openRow(L"Lst_DebRevSeulOrgChg", 1);
  EXPECT_EQ(user().text(L"Txt_DebRevSeulOrgChg"), L"100");
  expectLocked(kParticipation);
  EXPECT_FALSE(user().enabled(L"Cmd_NouveauBareme"));
  user().click(L"Txt_BaremCoursOrgChg");
  user().key(VK_ESCAPE);
  EXPECT_EQ(boxes().report(), "");
  expectOpen(kParticipation, before);
  EXPECT_TRUE(user().enabled(L"Cmd_NouveauBareme"));
}

}  // namespace
}  // namespace lifecycle
