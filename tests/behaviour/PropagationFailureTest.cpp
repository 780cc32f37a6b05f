// Store, printers and windows that fail at each call in turn while a new scale is carried into the
// agreements: the run goes on, and leaves nothing behind that could be cleared away.
#include <algorithm>
#include <sstream>

#include "tests/behaviour/PropagationTest.h"

namespace behaviour {
namespace {

using DesktopCall = testing_support::FaultyDesktop::Kind;
using Texts = std::vector<std::string>;

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
  void save(Caller at = Caller::here()) {
    const auto trace = called("save", at);
    for (int i = 0; i < 3; ++i) desktop_.answer(Answer::Yes);
    EXPECT_NO_THROW(EXPECT_TRUE(press("Cmd_OK")));
  }
  bool written() const {
    const auto writes = store_.calls(CallKind::DBWrite);
    return !writes.empty() && newScalesDay() == stored("01/02/2026");
  }
  void expectWindowsClosed(Caller at = Caller::here()) {
    const auto trace = called("expectWindowsClosed", at);
    const std::vector<std::string> words = journal();
    for (const char* form : {"Frm_Anim", "Frm_ImpressionA4"}) {
      EXPECT_EQ(std::count(words.begin(), words.end(), "shown " + std::string(form)),
                std::count(words.begin(), words.end(), "closed " + std::string(form)));
    }
  }
  int commands() const {
    int count = 0;
    for (const auto& call : store_.calls(CallKind::ExecuteSentence)) count += call.file.empty();
    return count;
  }
  // The agreements have been updated once, the lists are gone and the save is done.
  void expectDone(Caller at = Caller::here()) {
    const auto trace = called("expectDone", at);
    EXPECT_EQ(commands(), 1);
    EXPECT_TRUE(written());
    expectListsDeleted();
    expectUsable();
    expectSaved();
  }
  // What stands on paper, in a job that is ended or not.
  Texts everything() {
    Texts texts = printed();
    for (const auto& piece : pages().current().pieces) texts.push_back(piece.text);
    return texts;
  }
  // What stands on one page of one job.
  Texts page(std::size_t job, int page) {
    Texts texts;
    for (const auto& piece : pages().jobs().at(job).pieces) {
      if (piece.page == page) texts.push_back(piece.text);
    }
    return texts;
  }
  void expectSaved(Caller at = Caller::here()) {
    const auto trace = called("expectSaved", at);
    EXPECT_EQ(state(), kEmpty);
    EXPECT_EQ(code().text(), "");
    EXPECT_PRED_FORMAT1(hasFocus, code());
  }

 private:
  std::string newScalesDay() const {
    return std::string(store_.record("ORGPRISECHARGE", "001").get(attribut::DatBaremCours));
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
      EXPECT_PRED_FORMAT1(noBoxes, world.desktop_.boxes());
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

// A run with two letters and a listing in which one call of the desktop fails.
class FailingDesktop : public World {
 public:
  explicit FailingDesktop(int nthOfPrintersAndForms) {
    prepare();
    faulty_.failAt(nthOfPrintersAndForms);
    save();
  }
  FailingDesktop(DesktopCall kind, int nth) {
    prepare();
    faulty_.failAt(kind, nth);
    save();
  }

 private:
  void prepare(Caller at = Caller::here()) {
    const auto trace = called("prepare", at);
    restartOn(faulty_);
    enterScale();
    faulty_.failAt(0);
  }
};

// A run in which nothing fails, and its three documents.
class Unfailing : public FailingDesktop {
 public:
  Unfailing() : FailingDesktop(DesktopCall::Today, 0) {
    EXPECT_EQ(pages().jobs().size(), 2U);
    EXPECT_EQ(pages().jobs().at(0).pages, 2);
  }
  Texts first() { return page(0, 1); }
  Texts second() { return page(0, 2); }
  Texts listing() { return page(1, 1); }
  Texts letters() { return joined(first(), second()); }
  // Of printers and forms, the calls by name.
  const Texts& calls() const { return faulty_.told(); }
  bool beforeTheLetters(std::size_t call) const {
    return std::find(calls().begin() + static_cast<std::ptrdiff_t>(call), calls().end(),
                     "show Frm_Anim") != calls().end();
  }

  static Texts joined(Texts before, const Texts& after) {
    before.insert(before.end(), after.begin(), after.end());
    return before;
  }
};

bool choosesAPrinter(std::string_view call) {
  return call == "printers" || call == "currentPrinter" || call == "setCurrentPrinter" ||
         call == "showModal Frm_ImpressionA4";
}

// Sorted; a line that is broken has the words of one that is not.
Texts words(const Texts& texts) {
  Texts words;
  for (const std::string& text : texts) {
    std::istringstream rest(text);
    for (std::string word; rest >> word;) words.push_back(word);
  }
  std::sort(words.begin(), words.end());
  return words;
}

bool holds(const Texts& texts, const Texts& part) {
  const Texts whole = words(texts);
  const Texts held = words(part);
  return std::includes(whole.begin(), whole.end(), held.begin(), held.end());
}

bool holdsAllButOne(const Texts& texts, const Texts& part) {
  for (std::size_t i = 0; i < part.size(); ++i) {
    Texts others = part;
    others.erase(others.begin() + static_cast<std::ptrdiff_t>(i));
    if (holds(texts, others)) return true;
  }
  return false;
}

// What is on paper when this call, by its name, has failed.
void expectTheRest(const Texts& texts, std::string_view name, bool beforeTheLetters,
                   Unfailing& whole, Caller at = Caller::here()) {
  const auto trace = called("expectTheRest", at);
  const Texts all = whole.everything();
  if (choosesAPrinter(name)) {
    EXPECT_EQ(texts, beforeTheLetters ? whole.listing() : whole.letters());
  } else if (name == "print") {
    EXPECT_TRUE(holdsAllButOne(texts, all));
  } else if (name == "printer") {
    // Without the document that was about to begin; whole when it was for a font, a page or an end.
    EXPECT_TRUE(texts == all || texts == whole.letters() ||
                texts == Unfailing::joined(whole.first(), whole.listing()) ||
                texts == Unfailing::joined(whole.second(), whole.listing()));
  } else {
    EXPECT_TRUE(holds(texts, all));
  }
}

TEST(PropagationFailure, OfEachCallOfPrintersAndFormsIsPassedOverAndTheRestIsPrinted) {
  Unfailing whole;
  ASSERT_GT(whole.calls().size(), 50U);
  for (std::size_t i = 0; i < whole.calls().size(); ++i) {
    SCOPED_TRACE("call " + std::to_string(i + 1) + ", " + whole.calls()[i]);
    FailingDesktop world(static_cast<int>(i) + 1);
    world.expectDone();
    world.expectWindowsClosed();
    EXPECT_PRED_FORMAT2(boxCount, world.desktop_.boxes(), 3U);
    expectTheRest(world.everything(), whole.calls()[i], whole.beforeTheLetters(i), whole);
  }
}

TEST(PropagationFailure, OfOneCallOfPrintersAndFormsPrintsNothingTwice) {
  Unfailing whole;
  for (int call = 1; call <= whole.faulty_.calls(); ++call) {
    FailingDesktop world(call);
    EXPECT_TRUE(holds(whole.everything(), world.everything()))
        << call << ", " << whole.calls()[static_cast<std::size_t>(call) - 1];
  }
}

TEST(PropagationFailure, OfTheWaitingWindowPrintsAllLettersAndTheListing) {
  Unfailing whole;
  const auto shown = std::find(whole.calls().begin(), whole.calls().end(), "show Frm_Anim");
  ASSERT_NE(shown, whole.calls().end());
  FailingDesktop world(static_cast<int>(shown - whole.calls().begin()) + 1);
  world.expectDone();
  EXPECT_EQ(world.faulty_.calls(), whole.faulty_.calls());
  EXPECT_EQ(world.page(0, 1), whole.first());
  EXPECT_EQ(world.page(0, 2), whole.second());
  EXPECT_EQ(world.page(1, 1), whole.listing());
  EXPECT_EQ(world.desktop_.boxes().back().text, questionListe(1));
  const Texts words = world.journal();
  EXPECT_EQ(std::count(words.begin(), words.end(), "shown Frm_Anim"), 0);
}

TEST(PropagationFailure, OfAPageBreakPutsTheNextLetterInAnotherJob) {
  Unfailing whole;
  const auto broken = std::find(whole.calls().begin(), whole.calls().end(), "newPage");
  ASSERT_NE(broken, whole.calls().end());
  EXPECT_EQ(std::count(broken, whole.calls().end(), "newPage"), 1);
  FailingDesktop world(static_cast<int>(broken - whole.calls().begin()) + 1);
  world.expectDone();
  ASSERT_EQ(world.pages().jobs().size(), 3U);
  for (const auto& job : world.pages().jobs()) EXPECT_EQ(job.pages, 1);
  EXPECT_EQ(world.page(0, 1), whole.first());
  EXPECT_EQ(world.page(1, 1), whole.second());
  EXPECT_EQ(world.page(2, 1), whole.listing());
}

TEST(PropagationFailure, OfAQuestionSavesWithoutAnUpdate) {
  for (const int question : {1, 2}) {
    FailingDesktop world(DesktopCall::MessageBox, question);
    EXPECT_EQ(world.commands(), 0);
    EXPECT_TRUE(world.written());
    world.expectSaved();
    world.expectUsable();
    EXPECT_TRUE(world.everything().empty());
  }
}

TEST(PropagationFailure, OfTheCountBoxPrintsNoListing) {
  Unfailing whole;
  FailingDesktop world(DesktopCall::MessageBox, 3);
  EXPECT_EQ(world.faulty_.calls(DesktopCall::MessageBox), 3);
  world.expectDone();
  world.expectWindowsClosed();
  EXPECT_PRED_FORMAT2(boxCount, world.desktop_.boxes(), 2U);
  EXPECT_EQ(world.everything(), whole.letters());
  EXPECT_EQ(world.pages().jobs().size(), 1U);
}

TEST(PropagationFailure, OfPendingEventsPrintsAllLettersAndTheListing) {
  Unfailing whole;
  FailingDesktop world(DesktopCall::DoEvents, 1);
  EXPECT_EQ(world.faulty_.calls(DesktopCall::DoEvents), 2);  // the save's own come after
  world.expectDone();
  world.expectWindowsClosed();
  EXPECT_EQ(world.everything(), whole.everything());
  EXPECT_EQ(world.desktop_.boxes().back().text, questionListe(1));
}

TEST(PropagationFailure, OfTheEventsAfterTheSaveEndsItAllTheSame) {
  Unfailing whole;
  FailingDesktop world(DesktopCall::DoEvents, 2);
  world.expectDone();
  EXPECT_EQ(world.everything(), whole.everything());
}

TEST(PropagationFailure, OfThePointerLeavesEverythingElseAsItIs) {
  Unfailing whole;
  FailingDesktop counting(DesktopCall::SetPointer, 0);
  const int calls = counting.faulty_.calls(DesktopCall::SetPointer);
  ASSERT_GT(calls, 5);
  for (int call = 1; call <= calls; ++call) {
    SCOPED_TRACE(call);
    FailingDesktop world(DesktopCall::SetPointer, call);
    EXPECT_EQ(world.commands(), 1);
    EXPECT_TRUE(world.written());
    EXPECT_TRUE(world.control_->surface().enabled());
    EXPECT_TRUE(world.store_.ids("TEMPO").empty());
    world.expectSaved();
    EXPECT_EQ(world.everything(), whole.everything());
  }
}

TEST(PropagationFailure, OfClosingTheWaitingWindowEndsTheSaveAllTheSame) {
  Unfailing whole;
  constexpr int kLast = 3;  // after the printers' window, twice
  FailingDesktop world(DesktopCall::Close, kLast);
  EXPECT_EQ(world.faulty_.calls(DesktopCall::Close), kLast);
  const Texts words = world.journal();
  EXPECT_EQ(std::count(words.begin(), words.end(), "shown Frm_Anim"), 1);
  EXPECT_EQ(std::count(words.begin(), words.end(), "closed Frm_Anim"), 0);
  world.expectDone();
  EXPECT_EQ(world.everything(), whole.everything());
}

TEST(PropagationFailure, OfClosingThePrintersWindowCountsAsRefused) {
  Unfailing whole;
  FailingDesktop ofLetters(DesktopCall::Close, 1);
  ofLetters.expectDone();
  EXPECT_EQ(ofLetters.everything(), whole.listing());
  FailingDesktop ofListing(DesktopCall::Close, 2);
  ofListing.expectDone();
  EXPECT_EQ(ofListing.everything(), whole.letters());
}

TEST(PropagationFailure, OfTodaysDateLeavesTheOtherLetterAndTheListing) {
  Unfailing whole;
  ASSERT_EQ(whole.faulty_.calls(DesktopCall::Today), 3);  // of the save, then of each letter
  for (const int letter : {1, 2}) {
    SCOPED_TRACE(letter);
    FailingDesktop world(DesktopCall::Today, letter + 1);
    world.expectDone();
    world.expectWindowsClosed();
    EXPECT_EQ(world.desktop_.boxes().back().text, questionListe(1));
    const Texts texts = world.everything();
    const Texts kept =
        Unfailing::joined(letter == 1 ? whole.second() : whole.first(), whole.listing());
    EXPECT_TRUE(holds(texts, kept));
  }
}

TEST(PropagationFailure, OfTodaysDateLeavesNothingOutButTheDate) {
  Unfailing whole;
  for (const int letter : {1, 2}) {
    FailingDesktop world(DesktopCall::Today, letter + 1);
    Texts texts = world.everything();
    texts.push_back("15 janvier 2026");
    EXPECT_EQ(words(texts), words(whole.everything())) << letter;
  }
}

TEST(PropagationFailure, NeverPutsTwoLettersOnOnePage) {
  const int calls = Unfailing().faulty_.calls();
  for (int call = 1; call <= calls; ++call) {
    FailingDesktop world(call);
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
