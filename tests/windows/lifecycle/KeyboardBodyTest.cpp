// A body entered on all six pages without the mouse, kept in a store on disk and found again.
#include "tests/windows/lifecycle/PagesTest.h"

namespace lifecycle {
namespace {

class ByKeyboard : public DiskTest, public testing::WithParamInterface<Where> {
 protected:
  Where where() const override { return GetParam(); }
  void fill() override {
    DiskTest::fill();
    store_.put(L"NATUREVOIE", L"R", L"Rue");
  }

  void tab() { user().key(VK_TAB); }
  // Into the field that has the focus and into those after it.
  void typeInto(const Lines& texts) {
    for (const std::wstring& text : texts) {
      user().type(text);
      tab();
    }
  }
  void press(const wchar_t* focused) {
    EXPECT_EQ(user().focused(), focused);
    user().key(VK_SPACE);
  }
  // The first lines of the list that has the focus, and the button after it.
  void moveLines(int count, const wchar_t* button) {
    user().key(VK_HOME);
    for (int i = 1; i < count; ++i) user().key(VK_DOWN, true);
    tab();
    press(button);
  }

  void enterAddress();
  void enterActivities();
  void enterRules();
  void enterAccounts();
  void enterCoverage();
  void enterParticipation();
  void enterSlip();
};

INSTANTIATE_TEST_SUITE_P(In, ByKeyboard, everywhere(), nameOfParam);

void ByKeyboard::enterAddress() {
  user().alt(L'l');
  typeInto({L"Caisse au clavier", L"Entrée B", L"12", L"Rue", L"des Lilas", L"Le Bourg", L"63000",
            L"Clermont", L"0400000001", L"0400000002", L"a@b.example", L"Mme Durand"});
  EXPECT_EQ(user().focused(), L"Txt_InterlocFactOrgChg");
  user().type(L"M. Petit");
}

void ByKeyboard::enterActivities() {
  user().alt(L'v');
  ASSERT_EQ(user().tab(), kActivites);
  user().alt(L'j');
  user().type(L"100");
  EXPECT_EQ(user().text(L"Cbo_Entite"), L"ASSOCIATION DE TEST");
  user().alt(L'l');
  user().key(VK_HOME);
  user().key(VK_DOWN);
  user().key(VK_DOWN);
  user().key(VK_DOWN, true);
  tab();
  press(L"Cmd_PasseDroit");
  user().alt(L'd');
}

void ByKeyboard::enterRules() {
  user().alt(L'g');
  ASSERT_EQ(user().tab(), kRegles);
  user().alt(L'y');
  press(L"Opt_TypePrincipalOrgChg");
  tab();
  EXPECT_EQ(user().focused(), L"Opt_PlafGlobalOrgChg");
  user().key(VK_DOWN);
  EXPECT_TRUE(user().checked(L"Opt_PlafMensOrgChg"));
  tab();
  press(L"Cac_DemAccordOrgChg");
  tab();
  press(L"Cac_FactAnticip");
  tab();
  EXPECT_EQ(user().focused(), L"Cbo_RenouvOrgChg");
  user().retype(L"Renouvellement à - 2 mois");
  tab();
  moveLines(2, L"Cmd_DroiteRenouv");
  user().alt(L'q');
  user().key(VK_DOWN);
  tab();
  user().retype(L"Trimestrielle");
  tab();
  press(L"Cac_LettresInfo");
  enterAccounts();
}

// One by its name in the list of those that begin so, one that alone begins so, one in full.
void ByKeyboard::enterAccounts() {
  user().alt(L'd');
  user().type(L"41");
  user().key(VK_RETURN);
  user().key(VK_DOWN);
  user().key(VK_RETURN);
  tab();
  user().type(L"706");
  tab();
  tab();
  user().type(L"7080000000");
}

void ByKeyboard::enterCoverage() {
  user().alt(L'p');
  ASSERT_EQ(user().tab(), kPriseEnCharge);
  user().alt(L'h');
  user().alt(L'x');
  user().alt(L'j');
  typeInto({L"01012026", L"20,5", L"25", L"15"});
  EXPECT_EQ(user().focused(), L"Cmd_OKTaux");
  user().key(VK_RETURN);
  user().alt(L't');
  typeInto({L"0", L"10", L"12,5"});
  EXPECT_EQ(user().focused(), L"Cmd_OKAbat");
  user().key(VK_RETURN);
  user().alt(L'd');
  user().type(L"Prise en charge");
  tab();
  press(L"Cac_AjusTarif");
  tab();
  press(L"Cac_CoutGlobal");
  tab();
  user().type(L"7060000000");
}

void ByKeyboard::enterParticipation() {
  user().alt(L'f');
  ASSERT_EQ(user().tab(), kParticipation);
  user().alt(L'q');
  tab();
  EXPECT_EQ(user().focused(), L"Opt_GestPartMont");
  user().key(VK_UP);
  boxes().expect(L"Souhaitez-vous créer un nouveau barème ?", kQuestion, L"YESNO", IDYES);
  user().alt(L'm');
  user().type(L"01022026");
  user().alt(L'j');
  typeInto({L"0", L"100", L"0", L"150", L"1,25"});
  EXPECT_EQ(user().focused(), L"Cmd_OKPart");
  user().key(VK_RETURN);
  press(L"Cmd_AjoutPart");
  typeInto({L"100", L"200", L"150", L"300", L"2,5"});
  EXPECT_EQ(user().focused(), L"Cmd_OKPart");
  user().key(VK_RETURN);
}

void ByKeyboard::enterSlip() {
  user().alt(L'b');
  ASSERT_EQ(user().tab(), kBordereau);
  user().alt(L'l');
  moveLines(2, L"Cmd_DroiteBord");
  user().alt(L'c');
  user().key(VK_HOME);
  user().alt(L'd');
  user().alt(L't');
  moveLines(1, L"Cmd_DroiteTri");
  user().alt(L'y');
  user().key(VK_DOWN);
  EXPECT_TRUE(user().checked(L"Opt_RecapBordOrgChg"));
  user().alt(L'x');
  user().retype(L"3");
  user().alt(L'h');
  user().type(L"TH9");
  tab();
  user().type(L"IM4");
}

TEST_P(ByKeyboard, ABodyIsEnteredOnAllPagesSavedAndFoundByItsAcronym) {
  user().alt(L'a');
  ASSERT_EQ(user().focused(), L"Txt_SigleOrgChg");
  user().type(L"cramif");
  enterAddress();
  enterActivities();
  enterRules();
  enterCoverage();
  enterParticipation();
  enterSlip();
  ASSERT_EQ(boxes().report(), "");
  user().alt(L'o');
  ASSERT_EQ(boxes().report(), "");

  const std::pair<long, std::wstring> expected[] = {
      {attribut::SigleOrgChg, L"CRAMIF"},
      {attribut::RaisonOrgChg, L"Caisse au clavier"},
      {attribut::AdrComplement, L"Entrée B"},
      {attribut::AdrNumero, L"12"},
      {attribut::AdrNatureVoie, L"R"},
      {attribut::AdrVoie, L"des Lilas"},
      {attribut::AdrLocalite, L"Le Bourg"},
      {attribut::AdrCodePostal, L"63000"},
      {attribut::AdrVille, L"Clermont"},
      {attribut::AdrTelephone, L"0400000001"},
      {attribut::AdrFax, L"0400000002"},
      {attribut::AdrMail, L"a@b.example"},
      {attribut::InterlocDossOrgChg, L"Mme Durand"},
      {attribut::InterlocFactOrgChg, L"M. Petit"},
      {attribut::PeriodFactOrgChg, L"T"},
      {attribut::TypeOrgChg, L"P"},
      {attribut::PlafondOrg, L"2"},
      {attribut::RenouvOrgChg, L"2"},
      {attribut::PieceRenouOrgChg, two(L"A", L"B")},
      {attribut::DebitOrgChg, L"4120000000"},
      {attribut::CreditOrgChg, L"7060000000"},
      {attribut::AttribOrgChg, L"H"},
      {attribut::DateRembOrgChg, L"21186"},
      {attribut::TxRembOrgChg, L"2050"},
      {attribut::TxRembMajOrgChg, L"2500"},
      {attribut::PrestServOrgChg, L"1500"},
      {attribut::DebAbatHOrgChg, L"0"},
      {attribut::FinAbatHOrgChg, L"1000"},
      {attribut::PourcentAbatOrgChg, L"1250"},
      {attribut::DebRevSeulOrgChg, two(L"0", L"10000")},
      {attribut::FinRevSeulOrgChg, two(L"10000", L"20000")},
      {attribut::DebRevMenOrgChg, two(L"0", L"15000")},
      {attribut::FinRevMenOrgChg, two(L"15000", L"30000")},
      {attribut::BaremCoursOrgChg, two(L"125", L"250")},
      {attribut::DatBaremCours, L"21217"},
      {attribut::Bareme, L"Q"},
      {attribut::GestPartBenef, L"%"},
      {attribut::StatsOrgChg, L"01"},
      {attribut::DemAccordOrgChg, L"1"},
      {attribut::TypeBordOrgChg, L"R"},
      {attribut::Entite, L"100"},
      {attribut::CodActSelect, two(L"100P03", L"100P04")},
      {attribut::NbExemplOrgChg, L"3"},
      {attribut::IdentMagnetOrgChg, L"IM4"},
      {attribut::GestionExclu, L"1"},
      {attribut::LettresInfo, L"1"},
      {attribut::AjusTarif, L"1"},
      {attribut::CptPrestationService, L"7060000000"},
      {attribut::CoutGlobal, L"1"},
      {attribut::CpteProdAide, L"7080000000"},
      {attribut::FactAnticip, L"1"},
      {attribut::CodeThesaurus, L"TH9"},
      {attribut::DesFacture, L"Prise en charge"},
      {attribut::ParamSelecOrgChg, two(L"1", L"2")},
      {attribut::ParamTriSelect, L"1"}};
  for (const auto& [attribute, text] : expected) {
    EXPECT_EQ(store_.stored(L"ORGPRISECHARGE", L"004", attribute), text) << attribute;
  }
  EXPECT_EQ(store_.stored(L"COMPTEUR", L"999", store::compteur::DernierOrgChg), L"004");

  user().alt(L'i');
  ASSERT_EQ(user().focused(), L"Cbo_SigleOrgChg");
  user().type(L"cramif");
  user().key(VK_RETURN);
  user().key(VK_DOWN);
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"004");
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"Caisse au clavier");
  EXPECT_EQ(user().lines(L"Lst_DateRembOrgChg"), (Lines{L"01/01/2026"}));
  EXPECT_EQ(user().lines(L"Lst_BaremCoursOrgChg"), (Lines{L"1,25", L"2,50"}));
  EXPECT_EQ(user().lines(L"Lst_ParamSelecOrgChg"), (Lines{L"Nom", L"Heures"}));
}

}  // namespace
}  // namespace lifecycle
