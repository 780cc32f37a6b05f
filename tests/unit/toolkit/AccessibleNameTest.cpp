#include "toolkit/AccessibleName.h"

#include <gtest/gtest.h>

#include "toolkit/Buttons.h"
#include "toolkit/ComboBox.h"
#include "toolkit/Frame.h"
#include "toolkit/ListBox.h"
#include "toolkit/ScrollBar.h"
#include "toolkit/Surface.h"
#include "toolkit/TextBox.h"

namespace toolkit {
namespace {

class AccessibleName : public testing::Test {
 protected:
  Surface surface{"Form"};
};

TEST_F(AccessibleName, OfAFieldIsTheLabelBeforeIt) {
  const TextBox none(&surface, "Txt_None");
  const Label label(&surface, "Etq_Compte", "Compte à &débiter");
  const TextBox number(&surface, "Txt_Compte");
  const ComboBox name(&surface, "Cbo_Compte");
  const Label other(&surface, "Etq_Autre", "Autre");
  const ListBox list(&surface, "Lst_Autre");
  EXPECT_EQ(accessibleName(none), "");
  EXPECT_EQ(accessibleName(number), "Compte à débiter");
  EXPECT_EQ(accessibleName(name), "Compte à débiter");
  EXPECT_EQ(accessibleName(list), "Autre");
}

TEST_F(AccessibleName, OfAFieldThatIsSaidToHaveALabelIsThatOne) {
  const Label heading(&surface, "Etq_Date", "Date d'effet");
  const Label last(&surface, "Etq_Taux", "Taux");
  TextBox zone(&surface, "Txt_Date");
  zone.setLabel(heading);
  EXPECT_EQ(accessibleName(zone), "Date d'effet");
}

TEST_F(AccessibleName, OfAFieldWithoutLabelIsItsGroups) {
  const Label outside(&surface, "Etq_Dehors", "Dehors");
  Frame frame(&surface, "Cdr_Exemplaire", "Nombre d'e&xemplaires ");
  const TextBox copies(&frame, "Txt_NbExemp");
  const ScrollBar bar(&frame, "Bdh_NbExemp", ScrollBar::Direction::Horizontal);
  EXPECT_EQ(accessibleName(copies), "Nombre d'exemplaires");
  EXPECT_EQ(accessibleName(bar), "Nombre d'exemplaires");
}

TEST_F(AccessibleName, OfAnOptionIsItsGroupsAndItsOwn) {
  Frame frame(&surface, "Cdr_Type", "T&ype organisme ");
  const OptionButton option(&frame, "Opt_Principal", "&Principal");
  const CheckBox check(&frame, "Cac_Abonnement", "A&bonnement");
  const OptionButton alone(&surface, "Opt_Seul", "Seul");
  EXPECT_EQ(accessibleName(option), "Type organisme, Principal");
  EXPECT_EQ(accessibleName(check), "Abonnement");
  EXPECT_EQ(accessibleName(alone), "Seul");
}

TEST_F(AccessibleName, EndsWithItsRemark) {
  Label counter(&surface, "Etq_Compteur", "131/130");
  counter.setRemark("trop large");
  EXPECT_EQ(accessibleName(counter), "131/130, trop large");
  counter.setRemark("");
  EXPECT_EQ(accessibleName(counter), "131/130");
}

TEST_F(AccessibleName, HasOneBlankBetweenWords) {
  const Label label(&surface, "Etq_Prest", "       Dont     Prest. services");
  const ListBox list(&surface, "Lst_Prest");
  EXPECT_EQ(accessibleName(list), "Dont Prest. services");
}

}  // namespace
}  // namespace toolkit
