// What the host is told of as it happens: bodies saved and deleted, and failures of the store that
// the control shows nothing of.
#include <algorithm>
#include <sstream>

#include "tests/behaviour/PropagationTest.h"

namespace behaviour {
namespace {

// "Enregistre 001", "Enregistre 004 (création)", "Supprime 001", "Echec Cmd_OK_Click 80040003".
void keepWords(control::Ctr_OrgPriseCharge& control, Lines& words) {
  control.onEnregistre = [&words](const std::string& code, bool creation) {
    words.push_back("Enregistre " + code + (creation ? " (création)" : ""));
  };
  control.onSupprime = [&words](const std::string& code) { words.push_back("Supprime " + code); };
  control.onEchec = [&words](std::string_view procedure, const store::StoreError& failure) {
    std::ostringstream text;
    text << "Echec " << procedure << " " << std::hex << failure.code();
    words.push_back(text.str());
  };
}

class Announcements : public ControlTest {
 protected:
  Announcements() {
    fillThreeBodies(store_);
    start();
    keepWords(*control_, words_);
  }

  void show(std::string_view code, Caller at = Caller::here()) {
    const auto trace = called("show", at);
    lookUp(code);
    ASSERT_PRED_FORMAT2(same, words_, Lines());
  }
  // The user presses Delete and agrees.
  void remove(Caller at = Caller::here()) {
    const auto trace = called("remove", at);
    desktop_.answer(Answer::Yes);
    press("Cmd_Supprimer");
  }

  Lines words_;
};

TEST_F(Announcements, ASaveTellsTheCode) {
  show("002");
  user_->fill(box("Txt_RaisonOrgChg"), "Caisse");
  press("Cmd_OK");
  EXPECT_EQ(attribute("002", attribut::RaisonOrgChg), "Caisse");
  EXPECT_PRED_FORMAT2(same, words_, Lines({"Enregistre 002"}));
}

TEST_F(Announcements, ACreationTellsItsNewCode) {
  beginCreation();
  press("Cmd_OK");
  EXPECT_TRUE(store_.has("ORGPRISECHARGE", "004"));
  EXPECT_PRED_FORMAT2(same, words_, Lines({"Enregistre 004 (création)"}));
}

TEST_F(Announcements, ARefusedSaveTellsNothing) {
  show("002");
  user_->fill(box("Txt_RaisonOrgChg"), "");
  press("Cmd_OK");
  EXPECT_EQ(desktop_.takeBoxes().size(), 1U);
  EXPECT_PRED_FORMAT2(same, words_, Lines());
}

TEST_F(Announcements, ACreationWithoutACodeTellsNothing) {
  beginCreation();
  store_.set("COMPTEUR", "999", store::compteur::DernierOrgChg, "999");
  press("Cmd_OK");
  expectBox(kPlusDeCode, Icon::Information);
  EXPECT_PRED_FORMAT2(same, words_, Lines());
}

TEST_F(Announcements, ASaveOnLeavingTellsTheCode) {
  show("003");
  user_->fill(box("Txt_RaisonOrgChg"), "Caisse");
  desktop_.answer(Answer::Yes);
  press("Cmd_Sortir");
  EXPECT_TRUE(control_->W_Sortir());
  EXPECT_PRED_FORMAT2(same, words_, Lines({"Enregistre 003"}));
}

TEST_F(Announcements, ASaveByTheHostTellsTheCode) {
  show("002");
  control_->Ecrire_Donnees();
  EXPECT_PRED_FORMAT2(same, words_, Lines({"Enregistre 002"}));
}

TEST_F(Announcements, ADeletionTellsTheCode) {
  show("002");
  remove();
  EXPECT_FALSE(store_.has("ORGPRISECHARGE", "002"));
  EXPECT_PRED_FORMAT2(same, words_, Lines({"Supprime 002"}));
}

TEST_F(Announcements, ADeletionThatIsGivenUpTellsNothing) {
  show("002");
  desktop_.answer(Answer::No);
  press("Cmd_Supprimer");
  EXPECT_TRUE(store_.has("ORGPRISECHARGE", "002"));
  EXPECT_PRED_FORMAT2(same, words_, Lines());
}

TEST_F(Announcements, AFailedDeletionTellsTheFailureAlone) {
  show("002");
  store_.fail(CallKind::DeleteRecord, "ORGPRISECHARGE", store::kBusy);
  desktop_.answer(Answer::Yes);
  EXPECT_THROW(press("Cmd_Supprimer"), store::StoreError);
  EXPECT_PRED_FORMAT2(same, words_, Lines({"Echec Cmd_Supprimer_Click 80040003"}));
}

TEST_F(Announcements, ADeletionIsToldBeforeWhatFailsAfterIt) {
  show("002");
  desktop_.onBox = [this](const toolkit::headless::Entry&) {
    store_.fail(CallKind::ExecuteSentence, "ORGPRISECHARGE");
  };
  desktop_.answer(Answer::Yes);
  EXPECT_THROW(press("Cmd_Supprimer"), store::StoreError);
  EXPECT_PRED_FORMAT2(same, words_, Lines({"Supprime 002", "Echec Cmd_Supprimer_Click 80004005"}));
}

TEST_F(Announcements, AFailedSaveTellsTheFailureAlone) {
  show("002");
  store_.fail(CallKind::DBWrite, "ORGPRISECHARGE", store::kIoFailure);
  press("Cmd_OK");
  EXPECT_PRED_FORMAT2(same, words_, Lines({"Echec Cmd_OK_Click 80040005"}));
}

TEST_F(Announcements, ASaveIsToldBeforeTheListThatCannotBeReadAfterIt) {
  show("002");
  store_.fail(CallKind::ExecuteSentence, "ORGPRISECHARGE");
  press("Cmd_OK");
  EXPECT_PRED_FORMAT2(same, words_,
                      Lines({"Enregistre 002", "Echec Remplir_OrgPriseChg 80004005"}));
}

TEST_F(Announcements, AFailedSaveOnLeavingIsTold) {
  show("002");
  user_->fill(box("Txt_RaisonOrgChg"), "Caisse");
  store_.fail(CallKind::DBWrite, "ORGPRISECHARGE", store::kBusy);
  desktop_.answer(Answer::Yes);
  EXPECT_THROW(press("Cmd_Sortir"), store::StoreError);
  EXPECT_PRED_FORMAT2(same, words_, Lines({"Echec Cmd_Sortir_Click 80040003"}));
}

TEST_F(Announcements, AFailedLookUpIsTold) {
  store_.fail(CallKind::ReadRecord, "ORGPRISECHARGE", store::kBusy);
  lookUp("002");
  EXPECT_PRED_FORMAT2(same, words_, Lines({"Echec Txt_CodOrgChg_Change 80040003"}));
}

TEST_F(Announcements, ABodyThatCannotBeShownIsTold) {
  store_.fail(CallKind::ExecuteSentence, "ACTIVITES");
  lookUp("002");
  EXPECT_PRED_FORMAT2(same, words_, Lines({"Echec Afficher_Donnees 80004005"}));
}

TEST_F(Announcements, AFailedSearchOfAnAcronymIsTold) {
  store_.fail(CallKind::ExecuteSentence, "ORGPRISECHARGE");
  user_->fill(sigles(), "C");
  user_->press(toolkit::Key::Enter);
  EXPECT_PRED_FORMAT2(same, words_, Lines({"Echec Cbo_SigleOrgChg_KeyPress 80004005"}));
}

TEST_F(Announcements, AnEntityThatCannotBeReadIsTold) {
  show("002");
  ASSERT_TRUE(user_->click(tabs(), kActivites));
  store_.fail(CallKind::ReadRecord, "ASSOCIATION", store::kBusy);
  user_->fill(box("Txt_Entite"), "010");
  ASSERT_FALSE(words_.empty());
  EXPECT_EQ(words_[0], "Echec Txt_Entite_Change 80040003");
}

TEST_F(Announcements, AnotherFailureThanTheStoresIsNot) {
  show("002");
  level_->fails = true;
  press("Cmd_OK");
  EXPECT_PRED_FORMAT2(same, words_, Lines());
}

TEST_F(Announcements, ACallOfTheHostThatFailsIsNotToldTwice) {
  show("002");
  store_.fail(CallKind::DBWrite, "ORGPRISECHARGE");
  EXPECT_THROW(control_->Ecrire_Donnees(), store::StoreError);
  EXPECT_PRED_FORMAT2(same, words_, Lines());
}

// Whichever call of the store fails: it is told once, and a save is told when the body is there.
TEST_F(Announcements, EachFailureWithinASaveIsToldOnce) {
  constexpr int kCallsOfASave = 2;
  for (int call = 1; call <= kCallsOfASave; ++call) {
    SCOPED_TRACE("failing call " + std::to_string(call));
    words_.clear();
    press("Cmd_Annuler");
    lookUp("002");
    const std::string name = "Nom" + std::to_string(call);
    user_->fill(box("Txt_RaisonOrgChg"), name);
    store_.failAt(call, store::kBusy);
    press("Cmd_OK");
    const bool written = attribute("002", attribut::RaisonOrgChg) == name;
    EXPECT_EQ(std::count(words_.begin(), words_.end(), "Enregistre 002"), written ? 1 : 0);
    EXPECT_EQ(std::count_if(words_.begin(), words_.end(),
                            [](const std::string& word) { return word.ends_with(" 80040003"); }),
              1);
    store_.stopFailing();
  }
}

class UpdateAnnouncements : public Propagation {
 protected:
  UpdateAnnouncements() { keepWords(*control_, words_); }

  Lines words_;
};

TEST_F(UpdateAnnouncements, WhatFailsInTheUpdateIsToldAfterTheSave) {
  show();
  enterScale();
  desktop_.onBox = [this](const Entry&) {
    store_.fail(CallKind::OpenFile, "TEMPO", store::kUnknownFile);
  };
  saveAnswering({Answer::Yes, Answer::No});
  EXPECT_PRED_FORMAT2(same, words_, Lines({"Enregistre 001", "Echec Recup_Accord 80040001"}));
}

TEST_F(UpdateAnnouncements, AnAgreementThatCannotBeReadIsToldForEachLetter) {
  serverAnswers({"00001001", "00002001"}, {});
  show();
  enterScale();
  store_.fail(CallKind::ReadRecord, "ACCORD", store::kBusy);
  printerWindow(true);
  saveAnswering({Answer::Yes, Answer::Yes});
  EXPECT_PRED_FORMAT2(
      same, words_,
      Lines({"Enregistre 001", "Echec Recup_Accord 80040003", "Echec Recup_Accord 80040003"}));
}

}  // namespace
}  // namespace behaviour
