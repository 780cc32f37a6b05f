// The host takes the control down while a box is open or while events run: nothing more is asked,
// written or deleted.
#include <functional>

#include "tests/behaviour/ControlTest.h"
#include "toolkit/ControlClosed.h"

namespace behaviour {
namespace {

class Closing : public ControlTest {
 protected:
  Closing() {
    fillThreeBodies(store_);
    start();
  }
  void closeAtTheNextBox() {
    store_.forgetCalls();
    desktop_.takeBoxes();
    desktop_.onBox = [](const toolkit::headless::Entry&) { throw toolkit::ControlClosed(); };
  }
  void expectClosedBy(const std::function<void()>& act, Caller at = Caller::here()) {
    const auto trace = called("expectClosedBy", at);
    closeAtTheNextBox();
    EXPECT_THROW(act(), toolkit::ControlClosed);
    EXPECT_PRED_FORMAT2(boxCount, desktop_.takeBoxes(), 1U);
    expectNothingWritten();
    EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
    EXPECT_TRUE(control_->surface().enabled());
    EXPECT_FALSE(control_->W_Sortir());
    EXPECT_EQ(store_.ids("ORGPRISECHARGE").size(), 3U);
  }
};

TEST_F(Closing, WhileARefusalIsShown) {
  press("Cmd_Ajouter");
  expectClosedBy([this] { press("Cmd_OK"); });
}

TEST_F(Closing, WhileARefusalOfABodyIsShown) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "");
  expectClosedBy([this] { press("Cmd_OK"); });
}

TEST_F(Closing, WhileACreationIsCancelled) {
  beginCreation();
  expectClosedBy([this] { press("Cmd_Annuler"); });
}

TEST_F(Closing, WhileADeletionIsConfirmed) {
  lookUp("001");
  expectClosedBy([this] { press("Cmd_Supprimer"); });
}

TEST_F(Closing, WhileADeletionIsRefused) {
  store_.put("ACCORD", "A1", {"001"});
  lookUp("001");
  store_.forgetCalls();
  desktop_.answer(Answer::Yes);
  int boxes = 0;
  desktop_.onBox = [&](const toolkit::headless::Entry&) {
    if (++boxes == 2) throw toolkit::ControlClosed();
  };
  EXPECT_THROW(press("Cmd_Supprimer"), toolkit::ControlClosed);
  expectNothingWritten();
}

TEST_F(Closing, WhileLeavingIsAsked) {
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Autre");
  expectClosedBy([this] { press("Cmd_Sortir"); });
}

TEST_F(Closing, WhileAnUnknownCodeIsTold) {
  expectClosedBy([this] { lookUp("777"); });
}

TEST_F(Closing, WhileAnUnknownAcronymIsTold) {
  user_->fill(sigles(), "ZZ");
  expectClosedBy([this] { user_->press(toolkit::Key::Enter); });
}

TEST_F(Closing, WhileAKeyIsRefused) {
  user_->go(code());
  expectClosedBy([this] { user_->type("é"); });
}

TEST_F(Closing, WhileTheHostsCheckShowsItsMessage) {
  expectClosedBy([this] { (void)control_->Verif_Ong1(); });
}

TEST_F(Closing, WhileEventsRunAtTheEndOfARefusedSave) {
  press("Cmd_Ajouter");
  store_.forgetCalls();
  desktop_.onEvents = [] { throw toolkit::ControlClosed(); };
  EXPECT_THROW(press("Cmd_OK"), toolkit::ControlClosed);
  expectNothingWritten();
  EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
}

TEST_F(Closing, WhileEventsRunInACancel) {
  lookUp("001");
  store_.forgetCalls();
  desktop_.onEvents = [] { throw toolkit::ControlClosed(); };
  EXPECT_THROW(press("Cmd_Annuler"), toolkit::ControlClosed);
  expectNothingWritten();
}

TEST_F(Closing, WhileEventsRunInInit) {
  desktop_.onEvents = [] { throw toolkit::ControlClosed(); };
  EXPECT_THROW(control_->Init(), toolkit::ControlClosed);
  EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
}

TEST_F(Closing, ReleasesEverythingAfterwards) {
  press("Cmd_Ajouter");
  expectClosedBy([this] { press("Cmd_OK"); });
  store_.releases().clear();
  control_->UserControl_Terminate();
  EXPECT_EQ(store_.releases().back(), "Rights");
}

}  // namespace
}  // namespace behaviour
