// What an open row of the three editors locks and what was locked before, control by control.
#include <algorithm>

#include "tests/behaviour/ScaleTest.h"

namespace behaviour {
namespace {

// Of the bar; locked whichever editor is open.
const std::vector<const char*> kBar{"Cmd_Supprimer",   "Cmd_Sortir",   "Cmd_OK",
                                    "Cmd_Annuler",     "Cmd_Ajouter",  "Txt_SigleOrgChg",
                                    "Cbo_SigleOrgChg", "Txt_CodOrgChg"};

std::vector<const char*> withBar(std::vector<const char*> names) {
  names.insert(names.end(), kBar.begin(), kBar.end());
  return names;
}

class RateLocks : public Coverage, public testing::WithParamInterface<const char*> {};

// Disabled before a row is opened, the control is so afterwards, and nothing else is.
TEST_P(RateLocks, AControlDisabledBeforeStaysSo) {
  ASSERT_TRUE(user_->click(list("Lst_DateRembOrgChg"), 0));
  control_->surface().find(GetParam())->setEnabled(false);
  const auto before = enabledBelow(control_->surface());
  control_->DoubleClickTauxRemb();
  ASSERT_TRUE(rateOpen());
  EXPECT_FALSE(control_->surface().find(GetParam())->enabled());
  ASSERT_TRUE(press("Cmd_AnnulerTaux"));
  EXPECT_PRED_FORMAT2(same, enabledBelow(control_->surface()), before);
}

INSTANTIATE_TEST_SUITE_P(
    OfEach, RateLocks,
    testing::ValuesIn(withBar({"Lst_DateRembOrgChg", "Lst_TxRembOrgChg", "Lst_TxRembMajOrgChg",
                               "Lst_PrestServOrgChg", "Cmd_AjoutTaux", "Cmd_AjoutAbat",
                               "Cdr_AttribOrgChg", "Cdr_AbatOrgChg", "Txt_CodeCptPrestationService",
                               "Cbo_CptPrestationService"})),
    [](const auto& name) { return std::string(name.param); });

class DeductionLocks : public Coverage, public testing::WithParamInterface<const char*> {};

TEST_P(DeductionLocks, AControlDisabledBeforeStaysSo) {
  putDeductions({{"0,00", "10,00", "50,00"}});
  show();
  ASSERT_TRUE(user_->click(list("Lst_DebAbatHOrgChg"), 0));
  control_->surface().find(GetParam())->setEnabled(false);
  const auto before = enabledBelow(control_->surface());
  control_->DoubleClickAbat();
  ASSERT_TRUE(deductionOpen());
  EXPECT_FALSE(control_->surface().find(GetParam())->enabled());
  ASSERT_TRUE(press("Cmd_AnnulerAbat"));
  EXPECT_PRED_FORMAT2(same, enabledBelow(control_->surface()), before);
}

INSTANTIATE_TEST_SUITE_P(
    OfEach, DeductionLocks,
    testing::ValuesIn(withBar({"Lst_DebAbatHOrgChg", "Lst_FinAbatHOrgChg", "Lst_PourcentAbatOrgChg",
                               "Cmd_AjoutAbat", "Cdr_AttribOrgChg", "Cdr_TauxOrgChg",
                               "Txt_CodeCptPrestationService", "Cbo_CptPrestationService"})),
    [](const auto& name) { return std::string(name.param); });

class ScaleLocks : public Scale, public testing::WithParamInterface<const char*> {};

TEST_P(ScaleLocks, AControlDisabledBeforeStaysSo) {
  control_->surface().find(GetParam())->setEnabled(false);
  const auto before = enabledBelow(control_->surface());
  const bool last = std::string_view(GetParam()) == "Lst_BaremCoursOrgChg";
  ASSERT_TRUE(open(0, last ? "Lst_DebRevSeulOrgChg" : "Lst_BaremCoursOrgChg"));
  EXPECT_FALSE(control_->surface().find(GetParam())->enabled());
  ASSERT_TRUE(press("Cmd_AnnulerPart"));
  EXPECT_PRED_FORMAT2(same, enabledBelow(control_->surface()), before);
}

INSTANTIATE_TEST_SUITE_P(
    OfEach, ScaleLocks,
    testing::ValuesIn(withBar({"Lst_DebRevSeulOrgChg", "Lst_FinRevSeulOrgChg",
                               "Lst_DebRevMenOrgChg", "Lst_FinRevMenOrgChg", "Lst_BaremPrecOrgChg",
                               "Lst_BaremCoursOrgChg", "Cdr_Bareme", "Cdr_GestionParticipBenef",
                               "Cac_Abonnement", "Txt_DatBaremCours", "Cmd_NouveauBareme"})),
    [](const auto& name) { return std::string(name.param); });

}  // namespace
}  // namespace behaviour
