// A new scale saved through the built control: agreements updated by a store on disk, letters and
// listing on a printer of the system. What comes out of the printer is read by the script `run`.
#include "host/input/Input.h"
#include "tests/windows/container/FormWatcher.h"
#include "tests/windows/lifecycle/PagesTest.h"

namespace lifecycle {
namespace {

constexpr const wchar_t* kPrinterForm = L"Imprimer";
constexpr const wchar_t* kWaitingForm = L"Mise à jour des accords en cours...";

constexpr const wchar_t* kLetters =
    L"Souhaitez-vous informer par écrit les aidés concernés ?\r\nAttention, ce traitement peut "
    L"durer quelques minutes.";
constexpr const wchar_t* kListing =
    L"Attention : 2 accord(s) n'ont pas pu être modifiés. Voulez-vous en éditer la liste ?";

std::vector<std::wstring> agreement(const wchar_t* beneficiary, const wchar_t* day,
                                    const wchar_t* row, const wchar_t* participation) {
  return {L"001",  beneficiary, L"2000", L"",           L"21186", L"21550", L"100P01", L"", L"",
          L"2000", day,         row,     participation, L"",      L"",      L"",       L"", L""};
}

// Body "001" with a scale of two rows from 01/01/2026 on. Of its four agreements two can be carried
// into a scale of 01/02/2026: 00001001, of a single person, and 00002001, of a household whose
// letters go to a responsible person. 00003001 has no income on file, 00004001 a later period.
void fillWithAgreements(LocalStore& store) {
  container::FakeStore source;
  fillForPages(source);
  const std::pair<size_t, std::wstring> scale[] = {
      {attribut::DebRevSeulOrgChg, two(L"0", L"50000")},
      {attribut::FinRevSeulOrgChg, two(L"50000", L"90000")},
      {attribut::DebRevMenOrgChg, two(L"0", L"80000")},
      {attribut::FinRevMenOrgChg, two(L"80000", L"150000")},
      {attribut::BaremPrecOrgChg, two(L"", L"")},
      {attribut::BaremCoursOrgChg, two(L"200", L"400")},
      {attribut::DatBaremCours, L"21186"}};
  for (const auto& [number, text] : scale) source.set(L"ORGPRISECHARGE", L"001", number, text);
  source.put(L"ACCORD", L"00001001", agreement(L"00001", L"21186", L"1", L"200"));
  source.put(L"ACCORD", L"00002001", agreement(L"00002", L"21186", L"2", L"400"));
  source.put(L"ACCORD", L"00003001", agreement(L"00003", L"21186", L"1", L"200"));
  source.put(L"ACCORD", L"00004001", agreement(L"00004", L"21245", L"1", L"200"));
  source.put(L"ELTSFACTAIDE", L"00001", {L"", L"", L"", L"", L"30000", L"S"});
  source.put(L"ELTSFACTAIDE", L"00002", {L"", L"", L"", L"", L"100000", L"M"});
  source.put(L"ELTSFACTAIDE", L"00004", {L"", L"", L"", L"", L"30000", L"S"});
  const wchar_t* const surnames[] = {L"HERBOTIÈRE", L"FALGUECHARD", L"MONTREDIER", L"URVEMARD"};
  for (int i = 0; i < 4; ++i) {
    source.put(L"CIVILAIDE", L"0000" + std::to_wstring(i + 1),
               {L"2", surnames[i], L"", L"12", L"R", L"DES LILAS", L"", L"63000", L"CLERMONT", L"",
                L"", L"", L"", L"", L"GINETTE"});
  }
  source.put(L"RESPONSABLE", L"00002",
             {L"1", L"ESTRANELLE", L"", L"3", L"R", L"DU PUITS", L"", L"63100", L"RIOM", L"", L"",
              L"", L"", L"", L"PAUL"});
  source.put(L"ASSOCIATION", L"100",
             {L"ASSOCIATION DE TEST", L"", L"", L"8", L"R", L"HAUTE", L"", L"63000", L"CLERMONT"});
  source.put(L"TITRES", L"1", {L"Monsieur", L"M."});
  source.put(L"TITRES", L"2", {L"Madame", L"Mme"});
  source.put(L"NATUREVOIE", L"R", {L"rue"});
  source.put(L"CONSTANTESPAIE", L"1", {L"", L"", L"", L"", L"", L"", L"", L"", L"12420"});
  copy(source, store);
}

class NewScale : public DiskTest {
 protected:
  Where where() const override { return Where::Form; }
  void fill() override { fillWithAgreements(store_); }
  void SetUp() override {
    DiskTest::SetUp();
    forms_.letPass(kWaitingForm);
  }
  void TearDown() override {
    DiskTest::TearDown();
    EXPECT_EQ(forms_.report(), "");
  }

  container::HostWindow& window() { return hosted_->window; }

  // A new scale from 01/02/2026 on, whose first participation is 2,50.
  void enterScale() {
    user().fill(L"Txt_CodOrgChg", L"001");
    user().clickTab(kParticipation);
    boxes().expect(kNewScale, kQuestion, L"YESNO", IDYES);
    user().click(L"Cmd_NouveauBareme");
    EXPECT_EQ(user().focused(), L"Txt_DatBaremCours");
    user().type(L"01022026");
    user().doubleClickLine(L"Lst_BaremCoursOrgChg", 0);
    user().retype(L"2,5");
    user().click(L"Cmd_OKPart");
    EXPECT_EQ(user().lines(L"Lst_BaremCoursOrgChg"), (Lines{L"2,50", L"4,00"}));
  }
  // The update is wanted, and its letters so.
  void expectQuestions(int letters) {
    boxes().expect(kUpdate, kExclamation, L"YESNO", IDYES);
    boxes().expect(kLetters, kExclamation, L"YESNO", letters);
  }
  // The next choice of a printer is made by this key.
  void choosePrinter(WORD key) {
    forms_.expect(kPrinterForm, [this, key](HWND form) {
      offered_ = container::linesOf(container::childOf(form, L"Cbo_Imprimante"));
      EXPECT_EQ(GetForegroundWindow(), form);
      EXPECT_EQ(IsWindowEnabled(window().handle()), FALSE);
      input::send(input::stroke(key));
    });
  }
  void expectUpdated() {
    EXPECT_EQ(store_.stored(L"ACCORD", L"00001001", store::accord::DatePartAcc),
              two(L"21217", L"21186"));
    EXPECT_EQ(store_.stored(L"ACCORD", L"00001001", store::accord::TrancheAcc), two(L"1", L"1"));
    EXPECT_EQ(store_.stored(L"ACCORD", L"00001001", store::accord::PartBenefAcc),
              two(L"250", L"200"));
    EXPECT_EQ(store_.stored(L"ACCORD", L"00002001", store::accord::PartBenefAcc),
              two(L"400", L"400"));
    EXPECT_EQ(store_.stored(L"ACCORD", L"00003001", store::accord::DatePartAcc), L"21186");
    EXPECT_EQ(store_.stored(L"ACCORD", L"00004001", store::accord::DatePartAcc), L"21245");
    EXPECT_EQ(store_.stored(L"ORGPRISECHARGE", L"001", attribut::DatBaremCours), L"21217");
  }
  void expectListsDeleted() {
    EXPECT_EQ(store_.stored(L"TEMPO", L"ACCORDSMODIFIES001", 1), L"");
    EXPECT_EQ(store_.stored(L"TEMPO", L"ACCORDSLIMITE001", 1), L"");
  }
  void expectOver() {
    expectListsDeleted();
    EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"");
    EXPECT_EQ(user().focused(), L"Txt_CodOrgChg");
    EXPECT_NE(IsWindowEnabled(window().handle()), FALSE);
  }

  container::FormWatcher forms_;
  Lines offered_;
};

using Printed = NewScale;
using Unprinted = NewScale;

TEST_F(Printed, LettersOfTheAgreementsChangedAndAListingOfTheOthers) {
  enterScale();
  choosePrinter(VK_RETURN);
  expectQuestions(IDYES);
  boxes().expect(kListing, kQuestion, L"YESNO", [this](HWND box) {
    EXPECT_EQ(offered_, Lines{L"PDF_A4"});
    offered_.clear();
    choosePrinter(VK_RETURN);
    container::press(box, IDYES);
  });
  user().click(L"Cmd_OK");
  EXPECT_EQ(offered_, Lines{L"PDF_A4"});
  expectUpdated();
  expectOver();
}

TEST_F(Unprinted, ByTheEscapeKeyButUpdated) {
  enterScale();
  choosePrinter(VK_ESCAPE);
  expectQuestions(IDYES);
  boxes().expect(kListing, kQuestion, L"YESNO", [this](HWND box) {
    choosePrinter(VK_ESCAPE);
    container::press(box, IDYES);
  });
  user().click(L"Cmd_OK");
  expectUpdated();
  expectOver();
}

TEST_F(Unprinted, ByTheTitleBarButUpdated) {
  enterScale();
  forms_.expect(kPrinterForm, [](HWND form) { PostMessageW(form, WM_CLOSE, 0, 0); });
  expectQuestions(IDYES);
  boxes().expect(kListing, kQuestion, L"YESNO", IDNO);
  user().click(L"Cmd_OK");
  expectUpdated();
  expectOver();
}

TEST_F(Unprinted, WithoutLettersAsked) {
  enterScale();
  expectQuestions(IDNO);
  boxes().expect(kListing, kQuestion, L"YESNO", IDNO);
  user().click(L"Cmd_OK");
  expectUpdated();
  expectOver();
}

TEST_F(Unprinted, WithoutAnUpdate) {
  enterScale();
  boxes().expect(kUpdate, kExclamation, L"YESNO", IDNO);
  user().click(L"Cmd_OK");
  EXPECT_EQ(store_.stored(L"ORGPRISECHARGE", L"001", attribut::DatBaremCours), L"21217");
  EXPECT_EQ(store_.stored(L"ACCORD", L"00001001", store::accord::DatePartAcc), L"21186");
  expectOver();
}

TEST_F(Unprinted, WhenTheHostGoesDuringTheChoiceOfAPrinter) {
  enterScale();
  boxes().setOwner(nullptr);
  forms_.expect(kPrinterForm, [this](HWND) { window().destroy(); });
  expectQuestions(IDYES);
  user().click(L"Cmd_OK");
  expectUpdated();
  expectListsDeleted();
}

TEST_F(Unprinted, WhenTheHostGoesWhileTheWaitingWindowIsOpen) {
  enterScale();
  boxes().setOwner(nullptr);
  choosePrinter(VK_RETURN);
  forms_.expect(kWaitingForm, [this](HWND) { window().destroy(); });
  expectQuestions(IDYES);
  user().click(L"Cmd_OK");
  EXPECT_EQ(offered_, Lines{L"PDF_A4"});
  expectUpdated();
  expectListsDeleted();
}

}  // namespace
}  // namespace lifecycle
