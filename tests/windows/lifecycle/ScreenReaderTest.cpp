// What a screen reader says of each field, list and option, against the labels on screen.
#include "tests/windows/lifecycle/ControlTest.h"
#include "tests/windows/lifecycle/PropertyServices.h"

namespace lifecycle {
namespace {

using Microsoft::WRL::ComPtr;

// Who is named by which label or group.
struct Named {
  const wchar_t* field;
  const wchar_t* by;
};

constexpr Named kFields[] = {
    {L"Txt_CodOrgChg", L"Etq_CodOrgChg"},
    {L"Cbo_SigleOrgChg", L"Etq_RechercheSigle"},
    {L"Txt_SigleOrgChg", L"Etq_SigleOrgChg"},
    {L"Txt_RaisonOrgChg", L"Etq_RaisonOrgChg"},
    {L"Txt_Complement", L"Etq_Complement"},
    {L"Txt_NumVoie", L"Etq_Voie"},
    {L"Cbo_NatureVoie", L"Etq_Voie"},
    {L"Txt_NomVoie", L"Etq_Voie"},
    {L"Txt_Localite", L"Etq_Localite"},
    {L"Txt_CodePostal", L"Etq_CodePostal"},
    {L"Txt_Ville", L"Etq_CodePostal"},
    {L"Txt_Telephone", L"Etq_Telephone"},
    {L"Txt_Fax", L"Etq_Fax"},
    {L"Txt_Email", L"Etq_Email"},
    {L"Txt_InterlocDossOrgChg", L"Etq_InterlocDossOrgChg"},
    {L"Txt_InterlocFactOrgChg", L"Etq_InterlocFactOrgChg"},
    {L"Cbo_RenouvOrgChg", L"Etq_RenouvOrgChg"},
    {L"Lst_PiecePossibleOrgChg", L"Etq_PiecePossibleOrgChg"},
    {L"Lst_PieceRenouOrgChg", L"Etq_PieceRenouOrgChg"},
    {L"Cbo_StatsOrgChg", L"Etq_StatsOrgChg"},
    {L"Cbo_PeriodFactOrgChg", L"Etq_PeriodFactOrgChg"},
    {L"Txt_DebitOrgChg", L"Etq_DebitOrgChg"},
    {L"Cbo_DebitOrgChg", L"Etq_DebitOrgChg"},
    {L"Txt_CreditOrgChg", L"Etq_CreditOrgChg"},
    {L"Cbo_CreditOrgChg", L"Etq_CreditOrgChg"},
    {L"Txt_CpteProdAide", L"Etq_CpteProdAide"},
    {L"Cbo_CpteProdAide", L"Etq_CpteProdAide"},
    {L"Lst_DateRembOrgChg", L"Etq_DateRembOrgChg"},
    {L"Lst_TxRembOrgChg", L"Etq_TxRembOrgChg"},
    {L"Lst_TxRembMajOrgChg", L"Etq_TxRembMajOrgChg"},
    {L"Lst_PrestServOrgChg", L"Etq_PrestServOrgChg"},
    {L"Txt_DateRembOrgChg", L"Etq_DateRembOrgChg"},
    {L"Txt_TxRembOrgChg", L"Etq_TxRembOrgChg"},
    {L"Txt_TxRembMajOrgChg", L"Etq_TxRembMajOrgChg"},
    {L"Txt_PrestServOrgChg", L"Etq_PrestServOrgChg"},
    {L"Lst_DebAbatHOrgChg", L"Etq_TrancheAppli"},
    {L"Lst_FinAbatHOrgChg", L"Etq_TrancheAppli"},
    {L"Lst_PourcentAbatOrgChg", L"Etq_PourcentOrgChg"},
    {L"Txt_DebAbatHOrgChg", L"Etq_TrancheAppli"},
    {L"Txt_FinAbatHOrgChg", L"Etq_TrancheAppli"},
    {L"Txt_PourcentAbatOrgChg", L"Etq_PourcentOrgChg"},
    {L"Txt_DesFacture", L"Etq_DesFacture"},
    {L"Txt_CodeCptPrestationService", L"Etq_CptPrestationService"},
    {L"Cbo_CptPrestationService", L"Etq_CptPrestationService"},
    {L"Txt_DatBaremPrec", L"Etq_Montant"},
    {L"Txt_DatBaremCours", L"Etq_Montant"},
    {L"Lst_DebRevSeulOrgChg", L"Etq_PersSeule"},
    {L"Lst_FinRevSeulOrgChg", L"Etq_PersSeule"},
    {L"Lst_DebRevMenOrgChg", L"Etq_Menage"},
    {L"Lst_FinRevMenOrgChg", L"Etq_Menage"},
    {L"Lst_BaremPrecOrgChg", L"Etq_BaremPrecOrgChg"},
    {L"Lst_BaremCoursOrgChg", L"Etq_BaremCoursOrgChg"},
    {L"Txt_DebRevSeulOrgChg", L"Etq_PersSeule"},
    {L"Txt_FinRevSeulOrgChg", L"Etq_PersSeule"},
    {L"Txt_DebRevMenOrgChg", L"Etq_Menage"},
    {L"Txt_FinRevMenOrgChg", L"Etq_Menage"},
    {L"Txt_BaremCoursOrgChg", L"Etq_BaremCoursOrgChg"},
    {L"Lst_ParamPossOrgChg", L"Etq_ParamPossOrgChg"},
    {L"Lst_ParamSelecOrgChg", L"Etq_ParamSelecOrgChg"},
    {L"Lst_ParamTriPos", L"Etq_ParamTriPos"},
    {L"Lst_ParamTriSelect", L"Etq_ParamTriSelect"},
    {L"Txt_NbExEmplOrgChg", L"Cdr_Exemplaire"},
    {L"Bdh_NbExemp", L"Cdr_Exemplaire"},
    {L"Txt_CodeThesaurus", L"Etq_CodeThesaurus"},
    {L"Txt_IdentMagnetOrgChg", L"Etq_IdentMagnetOrgChg"},
    {L"Txt_Entite", L"Etq_Entite"},
    {L"Cbo_Entite", L"Etq_Entite"},
    {L"Lst_Activite", L"Etq_Activite"},
    {L"Lst_ActSelect", L"Etq_ActSelect"},
    {L"Lst_TypeAct", L"Etq_Type"},
};

constexpr Named kOptions[] = {
    {L"Opt_TypePrincipalOrgChg", L"Cdr_TypeOrg"},
    {L"Opt_TypeComplOrgChg", L"Cdr_TypeOrg"},
    {L"Opt_PlafGlobalOrgChg", L"Cdr_PlafondOrg"},
    {L"Opt_PlafMensOrgChg", L"Cdr_PlafondOrg"},
    {L"Opt_PlafMensRepOrgChg", L"Cdr_PlafondOrg"},
    {L"Opt_HeureOrgChg", L"Cdr_AttribOrgChg"},
    {L"Opt_MontantOrgChg", L"Cdr_AttribOrgChg"},
    {L"Opt_Quotient", L"Cdr_Bareme"},
    {L"Opt_Ressource", L"Cdr_Bareme"},
    {L"Opt_GestPartPourc", L"Cdr_GestionParticipBenef"},
    {L"Opt_GestPartMont", L"Cdr_GestionParticipBenef"},
    {L"Opt_IndBordOrgChg", L"Cdr_TypeBordereau"},
    {L"Opt_RecapBordOrgChg", L"Cdr_TypeBordereau"},
    {L"Opt_MFPBordOrgChg", L"Cdr_TypeBordereau"},
    {L"Opt_Totalite", L"Cdr_GestionExclu"},
    {L"Opt_DimJF", L"Cdr_GestionExclu"},
    {L"Opt_Semaine", L"Cdr_GestionExclu"},
};

// As it is read: no mnemonics, one blank between words.
std::wstring read(const std::wstring& caption) {
  std::wstring text;
  for (const wchar_t c : caption) {
    if (c == L'&' || (c == L' ' && (text.empty() || text.back() == L' '))) continue;
    text += c;
  }
  while (!text.empty() && text.back() == L' ') text.pop_back();
  return text;
}

class ScreenReader : public ControlTest {
 protected:
  std::wstring shown(const wchar_t* name) { return read(user().text(name)); }

  // What oleacc gives for a window: a name that was given to it goes before its own.
  std::wstring said(HWND window) {
    ComPtr<IAccessible> object;
    if (FAILED(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                          reinterpret_cast<void**>(object.GetAddressOf())))) {
      ADD_FAILURE() << "nothing there for a screen reader";
      return {};
    }
    const auto given = services_.names().find(window);
    if (given != services_.names().end()) return given->second;
    VARIANT self = {};
    self.vt = VT_I4;
    BSTR name = nullptr;
    object->get_accName(self, &name);
    std::wstring text = name == nullptr ? L"" : name;
    SysFreeString(name);
    return text;
  }

  PropertyServices services_;
};

TEST_F(ScreenReader, FieldsAndListsHaveTheNameOfTheirLabel) {
  for (const auto& [field, by] : kFields) {
    HWND window = user().find(field);
    ASSERT_NE(window, nullptr);
    ASSERT_NE(shown(by), L"") << container::nameOf(window).size();
    EXPECT_EQ(said(window), shown(by));
    HWND inner = FindWindowExW(window, nullptr, L"Edit", nullptr);
    if (inner != nullptr) {
      EXPECT_EQ(said(inner), shown(by));
    }
  }
}

TEST_F(ScreenReader, OptionsHaveThatOfTheirGroupAndTheirOwn) {
  for (const auto& [option, group] : kOptions) {
    EXPECT_EQ(said(user().find(option)), shown(group) + L", " + shown(option));
  }
}

TEST_F(ScreenReader, ChecksAndButtonsHaveTheirOwn) {
  for (const wchar_t* name : {L"Cac_DemAccordOrgChg", L"Cac_Abonnement", L"Cac_CoutGlobal",
                              L"Cmd_Sortir", L"Cmd_NouveauBareme", L"Cmd_HautBord"}) {
    EXPECT_EQ(said(user().find(name)), shown(name));
  }
}

BOOL CALLBACK addWindow(HWND window, LPARAM all) {
  reinterpret_cast<std::vector<HWND>*>(all)->push_back(window);
  return TRUE;
}

// All that is of these classes is in the lists above, or is never seen.
TEST_F(ScreenReader, NothingThatTakesInputGoesWithoutAName) {
  std::vector<HWND> all;
  EnumChildWindows(control().host.controlWindow(), &addWindow, reinterpret_cast<LPARAM>(&all));
  int walked = 0;
  for (HWND window : all) {
    wchar_t kind[32] = {};
    GetClassNameW(window, kind, 32);
    const std::wstring type = kind;
    const std::wstring name = container::nameOf(window);
    if (type != L"Edit" && type != L"ComboBox" && type != L"ListBox" && type != L"Button") continue;
    if (name.starts_with(L"Lst_LongParam") || name.starts_with(L"Lst_CodActSelect")) continue;
    EXPECT_NE(said(window), L"") << std::string(name.begin(), name.end());
    ++walked;
  }
  EXPECT_GT(walked, 120);
}

TEST_F(ScreenReader, ANameFollowsTheCaptionItIsOf) {
  load(L"001");
  user().clickTab(kParticipation);
  const std::wstring before = shown(L"Etq_Montant");
  user().click(before == L"Montant au" ? L"Opt_GestPartPourc" : L"Opt_GestPartMont");
  ASSERT_NE(shown(L"Etq_Montant"), before);
  EXPECT_EQ(said(user().find(L"Txt_DatBaremCours")), shown(L"Etq_Montant"));
}

// Its red is said too, for as long as it is red.
TEST_F(ScreenReader, TheCounterOfASlipThatIsTooWideSaysSo) {
  control().store.put(L"PARAMBORDORGCHG", L"8", {L"Observations", L"131"});
  control().store.set(L"ORGPRISECHARGE", L"001", attribut::ParamSelecOrgChg, L"8");
  control().init();
  load(L"001");
  HWND counter = user().find(L"Etq_NbCarSelect");
  EXPECT_EQ(said(counter), L"131/130, le bordereau est trop large");
  load(L"002");
  EXPECT_EQ(said(counter), shown(L"Etq_NbCarSelect"));
  EXPECT_FALSE(services_.names().contains(counter));
}

TEST_F(ScreenReader, NoNameIsLeftWhenTheWindowsGo) {
  ASSERT_FALSE(services_.names().empty());
  control().host.deactivate();
  EXPECT_TRUE(services_.names().empty());
}

}  // namespace
}  // namespace lifecycle
