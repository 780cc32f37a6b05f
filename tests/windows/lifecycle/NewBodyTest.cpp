// A body entered on every page and read back from a store on disk, and what agreements forbid.
#include "tests/windows/lifecycle/PagesTest.h"

namespace lifecycle {
namespace {

constexpr const wchar_t* kTypeRefused =
    L"La modification du type d'organisme n'est pas possible car il existe des accords actifs pour "
    L"cet organisme.\r\n"
    L"Merci de contacter VALDRIS si votre volonté est de changer le mode de gestion de cet "
    L"organisme.";
constexpr const wchar_t* kCeilingRefused =
    L"La modification de la gestion du plafond des droits à consommer n'est pas possible car il "
    L"existe des accords actifs pour cet organisme.\r\n"
    L"Merci de contacter VALDRIS si votre volonté est de changer le mode de gestion de cet "
    L"organisme.";

class OnDisk : public DiskTest, public testing::WithParamInterface<Where> {
 protected:
  Where where() const override { return GetParam(); }
  std::wstring stored(const wchar_t* code, long attribute) {
    return store_.stored(L"ORGPRISECHARGE", code, attribute);
  }

  void enterActivities();
  void enterRules();
  void enterSlip();
};

INSTANTIATE_TEST_SUITE_P(In, OnDisk, everywhere(), nameOfParam);

void OnDisk::enterActivities() {
  user().clickTab(kActivites);
  user().click(L"Txt_Entite");
  user().type(L"100");
  user().clickLine(L"Lst_Activite", 2);
  user().clickLine(L"Lst_Activite", 3, Held::Shift);
  user().clickLine(L"Lst_Activite", 0, Held::Control);
  user().click(L"Cmd_PasseDroit");
  user().click(L"Opt_DimJF");
}

void OnDisk::enterRules() {
  user().clickTab(kRegles);
  user().click(L"Opt_TypePrincipalOrgChg");
  user().click(L"Opt_PlafMensOrgChg");
  user().click(L"Cac_DemAccordOrgChg");
  user().click(L"Cac_FactAnticip");
  user().click(L"Cbo_RenouvOrgChg");
  user().key(VK_DOWN);
  user().key(VK_DOWN);
  user().doubleClickLine(L"Lst_PiecePossibleOrgChg", 1);
  user().doubleClickLine(L"Lst_PiecePossibleOrgChg", 0);
  user().clickArrow(L"Cbo_StatsOrgChg");
  user().clickOpenLine(L"Cbo_StatsOrgChg", 1);
  user().fill(L"Cbo_PeriodFactOrgChg", L"Trimestrielle");
  user().click(L"Txt_DebitOrgChg");
  user().type(L"41");
  user().key(VK_RETURN);
  user().key(VK_TAB);
  user().key(VK_DOWN);
  user().key(VK_TAB);
  user().type(L"706");
  user().key(VK_TAB);
  user().click(L"Txt_CpteProdAide");
  user().type(L"7080000000");
}

void OnDisk::enterSlip() {
  user().clickTab(kBordereau);
  user().clickLine(L"Lst_ParamPossOrgChg", 0);
  user().clickLine(L"Lst_ParamPossOrgChg", 2, Held::Shift);
  user().click(L"Cmd_DroiteBord");
  user().clickLine(L"Lst_ParamSelecOrgChg", 2);
  user().click(L"Cmd_HautBord");
  user().click(L"Opt_RecapBordOrgChg");
  user().doubleClickLine(L"Lst_ParamTriPos", 5);
  user().doubleClickLine(L"Lst_ParamTriPos", 0);
  user().fill(L"Txt_NbExEmplOrgChg", L"3");
  user().fill(L"Txt_CodeThesaurus", L"TH9");
}

TEST_P(OnDisk, ABodyIsEnteredOnEveryPageAndReadBack) {
  user().click(L"Cmd_Ajouter");
  user().type(L"cpam");
  user().fill(L"Txt_RaisonOrgChg", L"Caisse primaire");
  enterActivities();
  enterRules();
  enterSlip();
  user().clickTab(kPriseEnCharge);
  user().click(L"Opt_HeureOrgChg");
  addRate(user());
  user().click(L"Cmd_OK");
  ASSERT_EQ(boxes().report(), "");
  const std::pair<long, const wchar_t*> expected[] = {
      {attribut::SigleOrgChg, L"CPAM"},
      {attribut::RaisonOrgChg, L"Caisse primaire"},
      {attribut::PeriodFactOrgChg, L"T"},
      {attribut::TypeOrgChg, L"P"},
      {attribut::PlafondOrg, L"2"},
      {attribut::RenouvOrgChg, L"2"},
      {attribut::PieceRenouOrgChg,
       L"B\u00FD"
       L"A"},
      {attribut::DebitOrgChg, L"4120000000"},
      {attribut::CreditOrgChg, L"7060000000"},
      {attribut::AttribOrgChg, L"H"},
      {attribut::DateRembOrgChg, L"21186"},
      {attribut::TxRembOrgChg, L"2000"},
      {attribut::TxRembMajOrgChg, L"2500"},
      {attribut::PrestServOrgChg, L"1500"},
      {attribut::GestPartBenef, L"M"},
      {attribut::StatsOrgChg, L"02"},
      {attribut::DemAccordOrgChg, L"1"},
      {attribut::TypeBordOrgChg, L"R"},
      {attribut::Entite, L"100"},
      {attribut::CodActSelect, L"100P01\u00FD100P03\u00FD100P04"},
      {attribut::NbExemplOrgChg, L"3"},
      {attribut::IncidCompta, L"0"},
      {attribut::GestionExclu, L"1"},
      {attribut::CpteProdAide, L"7080000000"},
      {attribut::FactAnticip, L"1"},
      {attribut::CodeThesaurus, L"TH9"},
      {attribut::ParamSelecOrgChg, L"2\u00FD3\u00FD1"},
      {attribut::ParamTriSelect, L"6\u00FD1"}};
  for (const auto& [attribute, text] : expected) {
    EXPECT_EQ(stored(L"004", attribute), text) << attribute;
  }
  EXPECT_EQ(store_.stored(L"COMPTEUR", L"999", store::compteur::DernierOrgChg), L"004");

  user().fill(L"Txt_CodOrgChg", L"004");
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"Caisse primaire");
  EXPECT_EQ(user().text(L"Cbo_DebitOrgChg"), L"ADHERENTS");
  EXPECT_EQ(user().text(L"Cbo_RenouvOrgChg"), L"Renouvellement à - 2 mois");
  EXPECT_EQ(user().lines(L"Lst_PieceRenouOrgChg"),
            (Lines{L"Bulletin de pension", L"Avis d'imposition"}));
  EXPECT_EQ(user().lines(L"Lst_ParamSelecOrgChg"), (Lines{L"Heures", L"Période", L"Nom"}));
  EXPECT_EQ(user().lines(L"Lst_ActSelect").size(), 3U);
  EXPECT_TRUE(user().checked(L"Opt_DimJF"));
  EXPECT_TRUE(user().checked(L"Cac_FactAnticip"));
}

TEST_P(OnDisk, TypeAndCeilingStayWhileAgreementsAreActive) {
  user().type(L"002");
  user().clickTab(kRegles);
  user().click(L"Opt_TypeComplOrgChg");
  boxes().expect(kTypeRefused, kInformation, L"OK", IDOK);
  user().click(L"Cmd_OK");
  EXPECT_EQ(boxes().report(), "");
  EXPECT_EQ(user().tab(), kRegles);
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"002");
  EXPECT_EQ(stored(L"002", attribut::TypeOrgChg), L"P");
  user().click(L"Opt_TypePrincipalOrgChg");
  user().click(L"Opt_PlafMensRepOrgChg");
  boxes().expect(kCeilingRefused, kInformation, L"OK", IDOK);
  user().click(L"Cmd_OK");
  EXPECT_EQ(boxes().report(), "");
  EXPECT_EQ(stored(L"002", attribut::PlafondOrg), L"3");
  user().click(L"Opt_PlafGlobalOrgChg");
  user().click(L"Cmd_OK");
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"");
}

TEST_P(OnDisk, TypeAndCeilingChangeFreelyWithoutActiveAgreements) {
  user().type(L"001");
  user().clickTab(kRegles);
  user().click(L"Opt_TypeComplOrgChg");
  user().click(L"Opt_PlafMensRepOrgChg");
  user().click(L"Cmd_OK");
  EXPECT_EQ(stored(L"001", attribut::TypeOrgChg), L"C");
  EXPECT_EQ(stored(L"001", attribut::PlafondOrg), L"1");
}

}  // namespace
}  // namespace lifecycle
