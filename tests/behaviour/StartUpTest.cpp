#include <algorithm>
#include <functional>
#include <stdexcept>

#include "store/Layouts.h"
#include "tests/behaviour/ControlTest.h"

namespace behaviour {
namespace {

class StartUp : public ControlTest {
 protected:
  StartUp() { fillThreeBodies(store_); }
};

TEST_F(StartUp, SettersOpenNothing) {
  connect();
  EXPECT_TRUE(store_.calls().empty());
  EXPECT_EQ(level_->reads, 0);
}

TEST_F(StartUp, TheRightsSetterAsksForTheEntryAtOnce) {
  auto rights = std::make_shared<TestRights>(level_, store_.sharedReleases());
  control_->setDroitsUtilisateur(rights);
  EXPECT_PRED_FORMAT2(same, rights->asked, std::vector<std::string>{"CONSULTATIONORGCHARGE"});
}

TEST_F(StartUp, MakesItsStoreCallsInOrder) {
  connect();
  control_->Init();
  const auto selection = [](const char* sentence, const char* file, const char* columns) {
    store::DynamicArray request;
    request.set(1, sentence);
    request.set(2, file);
    request.set(3, columns);
    return "ExecuteSentence " + request.text();
  };
  EXPECT_PRED_FORMAT2(
      same, store_.told(),
      (std::vector<std::string>{
          "OpenFile ORGPRISECHARGE", "OpenFile PARAMBORDORGCHG", "OpenFile COMPTEUR",
          "OpenFile TABLES", "OpenFile ACTIVITES", "OpenFile ASSOCIATION", "OpenFile PLANCOMPTABLE",
          "OpenFile PERIODESPAIE", "OpenFile ACCORD", "ReadRecord TABLES PIECESRENOUV",
          "ReadRecord TABLES STATORGCHG", "ReadRecord COMPTEUR 999",
          selection("SSELECT NATUREVOIE PAR 1", "NATUREVOIE", "0 1"),
          selection("SSELECT PARAMBORDORGCHG PAR 1", "PARAMBORDORGCHG", "0 1 2"),
          selection("SSELECT ORGPRISECHARGE PAR 1", "ORGPRISECHARGE", "0 1")}));
}

TEST_F(StartUp, TheRightsAreAppliedBeforeAnyFileIsOpened) {
  connect();
  level_->fails = true;
  EXPECT_THROW(control_->Init(), std::runtime_error);
  EXPECT_TRUE(store_.calls().empty());
}

TEST_F(StartUp, FillsTheLists) {
  start();
  ASSERT_EQ(sigles().listCount(), 3);
  EXPECT_EQ(sigles().list(0), "CAF");
  EXPECT_EQ(sigles().list(1), "CRAM");
  EXPECT_EQ(sigles().list(2), "DOMUS");
  auto& pieces = child<ListBox>("Lst_PiecePossibleOrgChg");
  ASSERT_EQ(pieces.listCount(), 2);
  EXPECT_EQ(pieces.list(0), "Avis d'imposition");
  EXPECT_EQ(pieces.list(1), "Relevé d'identité");
  auto& stats = child<ComboBox>("Cbo_StatsOrgChg");
  ASSERT_EQ(stats.listCount(), 2);
  EXPECT_EQ(stats.list(0), "Conseil départemental");
  EXPECT_EQ(stats.list(1), "Mutuelle");
  auto& params = child<ListBox>("Lst_ParamPossOrgChg");
  auto& widths = child<ListBox>("Lst_LongParam");
  ASSERT_EQ(params.listCount(), 2);
  EXPECT_EQ(params.list(0), "Heures");
  EXPECT_EQ(params.itemData(0), 2);
  EXPECT_EQ(widths.list(0), "8");
  EXPECT_EQ(params.list(1), "Nom");
  EXPECT_EQ(params.itemData(1), 1);
  EXPECT_EQ(widths.list(1), "30");
}

TEST_F(StartUp, FillingTheListsAgainDoublesNothing) {
  start();
  control_->Remplir_PiecesPoss();
  control_->Remplir_StatOrgChg();
  control_->Remplir_ParamsPoss();
  control_->Remplir_OrgPriseChg();
  EXPECT_EQ(child<ListBox>("Lst_PiecePossibleOrgChg").listCount(), 2);
  EXPECT_EQ(child<ComboBox>("Cbo_StatsOrgChg").listCount(), 2);
  EXPECT_EQ(child<ListBox>("Lst_ParamPossOrgChg").listCount(), 2);
  EXPECT_EQ(child<ListBox>("Lst_LongParam").listCount(), 2);
  EXPECT_EQ(sigles().listCount(), 3);
}

TEST_F(StartUp, EndsEmptyWithTheFocusOnTheCode) {
  start();
  EXPECT_EQ(state(), kEmpty);
  EXPECT_PRED_FORMAT1(hasFocus, code());
  EXPECT_EQ(tabs().tab(), 0);
  EXPECT_FALSE(control_->W_Sortir());
}

TEST_F(StartUp, ShowsTheHourglassAndLetsEventsRunOnceWithTheControlDisabled) {
  connect();
  bool disabled = false;
  int events = 0;
  desktop_.onEvents = [&] {
    ++events;
    disabled = !control_->surface().enabled() && desktop_.pointer() == toolkit::Pointer::Hourglass;
  };
  control_->Init();
  EXPECT_EQ(events, 1);
  EXPECT_TRUE(disabled);
  EXPECT_TRUE(control_->surface().enabled());
  EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
}

TEST_F(StartUp, AFailureAtAnyCallEndsInitWithItsError) {
  connect();
  control_->Init();
  const int calls = static_cast<int>(store_.calls().size());
  for (int n = 1; n <= calls; ++n) {
    control::Ctr_OrgPriseCharge fresh(desktop_);
    fresh.setTheDatabase(store_.connect());
    fresh.setDroitsUtilisateur(std::make_shared<TestRights>(level_, store_.sharedReleases()));
    store_.failAt(n, 0x80040099U);
    try {
      fresh.Init();
      FAIL() << "call " << n;
    } catch (const store::StoreError& error) {
      EXPECT_EQ(error.code(), 0x80040099U) << n;
    }
    EXPECT_TRUE(fresh.surface().enabled()) << n;
    EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal) << n;
    store_.stopFailing();
    fresh.Init();
    EXPECT_EQ(dynamic_cast<ComboBox&>(*fresh.surface().find("Cbo_SigleOrgChg")).listCount(), 3);
  }
}

TEST_F(StartUp, NeedsItsObjects) {
  EXPECT_THROW(control_->Init(), control::NotReady);
  control_->setTheDatabase(store_.connect());
  EXPECT_THROW(control_->Init(), control::NotReady);
  EXPECT_THROW(control_->Remplir_OrgPriseChg(), control::NotReady);
  EXPECT_THROW(control_->Afficher_Donnees(), control::NotReady);
  EXPECT_THROW(control_->Creer_Donnees(), control::NotReady);
  EXPECT_THROW((void)control_->Verif_Ong1(), control::NotReady);
}

TEST_F(StartUp, BeforeInitTheUserCanOnlyLeave) {
  connect();
  EXPECT_TRUE(user_->fill(code(), "001"));
  EXPECT_TRUE(press("Cmd_Ajouter"));
  EXPECT_EQ(state(), kEmpty);
  EXPECT_TRUE(store_.calls().empty());
  EXPECT_TRUE(press("Cmd_Sortir"));
  EXPECT_TRUE(control_->W_Sortir());
}

class Looks : public StartUp {
 protected:
  bool ready() {
    std::vector<std::string> pale;
    for (const char* name : {"Etq_CodOrgChg", "Txt_CodOrgChg", "Etq_RechercheSigle",
                             "Cbo_SigleOrgChg", "Cmd_Ajouter"}) {
      if (child<toolkit::Control>(name).pale()) pale.emplace_back(name);
    }
    EXPECT_TRUE(pale.empty() || pale.size() == 5) << pale.front();
    EXPECT_FALSE(button("Cmd_Sortir").pale());
    return pale.empty();
  }
};

TEST_F(Looks, NotReadyUntilInitHasSucceeded) {
  EXPECT_FALSE(ready());
  connect();
  EXPECT_FALSE(ready());
  bool meanwhile = false;
  desktop_.onEvents = [&] { meanwhile = ready(); };
  control_->Init();
  EXPECT_FALSE(meanwhile);
  EXPECT_TRUE(ready());
  lookUp("001");
  EXPECT_TRUE(ready());
}

TEST_F(Looks, NotReadyAfterAnInitThatHasFailed) {
  connect();
  store_.fail(CallKind::ExecuteSentence, "ORGPRISECHARGE");
  EXPECT_THROW(control_->Init(), store::StoreError);
  EXPECT_FALSE(ready());
  store_.stopFailing();
  control_->Init();
  EXPECT_TRUE(ready());
  store_.fail(CallKind::OpenFile, "TABLES");
  EXPECT_THROW(control_->Init(), store::StoreError);
  EXPECT_FALSE(ready());
}

TEST_F(Looks, ReadyStillAfterAnInitThatCouldNotReadTheRights) {
  start();
  level_->fails = true;
  EXPECT_THROW(control_->Init(), std::runtime_error);
  EXPECT_TRUE(ready());
}

TEST_F(Looks, NotReadyWithAnotherStoreUntilItsInit) {
  start();
  control_->setTheDatabase(store_.connect());
  EXPECT_FALSE(ready());
  control_->Init();
  EXPECT_TRUE(ready());
}

// Start-up failing at each list, and when all are filled.
class FailedStartUp : public StartUp {
 protected:
  void expectInitFailing(const std::function<void()>& fault, Caller at = Caller::here()) {
    const auto trace = called("expectInitFailing", at);
    for (const char* file : {"NATUREVOIE", "PARAMBORDORGCHG", "ORGPRISECHARGE"}) {
      SCOPED_TRACE(file);
      store_.fail(CallKind::ExecuteSentence, file);
      EXPECT_THROW(control_->Init(), store::StoreError);
      store_.stopFailing();
      store_.forgetCalls();
      fault();
    }
    desktop_.onEvents = [] { throw std::runtime_error("events"); };
    EXPECT_THROW(control_->Init(), std::runtime_error);
    desktop_.onEvents = nullptr;
    store_.forgetCalls();
    fault();
  }
};

TEST_F(FailedStartUp, LeavesItsMembersNotReady) {
  connect();
  expectInitFailing([this] {
    EXPECT_THROW(control_->Afficher_Donnees(), control::NotReady);
    EXPECT_THROW(control_->Afficher_Ong1(), control::NotReady);
    EXPECT_THROW(control_->Remplir_OrgPriseChg(), control::NotReady);
    EXPECT_THROW(control_->Remplir_ParamsPoss(), control::NotReady);
    EXPECT_THROW(control_->Remplir_PiecesPoss(), control::NotReady);
    EXPECT_THROW(control_->Remplir_StatOrgChg(), control::NotReady);
    EXPECT_THROW(control_->Vider_Donnees(), control::NotReady);
    EXPECT_THROW(control_->Creer_Donnees(), control::NotReady);
    EXPECT_THROW(control_->Ecrire_Donnees(), control::NotReady);
    EXPECT_THROW(control_->Ecrire_Ong1(), control::NotReady);
    EXPECT_THROW((void)control_->Verif_Ong1(), control::NotReady);
    EXPECT_TRUE(store_.calls().empty());
  });
}

TEST_F(FailedStartUp, LeavesKeysWithoutEffectButForLeaving) {
  connect();
  expectInitFailing([this] {
    lookUp("001");
    user_->fill(sigles(), "CA");
    user_->press(toolkit::Key::Enter);
    press("Cmd_Ajouter");
    EXPECT_EQ(state(), kEmpty);
    expectNoBox();
    EXPECT_TRUE(store_.calls().empty());
    EXPECT_TRUE(press("Cmd_Sortir"));
    EXPECT_TRUE(control_->W_Sortir());
    control_->setW_Sortir(false);
  });
}

TEST_F(FailedStartUp, IsMendedByAnother) {
  connect();
  expectInitFailing([this] {
    control_->Init();
    EXPECT_EQ(state(), kEmpty);
    EXPECT_EQ(code().text(), "");
    EXPECT_EQ(sigles().listCount(), 3);
    lookUp("001");
    EXPECT_EQ(state(), kExisting);
  });
}

TEST_F(FailedStartUp, EndsWhatAnEarlierOneHadStarted) {
  start();
  lookUp("001");
  expectInitFailing([this] {
    EXPECT_THROW(control_->Afficher_Donnees(), control::NotReady);
    EXPECT_EQ(state(), kEmpty);
    EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "");
  });
}

TEST_F(FailedStartUp, WithAnOnlyBodyOnScreenCanStillBeLeft) {
  for (const char* body : {"001", "002"}) store_.erase("ORGPRISECHARGE", body);
  connect();
  desktop_.onEvents = [] { throw std::runtime_error("events"); };
  EXPECT_THROW(control_->Init(), std::runtime_error);
  ASSERT_EQ(code().text(), "003");
  EXPECT_TRUE(user_->fill(box("Txt_RaisonOrgChg"), "Autre"));
  press("Cmd_Sortir");
  EXPECT_TRUE(control_->W_Sortir());
  expectNoBox();
  expectNothingWritten();
}

TEST_F(StartUp, ASecondOneThatCannotReadTheRightsKeepsTheRecordAndItsEdits) {
  start();
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Domus");
  store_.forgetCalls();
  store_.releases().clear();
  level_->fails = true;
  EXPECT_THROW(control_->Init(), std::runtime_error);
  EXPECT_TRUE(store_.calls().empty());
  EXPECT_TRUE(store_.releases().empty());
  EXPECT_EQ(state(), kExisting);
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus");
  level_->fails = false;
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Domus");
}

TEST_F(StartUp, ASecondOneWithoutRightsKeepsTheRecordAndItsEdits) {
  start();
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Domus");
  control_->setDroitsUtilisateur(nullptr);
  EXPECT_THROW(control_->Init(), control::NotReady);
  EXPECT_EQ(state(), kExisting);
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Domus");
}

TEST_F(StartUp, ASecondOneDropsWhatWasInHand) {
  start();
  lookUp("001");
  user_->fill(box("Txt_RaisonOrgChg"), "Domus");
  control_->Init();
  EXPECT_EQ(state(), kEmpty);
  EXPECT_EQ(code().text(), "");
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Domus Mutuelle");
}

TEST_F(StartUp, AnEmptyAttribute15LeavesTheAccountsAsTheyAre) {
  start();
  child<TextBox>("Txt_DebitOrgChg").setEnabled(false);
  lookUp("001");
  EXPECT_FALSE(child<TextBox>("Txt_DebitOrgChg").enabled());
}

TEST_F(StartUp, ANonEmptyAttribute15EnablesTheAccountsOfABodyLookedUp) {
  store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, "X");
  start();
  const std::vector<const char*> names = {
      "Etq_DebitOrgChg",  "Txt_DebitOrgChg",  "Cbo_DebitOrgChg",  "Etq_CreditOrgChg",
      "Txt_CreditOrgChg", "Cbo_CreditOrgChg", "Txt_CpteProdAide", "Cbo_CpteProdAide"};
  for (const char* name : names) control_->surface().find(name)->setEnabled(false);
  lookUp("001");
  for (const char* name : names) EXPECT_TRUE(control_->surface().find(name)->enabled()) << name;
}

TEST_F(StartUp, ReleasesInItsOrder) {
  start();
  lookUp("001");
  store_.releases().clear();
  control_->UserControl_Terminate();
  EXPECT_PRED_FORMAT2(
      same, store_.releases(),
      (std::vector<std::string>{
          "Client", "File ACCORD", "Record TABLES PIECESRENOUV", "Record TABLES STATORGCHG",
          "Record ORGPRISECHARGE 001", "Record COMPTEUR 999", "File COMPTEUR", "File TABLES",
          "File PARAMBORDORGCHG", "File ORGPRISECHARGE", "File ASSOCIATION", "File ACTIVITES",
          "File PLANCOMPTABLE", "File PERIODESPAIE", "Database", "RightsEntry", "Rights"}));
  store_.releases().clear();
  control_.reset();
  EXPECT_TRUE(store_.releases().empty());
}

TEST_F(StartUp, ReleasesInItsOrderDuringACreation) {
  start();
  beginCreation();
  store_.releases().clear();
  control_->UserControl_Terminate();
  EXPECT_PRED_FORMAT2(
      same, store_.releases(),
      (std::vector<std::string>{"Client", "File ACCORD", "Record TABLES PIECESRENOUV",
                                "Record TABLES STATORGCHG", "Record COMPTEUR 999", "File COMPTEUR",
                                "File TABLES", "File PARAMBORDORGCHG", "File ORGPRISECHARGE",
                                "File ASSOCIATION", "File ACTIVITES", "File PLANCOMPTABLE",
                                "File PERIODESPAIE", "Database", "RightsEntry", "Rights"}));
  expectNothingWritten();
}

TEST_F(FailedStartUp, ReleasesWhatItHasOpenedInTheSameOrder) {
  connect();
  store_.fail(CallKind::ReadRecord, "COMPTEUR");
  EXPECT_THROW(control_->Init(), store::StoreError);
  store_.releases().clear();
  control_->UserControl_Terminate();
  EXPECT_PRED_FORMAT2(
      same, store_.releases(),
      (std::vector<std::string>{"Client", "File ACCORD", "Record TABLES PIECESRENOUV",
                                "Record TABLES STATORGCHG", "File COMPTEUR", "File TABLES",
                                "File PARAMBORDORGCHG", "File ORGPRISECHARGE", "File ASSOCIATION",
                                "File ACTIVITES", "File PLANCOMPTABLE", "File PERIODESPAIE",
                                "Database", "RightsEntry", "Rights"}));
}

TEST_F(FailedStartUp, ReleasesTheFilesItHasOpened) {
  connect();
  store_.fail(CallKind::OpenFile, "TABLES");
  EXPECT_THROW(control_->Init(), store::StoreError);
  store_.releases().clear();
  control_->UserControl_Terminate();
  EXPECT_PRED_FORMAT2(
      same, store_.releases(),
      (std::vector<std::string>{"Client", "File COMPTEUR", "File PARAMBORDORGCHG",
                                "File ORGPRISECHARGE", "Database", "RightsEntry", "Rights"}));
}

TEST_F(StartUp, TheDestructorReleasesToo) {
  start();
  store_.releases().clear();
  control_.reset();
  EXPECT_EQ(store_.releases().back(), "Rights");
}

TEST_F(StartUp, TheClientIsKeptUntilTheEnd) {
  auto client = std::make_shared<int>(1);
  const std::weak_ptr<int> watch = client;
  control_->setTheClient(std::move(client));
  EXPECT_FALSE(watch.expired());
  control_->UserControl_Terminate();
  EXPECT_TRUE(watch.expired());
}

TEST_F(StartUp, AnotherStoreReleasesWhatWasOpenedThroughTheFirst) {
  start();
  lookUp("001");
  testing_support::MemoryStore other;
  fillTables(other);
  store_.releases().clear();
  control_->setTheDatabase(other.connect());
  EXPECT_EQ(store_.releases().size(), 14U);
  EXPECT_EQ(store_.releases().back(), "Database");
  EXPECT_EQ(state(), kEmpty);
  control_->Init();
  EXPECT_EQ(sigles().listCount(), 0);
}

TEST_F(StartUp, HostCallsAreRefusedWhileTheUserActs) {
  start();
  beginCreation();
  int refused = 0;
  desktop_.onBox = [&](const toolkit::headless::Entry&) {
    const std::vector<std::function<void()>> calls = {
        [&] { control_->Init(); },
        [&] { control_->Afficher_Donnees(); },
        [&] { control_->Afficher_Ong1(); },
        [&] { control_->Remplir_OrgPriseChg(); },
        [&] { control_->Remplir_ParamsPoss(); },
        [&] { control_->Remplir_PiecesPoss(); },
        [&] { control_->Remplir_StatOrgChg(); },
        [&] { control_->Vider_Donnees(); },
        [&] { control_->Creer_Donnees(); },
        [&] { control_->Ecrire_Donnees(); },
        [&] { control_->Ecrire_Ong1(); },
        [&] { (void)control_->Verif_Ong1(); },
        [&] { control_->setW_Sortir(true); },
        [&] { control_->setTheClient(nullptr); },
        [&] { control_->setTheDatabase(nullptr); },
        [&] { control_->setDroitsUtilisateur(nullptr); }};
    for (const auto& call : calls) {
      try {
        call();
      } catch (const control::Busy&) {
        ++refused;
      }
    }
    EXPECT_FALSE(control_->W_Sortir());
  };
  desktop_.answer(Answer::No);
  press("Cmd_Annuler");
  EXPECT_EQ(refused, 16);
  EXPECT_EQ(state(), kCreating);
}

TEST_F(StartUp, TheUserIsIgnoredWhileABoxIsOpen) {
  start();
  beginCreation();
  bool taken = true;
  desktop_.onBox = [&](const toolkit::headless::Entry&) { taken = press("Cmd_OK"); };
  desktop_.answer(Answer::No);
  press("Cmd_Annuler");
  EXPECT_FALSE(taken);
  expectNothingWritten();
}

}  // namespace
}  // namespace behaviour
