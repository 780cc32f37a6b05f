// Somebody else works on the same body: nothing of theirs is overwritten, nothing typed is lost.
#include "tests/behaviour/ControlTest.h"

namespace behaviour {
namespace {

constexpr const char* kModifieeAilleurs =
    "La fiche a été modifiée, créée ou supprimée par quelqu'un d'autre depuis sa lecture. Rien n'a "
    "été enregistré : saisissez à nouveau le code pour voir la fiche telle qu'elle est.";

class TwoUsers : public ControlTest {
 protected:
  TwoUsers() {
    fillThreeBodies(store_);
    store_.watchOverChanges();
    start();
    control_->onEchec = [this](std::string_view procedure, const store::StoreError& failure) {
      EXPECT_EQ(failure.code(), store::kChanged);
      told_.push_back(std::string(procedure) + ": " + failure.what());
    };
    control_->onEnregistre = [this](const std::string& code, bool) {
      told_.push_back("saved " + code);
    };
  }

  void expectRefused(const std::string& typed) {
    EXPECT_PRED_FORMAT1(noBoxes, desktop_.boxes());
    EXPECT_EQ(desktop_.beeps(), 1);
    EXPECT_PRED_FORMAT2(same, told_, Lines({std::string("Cmd_OK_Click: ") + kModifieeAilleurs}));
    EXPECT_EQ(box("Txt_RaisonOrgChg").text(), typed);
    EXPECT_EQ(code().text(), "001");
  }

  Lines told_;
};

TEST_F(TwoUsers, ABodyThatSomebodyElseHasChangedIsNotOverwritten) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Mon nom");
  store_.set("ORGPRISECHARGE", "001", attribut::RaisonOrgChg, "Leur nom");
  const std::string theirs = store_.record("ORGPRISECHARGE", "001").text();
  press("Cmd_OK");
  expectRefused("Mon nom");
  EXPECT_EQ(store_.record("ORGPRISECHARGE", "001").text(), theirs);
  lookUp("001");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Leur nom");
  user_->fill(box("Txt_RaisonOrgChg"), "Notre nom");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Notre nom");
}

TEST_F(TwoUsers, ABodyThatSomebodyElseHasDeletedDoesNotComeBack) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Mon nom");
  store_.erase("ORGPRISECHARGE", "001");
  press("Cmd_OK");
  expectRefused("Mon nom");
  EXPECT_FALSE(store_.has("ORGPRISECHARGE", "001"));
}

TEST_F(TwoUsers, LeavingDoesNotOverwriteEither) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Mon nom");
  store_.set("ORGPRISECHARGE", "001", attribut::RaisonOrgChg, "Leur nom");
  desktop_.answer(Answer::Yes);
  EXPECT_THROW(press("Cmd_Sortir"), store::StoreError);
  EXPECT_FALSE(control_->W_Sortir());
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Leur nom");
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Mon nom");
}

TEST_F(TwoUsers, OneUserAloneIsNeverRefused) {
  for (const char* const name : {"Premier", "Deuxième"}) {
    lookUp("001");
    user_->fill(box("Txt_RaisonOrgChg"), name);
    press("Cmd_OK");
    EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), name);
  }
  beginCreation();
  press("Cmd_OK");
  lookUp("004");
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  beginCreation();
  press("Cmd_OK");
  EXPECT_PRED_FORMAT2(same, told_, Lines({"saved 001", "saved 001", "saved 004", "saved 005"}));
}

}  // namespace
}  // namespace behaviour
