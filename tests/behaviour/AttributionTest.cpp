// How agreements are counted, in hours or in amount.
#include <array>
#include <optional>

#include "tests/behaviour/ControlTest.h"

namespace behaviour {
namespace {

constexpr const char* kRefus =
    "Vous ne pouvez attribuer une notification en montant à un organisme 'Principal' de type "
    "'Prestataire'.";

class Attribution : public ControlTest {
 protected:
  Attribution() {
    fillThreeBodies(store_);
    for (const char* type : {"M", "I", "S"}) {
      store_.put("ACTIVITES", std::string("010") + type + "01",
                 {"Garde", "010", "", "", "", "", "", "", "", "", "", type, "SAAD"});
    }
  }
  // Body 001 as its record tells: type "P", "C" or ""; letter of its activity, "" for none; "H",
  // "M" or anything else in attribute 24.
  void show(std::string_view type, std::string_view activity, std::string_view attribution,
            Caller at = Caller::here()) {
    const auto trace = called("show", at);
    store_.set("ORGPRISECHARGE", "001", attribut::TypeOrgChg, type);
    store_.set("ORGPRISECHARGE", "001", attribut::CodActSelect,
               activity.empty() ? "" : "010" + std::string(activity) + "01");
    store_.set("ORGPRISECHARGE", "001", attribut::AttribOrgChg, attribution);
    start();
    lookUp("001");
    EXPECT_TRUE(user_->click(tabs(), 2));
    expectNoBox();
  }
  bool chooseHours() { return user_->click(option("Opt_HeureOrgChg")); }
  bool chooseAmount() { return user_->click(option("Opt_MontantOrgChg")); }
  // "heures", "montant" or "".
  std::string chosen() {
    if (option("Opt_HeureOrgChg").value()) return "heures";
    return option("Opt_MontantOrgChg").value() ? "montant" : "";
  }
  void expectFrames(bool open, Caller at = Caller::here()) {
    const auto trace = called("expectFrames", at);
    EXPECT_EQ(enabled("Cdr_TauxOrgChg"), open);
    EXPECT_EQ(enabled("Cdr_AbatOrgChg"), open);
    EXPECT_TRUE(enabled("Cdr_AttribOrgChg"));
  }
  void expectEditors(bool open, Caller at = Caller::here()) {
    const auto trace = called("expectEditors", at);
    expectFrames(open);
    EXPECT_EQ(enabled("Cmd_AjoutTaux"), open);
    EXPECT_EQ(enabled("Cmd_AjoutAbat"), open);
  }
  // The beneficiary's part, told apart from what it was.
  void manageInPercent() { option("Opt_GestPartPourc").setValue(true); }
  bool managedInAmount() { return option("Opt_GestPartMont").value(); }
};

// --- Shown

TEST_F(Attribution, InHoursIsShownWithBothFramesOpen) {
  show("P", "P", "H");
  EXPECT_EQ(chosen(), "heures");
  expectEditors(true);
}

TEST_F(Attribution, InAmountIsShownWithBothFramesClosed) {
  show("P", "M", "M");
  EXPECT_EQ(chosen(), "montant");
  expectFrames(false);
}

TEST_F(Attribution, InAmountIsShownWithoutABoxWhereItCouldNotBeChosen) {
  show("P", "P", "M");
  EXPECT_EQ(chosen(), "montant");
  expectFrames(false);
}

TEST_F(Attribution, ThatWasNotChosenShowsNeitherOption) {
  for (const char* attribution : {"", "h", "HM", "X"}) {
    show("P", "P", attribution);
    EXPECT_EQ(chosen(), "") << attribution;
    expectEditors(true);
  }
}

TEST_F(Attribution, OfTheBodyBeforeIsNotLeft) {
  store_.set("ORGPRISECHARGE", "002", attribut::AttribOrgChg, "");
  store_.set("ORGPRISECHARGE", "003", attribut::AttribOrgChg, "H");
  show("C", "P", "H");
  chooseAmount();
  expectEditors(false);
  lookUp("002");
  EXPECT_EQ(chosen(), "");
  expectEditors(true);
  lookUp("003");
  EXPECT_EQ(chosen(), "heures");
  expectEditors(true);
  expectNoBox();
}

TEST_F(Attribution, IsClearedWithTheBody) {
  for (const char* attribution : {"M", "H"}) {
    show("P", "M", attribution);
    press("Cmd_Annuler");
    EXPECT_EQ(chosen(), "");
    expectEditors(true);
  }
}

TEST_F(Attribution, OfANewBodyIsOpenAndNotChosen) {
  show("P", "M", "M");
  press("Cmd_Annuler");
  press("Cmd_Ajouter");
  EXPECT_EQ(chosen(), "");
  expectEditors(true);
}

// --- Chosen

TEST_F(Attribution, InHoursOpensTheEditorsAndManagesThePartOfAPrincipalBodyInAmount) {
  show("P", "M", "M");
  manageInPercent();
  EXPECT_TRUE(chooseHours());
  EXPECT_EQ(chosen(), "heures");
  expectEditors(true);
  EXPECT_TRUE(managedInAmount());
  expectNoBox();
}

TEST_F(Attribution, InHoursLeavesThePartOfAnotherBodyAsItIsManaged) {
  for (const char* type : {"C", ""}) {
    show(type, "P", "M");
    manageInPercent();
    EXPECT_TRUE(chooseHours());
    expectEditors(true);
    EXPECT_FALSE(managedInAmount());
  }
  expectNoBox();
}

TEST_F(Attribution, InHoursOnceMoreChangesNothing) {
  show("P", "P", "H");
  manageInPercent();
  EXPECT_TRUE(chooseHours());
  EXPECT_FALSE(managedInAmount());
  expectEditors(true);
}

struct Cas {
  const char* type;
  const char* activity;
  bool possible;
};

class AttributionInAmount : public Attribution, public testing::WithParamInterface<Cas> {};

INSTANTIATE_TEST_SUITE_P(
    Of, AttributionInAmount,
    testing::Values(Cas{"P", "M", true}, Cas{"P", "P", false}, Cas{"P", "I", false},
                    Cas{"P", "S", false}, Cas{"P", "", false}, Cas{"C", "M", true},
                    Cas{"C", "P", true}, Cas{"C", "I", true}, Cas{"C", "S", true},
                    Cas{"C", "", true}, Cas{"", "M", true}, Cas{"", "P", false},
                    Cas{"", "I", false}, Cas{"", "S", false}, Cas{"", "", false}),
    [](const auto& tested) {
      const auto word = [](const std::string& text) { return text.empty() ? "None" : text; };
      return word(tested.param.type) + "With" + word(tested.param.activity);
    });

TEST_P(AttributionInAmount, StandsOrIsRefused) {
  show(GetParam().type, GetParam().activity, "H");
  manageInPercent();
  chooseAmount();
  if (GetParam().possible) {
    expectNoBox();
    EXPECT_EQ(chosen(), "montant");
    expectEditors(false);
    EXPECT_FALSE(managedInAmount());
  } else {
    expectBox(kRefus, Icon::Exclamation);
    EXPECT_EQ(chosen(), "heures");
    expectEditors(true);
    EXPECT_FALSE(managedInAmount());
  }
  EXPECT_EQ(tabs().tab(), 2);
  EXPECT_PRED_FORMAT1(hasFocus, option("Opt_MontantOrgChg"));
}

TEST_P(AttributionInAmount, IsTheSameFromNoChoiceAtAll) {
  show(GetParam().type, GetParam().activity, "");
  chooseAmount();
  if (GetParam().possible) {
    expectNoBox();
  } else {
    expectBox(kRefus, Icon::Exclamation);
  }
  EXPECT_EQ(chosen(), GetParam().possible ? "montant" : "heures");
  expectEditors(!GetParam().possible);
}

TEST_F(Attribution, ThatIsRefusedLeavesAParticipationInPercentToBeSaved) {
  store_.set("ORGPRISECHARGE", "001", 41, "%");
  show("P", "P", "H");
  chooseAmount();
  expectBox(kRefus, Icon::Exclamation);
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("001", 41), "%");
}

TEST_P(AttributionInAmount, IsTheSameByTheArrowKeys) {
  show(GetParam().type, GetParam().activity, "H");
  user_->go(option("Opt_HeureOrgChg"));
  user_->press(toolkit::Key::Down);
  if (GetParam().possible) {
    expectNoBox();
  } else {
    expectBox(kRefus, Icon::Exclamation);
  }
  EXPECT_EQ(chosen(), GetParam().possible ? "montant" : "heures");
}

TEST_P(AttributionInAmount, GoesBackToHoursAndItsRowsAreKept) {
  show(GetParam().type, GetParam().activity, "H");
  child<ListBox>("Lst_DateRembOrgChg").addItem("01/01/2026");
  child<ListBox>("Lst_DebAbatHOrgChg").addItem("10,00");
  chooseAmount();
  chooseHours();
  EXPECT_EQ(chosen(), "heures");
  expectEditors(true);
  EXPECT_EQ(child<ListBox>("Lst_DateRembOrgChg").list(0), "01/01/2026");
  EXPECT_EQ(child<ListBox>("Lst_DebAbatHOrgChg").list(0), "10,00");
}

TEST_F(Attribution, FollowsTheTypeAndTheActivitiesOnScreen) {
  show("P", "P", "H");
  user_->click(tabs(), 1);
  user_->click(option("Opt_TypeComplOrgChg"));
  user_->click(tabs(), 2);
  chooseAmount();
  EXPECT_EQ(chosen(), "montant");
  chooseHours();
  user_->click(tabs(), 1);
  user_->click(option("Opt_TypePrincipalOrgChg"));
  user_->click(tabs(), 5);
  user_->dblClick(child<ListBox>("Lst_ActSelect"), 0);
  user_->click(tabs(), 2);
  expectNoBox();
  chooseAmount();
  expectBox(kRefus, Icon::Exclamation);
  user_->click(tabs(), 5);
  ListBox& possible = child<ListBox>("Lst_Activite");
  for (int line = 0; line < possible.listCount(); ++line) {
    if (possible.list(line).ends_with("Mandataire")) user_->dblClick(possible, line);
  }
  ASSERT_EQ(child<ListBox>("Lst_TypeAct").list(0), "M");
  user_->click(tabs(), 2);
  chooseAmount();
  EXPECT_EQ(chosen(), "montant");
  expectNoBox();
}

// --- Written

TEST_F(Attribution, InHoursIsWritten) {
  show("P", "M", "M");
  chooseHours();
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("001", attribut::AttribOrgChg), "H");
}

TEST_F(Attribution, InAmountIsWritten) {
  show("P", "M", "H");
  chooseAmount();
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("001", attribut::AttribOrgChg), "M");
}

TEST_F(Attribution, ARefusedAmountWritesHours) {
  show("P", "P", "");
  chooseAmount();
  expectBox(kRefus, Icon::Exclamation);
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("001", attribut::AttribOrgChg), "H");
}

TEST_F(Attribution, ThatWasNotChosenIsAskedForAndStaysAsItWas) {
  const std::string odd = std::string("H") + store::kValueMark + "M";
  for (const std::string& attribution : {std::string(), std::string("X"), odd}) {
    show("C", "P", attribution);
    control_->Ecrire_Ong3();
    control_->Afficher_Ong3();
    EXPECT_FALSE(option("Opt_HeureOrgChg").value() || option("Opt_MontantOrgChg").value());
    EXPECT_TRUE(press("Cmd_OK"));
    expectBox("L'attribution des notifications d'accord est obligatoire.", Icon::Exclamation);
    EXPECT_EQ(tabs().tab(), 2);
    EXPECT_TRUE(store_.calls(CallKind::DBWrite).empty());
    EXPECT_EQ(attribute("001", attribut::AttribOrgChg), attribution);
  }
}

TEST_F(Attribution, IsWrittenIntoANewBody) {
  start();
  beginCreation();
  user_->click(tabs(), 5);
  user_->dblClick(child<ListBox>("Lst_Activite"), 0);
  user_->click(tabs(), 1);
  user_->click(option("Opt_TypeComplOrgChg"));
  user_->click(tabs(), 2);
  chooseAmount();
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("004", attribut::AttribOrgChg), "M");
}

}  // namespace
}  // namespace behaviour
