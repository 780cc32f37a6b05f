// A store that fails at each call in turn, for each action of the user: what is trapped goes on,
// what is not ends with the error at the host; nothing typed is lost, and the store holds either
// the old record or the new one.
#include <algorithm>
#include <functional>

#include "tests/behaviour/ControlTest.h"

namespace behaviour {
namespace {

class World : public ControlTest {
 public:
  World() {
    fillThreeBodies(store_);
    start();
  }
  void TestBody() override {}

  using ControlTest::attribute;
  using ControlTest::beginCreation;
  using ControlTest::box;
  using ControlTest::code;
  using ControlTest::control_;
  using ControlTest::desktop_;
  using ControlTest::lookUp;
  using ControlTest::press;
  using ControlTest::sigles;
  using ControlTest::state;
  using ControlTest::store_;
  using ControlTest::user_;

  int bodiesNamed(std::string_view sigle) {
    int count = 0;
    for (const std::string& id : store_.ids("ORGPRISECHARGE")) count += attribute(id, 1) == sigle;
    return count;
  }
};

using Step = std::function<void(World&)>;

int callsOf(const Step& prepare, const Step& act) {
  World world;
  prepare(world);
  world.store_.forgetCalls();
  act(world);
  return static_cast<int>(world.store_.calls().size());
}

// Runs the action in a fresh world once for each of its store calls, with that call failing.
void withEachCallFailing(const Step& prepare, const Step& act,
                         const std::function<void(World&, int call)>& check) {
  const int calls = callsOf(prepare, act);
  ASSERT_GT(calls, 0);
  for (int call = 1; call <= calls; ++call) {
    SCOPED_TRACE("call " + std::to_string(call));
    World world;
    prepare(world);
    world.store_.forgetCalls();
    world.store_.failAt(call);
    check(world, call);
    EXPECT_EQ(world.desktop_.pointer(), toolkit::Pointer::Normal);
    EXPECT_TRUE(world.control_->surface().enabled());
  }
}

void pressOk(World& world) { world.press("Cmd_OK"); }

TEST(StoreFailure, SavingABodyIsTrapped) {
  const Step prepare = [](World& world) {
    world.lookUp("001");
    world.user_->fill(world.box("Txt_RaisonOrgChg"), "Nouveau nom");
  };
  withEachCallFailing(prepare, pressOk, [](World& world, int) {
    const std::string before = world.store_.record("ORGPRISECHARGE", "001").text();
    EXPECT_NO_THROW(pressOk(world));
    EXPECT_TRUE(world.desktop_.boxes().empty());
    const bool written = world.attribute("001", 2) == "Nouveau nom";
    if (!written) {
      EXPECT_EQ(world.store_.record("ORGPRISECHARGE", "001").text(), before);
      EXPECT_EQ(world.box("Txt_RaisonOrgChg").text(), "Nouveau nom");
      EXPECT_EQ(world.state(), kExisting);
    }
    world.store_.stopFailing();
    if (!written) pressOk(world);
    EXPECT_EQ(world.attribute("001", 2), "Nouveau nom");
    EXPECT_EQ(world.state(), kEmpty);
  });
}

TEST(StoreFailure, SavingANewBodyIsTrappedAndNeverCreatesItTwice) {
  const Step prepare = [](World& world) { world.beginCreation(); };
  withEachCallFailing(prepare, pressOk, [](World& world, int) {
    EXPECT_NO_THROW(pressOk(world));
    EXPECT_TRUE(world.desktop_.boxes().empty());
    const bool written = world.bodiesNamed("NEUF") == 1;
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
  withEachCallFailing([](World&) {}, [](World& world) { world.lookUp("001"); },
                      [](World& world, int) {
                        EXPECT_NO_THROW(world.lookUp("001"));
                        EXPECT_TRUE(world.desktop_.boxes().empty());
                        EXPECT_EQ(world.code().text(), "001");
                        EXPECT_EQ(world.state(), kEmpty);
                      });
}

TEST(StoreFailure, SearchingByAcronymIsTrapped) {
  const Step act = [](World& world) {
    world.user_->fill(world.sigles(), "CA");
    world.user_->press(toolkit::Key::Enter);
  };
  withEachCallFailing([](World&) {}, act,
                      [&](World& world, int) {
                        EXPECT_NO_THROW(act(world));
                        EXPECT_TRUE(world.desktop_.boxes().empty());
                        EXPECT_EQ(world.sigles().text(), "CA");
                        EXPECT_EQ(world.sigles().listCount(), 3);
                      });
}

TEST(StoreFailure, ChoosingAnAcronymIsTrapped) {
  const Step act = [](World& world) { world.user_->choose(world.sigles(), 0); };
  withEachCallFailing([](World&) {}, act,
                      [&](World& world, int) {
                        EXPECT_NO_THROW(act(world));
                        EXPECT_EQ(world.code().text(), "003");
                        EXPECT_EQ(world.state(), kEmpty);
                      });
}

TEST(StoreFailure, DeletingEndsWithTheError) {
  const Step prepare = [](World& world) { world.lookUp("001"); };
  const Step act = [](World& world) {
    world.desktop_.answer(Answer::Yes);
    world.press("Cmd_Supprimer");
  };
  withEachCallFailing(prepare, act, [&](World& world, int call) {
    EXPECT_THROW(act(world), store::StoreError);
    const bool deleted = call == 4;
    EXPECT_EQ(world.store_.has("ORGPRISECHARGE", "001"), !deleted);
    EXPECT_EQ(world.state(), deleted ? kEmpty : kExisting);
    EXPECT_EQ(world.code().text(), deleted ? "" : "001");
  });
}

TEST(StoreFailure, SavingOnLeavingEndsWithTheError) {
  const Step prepare = [](World& world) {
    world.lookUp("001");
    world.user_->fill(world.box("Txt_RaisonOrgChg"), "Nouveau nom");
  };
  const Step act = [](World& world) {
    world.desktop_.answer(Answer::Yes);
    world.press("Cmd_Sortir");
  };
  withEachCallFailing(prepare, act, [&](World& world, int) {
    EXPECT_THROW(act(world), store::StoreError);
    EXPECT_FALSE(world.control_->W_Sortir());
    EXPECT_EQ(world.attribute("001", 2), "Domus Mutuelle");
    EXPECT_EQ(world.box("Txt_RaisonOrgChg").text(), "Nouveau nom");
    EXPECT_EQ(world.state(), kExisting);
  });
}

TEST(StoreFailure, TheHostsSavesEndWithTheError) {
  const Step prepare = [](World& world) {
    world.lookUp("001");
    world.user_->fill(world.box("Txt_RaisonOrgChg"), "Nouveau nom");
  };
  const Step write = [](World& world) { world.control_->Ecrire_Donnees(); };
  withEachCallFailing(prepare, write, [&](World& world, int) {
    EXPECT_THROW(write(world), store::StoreError);
    EXPECT_EQ(world.attribute("001", 2), "Domus Mutuelle");
    EXPECT_EQ(world.box("Txt_RaisonOrgChg").text(), "Nouveau nom");
  });
  const Step create = [](World& world) { world.control_->Creer_Donnees(); };
  withEachCallFailing([](World& world) { world.beginCreation(); }, create,
                      [&](World& world, int call) {
                        EXPECT_THROW(create(world), store::StoreError);
                        const bool written = call == 5;
                        EXPECT_EQ(world.bodiesNamed("NEUF"), written ? 1 : 0);
                        EXPECT_EQ(world.state(), written ? kEmpty : kCreating);
                      });
}

TEST(StoreFailure, TheHostsListFillingEndsWithTheError) {
  for (const auto& fill :
       std::vector<Step>{[](World& world) { world.control_->Remplir_OrgPriseChg(); },
                         [](World& world) { world.control_->Remplir_ParamsPoss(); }}) {
    withEachCallFailing([](World&) {}, fill,
                        [&](World& world, int) { EXPECT_THROW(fill(world), store::StoreError); });
  }
}

}  // namespace
}  // namespace behaviour
