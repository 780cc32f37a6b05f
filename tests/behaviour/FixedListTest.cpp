// Combo boxes that take nothing but one of their lines: the question itself, and what the user
// meets on leaving one.
#include "pages/FixedList.h"

#include "tests/behaviour/RulesPage.h"
#include "toolkit/ControlClosed.h"

namespace behaviour {
namespace {

struct Listed {
  Listed() {
    for (const char* line : {"Mensuelle", "Trimestrielle", "À la fin"}) combo.addItem(line);
  }
  toolkit::Surface surface{"Surface"};
  ComboBox combo{&surface, "Cbo_Essai"};
};

TEST(ExisteDansListe, IsTrueOfEachLine) {
  Listed listed;
  for (const char* line : {"Mensuelle", "Trimestrielle", "À la fin"}) {
    listed.combo.setText(line);
    EXPECT_TRUE(pages::ExisteDansListe(listed.combo)) << line;
  }
  listed.combo.setListIndex(0);
  EXPECT_TRUE(pages::ExisteDansListe(listed.combo));
}

TEST(ExisteDansListe, CountsCaseAccentsBlanksAndLength) {
  Listed listed;
  for (const char* text : {"mensuelle", "MENSUELLE", "Mensuelle ", " Mensuelle", "Mensuell",
                           "Mensuelles", "A la fin", "À la  fin", "Mensuelle\r\n", "x"}) {
    listed.combo.setText(text);
    EXPECT_FALSE(pages::ExisteDansListe(listed.combo)) << text;
  }
}

TEST(ExisteDansListe, AnEmptyTextIsALineOnlyWhereOneIsEmpty) {
  Listed listed;
  EXPECT_FALSE(pages::ExisteDansListe(listed.combo));
  listed.combo.addItem("");
  EXPECT_TRUE(pages::ExisteDansListe(listed.combo));
}

TEST(ExisteDansListe, NothingIsInAnEmptyList) {
  toolkit::Surface surface{"Surface"};
  ComboBox combo{&surface, "Cbo_Essai"};
  EXPECT_FALSE(pages::ExisteDansListe(combo));
  combo.setText("Mensuelle");
  EXPECT_FALSE(pages::ExisteDansListe(combo));
}

// The two that say so, each with its message and a text that only looks like one of its lines.
struct FixedCombo {
  const char* name;
  const char* almost;
  const char* line;
  const char* message;
};

class FixedList : public RulesPage, public testing::WithParamInterface<FixedCombo> {
 protected:
  FixedList() {
    start();
    show("001");
  }
  ComboBox& tested() { return combo(GetParam().name); }
  // The text is gone, and the user is back in the field.
  void expectRefused(Caller at = Caller::here()) {
    const auto trace = called("expectRefused", at);
    expectBox(GetParam().message, Icon::Exclamation);
    EXPECT_EQ(tested().text(), "");
    EXPECT_EQ(tested().listIndex(), -1);
    EXPECT_PRED_FORMAT1(hasFocus, tested());
    EXPECT_EQ(tabs().tab(), kRulesTab);
    expectNothingWritten();
    EXPECT_EQ(state(), kExisting);
  }
};

TEST_P(FixedList, RefusesAnotherTextOnLeaving) {
  for (const char* text : {GetParam().almost, "x", " "}) {
    SCOPED_TRACE(text);
    user_->fill(tested(), text);
    expectNoBox();
    EXPECT_FALSE(user_->go(check("Cac_LettresInfo")));
    expectRefused();
  }
}

TEST_P(FixedList, TheClickThatLeftIsDropped) {
  for (const char* name : {"Cmd_Annuler", "Cmd_OK", "Cmd_Sortir", "Cmd_Supprimer"}) {
    SCOPED_TRACE(name);
    user_->fill(tested(), GetParam().almost);
    EXPECT_FALSE(press(name));
    expectRefused();
  }
  EXPECT_FALSE(control_->W_Sortir());
  user_->fill(tested(), GetParam().almost);
  EXPECT_FALSE(user_->click(check("Cac_LettresInfo")));
  expectRefused();
  EXPECT_FALSE(check("Cac_LettresInfo").value());
}

TEST_P(FixedList, TheSecondClickOnAnnulerWorks) {
  user_->fill(tested(), GetParam().almost);
  EXPECT_FALSE(press("Cmd_Annuler"));
  expectRefused();
  EXPECT_TRUE(press("Cmd_Annuler"));
  expectNoBox();
  EXPECT_EQ(state(), kEmpty);
}

TEST_P(FixedList, AnotherTabIsNotReachedWithIt) {
  user_->fill(tested(), GetParam().almost);
  EXPECT_FALSE(user_->click(tabs(), 4));
  expectRefused();
  user_->fill(tested(), GetParam().almost);
  EXPECT_FALSE(user_->tab() && !tested().hasFocus());
  expectRefused();
}

TEST_P(FixedList, AnotherBodyIsNotLookedUpWithIt) {
  user_->fill(tested(), GetParam().almost);
  EXPECT_FALSE(user_->fill(code(), "002"));
  expectRefused();
  EXPECT_EQ(code().text(), "001");
}

TEST_P(FixedList, EnterLeavesTextAndFocus) {
  user_->fill(tested(), GetParam().almost);
  user_->press(toolkit::Key::Enter);
  expectNoBox();
  EXPECT_EQ(tested().text(), GetParam().almost);
  EXPECT_PRED_FORMAT1(hasFocus, tested());
}

TEST_P(FixedList, TakesALineTypedInFull) {
  user_->fill(tested(), GetParam().line);
  EXPECT_TRUE(user_->tab());
  expectNoBox();
  EXPECT_EQ(tested().text(), GetParam().line);
  EXPECT_FALSE(tested().hasFocus());
}

TEST_P(FixedList, AnEmptyTextPasses) {
  user_->fill(tested(), "");
  EXPECT_TRUE(user_->go(check("Cac_LettresInfo")));
  expectNoBox();
  EXPECT_EQ(tested().text(), "");
}

TEST_P(FixedList, TheUserChoosesALineAfterARefusal) {
  user_->fill(tested(), GetParam().almost);
  user_->go(check("Cac_LettresInfo"));
  expectRefused();
  user_->choose(tested(), 1);
  EXPECT_TRUE(user_->go(check("Cac_LettresInfo")));
  expectNoBox();
  EXPECT_EQ(tested().text(), tested().list(1));
}

TEST_P(FixedList, AControlClosedWhileTheMessageIsOpenGoesQuietly) {
  user_->fill(tested(), GetParam().almost);
  desktop_.onBox = [](const toolkit::headless::Entry&) { throw toolkit::ControlClosed(); };
  EXPECT_THROW(user_->go(check("Cac_LettresInfo")), toolkit::ControlClosed);
  desktop_.onBox = nullptr;
  expectNothingWritten();
}

INSTANTIATE_TEST_SUITE_P(
    OnTheRulesPage, FixedList,
    testing::Values(
        FixedCombo{"Cbo_PeriodFactOrgChg", "mensuelle", "Trimestrielle",
                   "La période de facturation saisie n'existe pas, veuillez la ressaisir."},
        FixedCombo{
            "Cbo_RenouvOrgChg", "Renouvellement a - 1 mois", "Renouvellement à - 1 mois",
            "Le déclenchement du renouvellement saisi n'existe pas, veuillez le ressaisir."}),
    [](const auto& tested) { return std::string(tested.param.name + 4, 6); });

class StatisticsList : public RulesPage {
 protected:
  StatisticsList() {
    start();
    show("001");
  }
};

TEST_F(StatisticsList, DropsAnotherTextSilentlyWithTheClickThatLeftIt) {
  for (const char* text : {"mutuelle", "Mutuelle ", "x"}) {
    SCOPED_TRACE(text);
    user_->fill(statistics(), text);
    EXPECT_FALSE(user_->click(check("Cac_LettresInfo")));
    expectNoBox();
    EXPECT_FALSE(check("Cac_LettresInfo").value());
    EXPECT_EQ(statistics().text(), "");
    EXPECT_EQ(statistics().listIndex(), -1);
    EXPECT_PRED_FORMAT1(hasFocus, statistics());
  }
  EXPECT_TRUE(user_->click(check("Cac_LettresInfo")));
  EXPECT_TRUE(check("Cac_LettresInfo").value());
}

TEST_F(StatisticsList, KeepsALineTypedInFull) {
  user_->fill(statistics(), "Mutuelle");
  EXPECT_TRUE(user_->go(check("Cac_LettresInfo")));
  EXPECT_EQ(statistics().text(), "Mutuelle");
}

TEST_F(StatisticsList, WhatWasStoredIsKeptUntilALineIsChosenOrTheFieldIsEmptied) {
  const std::string chosen = statistics().list(1);
  user_->choose(statistics(), 1);
  expectSaved("001", {{43, "MU"}});
  show("001");
  ASSERT_EQ(statistics().text(), chosen);
  user_->fill(statistics(), "autre");
  EXPECT_FALSE(press("Cmd_OK"));
  EXPECT_EQ(statistics().text(), "");
  expectSaved("001", {});
  show("001");
  user_->fill(statistics(), "");
  user_->type("autre");
  EXPECT_FALSE(press("Cmd_OK"));
  expectSaved("001", {});
  show("001");
  user_->fill(statistics(), "autre");
  EXPECT_FALSE(press("Cmd_OK"));
  user_->choose(statistics(), 0);
  expectSaved("001", {{43, "CD"}});
  show("001");
  user_->fill(statistics(), "");
  expectSaved("001", {{43, ""}});
}

}  // namespace
}  // namespace behaviour
