// The update of the agreements, step by step.
#include <algorithm>
#include <string>
#include <utility>

#include "agreements/Propagation.h"
#include "store/Layouts.h"
#include "store/StoreError.h"
#include "tests/behaviour/PropagationTest.h"
#include "toolkit/ControlClosed.h"

namespace behaviour {
namespace {

const std::string kMark(1, store::kAttributeMark);

std::string commandes(std::string_view date, std::string_view code) {
  return "ExecuteSentence SET-DEC ," + kMark + "DATE.FORMAT" + kMark + "UDT.OPTIONS 11 ON" + kMark +
         "MAJTXACCGENE |" + std::string(date) + "|" + std::string(code);
}

std::vector<std::string> opening(std::string_view date = "01/02/2026") {
  return {"DBWrite ORGPRISECHARGE 001", commandes(date, "001"), "OpenFile TEMPO",
          "ReadRecord ASSOCIATION 010", "OpenFile ACCORD",      "OpenFile CONSTANTESPAIE",
          "ReadRecord CONSTANTESPAIE 1"};
}

std::vector<std::string> ending() {
  return {
      "DeleteRecord TEMPO ACCORDSLIMITE001", "DeleteRecord TEMPO ACCORDSMODIFIES001",
      "ExecuteSentence SSELECT ORGPRISECHARGE PAR 1" + kMark + "ORGPRISECHARGE" + kMark + "0 1"};
}

std::vector<std::string> joined(std::initializer_list<std::vector<std::string>> parts) {
  std::vector<std::string> all;
  for (const auto& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

class PropagationRun : public Propagation {
 protected:
  // Enters a scale, unless one has been, and saves it.
  void run(Keys modified, Keys limit, const std::vector<Answer>& answers,
           Caller at = Caller::here()) {
    const auto trace = called("run", at);
    serverAnswers(std::move(modified), std::move(limit));
    if (!control_->surface().find("Txt_DatBaremCours")->enabled()) enterScale();
    saveAnswering(answers);
  }
  std::string lastReadOfTempo() {
    std::string last;
    for (const auto& call : store_.calls(CallKind::ReadRecord)) {
      if (call.file == "TEMPO") last = call.told();
    }
    return last;
  }
  void expectDone(Caller at = Caller::here()) {
    const auto trace = called("expectDone", at);
    expectUsable();
    expectListsDeleted();
    EXPECT_EQ(state(), kEmpty);
    EXPECT_PRED_FORMAT1(hasFocus, code());
  }
  // One for each letter: the page that it stands on.
  std::vector<int> lettersOnPages() {
    std::vector<int> all;
    for (const auto& job : pages().jobs()) {
      for (const auto& piece : job.pieces) {
        if (piece.text == "Objet :") all.push_back(piece.page);
      }
    }
    return all;
  }
  // What stands in TEMPO after the update is what is given here.
  void serverLeaves(const store::DynamicArray& modified, const Keys& limit) {
    store_.onCommands([this, modified, limit](const store::DynamicArray&) {
      store_.put("TEMPO", "ACCORDSMODIFIES001", modified);
      store::DynamicArray list;
      for (std::size_t i = 0; i < limit.size(); ++i) list.set(static_cast<int>(i) + 1, limit[i]);
      store_.put("TEMPO", "ACCORDSLIMITE001", list);
    });
  }
  // Letters are wanted where there is no printer: the run asks for none.
  void expectNoPrinterAsked(int notUpdated, Caller at = Caller::here()) {
    const auto trace = called("expectNoPrinterAsked", at);
    desktop_.setPrinters({}, -1);
    desktop_.onModal = nullptr;
    restartOn(faulty_);
    enterScale();
    faulty_.failAt(0);
    saveAnswering({Answer::Yes, Answer::Yes, Answer::No});
    EXPECT_PRED_FORMAT2(same, faulty_.told(), std::vector<std::string>{"show Frm_Anim"});
    EXPECT_PRED_FORMAT2(boxCount, desktop_.boxes(), 3U);
    EXPECT_EQ(shown(questionListe(notUpdated)), 1);
    expectDone();
  }
  int shown(std::string_view text) {
    int count = 0;
    for (const Entry& box : desktop_.boxes()) count += box.text == text;
    return count;
  }
};

TEST_F(PropagationRun, WithoutLettersCallsTheStoreInItsOrder) {
  run({"00001001", "00002001"}, {"00003001"}, {Answer::Yes, Answer::No, Answer::No});
  EXPECT_PRED_FORMAT2(same, callsOfRun(),
                      joined({opening(),
                              {"ReadRecord TEMPO ACCORDSLIMITE001", "ReadRecord ACCORD 00003001"},
                              ending()}));
  EXPECT_TRUE(pages().jobs().empty());
  expectDone();
}

TEST_F(PropagationRun, WithLettersCallsTheStoreInItsOrder) {
  run({"00001001", "00002001"}, {"00003001"}, {Answer::Yes, Answer::Yes, Answer::No});
  EXPECT_PRED_FORMAT2(same, callsOfRun(),
                      joined({opening(),
                              {"ReadRecord TEMPO ACCORDSMODIFIES001",
                               "ReadRecord TEMPO ACCORDSLIMITE001", "ReadRecord ACCORD 00001001",
                               "ReadRecord ACCORD 00003001", "ReadRecord ACCORD 00002001"},
                              ending()}));
  expectDone();
}

TEST_F(PropagationRun, SendsTheDateAsTyped) {
  beginScale("1/2/26");
  serverAnswers({}, {});
  ASSERT_TRUE(user_->go(list("Lst_BaremCoursOrgChg")));
  box("Txt_DatBaremCours").setText("1/2/2026");
  store_.forgetCalls();
  desktop_.takeBoxes();
  desktop_.answer(Answer::Yes);
  desktop_.answer(Answer::No);
  press("Cmd_OK");
  EXPECT_EQ(desktop_.takeBoxes().at(0).text, questionBareme("1/2/2026"));
  EXPECT_EQ(callsOfRun().at(1), commandes("1/2/2026", "001"));
}

TEST_F(PropagationRun, ReadsTheEntityThatIsChosen) {
  store_.put("ASSOCIATION", "020", {"AUTRE ENTITE"});
  store_.put("ACTIVITES", "020P01",
             {"Aide", "020", "", "", "", "", "", "", "", "", "", "P", "SAAD"});
  serverAnswers({"00001001"}, {});
  enterScale();
  ASSERT_TRUE(user_->click(tabs(), 5));
  ASSERT_TRUE(user_->fill(box("Txt_Entite"), "020"));
  ASSERT_TRUE(user_->go(code()));
  store_.forgetCalls();
  desktop_.takeBoxes();
  saveAnswering({Answer::Yes, Answer::Yes});
  EXPECT_EQ(callsOfRun().at(3), "ReadRecord ASSOCIATION 020");
  EXPECT_TRUE(wasPrinted("AUTRE ENTITE"));
}

TEST_F(PropagationRun, IsBusyUntilTheUserIsAskedAndAfterwards) {
  run({"00001001"}, {"00003001"}, {Answer::Yes, Answer::Yes, Answer::Yes});
  EXPECT_PRED_FORMAT2(same, journal(),
                      (std::vector<std::string>{"hourglass",
                                                "box",
                                                "box",  // of the save
                                                "hourglass",
                                                "normal",
                                                "shown Frm_ImpressionA4",
                                                "closed Frm_ImpressionA4",
                                                "hourglass",
                                                "shown Frm_Anim",
                                                "events",  // at work
                                                "normal",
                                                "box",
                                                "hourglass",
                                                "shown Frm_ImpressionA4",  // the listing
                                                "closed Frm_ImpressionA4",
                                                "normal",
                                                "closed Frm_Anim",  // the end
                                                "hourglass",
                                                "hourglass",
                                                "events",
                                                "normal"}));
  expectDone();
}

TEST_F(PropagationRun, LetsTheUserReachNothingButTheBoxes) {
  enterScale();
  std::vector<bool> enabled;
  desktop_.onBox = [&](const Entry&) { enabled.push_back(control_->surface().enabled()); };
  const auto window = desktop_.onModal;
  desktop_.onModal = [&](toolkit::Window& form) {
    enabled.push_back(control_->surface().enabled());
    EXPECT_FALSE(press("Cmd_Annuler"));
    window(form);
  };
  desktop_.onEvents = [&] { EXPECT_FALSE(press("Cmd_Annuler")); };
  run({"00001001"}, {"00003001"}, {Answer::Yes, Answer::Yes, Answer::Yes});
  // Two questions, the printer of the letters, the count, the printer of the listing.
  EXPECT_PRED_FORMAT2(same, enabled, (std::vector<bool>{false, false, true, true, false}));
  expectDone();
}

TEST_F(PropagationRun, ShowsTheWaitingWindowBeforeTheFirstLetterUntilTheEnd) {
  std::vector<std::string> deletedBefore;
  desktop_.onEvents = [&] { EXPECT_TRUE(pages().current().pieces.empty()); };
  desktop_.onBox = [&](const Entry& box) {
    const std::vector<std::string> words = journal();
    const bool waiting = std::count(words.begin(), words.end(), "shown Frm_Anim") == 1;
    EXPECT_EQ(waiting, box.text == questionListe(1));
    EXPECT_EQ(std::count(words.begin(), words.end(), "closed Frm_Anim"), 0);
    if (waiting) EXPECT_EQ(store_.ids("TEMPO").size(), 2U);
  };
  run({"00001001"}, {"00003001"}, {Answer::Yes, Answer::Yes, Answer::No});
  for (const Entry& entry : desktop_.journal()) {
    if (entry.text == "Frm_Anim") EXPECT_EQ(entry.title, "Mise à jour des accords en cours...");
  }
  expectDone();
}

TEST_F(PropagationRun, WithBothListsEmptyPrintsAndAsksNothing) {
  run({}, {}, {Answer::Yes, Answer::Yes});
  EXPECT_PRED_FORMAT2(
      same, callsOfRun(),
      joined({opening(),
              {"ReadRecord TEMPO ACCORDSMODIFIES001", "ReadRecord TEMPO ACCORDSLIMITE001"},
              ending()}));
  const std::vector<std::string> words = journal();
  EXPECT_EQ(std::count(words.begin(), words.end(), "shown Frm_ImpressionA4"), 0);
  EXPECT_EQ(std::count(words.begin(), words.end(), "shown Frm_Anim"), 1);
  EXPECT_EQ(std::count(words.begin(), words.end(), "closed Frm_Anim"), 1);
  EXPECT_PRED_FORMAT2(boxCount, desktop_.boxes(), 2U);
  EXPECT_TRUE(pages().jobs().empty());
  expectDone();
}

TEST_F(PropagationRun, TakesAnEmptyListForNone) {
  store_.onCommands([this](const store::DynamicArray&) {
    store_.put("TEMPO", "ACCORDSMODIFIES001", store::DynamicArray());
    store_.put("TEMPO", "ACCORDSLIMITE001", store::DynamicArray());
  });
  enterScale();
  saveAnswering({Answer::Yes, Answer::Yes});
  const std::vector<std::string> words = journal();
  EXPECT_EQ(std::count(words.begin(), words.end(), "shown Frm_ImpressionA4"), 0);
  expectDone();
}

TEST_F(PropagationRun, WithoutAListOfLettersAsksNothingOfAPrinter) {
  serverAnswers({}, {"00003001"});
  expectNoPrinterAsked(1);
}

TEST_F(PropagationRun, WithAnEmptyListOfLettersAsksNothingOfAPrinter) {
  serverLeaves({}, {"00003001", "00004001"});
  expectNoPrinterAsked(2);
}

TEST_F(PropagationRun, WithAListOfLettersThatBeginsEmptyAsksNothingOfAPrinter) {
  store::DynamicArray modified;
  modified.set(2, "00001001");
  serverLeaves(modified, {"00003001", "00004001"});
  expectNoPrinterAsked(2);
}

TEST_F(PropagationRun, WithAListOfLettersThatCannotBeReadPrintsNoneAndOffersTheListing) {
  // Opened and read before: what opening() tells after the command.
  const int call = static_cast<int>(opening().size()) - 2 + 1;
  // Each scale begins later than the one before.
  const std::pair<std::string, unsigned> rounds[] = {{"01/02/2026", store::kFailed},
                                                     {"01/03/2026", store::kBusy},
                                                     {"01/04/2026", store::kIoFailure}};
  for (const auto& [date, code] : rounds) {
    SCOPED_TRACE(code);
    show();
    enterScale(date);
    store_.onCommands([this, call, code = code](const store::DynamicArray&) {
      store_.put("TEMPO", "ACCORDSMODIFIES001", {"00001001", "00002001"});
      store_.put("TEMPO", "ACCORDSLIMITE001", {"00003001"});
      store_.failAt(call, code);
    });
    saveAnswering({Answer::Yes, Answer::Yes, Answer::No});
    EXPECT_PRED_FORMAT2(same, callsOfRun(),
                        joined({opening(date),
                                {"ReadRecord TEMPO ACCORDSMODIFIES001",
                                 "ReadRecord TEMPO ACCORDSLIMITE001", "ReadRecord ACCORD 00003001"},
                                ending()}));
    const std::vector<std::string> words = journal();
    EXPECT_EQ(std::count(words.begin(), words.end(), "shown Frm_ImpressionA4"), 0);
    EXPECT_EQ(shown(questionListe(1)), 1);
    EXPECT_TRUE(pages().jobs().empty());
    EXPECT_TRUE(pages().current().pieces.empty());
    expectDone();
  }
}

TEST_F(PropagationRun, DeletesAnotherRunsListsAfterACommandThatFailsAndAsksNothing) {
  store_.put("TEMPO", "ACCORDSMODIFIES001", {"00001001", "00002001"});
  store_.put("TEMPO", "ACCORDSLIMITE001", {"00003001"});
  enterScale();
  store_.onCommands([](const store::DynamicArray&) {
    throw store::StoreError(store::kBadSentence, "the command is not known");
  });
  saveAnswering({Answer::Yes, Answer::Yes});
  EXPECT_PRED_FORMAT2(
      same, callsOfRun(),
      joined({opening(),
              {"DeleteRecord TEMPO ACCORDSLIMITE001", "DeleteRecord TEMPO ACCORDSMODIFIES001",
               "ReadRecord TEMPO ACCORDSMODIFIES001", "ReadRecord TEMPO ACCORDSLIMITE001"},
              ending()}));
  EXPECT_TRUE(pages().jobs().empty());
  expectDone();
}

TEST_F(PropagationRun, ReadsNoListOfAnotherRunThatCannotBeDeleted) {
  store_.put("TEMPO", "ACCORDSMODIFIES001", {"00001001", "00002001"});
  store_.put("TEMPO", "ACCORDSLIMITE001", {"00003001"});
  enterScale();
  store_.onCommands([this](const store::DynamicArray&) {
    store_.fail(CallKind::DeleteRecord, "TEMPO");
    throw store::StoreError(store::kBusy, "another process holds the store");
  });
  saveAnswering({Answer::Yes, Answer::Yes});
  EXPECT_EQ(lastReadOfTempo(), "");
  EXPECT_TRUE(pages().jobs().empty());
  EXPECT_PRED_FORMAT2(boxCount, desktop_.boxes(), 2U);
  expectUsable();
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(PropagationRun, PrintsOneLetterAPageInOneJob) {
  run({"00001001", "00002001", "00003001"}, {}, {Answer::Yes, Answer::Yes});
  ASSERT_EQ(pages().jobs().size(), 1U);
  EXPECT_EQ(pages().jobs()[0].pages, 3);
  EXPECT_PRED_FORMAT2(same, lettersOnPages(), (std::vector<int>{1, 2, 3}));
  for (int i = 1; i <= 3; ++i) {
    EXPECT_TRUE(wasPrinted("NOM" + std::to_string(i)));
    EXPECT_TRUE(wasPrinted(std::to_string(i) + ",11"));
  }
  EXPECT_TRUE(desktop_.page(1).jobs().empty());
  expectDone();
}

TEST_F(PropagationRun, PrintsInCourierNewOfTwelvePoints) {
  pages().setFontName("Arial");
  pages().setFontSize(20);
  run({"00001001"}, {}, {Answer::Yes, Answer::Yes});
  for (const auto& piece : pages().jobs().at(0).pieces) {
    EXPECT_EQ(piece.fontName, "Courier New");
    EXPECT_EQ(piece.fontSize, 12);
  }
}

TEST_F(PropagationRun, KeepsPositionsWhenMoreAreModified) {
  run({"00001001", "00002001", "00003001"}, {"00004001"}, {Answer::Yes, Answer::Yes, Answer::No});
  EXPECT_PRED_FORMAT2(same, lettersOnPages(), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(pages().jobs().size(), 1U);
  EXPECT_EQ(shown(questionListe(1)), 1);
  for (const char* amount : {"1,11", "2,11", "3,11"}) EXPECT_TRUE(wasPrinted(amount));
  expectDone();
}

TEST_F(PropagationRun, KeepsPositionsWhenMoreAreLimited) {
  run({"00001001"}, {"00004001", "00005001", "00006001"}, {Answer::Yes, Answer::Yes, Answer::Yes});
  EXPECT_PRED_FORMAT2(same, lettersOnPages(), (std::vector<int>{1}));
  EXPECT_TRUE(wasPrinted("1,11"));
  EXPECT_EQ(shown(questionListe(3)), 1);
  // The letter and the listing; the jobs ended in between hold nothing.
  EXPECT_EQ(pages().jobs().size(), 2U);
  for (const char* number : {"00004", "00005", "00006"}) EXPECT_TRUE(wasPrinted(number));
  expectDone();
}

TEST_F(PropagationRun, EndsTheListAtItsFirstEmptyAttribute) {
  store_.onCommands([this](const store::DynamicArray&) {
    store_.put("TEMPO", "ACCORDSMODIFIES001", {"00001001", "", "00002001"});
    store_.put("TEMPO", "ACCORDSLIMITE001", {"00003001", "", "00004001"});
  });
  enterScale();
  saveAnswering({Answer::Yes, Answer::Yes, Answer::No});
  EXPECT_EQ(lettersOnPages().size(), 1U);
  EXPECT_EQ(shown(questionListe(1)), 1);
  expectDone();
}

TEST_F(PropagationRun, RefusedAPrinterUpdatesWithoutLettersAndStillOffersTheListing) {
  printerWindow(false);
  run({"00001001"}, {"00003001"}, {Answer::Yes, Answer::Yes, Answer::No});
  EXPECT_EQ(shown(questionListe(1)), 1);
  EXPECT_TRUE(pages().jobs().empty());
  EXPECT_TRUE(pages().current().pieces.empty());
  EXPECT_EQ(desktop_.currentPrinter(), 0);
  const std::vector<std::string> calls = callsOfRun();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "ReadRecord ACCORD 00001001"), 0);
  EXPECT_EQ(calls.at(1), commandes("01/02/2026", "001"));
  expectDone();
}

TEST_F(PropagationRun, WithoutAPagePrinterCountsAsRefused) {
  desktop_.setPrinters({{"MATRICIELLE", "LPT2:"}}, 0);
  desktop_.onModal = [](toolkit::Window& window) {
    toolkit::headless::User user(window.surface());
    EXPECT_EQ(dynamic_cast<ComboBox&>(*window.surface().find("Cbo_Imprimante")).listCount(), 0);
    user.press(toolkit::Key::Escape);
  };
  run({"00001001"}, {}, {Answer::Yes, Answer::Yes});
  EXPECT_TRUE(desktop_.page(0).jobs().empty());
  expectDone();
}

TEST_F(PropagationRun, PrintsOnThePrinterThatIsChosen) {
  desktop_.setPrinters({{"MATRICIELLE", "LPT2:"}, {"PDF_A4", "LPT1:"}, {"LASER", "LPT3:"}}, 0);
  desktop_.onModal = [](toolkit::Window& window) {
    toolkit::headless::User user(window.surface());
    auto* combo = dynamic_cast<ComboBox*>(window.surface().find("Cbo_Imprimante"));
    ASSERT_NE(combo, nullptr);
    user.choose(*combo, 1);
    user.press(toolkit::Key::Enter);
  };
  run({"00001001"}, {}, {Answer::Yes, Answer::Yes});
  EXPECT_EQ(desktop_.page(2).jobs().size(), 1U);
  EXPECT_TRUE(desktop_.page(1).jobs().empty());
  expectDone();
}

TEST_F(PropagationRun, NoToTheListingPrintsNone) {
  run({}, {"00001001", "00002001"}, {Answer::Yes, Answer::No, Answer::No});
  const Entry asked = desktop_.boxes().back();
  EXPECT_EQ(asked.text, questionListe(2));
  EXPECT_EQ(asked.title, "Message VALDRIS");
  EXPECT_EQ(asked.icon, Icon::Question);
  EXPECT_EQ(asked.buttons, toolkit::Buttons::YesNo);
  EXPECT_EQ(desktop_.beeps(), 0);
  EXPECT_TRUE(pages().jobs().empty());
  expectDone();
}

TEST_F(PropagationRun, YesToTheListingPrintsIt) {
  run({}, {"00001001", "00002001"}, {Answer::Yes, Answer::No, Answer::Yes});
  ASSERT_EQ(pages().jobs().size(), 1U);
  EXPECT_TRUE(wasPrinted("Accords non modifés de l'organisme"));
  EXPECT_TRUE(wasPrinted("00001"));
  EXPECT_TRUE(wasPrinted("00002"));
  expectDone();
}

TEST_F(PropagationRun, ListsWhatIsInForceOnTheDateOfTheScale) {
  agreement("00001001", {{"", "01/03/2026", "3", "9,99"},
                         {"", "01/02/2026", "2", "8,88"},
                         {"", "01/01/2025", "1", "7,77"}});
  run({}, {"00001001"}, {Answer::Yes, Answer::No, Answer::Yes});
  EXPECT_TRUE(wasPrinted("00001 NOM1"));
  EXPECT_TRUE(wasPrinted("01/01/2025 31/12/2026"));
  EXPECT_TRUE(wasPrinted("08"));
  EXPECT_FALSE(wasPrinted("09"));
}

TEST_F(PropagationRun, ListsTheLastPositionWhenAllDatesAreLater) {
  agreement("00001001", {{"", "01/04/2026", "3", "9,99"}, {"", "02/02/2026", "2", "8,88"}});
  run({}, {"00001001"}, {Answer::Yes, Answer::No, Answer::Yes});
  EXPECT_TRUE(wasPrinted("08"));
  EXPECT_FALSE(wasPrinted("09"));
}

TEST_F(PropagationRun, StoppedAtTheDialogEndsThere) {
  desktop_.onModal = [](toolkit::Window& window) {
    toolkit::headless::User(window.surface()).press(toolkit::Key::Escape);
    throw toolkit::ControlClosed();
  };
  serverAnswers({"00001001"}, {"00003001"});
  enterScale();
  desktop_.answer(Answer::Yes);
  desktop_.answer(Answer::Yes);
  EXPECT_THROW(press("Cmd_OK"), toolkit::ControlClosed);
  EXPECT_EQ(lastReadOfTempo(), "ReadRecord TEMPO ACCORDSMODIFIES001");
  expectListsDeleted();
  EXPECT_TRUE(pages().jobs().empty());
  EXPECT_PRED_FORMAT2(boxCount, desktop_.boxes(), 2U);
  expectUsable();
}

TEST_F(PropagationRun, StoppedAtTheWaitingWindowEndsThere) {
  desktop_.onEvents = [] { throw toolkit::ControlClosed(); };
  serverAnswers({"00001001"}, {"00003001"});
  enterScale();
  desktop_.answer(Answer::Yes);
  desktop_.answer(Answer::Yes);
  EXPECT_THROW(press("Cmd_OK"), toolkit::ControlClosed);
  EXPECT_EQ(lastReadOfTempo(), "ReadRecord TEMPO ACCORDSLIMITE001");
  expectListsDeleted();
  EXPECT_TRUE(pages().current().pieces.empty());
  EXPECT_EQ(journal().back(), "normal");
  const std::vector<std::string> words = journal();
  EXPECT_EQ(std::count(words.begin(), words.end(), "closed Frm_Anim"), 1);
  expectUsable();
}

TEST_F(PropagationRun, StoppedAtTheCountEndsThere) {
  serverAnswers({}, {"00003001"});
  enterScale();
  desktop_.onBox = [](const Entry& box) {
    if (box.icon == Icon::Question) throw toolkit::ControlClosed();
  };
  desktop_.answer(Answer::Yes);
  desktop_.answer(Answer::No);
  EXPECT_THROW(press("Cmd_OK"), toolkit::ControlClosed);
  expectListsDeleted();
  expectUsable();
}

TEST_F(PropagationRun, StoppedAtThePrinterOfTheListingEndsThere) {
  desktop_.onModal = [](toolkit::Window& window) {
    toolkit::headless::User(window.surface()).press(toolkit::Key::Escape);
    throw toolkit::ControlClosed();
  };
  serverAnswers({}, {"00003001"});
  enterScale();
  for (const Answer answer : {Answer::Yes, Answer::No, Answer::Yes}) desktop_.answer(answer);
  EXPECT_THROW(press("Cmd_OK"), toolkit::ControlClosed);
  EXPECT_TRUE(pages().jobs().empty());
  expectListsDeleted();
  expectUsable();
}

TEST_F(PropagationRun, StoppedLeavesTheListsOfAStoreThatDoesNotAnswer) {
  desktop_.onModal = [this](toolkit::Window& window) {
    toolkit::headless::User(window.surface()).press(toolkit::Key::Escape);
    store_.fail(CallKind::DeleteRecord);
    throw toolkit::ControlClosed();
  };
  serverAnswers({"00001001"}, {"00003001"});
  enterScale();
  desktop_.answer(Answer::Yes);
  desktop_.answer(Answer::Yes);
  EXPECT_THROW(press("Cmd_OK"), toolkit::ControlClosed);
  EXPECT_EQ(store_.calls(CallKind::DeleteRecord).size(), 2U);
  EXPECT_EQ(store_.ids("TEMPO").size(), 2U);
  expectUsable();
}

TEST_F(PropagationRun, RefusesTheHostMeanwhile) {
  enterScale();
  int refused = 0;
  const auto call = [&] {
    EXPECT_THROW(control_->Recup_Accord(), control::Busy);
    EXPECT_THROW(control_->Recup_AccordTauxRemb(), control::Busy);
    EXPECT_THROW(control_->Impression_ModifAccord(), control::Busy);
    EXPECT_THROW(control_->Vider_Donnees(), control::Busy);
    EXPECT_THROW(control_->setTheDatabase(nullptr), control::Busy);
    EXPECT_FALSE(control_->W_Sortir());
    ++refused;
  };
  desktop_.onEvents = call;
  desktop_.onBox = [&](const Entry&) { call(); };
  run({"00001001"}, {"00003001"}, {Answer::Yes, Answer::Yes, Answer::No});
  // Two questions, the waiting window, the count, the end of the save.
  EXPECT_EQ(refused, 5);
  expectDone();
}

TEST_F(PropagationRun, OfTheHostWorksOnTheBodyInHand) {
  serverAnswers({"00001001"}, {});
  enterScale();
  user_->fill(code(), "0");
  control_->Recup_Accord();
  EXPECT_EQ(store_.calls().front().told(), commandes("01/02/2026", "001"));
  EXPECT_PRED_FORMAT1(noBoxes, desktop_.boxes());
  EXPECT_TRUE(pages().jobs().empty());
  expectListsDeleted();
  expectUsable();
  EXPECT_EQ(box("Txt_DatBaremCours").text(), "01/02/2026");
}

TEST_F(PropagationRun, OfTheHostWantsLettersWhenTheLastOneAskedDid) {
  run({}, {}, {Answer::Yes, Answer::Yes});
  show();
  serverAnswers({"00002001"}, {});
  control_->Recup_Accord();
  EXPECT_EQ(lettersOnPages().size(), 1U);
  printerWindow(false);
  control_->Recup_Accord();
  printerWindow(true);
  control_->Recup_Accord();
  EXPECT_EQ(lettersOnPages().size(), 1U);
}

TEST_F(PropagationRun, OfTheHostNeedsRightsAndABodyWithItsCode) {
  level_->value = 1;
  EXPECT_THROW(control_->Recup_Accord(), control::AccessDenied);
  level_->value = 2;
  control_->Vider_Donnees();
  EXPECT_THROW(control_->Recup_Accord(), control::NotReady);
  press("Cmd_Ajouter");
  EXPECT_THROW(control_->Recup_Accord(), control::NotReady);
  EXPECT_TRUE(store_.calls().empty());
  control::Ctr_OrgPriseCharge fresh(desktop_);
  EXPECT_THROW(fresh.Recup_Accord(), control::NotReady);
}

TEST_F(PropagationRun, TheHostPrintsTheLastLetterAgain) {
  EXPECT_THROW(control_->Impression_ModifAccord(), control::NotReady);
  run({}, {}, {Answer::Yes, Answer::Yes});
  show();
  serverAnswers({"00001001", "00002001"}, {});
  control_->Recup_Accord();
  ASSERT_EQ(pages().jobs().size(), 1U);
  control_->Impression_ModifAccord();
  ASSERT_EQ(pages().jobs().size(), 2U);
  EXPECT_EQ(pages().jobs()[1].pages, 1);
  EXPECT_PRED_FORMAT2(same, lettersOnPages(), (std::vector<int>{1, 2, 1}));
  // Another body, and none.
  lookUp("002");
  EXPECT_THROW(control_->Impression_ModifAccord(), control::NotReady);
  control_->Vider_Donnees();
  EXPECT_THROW(control_->Impression_ModifAccord(), control::NotReady);
}

TEST_F(PropagationRun, TheHostPrintsNoLetterOfAnAgreementLeftUnchanged) {
  run({}, {}, {Answer::Yes, Answer::Yes});
  show();
  serverAnswers({"00001001"}, {"00002001"});
  desktop_.answer(Answer::No);
  control_->Recup_Accord();
  EXPECT_THROW(control_->Impression_ModifAccord(), control::NotReady);
}

// The run alone, where code and lists can be anything.
class PropagationDesk : public Propagation {
 protected:
  PropagationDesk() {
    session_.TheDatabase = store_.connect();
    session_.files.association = session_.TheDatabase->OpenFile("ASSOCIATION");
    session_.codeEnMain = "12";
    screen_.participation.Txt_DatBaremCours.setText("01/02/2026");
    store_.forgetCalls();
  }
  toolkit::Surface surface_{"Ctr_OrgPriseCharge"};
  screen::Screen screen_{surface_};
  screen::EditSession session_;
  agreements::AgreementContext context_{desktop_, surface_, screen_, session_};
};

TEST_F(PropagationDesk, JoinsWordAndCodeWithoutASeparator) {
  session_.accords.lettresVoulues = true;
  serverAnswers({"00001001"}, {"00002001"});
  desktop_.answer(Answer::No);
  agreements::Recup_Accord(context_);
  const std::vector<std::string> told = store_.told();
  EXPECT_EQ(told.at(0), commandes("01/02/2026", "12"));
  for (const char* call :
       {"ReadRecord TEMPO ACCORDSMODIFIES12", "ReadRecord TEMPO ACCORDSLIMITE12",
        "DeleteRecord TEMPO ACCORDSLIMITE12", "DeleteRecord TEMPO ACCORDSMODIFIES12"}) {
    EXPECT_EQ(std::count(told.begin(), told.end(), call), 1) << call;
  }
  expectListsDeleted();
}

TEST_F(PropagationDesk, KeepsWhatIsNotUpdatedAligned) {
  agreement("00002001", {});
  agreement("00003001", {{"", "01/03/2026", "5", "3,00"}, {"", "01/02/2026", "", ""}});
  agreement("00004001", {{"", "31/01/2026", "4", "4,00"}});
  serverAnswers({}, {"00001001", "00002001", "00003001", "99999001", "00004001", "7"});
  desktop_.answer(Answer::No);
  agreements::Recup_Accord(context_);
  const store::DynamicArray& listed = session_.accords.accordsNonModifies;
  const Rows expected{{"00001", "01/01/2025", "31/12/2026", "111", "2"},
                      {"00002", "01/01/2025", "31/12/2026", "", ""},
                      {"00003", "01/01/2025", "31/12/2026", "", ""},
                      {"99999", "", "", "", ""},
                      {"00004", "01/01/2025", "31/12/2026", "400", "4"},
                      {"7", "", "", "", ""}};
  for (std::size_t k = 0; k < expected.size(); ++k) {
    Row row;
    for (int a = 1; a <= 5; ++a) row.emplace_back(listed.get(a, static_cast<int>(k) + 1));
    EXPECT_EQ(row, expected[k]) << k;
  }
  EXPECT_EQ(desktop_.boxes().back().text, questionListe(6));
}

TEST_F(PropagationDesk, ForgetsWhatTheRunBeforeHasRead) {
  serverAnswers({}, {"00001001"});
  desktop_.answer(Answer::No);
  agreements::Recup_Accord(context_);
  serverAnswers({}, {});
  agreements::Recup_Accord(context_);
  EXPECT_TRUE(session_.accords.accordsNonModifies.empty());
  EXPECT_PRED_FORMAT2(boxCount, desktop_.boxes(), 1U);
}

TEST_F(PropagationDesk, NeverPrintsTheAgreementBeforeInPlaceOfOneThatCannotBeRead) {
  session_.accords.lettresVoulues = true;
  store_.erase("ACCORD", "00002001");
  serverAnswers({"00001001", "00002001"}, {});
  agreements::Recup_Accord(context_);
  ASSERT_EQ(pages().jobs().size(), 1U);
  for (const auto& piece : pages().jobs()[0].pieces) {
    if (piece.page == 2) EXPECT_EQ(piece.text.find("1,11"), std::string::npos);
  }
  EXPECT_EQ(pages().jobs()[0].pages, 2);
}

TEST_F(PropagationDesk, GoesPastTheLastIndexOfLetters) {
  constexpr int kMany = 33000;
  Keys keys;
  for (int i = 0; i < kMany; ++i) keys.push_back(std::to_string(10000 + i) + "001");
  serverAnswers({}, keys);
  desktop_.answer(Answer::No);
  agreements::Recup_Accord(context_);
  EXPECT_EQ(desktop_.boxes().back().text, questionListe(kMany));
  EXPECT_EQ(session_.accords.accordsNonModifies.get(1, kMany), "42999");
}

// A printer that keeps nothing but the names on its letters' last pages.
class NamesPrinter : public toolkit::headless::HeadlessPrinter {
 public:
  std::string last;
  int pages = 0;
  void print(std::string_view text, LineEnd) override {
    if (text.find("NOM") != std::string_view::npos) last = text;
  }
  void newPage() override { ++pages; }
  void endDoc() override { ++pages; }
};

class NamesDesktop : public testing_support::FaultyDesktop {
 public:
  using FaultyDesktop::FaultyDesktop;
  toolkit::Printer& printer() override { return names; }
  NamesPrinter names;
};

TEST_F(PropagationDesk, SendsEachLetterToItsPersonPastTheLastIndexToo) {
  constexpr int kMany = 32770;
  NamesDesktop desktop(desktop_);
  Keys keys(kMany, "00001001");
  keys[32766] = "00002001";
  keys[32767] = "00003001";
  keys[32768] = "00004001";
  keys[32769] = "00005001";
  session_.accords.lettresVoulues = true;
  serverAnswers(keys, {});
  agreements::Recup_Accord({desktop, surface_, screen_, session_});
  EXPECT_EQ(desktop.names.pages, kMany);
  EXPECT_NE(desktop.names.last.find("NOM5"), std::string::npos) << desktop.names.last;
  EXPECT_EQ(session_.accords.indiceLettre, 32767);
}

}  // namespace
}  // namespace behaviour
