// The questions that a save asks about the agreements, and when it asks none.
#include "agreements/Propagation.h"
#include "tests/behaviour/PropagationTest.h"
#include "toolkit/ControlClosed.h"

namespace behaviour {
namespace {

using toolkit::Buttons;

class PropagationQuestions : public Propagation {
 protected:
  // The user saves; no question comes, the body is written and the screen cleared.
  void expectSavedUnasked(Caller at = Caller::here()) {
    const auto trace = called("expectSavedUnasked", at);
    store_.forgetCalls();
    desktop_.takeBoxes();
    EXPECT_TRUE(press("Cmd_OK"));
    expectNoBox();
    expectSaved();
    EXPECT_EQ(commands(), 0);
  }
  // Active ones forbid to change the body's type, and its participation's mode.
  void withoutAgreements() {
    for (const std::string& key : store_.ids("ACCORD")) store_.erase("ACCORD", key);
  }
  void expectSaved(Caller at = Caller::here()) {
    const auto trace = called("expectSaved", at);
    EXPECT_EQ(store_.calls(CallKind::DBWrite).size(), 1U);
    EXPECT_EQ(state(), kEmpty);
    EXPECT_EQ(code().text(), "");
    EXPECT_PRED_FORMAT1(hasFocus, code());
    EXPECT_EQ(caption("Cmd_NouveauBareme"), "Nouveau barè&me");
    expectUsable();
  }
  int commands() {
    int count = 0;
    for (const auto& call : store_.calls(CallKind::ExecuteSentence)) count += call.file.empty();
    return count;
  }
  // The host closes at that box: the body is written, and nothing follows.
  void expectClosedAt(int closed, Caller at = Caller::here()) {
    const auto trace = called("expectClosedAt", at);
    enterScale();
    int boxes = 0;
    desktop_.onBox = [&boxes, closed](const Entry&) {
      if (++boxes == closed) throw toolkit::ControlClosed();
    };
    desktop_.answer(Answer::Yes);
    EXPECT_THROW(press("Cmd_OK"), toolkit::ControlClosed);
    EXPECT_EQ(boxes, closed);
    EXPECT_EQ(commands(), 0);
    EXPECT_EQ(store_.calls(CallKind::DBWrite).size(), 1U);
    EXPECT_EQ(attribute("001", attribut::DatBaremCours), stored("01/02/2026"));
    expectUsable();
  }
  void expectQuestions(std::string_view date, bool both, int beepsBefore = 0,
                       Caller at = Caller::here()) {
    const auto trace = called("expectQuestions", at);
    const auto boxes = desktop_.takeBoxes();
    ASSERT_EQ(boxes.size(), both ? 2U : 1U);
    EXPECT_EQ(boxes[0].text, questionBareme(date));
    if (both) EXPECT_EQ(boxes[1].text, kInformer);
    for (const Entry& box : boxes) {
      EXPECT_EQ(box.title, "Message VALDRIS");
      EXPECT_EQ(box.icon, Icon::Exclamation);
      EXPECT_EQ(box.buttons, Buttons::YesNo);
    }
    EXPECT_EQ(desktop_.beeps(), beepsBefore);
  }
};

TEST_F(PropagationQuestions, NoToTheFirstLeavesTheAgreementsAlone) {
  enterScale();
  saveAnswering({Answer::No});
  expectQuestions("01/02/2026", false);
  EXPECT_EQ(commands(), 0);
  expectSaved();
}

TEST_F(PropagationQuestions, YesAsksForLettersAndNoToThatUpdatesAllTheSame) {
  enterScale();
  saveAnswering({Answer::Yes, Answer::No});
  expectQuestions("01/02/2026", true);
  EXPECT_EQ(commands(), 1);
  expectSaved();
}

TEST_F(PropagationQuestions, YesTwiceUpdates) {
  enterScale();
  saveAnswering({Answer::Yes, Answer::Yes});
  expectQuestions("01/02/2026", true);
  EXPECT_EQ(commands(), 1);
  expectSaved();
}

TEST_F(PropagationQuestions, AnsweredByWhoHasLostTheRightMeanwhileUpdateNothing) {
  for (const int lost : {1, 2}) {
    SCOPED_TRACE(lost);
    desktop_.onBox = nullptr;
    show();
    enterScale(lost == 1 ? "01022026" : "01032026");
    int boxes = 0;
    desktop_.onBox = [&](const Entry&) {
      if (++boxes == lost) level_->value = 1;
    };
    saveAnswering({Answer::Yes, Answer::Yes});
    EXPECT_EQ(boxes, 2);
    EXPECT_EQ(commands(), 0);
    EXPECT_EQ(state(), kEmpty);
    level_->value = 2;
  }
}

TEST_F(PropagationQuestions, ComeOnceTheBodyIsWrittenAndWhileItIsOnScreen) {
  enterScale();
  desktop_.onBox = [this](const Entry&) {
    EXPECT_EQ(store_.calls(CallKind::DBWrite).size(), 1U);
    EXPECT_EQ(attribute("001", attribut::DatBaremCours), stored("01/02/2026"));
    EXPECT_EQ(code().text(), "001");
    EXPECT_EQ(box("Txt_DatBaremCours").text(), "01/02/2026");
    EXPECT_FALSE(control_->surface().enabled());
    EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Hourglass);
  };
  saveAnswering({Answer::Yes, Answer::No});
  expectSaved();
}

TEST_F(PropagationQuestions, AreNotAskedWithoutANewScale) { expectSavedUnasked(); }

TEST_F(PropagationQuestions, AreNotAskedOfAScaleThatWasTakenBack) {
  enterScale();
  ASSERT_TRUE(press("Cmd_NouveauBareme"));
  expectSavedUnasked();
}

TEST_F(PropagationQuestions, AreNotAskedOfAComplementaryBody) {
  withoutAgreements();
  enterScale();
  ASSERT_TRUE(user_->click(tabs(), 1));
  ASSERT_TRUE(user_->click(option("Opt_TypeComplOrgChg")));
  expectSavedUnasked();
}

TEST_F(PropagationQuestions, AreNotAskedOfABodyCountedInAmount) {
  // An agency's activities: only they can be counted in amount.
  store_.set("ACTIVITES", "010P01", store::activites::TypeActivite, "M");
  show();
  enterScale();
  ASSERT_TRUE(user_->click(tabs(), 2));
  ASSERT_TRUE(user_->click(option("Opt_MontantOrgChg")));
  expectSavedUnasked();
}

TEST_F(PropagationQuestions, AreNotAskedOfAParticipationInPercentage) {
  withoutAgreements();
  enterScale();
  ASSERT_TRUE(user_->click(option("Opt_GestPartPourc")));
  expectSavedUnasked();
}

TEST_F(PropagationQuestions, AreNotAskedWhileTheSaveIsRefused) {
  enterScale("");
  press("Cmd_OK");
  expectBox("La date du barème en cours est obligatoire.", Icon::Exclamation);
  EXPECT_EQ(commands(), 0);
  ASSERT_TRUE(user_->type("01022026"));
  store_.forgetCalls();
  saveAnswering({Answer::No});
  expectQuestions("01/02/2026", false);
  expectSaved();
}

TEST_F(PropagationQuestions, AreNotAskedWhenTheWriteFails) {
  enterScale();
  store_.fail(CallKind::DBWrite);
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(state(), kExisting);
  store_.stopFailing();
  store_.forgetCalls();
  saveAnswering({Answer::No});
  expectQuestions("01/02/2026", false, 1);
  expectSaved();
}

TEST_F(PropagationQuestions, AreNotAskedAgainAtTheNextSave) {
  enterScale();
  saveAnswering({Answer::No});
  show();
  expectSavedUnasked();
}

TEST_F(PropagationQuestions, AreNotAskedAfterACancel) {
  enterScale();
  ASSERT_TRUE(press("Cmd_Annuler"));
  show();
  expectSavedUnasked();
}

TEST_F(PropagationQuestions, AreNotAskedWhileSuspended) {
  toolkit::Surface surface{"Ctr_OrgPriseCharge"};
  screen::Screen screen(surface);
  screen::EditSession session;
  session.NouveauBareme = true;
  session.propagationSuspendue = true;
  screen.regles.Opt_TypePrincipalOrgChg.setValue(true);
  screen.priseEnCharge.Opt_HeureOrgChg.setValue(true);
  screen.participation.Opt_GestPartMont.setValue(true);
  agreements::proposerPropagation({desktop_, surface, screen, session});
  expectNoBox();
  session.propagationSuspendue = false;
  desktop_.answer(Answer::No);
  agreements::proposerPropagation({desktop_, surface, screen, session});
  expectQuestions("", false);
}

TEST_F(PropagationQuestions, OfACreationAreAboutTheNewCode) {
  ASSERT_TRUE(press("Cmd_Annuler"));
  beginCreation();
  ASSERT_TRUE(user_->click(tabs(), 1));
  ASSERT_TRUE(user_->click(option("Opt_TypePrincipalOrgChg")));
  ASSERT_TRUE(user_->click(tabs(), 3));
  ASSERT_TRUE(user_->click(option("Opt_GestPartMont")));
  enterScale();
  serverAnswers({"00001001"}, {"00002001"});
  desktop_.onBox = [this](const Entry&) { EXPECT_EQ(code().text(), "004"); };
  saveAnswering({Answer::Yes, Answer::Yes, Answer::No});
  const auto boxes = desktop_.takeBoxes();
  ASSERT_PRED_FORMAT2(boxCount, boxes, 3U);
  EXPECT_EQ(boxes[0].text, questionBareme("01/02/2026"));
  const std::vector<std::string> run = callsOfRun();
  ASSERT_GT(run.size(), 2U);
  EXPECT_EQ(run[0], "DBWrite ORGPRISECHARGE 004");
  EXPECT_TRUE(run[1].ends_with("MAJTXACCGENE |01/02/2026|004"));
  EXPECT_EQ(std::count(run.begin(), run.end(), "ReadRecord TEMPO ACCORDSMODIFIES004"), 1);
  EXPECT_EQ(state(), kEmpty);
  expectListsDeleted();
  expectUsable();
}

TEST_F(PropagationQuestions, ComeWhenTheUserSavesOnLeaving) {
  enterScale();
  for (const Answer answer : {Answer::Yes, Answer::Yes, Answer::No}) desktop_.answer(answer);
  ASSERT_TRUE(press("Cmd_Sortir"));
  const auto boxes = desktop_.takeBoxes();
  ASSERT_PRED_FORMAT2(boxCount, boxes, 3U);
  EXPECT_EQ(boxes[1].text, questionBareme("01/02/2026"));
  EXPECT_EQ(boxes[2].text, kInformer);
  EXPECT_EQ(commands(), 1);
  EXPECT_TRUE(control_->W_Sortir());
  EXPECT_EQ(code().text(), "");
  expectUsable();
}

TEST_F(PropagationQuestions, DoNotComeWhenTheUserLeavesWithoutSaving) {
  enterScale();
  desktop_.answer(Answer::No);
  ASSERT_TRUE(press("Cmd_Sortir"));
  EXPECT_PRED_FORMAT2(boxCount, desktop_.takeBoxes(), 1U);
  EXPECT_TRUE(control_->W_Sortir());
  expectNothingWritten();
}

TEST_F(PropagationQuestions, ComeWhenTheHostSaves) {
  enterScale();
  desktop_.answer(Answer::Yes);
  desktop_.answer(Answer::No);
  control_->Ecrire_Donnees();
  expectQuestions("01022026", true);
  EXPECT_EQ(commands(), 1);
  EXPECT_EQ(state(), kEmpty);
  expectUsable();
}

TEST_F(PropagationQuestions, EndTheSaveWhenTheHostClosesAtTheFirst) { expectClosedAt(1); }

TEST_F(PropagationQuestions, EndTheSaveWhenTheHostClosesAtTheSecond) { expectClosedAt(2); }

}  // namespace
}  // namespace behaviour
