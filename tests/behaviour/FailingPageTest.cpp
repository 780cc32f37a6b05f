// The save with a page that fails while it writes: nothing reaches the store, and the record in
// hand is as before.
#include <stdexcept>

#include "control/AcronymList.h"
#include "control/Lookup.h"
#include "control/NewRecord.h"
#include "control/RecordView.h"
#include "control/Save.h"
#include "pages/Ong1.h"
#include "store/Layouts.h"
#include "tests/behaviour/ControlTest.h"

namespace behaviour {
namespace {

class FailingAddress : public pages::AddressPort {
 public:
  void setTheDatabase(std::shared_ptr<store::Database>) override {}
  void setReglage(int, bool) override {}
  void initialiser() override {}
  void afficher(store::DynamicArray&, int) override {}
  void ecrire(store::DynamicArray& record, int firstAttribute) override {
    record.set(firstAttribute, "à demi écrite");
    if (++writes == failsAt) throw std::runtime_error("the address cannot be written");
  }
  void vider() override {}

  int writes = 0;
  int failsAt = 0;
};

class SecondPage : public pages::Page {
 public:
  explicit SecondPage(screen::EditSession& session) : session_(session) {}
  void afficher() override {}
  void ecrire() override {
    ++writes;
    session_.RecOrgChg->fields().set(store::orgprisecharge::TypeOrgChg, "C");
    if (writes == failsAt) throw std::runtime_error("the page cannot be written");
    session_.ErreurOng2 = writes == refusesAt;
  }
  void vider() override {}

  int writes = 0;
  int failsAt = 0;
  int refusesAt = 0;

 private:
  screen::EditSession& session_;
};

class FailingPage : public testing::Test {
 protected:
  FailingPage() {
    fillThreeBodies(store_);
    session.TheDatabase = store_.connect();
    session.DroitOrgChg = TestRights(std::make_shared<RightsLevel>(), store_.sharedReleases())
                              .entry("CONSULTATIONORGCHARGE");
    session.files.orgPriseCharge = session.TheDatabase->OpenFile("ORGPRISECHARGE");
    session.files.compteur = session.TheDatabase->OpenFile("COMPTEUR");
    before_ = store_.record("ORGPRISECHARGE", "001").text();
  }

  void show(Caller at = Caller::here()) {
    const auto trace = called("show", at);
    screen.bar.Txt_CodOrgChg.setText("001");
    lookup.Txt_CodOrgChg_Change();
    ASSERT_TRUE(session.RecOrgChg);
    change();
  }
  void create(Caller at = Caller::here()) {
    const auto trace = called("create", at);
    session.RecOrgChg = std::make_unique<control::NewRecord>();
    session.EnCreation = true;
    change();
  }
  void change() {
    screen.bar.Txt_SigleOrgChg.setText("NEUF");
    screen.coordonnees.Txt_RaisonOrgChg.setText("Nouveau nom");
    adresse.writes = 0;
    second.writes = 0;
    store_.forgetCalls();
  }
  void expectNothingWritten() {
    EXPECT_TRUE(store_.calls(CallKind::DBWrite).empty());
    EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), before_);
    EXPECT_EQ(screen.coordonnees.Txt_RaisonOrgChg.text(), "Nouveau nom");
    EXPECT_FALSE(view.pageRefusee());
  }
  void expectOnlyTheCounterWritten(Caller at = Caller::here()) {
    const auto trace = called("expectOnlyTheCounterWritten", at);
    ASSERT_EQ(store_.calls(CallKind::DBWrite).size(), 1U);
    EXPECT_EQ(store_.calls(CallKind::DBWrite)[0].file, "COMPTEUR");
    EXPECT_EQ(store_.ids("ORGPRISECHARGE").size(), 3U);
  }
  void expectCreationInHand(Caller at = Caller::here()) {
    const auto trace = called("expectCreationInHand", at);
    EXPECT_TRUE(session.EnCreation);
    ASSERT_TRUE(session.RecOrgChg);
    EXPECT_NE(dynamic_cast<control::NewRecord*>(session.RecOrgChg.get()), nullptr);
    EXPECT_TRUE(session.RecOrgChg->fields().empty());
    EXPECT_EQ(session.codeEnMain, "");
  }

  testing_support::MemoryStore store_;
  testing_support::TestDesktop desktop;
  toolkit::Surface surface{"Ctr_OrgPriseCharge"};
  screen::Screen screen{surface};
  screen::EditSession session;
  FailingAddress adresse;
  pages::Ong1 ong1{{desktop, screen, session}, adresse};
  SecondPage second{session};
  control::Context context{desktop, surface, screen, session, adresse, {&ong1, &second}};
  control::RecordView view{context};
  control::AcronymList list{context, view};
  control::Lookup lookup{context, view};
  control::Save save{context, view, list};
  std::string before_;
};

TEST_F(FailingPage, OfABodyLeavesStoreAndRecordAsTheyWere) {
  show();
  adresse.failsAt = 1;
  EXPECT_NO_THROW(save.Cmd_OK_Click());
  expectNothingWritten();
  EXPECT_PRED_FORMAT2(sameBody, session.RecOrgChg->fields().text(), before_);
  adresse.failsAt = 0;
  second.failsAt = 2;
  second.writes = 1;
  EXPECT_NO_THROW(save.Cmd_OK_Click());
  expectNothingWritten();
  EXPECT_PRED_FORMAT2(sameBody, session.RecOrgChg->fields().text(), before_);
}

TEST_F(FailingPage, EndsTheHostsSaveWithItsError) {
  show();
  adresse.failsAt = 1;
  EXPECT_THROW(save.Ecrire_Donnees(), std::runtime_error);
  expectNothingWritten();
  EXPECT_PRED_FORMAT2(sameBody, session.RecOrgChg->fields().text(), before_);
}

TEST_F(FailingPage, CanBeSavedOnceItWorks) {
  show();
  adresse.failsAt = 1;
  save.Cmd_OK_Click();
  save.Cmd_OK_Click();
  EXPECT_EQ(store_.record("ORGPRISECHARGE", "001").get(attribut::RaisonOrgChg), "Nouveau nom");
  EXPECT_FALSE(session.RecOrgChg);
}

TEST_F(FailingPage, ThatRefusesWritesNothingToTheStore) {
  show();
  second.refusesAt = 1;
  save.Cmd_OK_Click();
  expectNothingWritten();
  EXPECT_EQ(session.RecOrgChg->fields().get(attribut::RaisonOrgChg), "Nouveau nom");
  EXPECT_EQ(session.RecOrgChg->fields().get(attribut::TypeOrgChg), "C");
}

TEST_F(FailingPage, OfACreationDrawsNoCodeWhenItFailsFirst) {
  create();
  adresse.failsAt = 1;
  EXPECT_NO_THROW(save.Cmd_OK_Click());
  EXPECT_TRUE(store_.calls().empty());
  expectNothingWritten();
  expectCreationInHand();
  adresse.failsAt = 0;
  second.failsAt = 1;
  EXPECT_NO_THROW(save.Cmd_OK_Click());
  EXPECT_TRUE(store_.calls().empty());
  expectCreationInHand();
}

TEST_F(FailingPage, OfACreationWritesNoBodyWhenItFailsTheSecondTime) {
  create();
  adresse.failsAt = 2;
  EXPECT_NO_THROW(save.Cmd_OK_Click());
  expectOnlyTheCounterWritten();
  expectCreationInHand();
  adresse.failsAt = 0;
  store_.forgetCalls();
  second.writes = 0;
  second.failsAt = 2;
  EXPECT_NO_THROW(save.Cmd_OK_Click());
  expectOnlyTheCounterWritten();
  expectCreationInHand();
  save.Cmd_OK_Click();
  EXPECT_EQ(store_.record("ORGPRISECHARGE", "006").get(attribut::SigleOrgChg), "NEUF");
  EXPECT_FALSE(session.EnCreation);
}

TEST_F(FailingPage, OfACreationWritesNoBodyWhenItRefusesTheSecondTime) {
  create();
  second.refusesAt = 2;
  save.Cmd_OK_Click();
  expectOnlyTheCounterWritten();
  expectCreationInHand();
}

TEST_F(FailingPage, EndsTheHostsCreationWithItsError) {
  create();
  adresse.failsAt = 2;
  EXPECT_THROW(save.Creer_Donnees(), std::runtime_error);
  expectOnlyTheCounterWritten();
  expectCreationInHand();
}

TEST_F(FailingPage, ThatCannotBeShownLeavesNothingInHand) {
  adresse.failsAt = 1;
  screen.bar.Txt_CodOrgChg.setText("001");
  EXPECT_NO_THROW(lookup.Txt_CodOrgChg_Change());
  EXPECT_FALSE(session.RecOrgChg);
  EXPECT_EQ(screen.bar.Txt_CodOrgChg.text(), "001");
  EXPECT_TRUE(session.AncienOrgChg.empty());
  EXPECT_FALSE(screen.bar.Cmd_OK.enabled());
}

TEST_F(FailingPage, CopiesOfTheRecordGoWithIt) {
  show();
  EXPECT_EQ(session.ImageOrgChg, before_);
  EXPECT_PRED_FORMAT2(sameBody, session.AncienOrgChg.text(), before_);
  view.Vider_Donnees();
  EXPECT_EQ(session.ImageOrgChg, "");
  EXPECT_TRUE(session.AncienOrgChg.empty());
}

TEST_F(FailingPage, CopiesOfAnUnknownCodeAreEmptyWhenItIsTold) {
  show();
  bool empty = false;
  desktop.onBox = [&](const toolkit::headless::Entry&) {
    empty = session.ImageOrgChg.empty() && session.AncienOrgChg.empty() && !session.RecOrgChg;
  };
  screen.bar.Txt_CodOrgChg.setText("777");
  lookup.Txt_CodOrgChg_Change();
  EXPECT_TRUE(empty);
}

}  // namespace
}  // namespace behaviour
