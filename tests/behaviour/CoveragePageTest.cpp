#include "store/Conversions.h"
#include "tests/behaviour/CoverageTest.h"

namespace behaviour {
namespace {

constexpr const char* kGestionMontant =
    "Pour ce type d'organisme la gestion de la part bénéficiaire doit obligatoirement être en "
    "montant.";
constexpr const char* kAttribution = "L'attribution des notifications d'accord est obligatoire.";
constexpr const char* kUnTaux = "Au moins un taux de remboursement est obligatoire.";
constexpr const char* kPrincipalPrestataire =
    "Vous ne pouvez attribuer une notification en montant à un organisme 'Principal' de type "
    "'Prestataire'.";

class CoveragePage : public Coverage {
 protected:
  toolkit::OptionButton& hours() { return option("Opt_HeureOrgChg"); }
  toolkit::OptionButton& amount() { return option("Opt_MontantOrgChg"); }
  void set(int attribute, std::string_view text) {
    store_.set("ORGPRISECHARGE", "001", attribute, text);
  }
  // The body's activity works as an agency does.
  void makeAgency() { store_.set("ACTIVITES", "010P01", store::activites::TypeActivite, "M"); }
  void expectEditors(bool open, Caller at = Caller::here()) {
    const auto trace = called("expectEditors", at);
    for (const char* name :
         {"Cdr_TauxOrgChg", "Cdr_AbatOrgChg", "Cmd_AjoutTaux", "Cmd_AjoutAbat"}) {
      EXPECT_EQ(enabled(name), open) << name;
    }
  }
};

// Showing -----------------------------------------------------------------------------------------

TEST_F(CoveragePage, ShowsTheInvoiceOptions) {
  set(attribut::DesFacture, "Aide à domicile");
  set(attribut::AjusTarif, "1");
  set(attribut::CoutGlobal, "0");
  show();
  EXPECT_EQ(box("Txt_DesFacture").text(), "Aide à domicile");
  EXPECT_TRUE(check("Cac_AjusTarif").value());
  EXPECT_FALSE(check("Cac_CoutGlobal").value());
  set(attribut::AjusTarif, "");
  set(attribut::CoutGlobal, "1");
  show();
  EXPECT_FALSE(check("Cac_AjusTarif").value());
  EXPECT_TRUE(check("Cac_CoutGlobal").value());
}

TEST_F(CoveragePage, ShowsHoursAmountOrNeither) {
  for (const char* mode : {"H", "M", ""}) {
    set(attribut::AttribOrgChg, mode);
    show();
    EXPECT_EQ(hours().value(), mode[0] == 'H') << mode;
    EXPECT_EQ(amount().value(), mode[0] == 'M') << mode;
    EXPECT_EQ(enabled("Cdr_TauxOrgChg"), mode[0] != 'M') << mode;
    EXPECT_EQ(enabled("Cdr_AbatOrgChg"), mode[0] != 'M') << mode;
    EXPECT_EQ(rates().size(), 2U) << mode;
    expectNoBox();
  }
}

TEST_F(CoveragePage, ABodyInHoursAfterOneInAmountIsOpenAgain) {
  set(attribut::AttribOrgChg, "M");
  show();
  show("002");
  expectEditors(true);
  EXPECT_TRUE(press("Cmd_AjoutTaux"));
}

TEST_F(CoveragePage, ShowsDeductionsOfASlipThatLeavesThemOutToo) {
  putDeductions({{"0,00", "10,00", "50,00"}});
  set(attribut::TypeBordOrgChg, "M");
  show();
  EXPECT_PRED_FORMAT2(same, deductions(), (Rows{{"0,00", "10,00", "50,00"}}));
}

TEST_F(CoveragePage, ClearingEmptiesIt) {
  putDeductions({{"0,00", "10,00", "50,00"}});
  set(attribut::DesFacture, "Aide");
  set(attribut::AjusTarif, "1");
  set(attribut::CoutGlobal, "1");
  set(attribut::CptPrestationService, "6041000000");
  show();
  ASSERT_TRUE(press("Cmd_Annuler"));
  EXPECT_TRUE(rates().empty());
  EXPECT_TRUE(deductions().empty());
  EXPECT_EQ(box("Txt_DesFacture").text(), "");
  EXPECT_EQ(box("Txt_CodeCptPrestationService").text(), "");
  EXPECT_FALSE(check("Cac_AjusTarif").value());
  EXPECT_FALSE(check("Cac_CoutGlobal").value());
  EXPECT_FALSE(hours().value());
  EXPECT_FALSE(amount().value());
}

// Writing -----------------------------------------------------------------------------------------

TEST_F(CoveragePage, WritesTheInvoiceOptions) {
  ASSERT_TRUE(user_->click(check("Cac_AjusTarif")));
  ASSERT_TRUE(user_->click(check("Cac_CoutGlobal")));
  ASSERT_TRUE(user_->fill(box("Txt_DesFacture"), "Aide à domicile"));
  save();
  EXPECT_EQ(attribute("001", attribut::AjusTarif), "1");
  EXPECT_EQ(attribute("001", attribut::CoutGlobal), "1");
  EXPECT_EQ(attribute("001", attribut::DesFacture), "Aide à domicile");
  show();
  ASSERT_TRUE(user_->click(check("Cac_AjusTarif")));
  ASSERT_TRUE(user_->click(check("Cac_CoutGlobal")));
  ASSERT_TRUE(user_->fill(box("Txt_DesFacture"), ""));
  save();
  EXPECT_EQ(attribute("001", attribut::AjusTarif), "0");
  EXPECT_EQ(attribute("001", attribut::CoutGlobal), "0");
  EXPECT_EQ(attribute("001", attribut::DesFacture), "");
}

TEST_F(CoveragePage, WritesTheAccount) {
  store_.put("PLANCOMPTABLE", "0106042000000", {"Prestations"});
  set(attribut::CptPrestationService, "6041000000");
  show();
  EXPECT_EQ(box("Txt_CodeCptPrestationService").text(), "6041000000");
  ASSERT_TRUE(user_->fill(box("Txt_CodeCptPrestationService"), "6042000000"));
  save();
  EXPECT_EQ(attribute("001", attribut::CptPrestationService), "6042000000");
}

TEST_F(CoveragePage, ChangesNothingElseOfTheRecord) {
  putDeductions({{"0,00", "10,00", "50,00"}});
  for (int free = attribut::CodeThesaurus; free <= attribut::Dernier + 8; ++free)
    set(free, "libre " + std::to_string(free));
  set(attribut::ParamSelecOrgChg, "1");
  store::DynamicArray expected = store_.record("ORGPRISECHARGE", "001");
  show();
  ASSERT_TRUE(user_->click(check("Cac_AjusTarif")));
  save();
  expected.set(attribut::AjusTarif, "1");
  EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), expected.text());
}

TEST_F(CoveragePage, ASlipOfTypeMFPLeavesTheDeductionsEmpty) {
  putDeductions({{"0,00", "10,00", "50,00"}});
  show();
  ASSERT_TRUE(user_->click(tabs(), 4));
  ASSERT_TRUE(user_->click(option("Opt_MFPBordOrgChg")));
  save();
  for (const int number :
       {attribut::DebAbatHOrgChg, attribut::FinAbatHOrgChg, attribut::PourcentAbatOrgChg})
    EXPECT_EQ(attribute("001", number), "") << bodyAttribute(number);
  EXPECT_NE(attribute("001", attribut::DateRembOrgChg), "");
}

// Leaving writes the pages, and the slip takes the deductions out of the record in hand.
TEST_F(CoveragePage, DeductionsThatASlipHasLeftOutStayForTheSlipThatTakesThem) {
  const Rows two{{"0,00", "10,00", "50,00"}, {"20,00", "30,00", "25,00"}};
  for (const int deed : {0, 1, 2, 3}) {
    putDeductions(two);
    show();
    ASSERT_TRUE(user_->click(tabs(), 4));
    ASSERT_TRUE(user_->click(option("Opt_MFPBordOrgChg")));
    desktop_.answer(Answer::Cancel);
    ASSERT_TRUE(press("Cmd_Sortir"));
    ASSERT_PRED_FORMAT2(boxCount, desktop_.takeBoxes(), 1U);
    ASSERT_TRUE(user_->click(option("Opt_IndBordOrgChg")));
    ASSERT_TRUE(user_->click(tabs(), 2));
    Rows expected = two;
    if (deed == 0) {
      addDeduction({"10", "20", "40"});
      expected.insert(expected.begin() + 1, {"10,00", "20,00", "40,00"});
    } else if (deed == 1) {
      ASSERT_TRUE(openDeduction(1));
      ASSERT_TRUE(user_->fill(box("Txt_PourcentAbatOrgChg"), "5"));
      ASSERT_TRUE(press("Cmd_OKAbat"));
      expected[1][2] = "5,00";
    } else if (deed == 2) {
      ASSERT_TRUE(openDeduction(0));
      desktop_.answer(Answer::Yes);
      ASSERT_TRUE(press("Cmd_SuppAbat"));
      desktop_.takeBoxes();
      expected.erase(expected.begin());
    } else {
      control_->TriAbat();
    }
    EXPECT_PRED_FORMAT2(same, deductions(), expected) << deed;
    save();
    store::DynamicArray written;
    putRows(written, 29, 3, expected);
    for (const int number :
         {attribut::DebAbatHOrgChg, attribut::FinAbatHOrgChg, attribut::PourcentAbatOrgChg})
      EXPECT_EQ(attribute("001", number), written.get(number));
  }
}

TEST_F(CoveragePage, TheListsAreTheSourceUpToTheFirstEmptyRow) {
  const std::string mark(1, store::kValueMark);
  set(attribut::DateRembOrgChg, "21186" + mark + mark + "20821");
  set(attribut::TxRembOrgChg, "2000" + mark + "1900" + mark + "1800");
  set(attribut::TxRembMajOrgChg, "2500" + mark + "2400" + mark + "2200");
  set(attribut::PrestServOrgChg, "1500" + mark + "1400" + mark + "1200");
  set(attribut::DebAbatHOrgChg, "0" + mark + mark + "2000");
  set(attribut::FinAbatHOrgChg, "1000" + mark + "2000" + mark + "3000");
  set(attribut::PourcentAbatOrgChg, "10" + mark + "20" + mark + "30");
  show();
  EXPECT_EQ(rates().size(), 3U);
  save();
  EXPECT_EQ(attribute("001", attribut::DateRembOrgChg), "21186");
  EXPECT_EQ(attribute("001", attribut::TxRembOrgChg), "2000");
  EXPECT_EQ(attribute("001", attribut::TxRembMajOrgChg), "2500");
  EXPECT_EQ(attribute("001", attribut::PrestServOrgChg), "1500");
  EXPECT_EQ(attribute("001", attribut::DebAbatHOrgChg), "0");
  EXPECT_EQ(attribute("001", attribut::FinAbatHOrgChg), "1000");
  EXPECT_EQ(attribute("001", attribut::PourcentAbatOrgChg), "10");
}

TEST_F(CoveragePage, TheHostsWriteLeavesTheModeThatWasNotChosen) {
  set(attribut::AttribOrgChg, "");
  show();
  control_->Ecrire_Ong3();
  control_->Afficher_Ong3();
  EXPECT_FALSE(hours().value());
  EXPECT_FALSE(amount().value());
  expectNoBox();
}

TEST_F(CoveragePage, TheHostsWriteAndShowKeepWhatTheUserEntered) {
  ASSERT_TRUE(user_->fill(box("Txt_DesFacture"), "Aide"));
  ASSERT_TRUE(user_->click(check("Cac_CoutGlobal")));
  control_->Ecrire_Ong3();
  control_->Afficher_Ong3();
  EXPECT_EQ(box("Txt_DesFacture").text(), "Aide");
  EXPECT_TRUE(check("Cac_CoutGlobal").value());
  expectNothingWritten();
}

TEST_F(CoveragePage, TheHostsShowTakesBackWhatWasNotWritten) {
  ASSERT_TRUE(user_->fill(box("Txt_DesFacture"), "Aide"));
  control_->Afficher_Ong3();
  EXPECT_EQ(box("Txt_DesFacture").text(), "");
}

TEST_F(CoveragePage, SixtyRatesComeBackAsTheyWere) {
  Rows rows;
  for (int i = 60; i >= 1; --i) {
    rows.push_back({store::textOfDay(20000L + i), store::twoDecimals(1000 + i),
                    i % 3 == 0 ? "" : store::twoDecimals(2000 + i),
                    i % 5 == 0 ? "" : store::twoDecimals(500 + i)});
  }
  putRates(rows);
  const std::string before = store_.record("ORGPRISECHARGE", "001").text();
  show();
  EXPECT_PRED_FORMAT2(same, rates(), rows);
  save();
  EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), before);
}

// Hours or amount ---------------------------------------------------------------------------------

TEST_F(CoveragePage, AmountOfAnAgencyClosesTheEditorsAndKeepsTheirRows) {
  makeAgency();
  putDeductions({{"0,00", "10,00", "50,00"}});
  show();
  ASSERT_TRUE(user_->click(amount()));
  expectNoBox();
  expectEditors(false);
  EXPECT_EQ(rates().size(), 2U);
  EXPECT_EQ(deductions().size(), 1U);
  EXPECT_FALSE(press("Cmd_AjoutTaux"));
  EXPECT_FALSE(openRate(0));
  EXPECT_FALSE(openDeduction(0));
  ASSERT_TRUE(user_->click(hours()));
  expectEditors(true);
  EXPECT_TRUE(openRate(0));
}

TEST_F(CoveragePage, AmountOfAComplementaryBodyClosesTheEditors) {
  set(attribut::TypeOrgChg, "C");
  show();
  ASSERT_TRUE(user_->click(amount()));
  expectNoBox();
  expectEditors(false);
  save();
  EXPECT_EQ(attribute("001", attribut::AttribOrgChg), "M");
  EXPECT_EQ(store_.record("ORGPRISECHARGE", "001").get(attribut::DateRembOrgChg, 1), "21186");
}

TEST_F(CoveragePage, AmountOfAPrincipalProviderIsRefused) {
  ASSERT_TRUE(user_->click(amount()));
  expectBox(kPrincipalPrestataire, Icon::Exclamation);
  EXPECT_TRUE(hours().value());
  EXPECT_FALSE(amount().value());
  expectEditors(true);
  save();
  EXPECT_EQ(attribute("001", attribut::AttribOrgChg), "H");
}

TEST_F(CoveragePage, HoursOfAPrincipalBodyManageThePartInAmount) {
  set(attribut::AttribOrgChg, "");
  set(attribut::GestPartBenef, "%");
  show();
  ASSERT_TRUE(option("Opt_GestPartPourc").value());
  ASSERT_TRUE(user_->click(hours()));
  EXPECT_TRUE(option("Opt_GestPartMont").value());
}

TEST_F(CoveragePage, HoursOfAComplementaryBodyLeaveThePart) {
  set(attribut::TypeOrgChg, "C");
  set(attribut::AttribOrgChg, "M");
  set(attribut::GestPartBenef, "%");
  show();
  ASSERT_TRUE(user_->click(hours()));
  EXPECT_TRUE(option("Opt_GestPartPourc").value());
  expectEditors(true);
}

// Checking ----------------------------------------------------------------------------------------

TEST_F(CoveragePage, Rule1AnAgencysPrincipalBodyManagesThePartInAmount) {
  makeAgency();
  set(attribut::AttribOrgChg, "");
  set(attribut::GestPartBenef, "%");
  show();
  EXPECT_FALSE(control_->Verif_Ong3());
  expectBox(kGestionMontant, Icon::Exclamation);
  EXPECT_EQ(tabs().tab(), 3);
  EXPECT_TRUE(option("Opt_GestPartMont").value());
  EXPECT_PRED_FORMAT1(hasFocus, option("Opt_GestPartMont"));
  EXPECT_FALSE(control_->Verif_Ong3());
  expectBox(kAttribution, Icon::Exclamation);
}

TEST_F(CoveragePage, Rule1LeavesOtherBodiesAlone) {
  set(attribut::GestPartBenef, "%");
  show();
  EXPECT_TRUE(control_->Verif_Ong3());
  makeAgency();
  set(attribut::TypeOrgChg, "C");
  show();
  EXPECT_TRUE(control_->Verif_Ong3());
  expectNoBox();
}

TEST_F(CoveragePage, Rule2HoursOrAmountMustBeChosenBeforeARate) {
  set(attribut::AttribOrgChg, "");
  putRates({});
  show();
  ASSERT_TRUE(user_->click(tabs(), 0));
  ASSERT_TRUE(press("Cmd_OK"));
  expectBox(kAttribution, Icon::Exclamation);
  EXPECT_EQ(tabs().tab(), 2);
  EXPECT_PRED_FORMAT1(hasFocus, hours());
  EXPECT_FALSE(hours().value());
  expectNothingWritten();
  EXPECT_EQ(state(), kExisting);
}

TEST_F(CoveragePage, Rule3HoursNeedARate) {
  putRates({});
  show();
  ASSERT_TRUE(user_->click(tabs(), 0));
  ASSERT_TRUE(press("Cmd_OK"));
  expectBox(kUnTaux, Icon::Exclamation);
  EXPECT_EQ(tabs().tab(), 2);
  expectNothingWritten();
  addRate({"01012026", "10", "15", "5"});
  save();
  EXPECT_EQ(attribute("001", attribut::TxRembOrgChg), "1000");
}

TEST_F(CoveragePage, Rule3AmountNeedsNone) {
  set(attribut::TypeOrgChg, "C");
  set(attribut::AttribOrgChg, "M");
  putRates({});
  show();
  save();
  EXPECT_EQ(attribute("001", attribut::DateRembOrgChg), "");
}

TEST_F(CoveragePage, ARefusedPageWritesNothingOfIt) {
  putRates({});
  show();
  ASSERT_TRUE(user_->fill(box("Txt_DesFacture"), "Aide"));
  ASSERT_TRUE(press("Cmd_OK"));
  expectBox(kUnTaux, Icon::Exclamation);
  EXPECT_EQ(box("Txt_DesFacture").text(), "Aide");
  control_->Afficher_Ong3();
  EXPECT_EQ(box("Txt_DesFacture").text(), "");
}

TEST_F(CoveragePage, TheHostMayCheckAndShowWithoutARecord) {
  control_->Vider_Donnees();
  control_->Afficher_Ong3();
  EXPECT_TRUE(rates().empty());
  EXPECT_FALSE(control_->Verif_Ong3());
  expectBox(kAttribution, Icon::Exclamation);
}

TEST_F(CoveragePage, ConsultationShowsAndChecksButDoesNotWrite) {
  level_->value = 1;
  control_->Afficher_Ong3();
  EXPECT_EQ(rates().size(), 2U);
  EXPECT_TRUE(control_->Verif_Ong3());
  EXPECT_THROW(control_->Ecrire_Ong3(), control::AccessDenied);
}

}  // namespace
}  // namespace behaviour
