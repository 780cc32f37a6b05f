// Where the focus is after each message box.
#include "tests/behaviour/ControlTest.h"

namespace behaviour {
namespace {

class Focus : public ControlTest {
 protected:
  Focus() {
    fillThreeBodies(store_);
    start();
  }
  void expectBoxes(std::size_t count, Caller at = Caller::here()) {
    const auto trace = called("expectBoxes", at);
    EXPECT_PRED_FORMAT2(boxCount, desktop_.takeBoxes(), count);
  }
};

TEST_F(Focus, IsOnTheCodeAfterAnUnknownCode) {
  lookUp("777");
  expectBoxes(1);
  EXPECT_PRED_FORMAT1(hasFocus, code());
}

TEST_F(Focus, StaysOnTheAcronymWhoseBodyIsGone) {
  store_.erase("ORGPRISECHARGE", "002");
  user_->choose(sigles(), 1);
  expectBoxes(1);
  EXPECT_PRED_FORMAT1(hasFocus, sigles());
}

TEST_F(Focus, StaysOnTheAcronymWhenNothingIsFound) {
  user_->fill(sigles(), "ZZ");
  user_->press(toolkit::Key::Enter);
  expectBoxes(1);
  EXPECT_PRED_FORMAT1(hasFocus, sigles());
}

TEST_F(Focus, StaysWhereAKeyIsRefused) {
  user_->go(code());
  user_->type("é");
  expectBoxes(1);
  EXPECT_PRED_FORMAT1(hasFocus, code());
  user_->go(sigles());
  user_->type("é");
  expectBoxes(1);
  EXPECT_PRED_FORMAT1(hasFocus, sigles());
  press("Cmd_Ajouter");
  user_->type("é");
  expectBoxes(1);
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_SigleOrgChg"));
}

TEST_F(Focus, IsOnTheCodeAfterADeletion) {
  lookUp("001");
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  expectBoxes(1);
  EXPECT_PRED_FORMAT1(hasFocus, code());
}

TEST_F(Focus, StaysOnTheButtonOfADeletionAnsweredNo) {
  lookUp("001");
  desktop_.answer(Answer::No);
  press("Cmd_Supprimer");
  expectBoxes(1);
  EXPECT_PRED_FORMAT1(hasFocus, button("Cmd_Supprimer"));
}

TEST_F(Focus, StaysOnTheButtonOfADeletionRefusedByAnAgreement) {
  store_.put("ACCORD", "A1", {"001"});
  lookUp("001");
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  expectBoxes(2);
  EXPECT_PRED_FORMAT1(hasFocus, button("Cmd_Supprimer"));
}

TEST_F(Focus, StaysOnTheButtonOfADeletionRefusedByARequest) {
  store_.put("DEMANDACC", "D1", {"001"});
  lookUp("001");
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  expectBoxes(2);
  EXPECT_PRED_FORMAT1(hasFocus, button("Cmd_Supprimer"));
}

TEST_F(Focus, StaysOnTheButtonOfLeavingWhateverTheAnswer) {
  for (const Answer answer : {Answer::Cancel, Answer::No, Answer::Yes}) {
    lookUp("001");
    user_->fill(box("Txt_RaisonOrgChg"), "Domus");
    desktop_.answer(answer);
    press("Cmd_Sortir");
    expectBoxes(1);
    EXPECT_PRED_FORMAT1(hasFocus, button("Cmd_Sortir"));
  }
}

TEST_F(Focus, IsOnTheRefusedFieldWhenLeavingCannotSave) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "");
  desktop_.answer(Answer::Yes);
  press("Cmd_Sortir");
  expectBoxes(2);
  EXPECT_PRED_FORMAT1(hasFocus, box("Txt_RaisonOrgChg"));
}

TEST_F(Focus, IsOnTheCodeAfterACancelledCreation) {
  beginCreation();
  desktop_.answer(Answer::Yes);
  press("Cmd_Annuler");
  expectBoxes(1);
  EXPECT_PRED_FORMAT1(hasFocus, code());
}

}  // namespace
}  // namespace behaviour
