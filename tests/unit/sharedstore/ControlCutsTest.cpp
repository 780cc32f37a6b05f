// The network cut at each message that the control sends: nothing is lost, nothing is done twice,
// and what cannot be done stays on screen.
#include <algorithm>
#include <array>

#include "ControlOnServer.h"
#include "store/Dates.h"

namespace {

namespace attribut = store::orgprisecharge;
using behaviour::Lines;
using behaviour::same;

constexpr std::array kCuts{Relay::Cut::Before, Relay::Cut::After};

class ControlCuts : public ControlOnServer {
 protected:
  // Does the deed again and again, cut at its first message, its second, and so on to its last.
  template <class Preparation, class Deed>
  void cutAtEach(const Preparation& prepare, const Deed& deed) {
    for (const Relay::Cut how : kCuts) {
      int message = 1;
      for (;; ++message) {
        SCOPED_TRACE((how == Relay::Cut::Before ? "before " : "after ") + std::to_string(message));
        prepare();
        told_.clear();
        relay_.cutAt(message, how);
        deed();
        if (!relay_.hasCut() || HasFatalFailure()) break;
      }
      relay_.comeBack();
      EXPECT_GT(message, 2);
    }
  }
  std::string town(std::string_view code) const {
    return std::string(store::DynamicArray(stored(attribut::kFile, code)).get(attribut::AdrVille));
  }
  int codesGiven() const {
    return std::stoi(std::string(
        store::DynamicArray(stored("COMPTEUR", "999")).get(store::compteur::DernierOrgChg)));
  }
  // How many periods of all agreements begin on that day.
  int periodsOf(long day) const {
    int count = 0;
    direct_->forEachRecord("ACCORD", [&](std::string_view, std::string_view text) {
      const store::DynamicArray record(text);
      for (int i = 1; i <= record.DCount(store::accord::DatePartAcc); ++i) {
        count += record.get(store::accord::DatePartAcc, i) == std::to_string(day);
      }
    });
    return count;
  }
  std::string nextTown() { return "VILLE " + std::to_string(++towns_); }

  int towns_ = 0;
};

TEST_F(ControlCuts, AnInitReadsOnceMore) {
  carry();
  cutAtEach([&] { connectToServer(); },
            [&] {
              control_->Init();
              EXPECT_EQ(sigles().listCount(), 3);
              EXPECT_EQ(list("Lst_PiecePossibleOrgChg").listCount(), 2);
              EXPECT_TRUE(told_.empty());
            });
}

TEST_F(ControlCuts, ALookUpReadsOnceMore) {
  startOnServer();
  cutAtEach([&] { control_->Vider_Donnees(); },
            [&] {
              lookUp("001");
              EXPECT_EQ(list("Lst_ActSelect").listCount(), 20);
              EXPECT_EQ(combo("Cbo_CreditOrgChg").text(), "Compte 7060000000");
              EXPECT_TRUE(told_.empty());
            });
}

TEST_F(ControlCuts, ASaveIsDoneOnce) {
  startOnServer();
  std::string typed;
  cutAtEach(
      [&] {
        lookUp("001");
        user_->fill(box("Txt_Ville"), typed = nextTown());
      },
      [&] {
        press("Cmd_OK");
        expectNoBox();
        EXPECT_EQ(town("001"), typed);
        EXPECT_EQ(state(), behaviour::kEmpty);
        EXPECT_PRED_FORMAT2(same, told_, Lines({"Enregistre 001"}));
      });
  EXPECT_EQ(server_.fault(), "");
}

TEST_F(ControlCuts, ACreationIsDoneOnce) {
  withoutAccounts();
  startOnServer();
  int bodies = storedCount(attribut::kFile);
  cutAtEach([&] { beginCreation(); },
            [&] {
              press("Cmd_OK");
              expectNoBox();
              EXPECT_EQ(storedCount(attribut::kFile), ++bodies);
              ASSERT_EQ(told_.size(), 1U);
              const std::string code = told_.front().substr(told_.front().size() - 3);
              EXPECT_NE(stored(attribut::kFile, code), "none");
              EXPECT_GE(codesGiven(), std::stoi(code));
            });
  EXPECT_EQ(server_.fault(), "");
}

TEST_F(ControlCuts, ADeletionIsDoneOnce) {
  startOnServer();
  cutAtEach(
      [&] {
        direct_->write(attribut::kFile, "003", store_.record(attribut::kFile, "003").text());
        lookUp("003");
        desktop_.answer(behaviour::Answer::Yes);
      },
      [&] {
        press("Cmd_Supprimer");
        desktop_.takeBoxes();
        EXPECT_EQ(stored(attribut::kFile, "003"), "none");
        EXPECT_EQ(state(), behaviour::kEmpty);
        EXPECT_TRUE(told_.empty());
      });
  EXPECT_EQ(server_.fault(), "");
}

// All agreements have the new period, or none has it, and none has it twice. Only where the
// update's end itself was lost nobody knows which, and the host is told so.
TEST_F(ControlCuts, AnUpdateIsDoneAsAWhole) {
  constexpr int kAgreements = 12;
  putScale();
  startOnServer();
  putAgreements(kAgreements, false);
  long day = 21217;
  int lost = 0;
  cutAtEach(
      [&] {
        enterScale(store::textOfDay(std::to_string(++day)));
        desktop_.answer(behaviour::Answer::Yes);
        desktop_.answer(behaviour::Answer::No);
      },
      [&] {
        press("Cmd_OK");
        const int updated = periodsOf(day);
        ASSERT_FALSE(told_.empty());
        EXPECT_EQ(told_.front(), "Enregistre 001");
        if (told_.size() == 1) {
          EXPECT_EQ(updated, kAgreements);
        } else {
          ++lost;
          EXPECT_EQ(told_[1], "Echec 80040007");
          EXPECT_TRUE(updated == 0 || updated == kAgreements) << updated;
        }
        EXPECT_EQ(storedCount("TEMPO"), 0);
      });
  EXPECT_EQ(lost, 2);
  EXPECT_EQ(server_.fault(), "");
}

// --- The server stays away

TEST_F(ControlCuts, ASaveThatIsNotKnownToBeDoneKeepsTheTextAndIsTriedAgain) {
  startOnServer();
  for (const Relay::Cut how : kCuts) {
    SCOPED_TRACE(how == Relay::Cut::Before ? "before" : "after");
    const std::string before = town("001");
    const std::string typed = nextTown();
    lookUp("001");
    user_->fill(box("Txt_Ville"), typed);
    told_.clear();
    relay_.cutForGoodAt(2, how);  // the activities, then the write
    press("Cmd_OK");
    ASSERT_TRUE(relay_.hasCut());
    EXPECT_PRED_FORMAT2(same, told_, Lines({"Echec 80040007"}));
    EXPECT_EQ(box("Txt_Ville").text(), typed);
    EXPECT_EQ(code().text(), "001");
    EXPECT_EQ(town("001"), how == Relay::Cut::Before ? before : typed);
    press("Cmd_OK");
    EXPECT_EQ(told_.size(), 2U) << "still away";
    EXPECT_EQ(box("Txt_Ville").text(), typed);
    relay_.comeBack();
    told_.clear();
    press("Cmd_OK");
    EXPECT_PRED_FORMAT2(same, told_, Lines({"Enregistre 001"}));
    EXPECT_EQ(town("001"), typed);
    EXPECT_EQ(state(), behaviour::kEmpty);
  }
}

// Somebody else's change is not taken for one's own.
TEST_F(ControlCuts, ASaveThatWasLostGivesWayToWhatOthersHaveWritten) {
  startOnServer();
  lookUp("001");
  user_->fill(box("Txt_Ville"), "LA MIENNE");
  relay_.cutForGoodAt(2, Relay::Cut::Before);
  press("Cmd_OK");
  ASSERT_TRUE(relay_.hasCut());
  store::DynamicArray theirs(stored(attribut::kFile, "001"));
  theirs.set(attribut::AdrVille, "LA LEUR");
  direct_->write(attribut::kFile, "001", theirs.text());
  relay_.comeBack();
  told_.clear();
  press("Cmd_OK");
  EXPECT_PRED_FORMAT2(same, told_, Lines({"Echec 80040006"}));
  EXPECT_EQ(town("001"), "LA LEUR");
  EXPECT_EQ(box("Txt_Ville").text(), "LA MIENNE");
}

TEST_F(ControlCuts, ACreationThatIsNotKnownToBeDoneIsNotDoneTwice) {
  withoutAccounts();
  startOnServer();
  for (const Relay::Cut how : kCuts) {
    for (int message = 1;; ++message) {
      SCOPED_TRACE((how == Relay::Cut::Before ? "before " : "after ") + std::to_string(message));
      const int bodies = storedCount(attribut::kFile);
      beginCreation();
      told_.clear();
      relay_.cutForGoodAt(message, how);
      press("Cmd_OK");
      const bool cut = relay_.hasCut();
      relay_.comeBack();
      if (storedCount(attribut::kFile) == bodies || told_.empty() ||
          told_.front().starts_with("Echec")) {
        EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Organisme neuf");
        user_->fill(box("Txt_Ville"), "DE PLUS");
        press("Cmd_OK");
      }
      expectNoBox();
      EXPECT_EQ(storedCount(attribut::kFile), bodies + 1);
      EXPECT_EQ(std::count_if(told_.begin(), told_.end(),
                              [](const std::string& each) { return each.starts_with("Enr"); }),
                1);
      if (!cut) break;
    }
  }
  EXPECT_EQ(server_.fault(), "");
}

}  // namespace
