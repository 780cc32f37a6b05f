// Everyday work by the keyboard: what is typed where the keys have led, where they lead next, and
// what Enter answers.
#include <functional>

#include "tests/behaviour/ScaleTest.h"
#include "text/Utf8.h"

namespace behaviour {
namespace {

using toolkit::Key;
using toolkit::KeyStroke;

constexpr KeyStroke kNextPage{Key::PageDown, 0, false, true, false};
constexpr KeyStroke kPreviousPage{Key::PageUp, 0, false, true, false};

class Keys : public ControlTest {
 protected:
  Keys() {
    fillThreeBodies(store_);
    completeBody(store_, "001");
    start();
  }
  std::string focus() {
    const toolkit::Control* control = control_->surface().focus();
    return control ? control->name() : "";
  }
};

// What the keys have led to is selected -----------------------------------------------------------

TEST_F(Keys, AFieldReachedByTabIsTypedOver) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "1500");
  user_->fill(box("Txt_Complement"), "Bât. A");
  user_->go(box("Txt_RaisonOrgChg"));
  user_->tab();
  user_->type("Bât. B");
  user_->tab(true);
  user_->type("1000");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "1000");
  EXPECT_EQ(box("Txt_Complement").text(), "Bât. B");
}

TEST_F(Keys, AFieldReachedByItsMnemonicIsTypedOverAlsoWhenItHasTheFocus) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "1500");
  user_->alt('L');
  user_->type("1000");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "1000");
}

TEST_F(Keys, AClickPlacesTheCaretWhateverWasSelectedThereBefore) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "1500");
  user_->go(box("Txt_Complement"));
  user_->tab(true);
  ASSERT_EQ(box("Txt_RaisonOrgChg").selectionLength(), 4);
  user_->tab();
  user_->go(box("Txt_RaisonOrgChg"));
  user_->type("0");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "15000");
}

TEST_F(Keys, AComboBoxReachedByTabIsTypedOver) {
  lookUp("001");
  user_->fill(box("Txt_NumVoie"), "12");
  user_->fill(combo("Cbo_NatureVoie"), "Sente");
  user_->go(box("Txt_NumVoie"));
  user_->tab();
  user_->type("Quai");
  EXPECT_EQ(combo("Cbo_NatureVoie").text(), "Quai");
  user_->tab();
  EXPECT_EQ(combo("Cbo_NatureVoie").selectionLength(), 0);
}

TEST_F(Keys, AListThatASearchHasOpenedLeavesTheCaretBehindWhatWasTyped) {
  user_->fill(sigles(), "C");
  user_->press(Key::Enter);
  ASSERT_TRUE(sigles().opened());
  user_->type("A");
  EXPECT_EQ(sigles().text(), "CA");
}

// Fixed lists -------------------------------------------------------------------------------------

class FixedListKeys : public Keys {
 protected:
  FixedListKeys() {
    lookUp("001");
    user_->click(tabs(), kRegles);
    user_->fill(trigger(), "");
  }
  ComboBox& trigger() { return combo("Cbo_RenouvOrgChg"); }
  ComboBox& period() { return combo("Cbo_PeriodFactOrgChg"); }
};

TEST_F(FixedListKeys, ABeginningIsCompletedAndTakenOnLeaving) {
  user_->fill(period(), "TR");
  EXPECT_EQ(period().text(), "TRimestrielle");
  EXPECT_EQ(period().selectionStart(), 2);
  EXPECT_EQ(period().selectionLength(), 11);
  user_->tab();
  expectNoBox();
  EXPECT_EQ(period().text(), "Trimestrielle");
  EXPECT_FALSE(period().hasFocus());
}

TEST_F(FixedListKeys, AccentsDoNotCount) {
  user_->fill(trigger(), "renouvellement a - 4");
  user_->tab();
  expectNoBox();
  EXPECT_EQ(trigger().text(), "Renouvellement à - 4 mois");
}

TEST_F(FixedListKeys, BackspaceTakesTheRestAwayAndThenWhatWasTyped) {
  user_->fill(period(), "tri\b");
  EXPECT_EQ(period().text(), "tri");
  user_->type("\b");
  EXPECT_EQ(period().text(), "tr");
  user_->type("i");
  EXPECT_EQ(period().text(), "trimestrielle");
}

TEST_F(FixedListKeys, WhatBeginsNoLineStaysAsTypedAndIsRefused) {
  user_->fill(period(), "trix");
  EXPECT_EQ(period().text(), "trix");
  user_->tab();
  expectBox("La période de facturation saisie n'existe pas, veuillez la ressaisir.",
            Icon::Exclamation);
}

TEST_F(FixedListKeys, EnterTakesTheLine) {
  user_->fill(period(), "a\r");
  EXPECT_EQ(period().text(), "A fin de prise en charge");
}

TEST_F(FixedListKeys, OtherComboBoxesCompleteNothing) {
  user_->click(tabs(), kCoordonnees);
  user_->fill(combo("Cbo_NatureVoie"), "r");
  EXPECT_EQ(combo("Cbo_NatureVoie").text(), "r");
}

TEST_F(FixedListKeys, F4AndAltDownOpenTheList) {
  user_->go(period());
  ASSERT_TRUE(user_->press(Key::F4));
  EXPECT_TRUE(period().opened());
  user_->press(Key::F4);
  EXPECT_FALSE(period().opened());
  KeyStroke down{Key::Down};
  down.alt = true;
  user_->press(down);
  EXPECT_TRUE(period().opened());
}

// The order of Tab --------------------------------------------------------------------------------

TEST_F(Keys, AfterAjouterComeTheAcronymAndTheCompanyName) {
  user_->alt('A');
  EXPECT_EQ(focus(), "Txt_SigleOrgChg");
  user_->tab();
  EXPECT_EQ(focus(), "Txt_RaisonOrgChg");
}

TEST_F(Keys, CtrlPageDownAndUpLeadIntoTheFirstFieldOfAPage) {
  lookUp("001");
  const char* const firsts[] = {"Opt_TypePrincipalOrgChg", "Opt_HeureOrgChg", "Opt_Ressource",
                                "Lst_ParamPossOrgChg",     "Txt_Entite",      "Txt_RaisonOrgChg"};
  for (const char* first : firsts) {
    ASSERT_TRUE(user_->press(kNextPage)) << first;
    EXPECT_EQ(focus(), first);
  }
  user_->press(kPreviousPage);
  EXPECT_EQ(focus(), "Txt_Entite");
  EXPECT_EQ(box("Txt_Entite").selectionLength(), 3);
}

TEST_F(Keys, APageWhoseFieldIsRefusedIsNotTurned) {
  lookUp("001");
  user_->click(tabs(), kRegles);
  user_->fill(combo("Cbo_PeriodFactOrgChg"), "zz");
  user_->press(kNextPage);
  EXPECT_EQ(tabs().tab(), kRegles);
  EXPECT_EQ(focus(), "Cbo_PeriodFactOrgChg");
  desktop_.takeBoxes();
}

TEST_F(Keys, AfterAnAcceptedSaveTheNextCodeIsTyped) {
  lookUp("001");
  user_->alt('L');
  user_->type("Domus");
  user_->alt('O');
  expectNoBox();
  EXPECT_EQ(focus(), "Txt_CodOrgChg");
  user_->type("002");
  EXPECT_EQ(sigles().text(), "CRAM");
}

// What destroys -----------------------------------------------------------------------------------

class WhatDestroys : public Keys {
 protected:
  void expectProposesNo(Caller at = Caller::here()) {
    const auto trace = called("expectProposesNo", at);
    const auto boxes = desktop_.takeBoxes();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes.front().buttons, toolkit::Buttons::YesNo);
    EXPECT_EQ(boxes.front().proposed, Answer::No);
  }
};

TEST_F(WhatDestroys, ADeletionProposesNo) {
  lookUp("001");
  desktop_.answer(Answer::No);
  press("Cmd_Supprimer");
  expectProposesNo();
}

TEST_F(WhatDestroys, LeavingACreationProposesNo) {
  press("Cmd_Ajouter");
  desktop_.answer(Answer::No);
  press("Cmd_Annuler");
  expectProposesNo();
}

TEST_F(WhatDestroys, ARowsDeletionAndAnAdditionThatIsLeftProposeNo) {
  lookUp("001");
  user_->click(tabs(), kPriseEnCharge);
  press("Cmd_AjoutTaux");
  desktop_.answer(Answer::No);
  press("Cmd_AnnulerTaux");
  expectProposesNo();
  desktop_.answer(Answer::Yes);
  press("Cmd_AnnulerTaux");
  desktop_.takeBoxes();
  user_->dblClick(list("Lst_DateRembOrgChg"), 0);
  desktop_.answer(Answer::No);
  press("Cmd_SuppTaux");
  expectProposesNo();
}

TEST_F(WhatDestroys, OtherQuestionsProposeTheirFirstAnswer) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Domus");
  desktop_.answer(Answer::Cancel);
  press("Cmd_Sortir");
  const auto boxes = desktop_.takeBoxes();
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_FALSE(boxes.front().proposed.has_value());
}

// Letters -----------------------------------------------------------------------------------------

class RowLetters : public Keys {
 protected:
  // No letter is seen twice, whether its control is locked or not.
  void expectNoneTwice(Caller at = Caller::here()) {
    const auto trace = called("expectNoneTwice", at);
    std::map<char32_t, std::string> letters;
    const auto add = [&](const std::string& caption, const std::string& name) {
      const char32_t letter = toolkit::mnemonicOf(caption);
      if (letter) EXPECT_TRUE(letters.emplace(letter, name).second) << name << letters[letter];
    };
    const std::function<void(toolkit::Container&)> walk = [&](toolkit::Container& container) {
      for (toolkit::Control* child : container.children()) {
        if (child->shown() && child->kind() != toolkit::Kind::TabPage) {
          add(child->caption(), child->name());
        }
        if (auto* inner = dynamic_cast<toolkit::Container*>(child)) walk(*inner);
      }
    };
    walk(control_->surface());
    for (int tab = 0; tab < tabs().tabs(); ++tab) add(tabs().page(tab).caption(), "a tab");
  }
};

TEST_F(RowLetters, AreTheirOwnWhileARowIsOpenAndNoneIsSeenTwice) {
  struct Editor {
    int tab;
    char32_t add;
    const char* added;
    const char* ok;
    const char* cancel;
  };
  lookUp("001");
  for (const Editor& editor :
       {Editor{kPriseEnCharge, 'J', "Cmd_AjoutTaux", "Cmd_OKTaux", "Cmd_AnnulerTaux"},
        Editor{kPriseEnCharge, 'T', "Cmd_AjoutAbat", "Cmd_OKAbat", "Cmd_AnnulerAbat"},
        Editor{kParticipation, 'J', "Cmd_AjoutPart", "Cmd_OKPart", "Cmd_AnnulerPart"}}) {
    user_->click(tabs(), editor.tab);
    expectNoneTwice();
    ASSERT_TRUE(user_->alt(editor.add)) << editor.added;
    ASSERT_TRUE(button(editor.ok).usable()) << editor.added;
    expectNoneTwice();
    user_->alt('K');
    EXPECT_PRED_FORMAT2(boxCount, desktop_.takeBoxes(), 1U) << editor.ok;
    desktop_.answer(Answer::Yes);
    user_->alt('L');
    EXPECT_PRED_FORMAT2(boxCount, desktop_.takeBoxes(), 1U) << editor.cancel;
    EXPECT_FALSE(button(editor.ok).usable()) << editor.cancel;
    expectNoneTwice();
  }
}

TEST_F(RowLetters, DeleteTheRowThatIsOpen) {
  lookUp("001");
  user_->click(tabs(), kPriseEnCharge);
  user_->dblClick(list("Lst_DateRembOrgChg"), 0);
  desktop_.answer(Answer::Yes);
  user_->alt('M');
  EXPECT_EQ(list("Lst_DateRembOrgChg").listCount(), 0);
  EXPECT_PRED_FORMAT2(boxCount, desktop_.takeBoxes(), 1U);
  user_->alt('M');
  EXPECT_EQ(focus(), "Opt_MontantOrgChg");
  expectBox(
      "Vous ne pouvez attribuer une notification en montant à un organisme 'Principal' de type "
      "'Prestataire'.",
      Icon::Exclamation);
}

TEST_F(RowLetters, OfOtherCaptionsAreBackOnceTheRowIsClosed) {
  lookUp("001");
  user_->click(tabs(), kParticipation);
  press("Cmd_AjoutPart");
  EXPECT_EQ(toolkit::mnemonicOf(button("Cmd_NouveauBareme").caption()), 0U);
  EXPECT_EQ(toolkit::withoutMnemonic(button("Cmd_NouveauBareme").caption()), "Nouveau barème");
  control_->Vider_Donnees();
  EXPECT_EQ(button("Cmd_NouveauBareme").caption(), "Nouveau barè&me");
  EXPECT_EQ(button("Cmd_OKPart").caption(), "OK");
}

// Rows --------------------------------------------------------------------------------------------

class ScaleKeys : public Scale {
 protected:
  std::string focus() { return control_->surface().focus()->name(); }
};

TEST_F(ScaleKeys, EnterInTheLastZoneConfirms) {
  ASSERT_TRUE(open(0));
  user_->go(box("Txt_BaremCoursOrgChg"));
  user_->type("\r");
  EXPECT_FALSE(rowOpen());
  expectNoBox();
}

TEST_F(ScaleKeys, EnterInAnotherZoneConfirmsNothing) {
  ASSERT_TRUE(open(0));
  user_->go(box("Txt_FinRevMenOrgChg"));
  user_->type("\r");
  EXPECT_TRUE(rowOpen());
}

TEST_F(ScaleKeys, EnterConfirmsNothingThatAClickWouldNot) {
  ASSERT_TRUE(open(0));
  user_->fill(box("Txt_BaremCoursOrgChg"), "-\r");
  EXPECT_TRUE(rowOpen());
  EXPECT_EQ(focus(), "Txt_BaremCoursOrgChg");
  EXPECT_EQ(box("Txt_BaremCoursOrgChg").text(), "-");
  user_->fill(box("Txt_BaremCoursOrgChg"), "\b\r");
  expectBox("Le montant du barème en cours est obligatoire.", Icon::Exclamation);
  EXPECT_TRUE(rowOpen());
}

TEST_F(ScaleKeys, AChangedRowLeadsToTheNextOneAndTheLastToItself) {
  const int count = list("Lst_DebRevSeulOrgChg").listCount();
  ASSERT_GE(count, 2);
  ASSERT_TRUE(open(0));
  for (int row = 0; row < count; ++row) {
    ASSERT_TRUE(rowOpen()) << row;
    press("Cmd_OKPart");
    const int next = std::min(row + 1, count - 1);
    EXPECT_EQ(focus(), "Lst_DebRevSeulOrgChg");
    EXPECT_PRED_FORMAT2(same, selected(), std::vector<int>(kScaleColumns, next));
    user_->press(Key::Enter);
  }
}

TEST_F(ScaleKeys, ARowThatHasMovedLeadsToTheOneBelowItsNewPlace) {
  Rows before = rows();
  ASSERT_GE(before.size(), 3U);
  ASSERT_TRUE(open(0));
  fillZones({"600", "99999", before[1][2], "99999", "1"});
  press("Cmd_OKPart");
  expectNoBox();
  EXPECT_EQ(list("Lst_DebRevSeulOrgChg").listIndex(), 2);
}

TEST_F(ScaleKeys, AnAddedRowLeadsToTheAddButton) {
  show("002");
  press("Cmd_AjoutPart");
  fillZones({"0", "100", "0", "100", "5"});
  user_->type("\r");
  EXPECT_FALSE(rowOpen());
  EXPECT_EQ(focus(), "Cmd_AjoutPart");
}

// Enter, the value, Enter: two keys and the value a row.
TEST_F(ScaleKeys, AmountsOfANewScaleAreRaisedRowByRow) {
  beginScale("01012027");
  user_->alt('C');
  const int count = list("Lst_BaremCoursOrgChg").listCount();
  ASSERT_TRUE(list("Lst_BaremCoursOrgChg").userSelect(0));
  for (int row = 0; row < count; ++row) {
    user_->type("\r" + std::to_string(row + 7) + "\r");
    EXPECT_EQ(focus(), "Lst_BaremCoursOrgChg");
  }
  for (int row = 0; row < count; ++row) {
    EXPECT_EQ(list("Lst_BaremCoursOrgChg").list(row), std::to_string(row + 7) + ",00");
  }
}

class CoverageKeys : public Coverage {
 protected:
  std::string focus() { return control_->surface().focus()->name(); }
};

TEST_F(CoverageKeys, AChangedRateLeadsToTheRates) {
  ASSERT_TRUE(openRate(0));
  user_->go(box("Txt_PrestServOrgChg"));
  user_->type("\r");
  EXPECT_FALSE(rateOpen());
  EXPECT_EQ(focus(), "Lst_DateRembOrgChg");
  EXPECT_EQ(list("Lst_PrestServOrgChg").listIndex(), 1);
}

TEST_F(CoverageKeys, AnAddedRateLeadsToItsAddButton) {
  press("Cmd_AjoutTaux");
  user_->type("01012027\t30\t31\t29\r");
  expectNoBox();
  EXPECT_FALSE(rateOpen());
  EXPECT_EQ(focus(), "Cmd_AjoutTaux");
  EXPECT_EQ(list("Lst_DateRembOrgChg").list(0), "01/01/2027");
}

TEST_F(CoverageKeys, AChangedDeductionLeadsToTheDeductions) {
  addDeduction({"0", "10", "5"});
  addDeduction({"10", "20", "6"});
  EXPECT_EQ(focus(), "Cmd_AjoutAbat");
  ASSERT_TRUE(openDeduction(0));
  EXPECT_EQ(box("Txt_DebAbatHOrgChg").selectionLength(), 1);
  user_->fill(box("Txt_PourcentAbatOrgChg"), "7\r");
  EXPECT_EQ(focus(), "Lst_DebAbatHOrgChg");
  EXPECT_EQ(list("Lst_DebAbatHOrgChg").listIndex(), 1);
}

}  // namespace
}  // namespace behaviour
