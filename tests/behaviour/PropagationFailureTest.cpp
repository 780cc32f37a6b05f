// Store, printers and windows that fail at each call in turn while a new scale is carried into the
// agreements: the run goes on, and leaves nothing behind that could be cleared away.
#include <algorithm>

#include "tests/behaviour/PropagationTest.h"

namespace behaviour {
namespace {

class World : public Propagation {
 public:
  World() {
    serverAnswers({"00001001", "00002001"}, {"00003001"});
    show();
  }
  void TestBody() override {}

  using ControlTest::code;
  using ControlTest::control_;
  using ControlTest::desktop_;
  using ControlTest::press;
  using ControlTest::state;
  using ControlTest::store_;
  using Propagation::enterScale;
  using Propagation::expectUsable;
  using Propagation::faulty_;
  using Propagation::journal;
  using Propagation::pages;
  using Propagation::restartOn;

  // Yes to everything, letters and listing.
  void save() {
    for (int i = 0; i < 3; ++i) desktop_.answer(Answer::Yes);
    EXPECT_NO_THROW(EXPECT_TRUE(press("Cmd_OK")));
  }
  bool written() const {
    const auto writes = store_.calls(CallKind::DBWrite);
    return !writes.empty() && attribute39() == stored("01/02/2026");
  }
  void expectWindowsClosed() {
    const std::vector<std::string> words = journal();
    for (const char* form : {"Frm_Anim", "Frm_ImpressionA4"}) {
      EXPECT_EQ(std::count(words.begin(), words.end(), "shown " + std::string(form)),
                std::count(words.begin(), words.end(), "closed " + std::string(form)));
    }
  }
  void expectSaved() {
    EXPECT_EQ(state(), kEmpty);
    EXPECT_EQ(code().text(), "");
    EXPECT_TRUE(code().hasFocus());
  }

 private:
  std::string attribute39() const {
    return std::string(store_.record("ORGPRISECHARGE", "001").get(39));
  }
};

TEST(PropagationFailure, OfEachStoreCallIsPassedOver) {
  int calls = 0;
  {
    World world;
    world.enterScale();
    world.save();
    calls = static_cast<int>(world.store_.calls().size());
    ASSERT_EQ(world.pages().jobs().size(), 2U);
  }
  ASSERT_GT(calls, 20);
  for (int call = 1; call <= calls; ++call) {
    SCOPED_TRACE("call " + std::to_string(call));
    World world;
    world.enterScale();
    world.store_.failAt(call);
    world.save();
    const std::string failed = world.store_.calls().at(static_cast<std::size_t>(call) - 1).told();
    SCOPED_TRACE(failed);
    world.expectUsable();
    world.expectWindowsClosed();
    if (!world.written()) {
      EXPECT_EQ(world.state(), kExisting);
      EXPECT_TRUE(world.desktop_.boxes().empty());
      continue;
    }
    world.expectSaved();
    const std::size_t left = failed == "OpenFile TEMPO" ? 2 : failed.starts_with("DeleteRecord");
    EXPECT_EQ(world.store_.ids("TEMPO").size(), left);
    EXPECT_TRUE(world.pages().current().pieces.empty());
  }
}

TEST(PropagationFailure, OfEachStoreCallAfterTheCommandLeavesTheOthers) {
  World reference;
  reference.enterScale();
  reference.save();
  const auto all = reference.store_.calls();
  const auto command = std::find_if(all.begin(), all.end(), [](const auto& call) {
    return call.text.find("MAJTXACCGENE") != std::string::npos;
  });
  ASSERT_NE(command, all.end());
  for (const char* kept :
       {"OpenFile CONSTANTESPAIE", "ReadRecord ASSOCIATION 010", "ReadRecord ACCORD 00001001",
        "ReadRecord ACCORD 00003001", "OpenFile ACCORD"}) {
    SCOPED_TRACE(kept);
    const auto failing =
        std::find_if(command, all.end(), [&](const auto& call) { return call.told() == kept; });
    ASSERT_NE(failing, all.end());
    World world;
    world.enterScale();
    world.store_.failAt(static_cast<int>(failing - all.begin()) + 1);
    world.save();
    EXPECT_EQ(world.desktop_.boxes().back().text, questionListe(1));
    ASSERT_EQ(world.pages().jobs().size(), 2U);
    EXPECT_EQ(world.pages().jobs()[0].pages, 2);
  }
}

TEST(PropagationFailure, OfEachCallOfPrintersAndFormsIsPassedOver) {
  int calls = 0;
  {
    World world;
    world.restartOn(world.faulty_);
    world.enterScale();
    world.faulty_.failAt(0);
    world.save();
    calls = world.faulty_.calls();
    ASSERT_EQ(world.pages().jobs().size(), 2U);
  }
  ASSERT_GT(calls, 50);
  for (int call = 1; call <= calls; ++call) {
    SCOPED_TRACE("call " + std::to_string(call));
    World world;
    world.restartOn(world.faulty_);
    world.enterScale();
    world.faulty_.failAt(call);
    world.save();
    world.expectUsable();
    world.expectWindowsClosed();
    EXPECT_TRUE(world.written());
    world.expectSaved();
    EXPECT_TRUE(world.store_.ids("TEMPO").empty());
    EXPECT_EQ(world.desktop_.boxes().size(), 3U);
  }
}

TEST(PropagationFailure, OfAPageBreakNeverPutsTwoLettersOnOnePage) {
  World reference;
  reference.restartOn(reference.faulty_);
  reference.enterScale();
  reference.faulty_.failAt(0);
  reference.save();
  const int calls = reference.faulty_.calls();
  for (int call = 1; call <= calls; ++call) {
    World world;
    world.restartOn(world.faulty_);
    world.enterScale();
    world.faulty_.failAt(call);
    world.save();
    for (const auto& job : world.pages().jobs()) {
      std::vector<int> pages;
      for (const auto& piece : job.pieces) {
        if (piece.text == "Objet :") pages.push_back(piece.page);
      }
      EXPECT_EQ(std::adjacent_find(pages.begin(), pages.end()), pages.end()) << call;
    }
  }
}

}  // namespace
}  // namespace behaviour
