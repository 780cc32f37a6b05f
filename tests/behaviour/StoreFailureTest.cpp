// A store that fails at each call in turn, for each action of the user: what is trapped goes on,
// what is not ends with the error at the host; nothing typed is lost, and the store holds either
// the old record or the new one.
#include <algorithm>
#include <functional>

#include "tests/behaviour/ControlTest.h"
#include "tests/behaviour/Snapshot.h"

namespace behaviour {
namespace {

class FailingWorld : public ControlTest {
 public:
  FailingWorld() {
    fillThreeBodies(store_);
    start();
  }
  void TestBody() override {}

  using ControlTest::attribute;
  using ControlTest::beginCreation;
  using ControlTest::box;
  using ControlTest::child;
  using ControlTest::code;
  using ControlTest::control_;
  using ControlTest::desktop_;
  using ControlTest::lookUp;
  using ControlTest::press;
  using ControlTest::sigles;
  using ControlTest::state;
  using ControlTest::store_;
  using ControlTest::tabs;
  using ControlTest::user_;

  int bodiesNamed(std::string_view sigle) {
    int count = 0;
    for (const std::string& id : store_.ids("ORGPRISECHARGE"))
      count += attribute(id, attribut::SigleOrgChg) == sigle;
    return count;
  }
};

using Step = std::function<void(FailingWorld&)>;

int callsOf(const Step& prepare, const Step& act) {
  FailingWorld world;
  prepare(world);
  world.store_.forgetCalls();
  act(world);
  return static_cast<int>(world.store_.calls().size());
}

// Runs the action in a fresh world once for each of its store calls, with that call failing.
void withEachCallFailing(const Step& prepare, const Step& act,
                         const std::function<void(FailingWorld&, int call)>& check) {
  const int calls = callsOf(prepare, act);
  ASSERT_GT(calls, 0);
  for (int call = 1; call <= calls; ++call) {
    SCOPED_TRACE("call " + std::to_string(call));
    FailingWorld world;
    prepare(world);
    world.store_.forgetCalls();
    world.store_.failAt(call);
    check(world, call);
    EXPECT_EQ(world.desktop_.pointer(), toolkit::Pointer::Normal);
    EXPECT_TRUE(world.control_->surface().enabled());
  }
}

void pressOk(FailingWorld& world) { world.press("Cmd_OK"); }

TEST(StoreFailure, SavingABodyIsTrapped) {
  const Step prepare = [](FailingWorld& world) {
    world.lookUp("001");
    world.user_->fill(world.box("Txt_RaisonOrgChg"), "Nouveau nom");
  };
  withEachCallFailing(prepare, pressOk, [](FailingWorld& world, int) {
    const std::string before = world.store_.record("ORGPRISECHARGE", "001").text();
    EXPECT_NO_THROW(pressOk(world));
    EXPECT_PRED_FORMAT1(noBoxes, world.desktop_.boxes());
    const bool written = world.attribute("001", attribut::RaisonOrgChg) == "Nouveau nom";
    EXPECT_EQ(world.desktop_.beeps(), written ? 0 : 1);
    if (!written) {
      EXPECT_PRED_FORMAT2(sameBody, world.store_.record("ORGPRISECHARGE", "001").text(), before);
      EXPECT_EQ(world.box("Txt_RaisonOrgChg").text(), "Nouveau nom");
      EXPECT_EQ(world.state(), kExisting);
    }
    world.store_.stopFailing();
    if (!written) pressOk(world);
    EXPECT_EQ(world.attribute("001", attribut::RaisonOrgChg), "Nouveau nom");
    EXPECT_EQ(world.state(), kEmpty);
  });
}

TEST(StoreFailure, SavingANewBodyIsTrappedAndNeverCreatesItTwice) {
  const Step prepare = [](FailingWorld& world) { world.beginCreation(); };
  withEachCallFailing(prepare, pressOk, [](FailingWorld& world, int) {
    EXPECT_NO_THROW(pressOk(world));
    EXPECT_PRED_FORMAT1(noBoxes, world.desktop_.boxes());
    const bool written = world.bodiesNamed("NEUF") == 1;
    EXPECT_EQ(world.desktop_.beeps(), written ? 0 : 1);
    if (!written) {
      EXPECT_EQ(world.store_.ids("ORGPRISECHARGE").size(), 3U);
      EXPECT_EQ(world.state(), kCreating);
      EXPECT_EQ(world.box("Txt_SigleOrgChg").text(), "NEUF");
      EXPECT_EQ(world.box("Txt_RaisonOrgChg").text(), "Organisme neuf");
    }
    world.store_.stopFailing();
    if (!written) pressOk(world);
    EXPECT_EQ(world.bodiesNamed("NEUF"), 1);
    EXPECT_EQ(world.state(), kEmpty);
    for (const char* old : {"001", "002", "003"}) {
      EXPECT_TRUE(world.store_.has("ORGPRISECHARGE", old));
    }
  });
}

TEST(StoreFailure, LookingUpByCodeIsTrapped) {
  withEachCallFailing([](FailingWorld&) {}, [](FailingWorld& world) { world.lookUp("001"); },
                      [](FailingWorld& world, int) {
                        EXPECT_NO_THROW(world.lookUp("001"));
                        EXPECT_PRED_FORMAT1(noBoxes, world.desktop_.boxes());
                        EXPECT_EQ(world.desktop_.beeps(), 1);
                        EXPECT_EQ(world.code().text(), "001");
                        EXPECT_EQ(world.state(), kEmpty);
                      });
}

TEST(StoreFailure, SearchingByAcronymIsTrapped) {
  const Step act = [](FailingWorld& world) {
    world.user_->fill(world.sigles(), "CA");
    world.user_->press(toolkit::Key::Enter);
  };
  withEachCallFailing([](FailingWorld&) {}, act,
                      [&](FailingWorld& world, int) {
                        EXPECT_NO_THROW(act(world));
                        EXPECT_PRED_FORMAT1(noBoxes, world.desktop_.boxes());
                        EXPECT_EQ(world.desktop_.beeps(), 1);
                        EXPECT_EQ(world.sigles().text(), "CA");
                        EXPECT_EQ(world.sigles().listCount(), 3);
                      });
}

TEST(StoreFailure, ChoosingAnAcronymIsTrapped) {
  const Step act = [](FailingWorld& world) { world.user_->choose(world.sigles(), 0); };
  withEachCallFailing([](FailingWorld&) {}, act,
                      [&](FailingWorld& world, int) {
                        EXPECT_NO_THROW(act(world));
                        EXPECT_EQ(world.desktop_.beeps(), 1);
                        EXPECT_EQ(world.code().text(), "003");
                        EXPECT_EQ(world.state(), kEmpty);
                      });
}

TEST(StoreFailure, DeletingEndsWithTheError) {
  const Step prepare = [](FailingWorld& world) { world.lookUp("001"); };
  const Step act = [](FailingWorld& world) {
    world.desktop_.answer(Answer::Yes);
    world.press("Cmd_Supprimer");
  };
  withEachCallFailing(prepare, act, [&](FailingWorld& world, int call) {
    EXPECT_THROW(act(world), store::StoreError);
    const bool deleted = call == 4;
    EXPECT_EQ(world.store_.has("ORGPRISECHARGE", "001"), !deleted);
    EXPECT_EQ(world.state(), deleted ? kEmpty : kExisting);
    EXPECT_EQ(world.code().text(), deleted ? "" : "001");
  });
}

TEST(StoreFailure, SavingOnLeavingEndsWithTheError) {
  const Step prepare = [](FailingWorld& world) {
    world.lookUp("001");
    world.user_->fill(world.box("Txt_RaisonOrgChg"), "Nouveau nom");
  };
  const Step act = [](FailingWorld& world) {
    world.desktop_.answer(Answer::Yes);
    world.press("Cmd_Sortir");
  };
  withEachCallFailing(prepare, act, [&](FailingWorld& world, int) {
    EXPECT_THROW(act(world), store::StoreError);
    EXPECT_EQ(world.desktop_.beeps(), 1);
    EXPECT_FALSE(world.control_->W_Sortir());
    EXPECT_EQ(world.attribute("001", attribut::RaisonOrgChg), "Domus Mutuelle");
    EXPECT_EQ(world.box("Txt_RaisonOrgChg").text(), "Nouveau nom");
    EXPECT_EQ(world.state(), kExisting);
  });
}

TEST(StoreFailure, TheHostsSavesEndWithTheError) {
  const Step prepare = [](FailingWorld& world) {
    world.lookUp("001");
    world.user_->fill(world.box("Txt_RaisonOrgChg"), "Nouveau nom");
  };
  const Step write = [](FailingWorld& world) { world.control_->Ecrire_Donnees(); };
  withEachCallFailing(prepare, write, [&](FailingWorld& world, int) {
    EXPECT_THROW(write(world), store::StoreError);
    EXPECT_EQ(world.attribute("001", attribut::RaisonOrgChg), "Domus Mutuelle");
    EXPECT_EQ(world.box("Txt_RaisonOrgChg").text(), "Nouveau nom");
  });
  const Step create = [](FailingWorld& world) { world.control_->Creer_Donnees(); };
  withEachCallFailing([](FailingWorld& world) { world.beginCreation(); }, create,
                      [&](FailingWorld& world, int call) {
                        EXPECT_THROW(create(world), store::StoreError);
                        const bool written = call == 5;
                        EXPECT_EQ(world.bodiesNamed("NEUF"), written ? 1 : 0);
                        EXPECT_EQ(world.state(), written ? kEmpty : kCreating);
                      });
}

TEST(StoreFailure, TheHostsListFillingEndsWithTheError) {
  for (const auto& fill :
       std::vector<Step>{[](FailingWorld& world) { world.control_->Remplir_OrgPriseChg(); },
                         [](FailingWorld& world) { world.control_->Remplir_ParamsPoss(); }}) {
    withEachCallFailing(
        [](FailingWorld&) {}, fill,
        [&](FailingWorld& world, int) { EXPECT_THROW(fill(world), store::StoreError); });
  }
}

// --- All pages: accounts, activities, agreements -------------------------------------------------

// The store as all pages need it, and the body 001 with something on each of them.
void fillAllPages(FailingWorld& world) {
  testing_support::MemoryStore& store = world.store_;
  const std::string mark(1, store::kValueMark);
  store.set("COMPTEUR", "999", store::compteur::InterfaceComptable, "O");
  store.put("ASSOCIATION", "020", {"AUTRE VAL"});
  for (const char* code : {"010P02", "020P01"}) {
    store.put("ACTIVITES", code,
              {std::string("Garde ") + code, std::string(code).substr(0, 3), "", "", "", "", "", "",
               "", "", "", "P", "SAAD"});
  }
  for (const char* account : {"4110000000", "4120000000", "7060000000", "7580000000"}) {
    store.put("PLANCOMPTABLE", std::string("010") + account,
              {"COMPTE " + std::string(account).substr(0, 3)});
  }
  store.put("PERIODESPAIE", "1", {"202601"});
  // Ended: it is searched for, and does not keep the type from changing.
  store.put("ACCORD", "00001001", {"001", "00001", "", "", "20000", "21000"});
  const std::vector<std::pair<int, std::string>> rules{
      {attribut::PieceRenouOrgChg, "AI" + mark + "RI"},
      {attribut::DebitOrgChg, "4110000000"},
      {attribut::CreditOrgChg, "7060000000"},
      {attribut::StatsOrgChg, "CD"},
      {attribut::CodActSelect, "010P01" + mark + "010P99" + mark + "010P02"},
      {attribut::CptPrestationService, "7060000000"},
      {attribut::CpteProdAide, "7580000000"}};
  for (const auto& [attribute, text] : rules) store.set("ORGPRISECHARGE", "001", attribute, text);
  world.control_->Init();
}

Snapshot screenOf(FailingWorld& world) { return snapshotOf(world.control_->surface()); }

void showAllPages(FailingWorld& world) {
  fillAllPages(world);
  world.lookUp("001");
}

// A change on each page; that of the type is checked against the agreements.
void changeAllPages(FailingWorld& world) {
  showAllPages(world);
  toolkit::headless::User& user = *world.user_;
  user.fill(world.box("Txt_RaisonOrgChg"), "Nouveau nom");
  user.click(world.tabs(), 1);
  user.click(world.child<toolkit::OptionButton>("Opt_TypeComplOrgChg"));
  user.fill(world.box("Txt_DebitOrgChg"), "4120000000");
  user.click(world.tabs(), 2);
  user.click(world.child<toolkit::OptionButton>("Opt_MontantOrgChg"));
  user.click(world.tabs(), 4);
  user.dblClick(world.child<ListBox>("Lst_ParamPossOrgChg"), 0);
  user.click(world.tabs(), 5);
  user.dblClick(world.child<ListBox>("Lst_ActSelect"), 1);
}

void expectAllChangesSaved(FailingWorld& world) {
  const std::string mark(1, store::kValueMark);
  EXPECT_EQ(world.attribute("001", attribut::RaisonOrgChg), "Nouveau nom");
  EXPECT_EQ(world.attribute("001", attribut::TypeOrgChg), "C");
  EXPECT_EQ(world.attribute("001", attribut::DebitOrgChg), "4120000000");
  EXPECT_EQ(world.attribute("001", attribut::AttribOrgChg), "M");
  EXPECT_EQ(world.attribute("001", attribut::ParamSelecOrgChg), "1" + mark + "2");
  EXPECT_EQ(world.attribute("001", attribut::CodActSelect), "010P01" + mark + "010P02");
}

TEST(StoreFailureOnAllPages, LookingUpShowsTheWholeBodyOrNothing) {
  const Step act = [](FailingWorld& world) { world.lookUp("001"); };
  FailingWorld undisturbed;
  showAllPages(undisturbed);
  const Snapshot whole = screenOf(undisturbed);
  int shown = 0;
  withEachCallFailing(fillAllPages, act, [&](FailingWorld& world, int) {
    EXPECT_NO_THROW(act(world));
    EXPECT_PRED_FORMAT1(noBoxes, world.desktop_.boxes());
    EXPECT_EQ(world.code().text(), "001");
    EXPECT_EQ(world.desktop_.beeps(), world.state() == kExisting ? 0 : 1);
    if (world.state() == kExisting) {
      ++shown;  // without the label of an account
      EXPECT_EQ(difference(whole, screenOf(world),
                           {"Cbo_DebitOrgChg", "Cbo_CreditOrgChg", "Cbo_CpteProdAide",
                            "Cbo_CptPrestationService"}),
                "");
      world.press("Cmd_Sortir");
      EXPECT_PRED_FORMAT1(noBoxes, world.desktop_.boxes());
      EXPECT_TRUE(world.control_->W_Sortir());
    } else {
      EXPECT_EQ(world.state(), kEmpty);
    }
    EXPECT_TRUE(world.store_.calls(CallKind::DBWrite).empty());
    world.store_.stopFailing();
    act(world);
    EXPECT_EQ(difference(whole, screenOf(world)), "");
  });
  EXPECT_EQ(shown, 4);
}

// Shown by the host: in part is not at all, so that nothing half shown can be saved.
void expectShownWholeOrNotAtAll(const std::function<void(control::Ctr_OrgPriseCharge&)>& show) {
  const Step act = [&](FailingWorld& world) { show(*world.control_); };
  FailingWorld undisturbed;
  showAllPages(undisturbed);
  const std::string before = undisturbed.store_.record("ORGPRISECHARGE", "001").text();
  int cleared = 0;
  withEachCallFailing(showAllPages, act, [&](FailingWorld& world, int) {
    try {
      act(world);
      EXPECT_EQ(world.state(), kExisting);  // without the label of an account
    } catch (const store::StoreError&) {
      ++cleared;
      EXPECT_EQ(world.state(), kEmpty);
      EXPECT_EQ(world.box("Txt_RaisonOrgChg").text(), "");
      EXPECT_EQ(world.child<ListBox>("Lst_ActSelect").listCount(), 0);
    }
    EXPECT_EQ(world.code().text(), "001");
    world.press("Cmd_OK");
    EXPECT_PRED_FORMAT2(sameBody, world.store_.record("ORGPRISECHARGE", "001").text(), before);
  });
  EXPECT_GT(cleared, 0);
}

TEST(StoreFailureOnAllPages, TheHostsDisplayOfARecordShowsAllOrNothing) {
  expectShownWholeOrNotAtAll(
      [](control::Ctr_OrgPriseCharge& control) { control.Afficher_Donnees(); });
}

TEST(StoreFailureOnAllPages, TheHostsDisplayOfTheActivitiesShowsAllOrNothing) {
  expectShownWholeOrNotAtAll([](control::Ctr_OrgPriseCharge& control) { control.Afficher_Ong6(); });
}

TEST(StoreFailureOnAllPages, ABodyShownWithoutTheLabelOfAnAccountIsSavedWhole) {
  const Step act = [](FailingWorld& world) { world.lookUp("001"); };
  withEachCallFailing(fillAllPages, act, [&](FailingWorld& world, int) {
    const std::string before = world.store_.record("ORGPRISECHARGE", "001").text();
    act(world);
    if (world.state() != kExisting) return;
    pressOk(world);
    EXPECT_PRED_FORMAT1(noBoxes, world.desktop_.boxes());
    EXPECT_PRED_FORMAT2(sameBody, world.store_.record("ORGPRISECHARGE", "001").text(), before);
  });
}

// Searches for an account of the body shown, and what the fields hold once it has been found.
struct Search {
  const char* name;
  Step act;
  const char* numero;
};

std::vector<Search> searches() {
  const auto byNumber = [](FailingWorld& world, const char* typed) {
    world.user_->click(world.tabs(), 1);
    world.user_->fill(world.box("Txt_DebitOrgChg"), typed);
    world.user_->press(toolkit::Key::Enter);
  };
  const auto byLabel = [](FailingWorld& world, const char* typed) {
    world.user_->click(world.tabs(), 1);
    world.user_->fill(world.child<ComboBox>("Cbo_DebitOrgChg"), typed);
    world.user_->press(toolkit::Key::Enter);
    world.user_->choose(world.child<ComboBox>("Cbo_DebitOrgChg"), 0);
  };
  const auto byLeaving = [](FailingWorld& world) {
    world.user_->click(world.tabs(), 1);
    world.user_->fill(world.box("Txt_DebitOrgChg"), "412");
    world.user_->go(world.box("Txt_CreditOrgChg"));
  };
  return {{"ten digits", [=](FailingWorld& world) { byNumber(world, "4120000000"); }, "4120000000"},
          {"the only one", [=](FailingWorld& world) { byNumber(world, "412"); }, "4120000000"},
          {"by label", [=](FailingWorld& world) { byLabel(world, "compte 41"); }, "4110000000"},
          {"by leaving", byLeaving, "4120000000"}};
}

TEST(StoreFailureOnAllPages, SearchingForAnAccountIsTrappedAndWorksTheNextTime) {
  for (const Search& search : searches()) {
    SCOPED_TRACE(search.name);
    withEachCallFailing(showAllPages, search.act, [&](FailingWorld& world, int) {
      EXPECT_NO_THROW(search.act(world));
      EXPECT_PRED_FORMAT1(noBoxes, world.desktop_.boxes());
      EXPECT_EQ(world.state(), kExisting);
      EXPECT_TRUE(world.store_.calls(CallKind::DBWrite).empty());
      world.store_.stopFailing();
      world.user_->go(world.box("Txt_CreditOrgChg"));
      search.act(world);
      EXPECT_EQ(world.box("Txt_DebitOrgChg").text(), search.numero);
      EXPECT_EQ(world.child<ComboBox>("Cbo_DebitOrgChg").text(),
                "COMPTE " + std::string(search.numero).substr(0, 3));
      EXPECT_PRED_FORMAT1(noBoxes, world.desktop_.boxes());
    });
  }
}

TEST(StoreFailureOnAllPages, ChoosingAnEntityIsTrappedAndWorksTheNextTime) {
  const Step byCode = [](FailingWorld& world) {
    world.user_->click(world.tabs(), 5);
    world.user_->fill(world.box("Txt_Entite"), "020");
  };
  const Step byName = [](FailingWorld& world) {
    world.user_->click(world.tabs(), 5);
    ComboBox& names = world.child<ComboBox>("Cbo_Entite");
    world.user_->fill(names, "autre");
    world.user_->press(toolkit::Key::Enter);
    names.userChoose(names.items().find("AUTRE VAL"));  // without opening the list: by an arrow key
  };
  const Step byList = [](FailingWorld& world) {
    world.user_->click(world.tabs(), 5);
    ComboBox& names = world.child<ComboBox>("Cbo_Entite");
    world.user_->open(names);
    world.user_->choose(names, names.items().find("AUTRE VAL"));
  };
  for (const Step& act : {byCode, byName, byList}) {
    withEachCallFailing(showAllPages, act, [&](FailingWorld& world, int) {
      EXPECT_NO_THROW(act(world));
      EXPECT_PRED_FORMAT1(noBoxes, world.desktop_.boxes());
      EXPECT_EQ(world.state(), kExisting);
      EXPECT_TRUE(world.store_.calls(CallKind::DBWrite).empty());
      world.store_.stopFailing();
      act(world);
      EXPECT_EQ(world.box("Txt_Entite").text(), "020");
      EXPECT_EQ(world.child<ComboBox>("Cbo_Entite").text(), "AUTRE VAL");
      EXPECT_EQ(world.child<ListBox>("Lst_Activite").listCount(), 1);
      EXPECT_PRED_FORMAT1(noBoxes, world.desktop_.boxes());
    });
  }
}

TEST(StoreFailureOnAllPages, SavingIsTrappedAndKeepsWhatWasTypedOnAllPages) {
  withEachCallFailing(changeAllPages, pressOk, [](FailingWorld& world, int) {
    const std::string before = world.store_.record("ORGPRISECHARGE", "001").text();
    const Snapshot typed = screenOf(world);
    EXPECT_NO_THROW(pressOk(world));
    EXPECT_PRED_FORMAT1(noBoxes, world.desktop_.boxes());
    const bool written = world.attribute("001", attribut::RaisonOrgChg) == "Nouveau nom";
    if (!written) {
      EXPECT_PRED_FORMAT2(sameBody, world.store_.record("ORGPRISECHARGE", "001").text(), before);
      EXPECT_EQ(difference(typed, screenOf(world)), "");
    }
    world.store_.stopFailing();
    if (!written) pressOk(world);
    expectAllChangesSaved(world);
    EXPECT_EQ(world.state(), kEmpty);
  });
}

TEST(StoreFailureOnAllPages, SavingANewBodyIsTrappedAndKeepsWhatWasTypedOnAllPages) {
  const Step prepare = [](FailingWorld& world) {
    fillAllPages(world);
    world.beginCreation();
    world.user_->click(world.tabs(), 5);
    world.user_->dblClick(world.child<ListBox>("Lst_Activite"), 0);
    world.user_->click(world.tabs(), 1);
    world.user_->click(world.child<toolkit::OptionButton>("Opt_TypeComplOrgChg"));
    world.user_->fill(world.box("Txt_DebitOrgChg"), "4120000000");
    world.user_->fill(world.box("Txt_CreditOrgChg"), "7060000000");
  };
  withEachCallFailing(prepare, pressOk, [](FailingWorld& world, int) {
    const Snapshot typed = screenOf(world);
    EXPECT_NO_THROW(pressOk(world));
    EXPECT_PRED_FORMAT1(noBoxes, world.desktop_.boxes());
    const bool written = world.bodiesNamed("NEUF") == 1;
    if (!written) {
      EXPECT_EQ(world.store_.ids("ORGPRISECHARGE").size(), 3U);
      EXPECT_EQ(difference(typed, screenOf(world)), "");
    }
    world.store_.stopFailing();
    if (!written) pressOk(world);
    EXPECT_EQ(world.bodiesNamed("NEUF"), 1);
    EXPECT_EQ(world.state(), kEmpty);
    const std::string id = world.store_.ids("ORGPRISECHARGE").back();
    EXPECT_EQ(world.attribute(id, attribut::DebitOrgChg), "4120000000");
    EXPECT_EQ(world.attribute(id, attribut::CodActSelect), "010P01");
  });
}

TEST(StoreFailureOnAllPages, LeavingEndsWithTheErrorAndWorksTheNextTime) {
  const Step act = [](FailingWorld& world) {
    world.desktop_.answer(Answer::Yes);
    world.press("Cmd_Sortir");
  };
  withEachCallFailing(changeAllPages, act, [&](FailingWorld& world, int) {
    const std::string before = world.store_.record("ORGPRISECHARGE", "001").text();
    const Snapshot typed = screenOf(world);
    EXPECT_THROW(act(world), store::StoreError);
    EXPECT_FALSE(world.control_->W_Sortir());
    EXPECT_PRED_FORMAT2(sameBody, world.store_.record("ORGPRISECHARGE", "001").text(), before);
    EXPECT_EQ(difference(typed, screenOf(world)), "");
    world.store_.stopFailing();
    if (!world.desktop_.answersLeft()) world.desktop_.answer(Answer::Yes);
    world.press("Cmd_Sortir");
    EXPECT_TRUE(world.control_->W_Sortir());
    expectAllChangesSaved(world);
  });
}

TEST(StoreFailureOnAllPages, AFailedSaveIsNoChangeOfTheRecordInHand) {
  withEachCallFailing(changeAllPages, pressOk, [](FailingWorld& world, int) {
    pressOk(world);
    if (world.state() != kExisting) return;
    world.store_.stopFailing();
    world.control_->Afficher_Donnees();
    world.press("Cmd_Sortir");
    EXPECT_PRED_FORMAT1(noBoxes, world.desktop_.boxes());
    EXPECT_TRUE(world.control_->W_Sortir());
  });
}

}  // namespace
}  // namespace behaviour
